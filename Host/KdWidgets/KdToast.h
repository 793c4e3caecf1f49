#pragma once

#include <KdWidgets/KdLiveText.h>
#include <KdWidgets/KdWidgetsExport.h>

#include <QBasicTimer>
#include <QPixmap>
#include <QWidget>

class KdWrapLabel;

/**
 * A short notice at the bottom centre of a window, gone after 3 s. Object name "KdToast"; plain
 * text. It follows the language and the window, goes with that, and leaves the screen while it is
 * minimised. Presses pass through it. GUI thread.
 */
class KDWIDGETS_EXPORT KdToast : public QWidget
{
    Q_OBJECT

public:
    /**
     * Makes a toast that is not shown yet and does not delete itself.
     * @param text shown as it is, markup too, on 4 lines at most.
     * @param parent any widget of the window, which owns the toast; null: the toast stands on the
     * screen and is the caller's.
     * @param pixmap shown before the text; may be null.
     * @param bottomMargin distance from the lower edge of parent's window in pixels.
     * @return the toast; never null.
     */
    static KdToast* creatToast(const KdLiveText& text, QWidget* parent, const QPixmap& pixmap,
                               int bottomMargin);
    /**
     * Makes a toast that deletes itself and shows it; a toast already on that window goes first.
     * @param parent any widget of the window; null: the toast stands on the screen.
     * @param text shown as it is, markup too, on 4 lines at most.
     * @param pixmap shown before the text; may be null.
     * @param bottomMargin distance from the lower edge of parent's window in pixels.
     * @return the toast on the screen; not the caller's.
     */
    static KdToast* showToast(QWidget* parent, const KdLiveText& text, const QPixmap& pixmap,
                              int bottomMargin);

    /** @return what the toast says. */
    QString text() const;

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    /**
     * Closes the toast when its time is over.
     * @param event of the toast's own timer, or of one of a derived class.
     */
    void timerEvent(QTimerEvent* event) override;

private:
    KdToast(const KdLiveText& text, QWidget* window, const QPixmap& pixmap, int bottomMargin);
    void retranslate();
    void closeOthers();
    void followWindowState();
    void place();
    QPainterPath outline() const;

    KdLiveText m_text;
    KdWrapLabel* m_pText = nullptr;
    int m_nBottomMargin = 0;
    QBasicTimer m_timer;
};
