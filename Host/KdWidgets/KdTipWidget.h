#pragma once

#include <KdWidgets/KdBubble.h>

#include <QPoint>
#include <QWidget>

class QLabel;

/**
 * A small bubble with an arrow that points at a place. Object name "KdTipWidget"; plain text. It
 * closes when it is clicked and when its parent's window goes, moves or is minimised.
 */
class KDWIDGETS_EXPORT KdTipWidget : public QWidget
{
    Q_OBJECT

public:
    enum TipTypes : int
    {
        PlainTip = 0,
        WarningTip = 1,
        InfoTip = 2
    };
    /** Which edge of the bubble carries the arrow; the other one where there is room on that side
     * only. */
    enum ArrowDirection : int
    {
        ArrowUp = 0,
        ArrowUpCentered = 1,
        ArrowDown = 2
    };

    /** @param width of the bubble in pixels; 0: as wide as its text needs. Owned by parent. */
    static KdTipWidget* creatTipWidget(int type, int arrowDirection, QWidget* parent,
                                       const QString& text, int width);

    void setText(const QString& text);
    QString text() const;
    /** Moves the bubble so that its arrow points at a global position. */
    void transToArrowPos(const QPoint& globalPos);
    /** @return the global position that the arrow's point has now. */
    QPoint arrowPos() const;
    /** Shows the bubble; it keeps that many pixels from the edges of the screen, its arrow where it
     * was. */
    void OnShow(int screenMargin);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    KdTipWidget(TipTypes type, ArrowDirection direction, QWidget* parent, const QString& text,
                int width);
    void relayout();
    QSize cardSize() const;
    QRect screenArea() const;

    TipTypes m_type;
    ArrowDirection m_direction;
    int m_nWidth = 0;
    int m_nScreenMargin = 0;
    QLabel* m_pText = nullptr;
    QPoint m_arrowTarget;
    KdBubble m_bubble;
};
