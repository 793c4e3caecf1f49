#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QBasicTimer>
#include <QPixmap>
#include <QWidget>

/**
 * A short notice at the bottom centre of a window, gone after 3 s. Object name "KdToast"; plain
 * text. It follows the window, goes with it, and leaves the screen while the window is minimised.
 * Presses pass through it.
 */
class KDWIDGETS_EXPORT KdToast : public QWidget
{
    Q_OBJECT

public:
    /**
     * @param parent any widget of the window; null: the toast stands on the screen
     * @param pixmap shown before the text; may be null
     * @param bottomMargin distance from the lower edge of parent's window in pixels. Owned by that
     * window.
     */
    static KdToast* creatToast(const QString& text, QWidget* parent, const QPixmap& pixmap,
                               int bottomMargin);
    /** Makes a toast that deletes itself and shows it; a toast already on that window goes first.
     */
    static KdToast* showToast(QWidget* parent, const QString& text, const QPixmap& pixmap,
                              int bottomMargin);

    QString text() const { return m_sText; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    KdToast(const QString& text, QWidget* window, const QPixmap& pixmap, int bottomMargin);
    void closeOthers();
    void followWindowState();
    void place();
    QPainterPath outline() const;

    QString m_sText;
    int m_nBottomMargin = 0;
    QBasicTimer m_timer;
};
