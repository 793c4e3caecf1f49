#pragma once

#include <QObject>

class QWidget;

/**
 * Keeps a small window, the countdown, over the middle of a widget, although the window system has
 * the last word on where a new window stands and may say it late. Belongs to the overlay. GUI
 * thread.
 */
class KdOverlayPlace : public QObject
{
    Q_OBJECT

public:
    /** @param below outlives the overlay */
    KdOverlayPlace(QWidget* overlay, const QWidget* below);

    /** Puts the overlay in place: when the window below has moved or changed its size. */
    void place();
    /** Shows it there. */
    void show();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPoint middleBelow() const;

    QWidget* const m_pOverlay;
    const QWidget* const m_pBelow;
    /** Against a window system that insists on another place. */
    int m_nPlacingsLeft = 0;
};
