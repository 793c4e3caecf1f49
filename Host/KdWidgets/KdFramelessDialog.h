#pragma once

#include <KdWidgets/KdDialog.h>

class KdTitleBar;
class QHBoxLayout;
class QVBoxLayout;

/** A dialog without the window system's frame: title bar, content, and a bar of buttons at the
 * bottom. */
class KDWIDGETS_EXPORT KdFramelessDialog : public KdDialog
{
    Q_OBJECT

public:
    /**
     * @param titleBar whether there is a title bar
     * @param shadow whether the dialog has a one-pixel border in the stroke colour
     * @param kind 1: a dialog, 0: a plain window that also stands in the task bar
     */
    explicit KdFramelessDialog(QWidget* parent = nullptr, bool titleBar = true, bool shadow = true,
                               int kind = 1);
    ~KdFramelessDialog() override;

    /** Also the window title. */
    void SetTitleName(const QString& title);
    KdTitleBar* titleBar() const;
    /** @param widget becomes a child of the dialog; a former one is deleted. */
    void setContentWidget(QWidget* widget);
    QWidget* contentWidget() const;
    /** Where a dialog puts its buttons, right-aligned. */
    QHBoxLayout* buttonBarLayout() const;
    void setButtonBarVisible(bool visible);
    void setTitleBarButtons(int mask);
    void SetMinimizedEnable(bool enable);

private:
    KdTitleBar* m_pTitleBar = nullptr;
    QWidget* m_pContent = nullptr;
    QWidget* m_pButtonBar = nullptr;
    QHBoxLayout* m_pButtonLayout = nullptr;
    QVBoxLayout* m_pLayout = nullptr;
};
