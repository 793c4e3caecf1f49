#pragma once

#include <KdWidgets/KdDialog.h>

#include <QElapsedTimer>
#include <QPoint>
#include <QPointer>

class KdResizeGrips;
class KdTitleBar;
class QFrame;
class QHBoxLayout;
class QVBoxLayout;

/**
 * A dialog without the window system's frame: title bar, content, and a bar of buttons at the
 * bottom. Unless it was moved it appears in the middle of its parent's window or else of the
 * screen. The content comes first in the tab order, the title bar's buttons last.
 */
class KDWIDGETS_EXPORT KdFramelessDialog : public KdDialog
{
    Q_OBJECT

public:
    /**
     * @param fixedSize false: the size is the user's as well, as soon as the title bar is told so
     *        by SetResizeble()
     * @param shadow whether a one-pixel border in the stroke colour lies over the edge; it takes no
     *        room
     * @param kind 1: a dialog, 0: a plain window that also stands in the task bar
     */
    explicit KdFramelessDialog(QWidget* parent = nullptr, bool fixedSize = true, bool shadow = true,
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

protected:
    void hideEvent(QHideEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void addBorder();
    void centre();
    void orderFocus();
    void setResizable(bool resizable);

    KdTitleBar* m_pTitleBar = nullptr;
    QPointer<QWidget> m_pContent;
    QWidget* m_pButtonBar = nullptr;
    QHBoxLayout* m_pButtonLayout = nullptr;
    QVBoxLayout* m_pLayout = nullptr;
    QFrame* m_pBorder = nullptr;
    QPointer<KdResizeGrips> m_pGrips;
    bool m_bCentred = false;
    QPoint m_shownAt;
    QElapsedTimer m_sinceShown;
};
