#pragma once

#include <QScrollArea>

/**
 * A page as a part of a window: as high as it wants to be, and scrolled where the screen is too low
 * for that. A control that gets the keyboard's focus comes into view. GUI thread.
 */
class StudioScrollPage : public QScrollArea
{
    Q_OBJECT

public:
    /** @param page becomes a child @param width of both */
    StudioScrollPage(QWidget* page, int width, QWidget* parent);
    ~StudioScrollPage() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    int heightOfPage(int width) const;
    void keepHeightOfPage();
    void bringIntoView(const QWidget* control);

    int m_width;
};
