#pragma once

#include <KdWidgets/KdBubble.h>
#include <KdWidgets/KdLiveText.h>

#include <QPoint>
#include <QWidget>

class QLabel;

/**
 * A small bubble with an arrow that points at a place. Object name "KdTipWidget"; plain text, which
 * follows the language. It closes when it is clicked and when its parent's window goes, moves or is
 * minimised. GUI thread.
 */
class KDWIDGETS_EXPORT KdTipWidget : public QWidget
{
    Q_OBJECT

public:
    /** What the bubble is for; a warning has a border in the colour of warnings. */
    enum TipTypes : int
    {
        PlainTip = 0,   ///< an explanation
        WarningTip = 1, ///< something to mind
        InfoTip = 2     ///< an explanation
    };
    /** Which edge of the bubble carries the arrow; the other one where there is room on that side
     * only. */
    enum ArrowDirection : int
    {
        ArrowUp = 0,         ///< on the upper edge, near its left end
        ArrowUpCentered = 1, ///< on the upper edge, in its middle
        ArrowDown = 2        ///< on the lower edge, near its left end
    };

    /**
     * Makes a bubble; transToArrowPos() and OnShow() bring it to the screen.
     * @param type one of TipTypes; any other is a plain tip.
     * @param arrowDirection one of ArrowDirection; any other is ArrowUp.
     * @param parent owns the bubble; may be null.
     * @param text shown as it is, markup too, on 20 lines at most.
     * @param width of the bubble in pixels; 0: as wide as its text needs.
     * @return the bubble, not shown yet; never null.
     */
    static KdTipWidget* creatTipWidget(int type, int arrowDirection, QWidget* parent,
                                       const KdLiveText& text, int width);

    /** @param text replaces the present one; the bubble takes its size. */
    void setText(const KdLiveText& text);
    /** @return what the bubble says. */
    QString text() const;
    /**
     * Moves the bubble so that its arrow points at a place.
     * @param globalPos in coordinates of the screen.
     */
    void transToArrowPos(const QPoint& globalPos);
    /** @return the global position that the arrow's point has now. */
    QPoint arrowPos() const;
    /**
     * Shows the bubble.
     * @param screenMargin so many pixels are left between the bubble and the edges of the screen;
     * its arrow stays where it was.
     */
    void OnShow(int screenMargin);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    KdTipWidget(TipTypes type, ArrowDirection direction, QWidget* parent, const KdLiveText& text,
                int width);
    void retranslate();
    void relayout();
    QSize cardSize() const;
    QRect screenArea() const;

    TipTypes m_type;
    ArrowDirection m_direction;
    int m_nWidth = 0;
    int m_nScreenMargin = 0;
    KdLiveText m_text;
    QLabel* m_pText = nullptr;
    QPoint m_arrowTarget;
    KdBubble m_bubble;
};
