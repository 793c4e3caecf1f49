#pragma once

#include <KdWidgets/KdToolButton.h>

/** The way into the advanced settings: a text and a chevron, without a frame. GUI thread. */
class KAdvanceBtn : public KdToolButton
{
    Q_OBJECT

public:
    explicit KAdvanceBtn(QWidget* parent = nullptr);
    ~KAdvanceBtn() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    enum State : int
    {
        Normal,
        Hover,
        Pressed,
        Disabled
    };
    State state() const;
    void paintGround(QPainter& painter, State state) const;
    void paintText(QPainter& painter, State state) const;
    void paintChevron(QPainter& painter, State state) const;
    void paintFocusRing(QPainter& painter) const;
};
