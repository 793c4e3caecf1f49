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
 * screen. Unless it was given a size it has that of its content, as long as the screen has room,
 * and follows it, with the language as well. The content comes first in the tab order, the title
 * bar's buttons last. GUI thread.
 */
class KDWIDGETS_EXPORT KdFramelessDialog : public KdDialog
{
    Q_OBJECT

public:
    /**
     * @param parent owns the dialog, which stands over its window; may be null.
     * @param fixedSize false: the size is the user's as well, as soon as the title bar is told so
     * by KdTitleBar::SetResizeble()
     * @param shadow whether a one-pixel border in the stroke colour lies over the edge; it takes no
     * room
     * @param kind 1: a dialog, 0: a plain window that also stands in the task bar
     */
    explicit KdFramelessDialog(QWidget* parent = nullptr, bool fixedSize = true, bool shadow = true,
                               int kind = 1);
    ~KdFramelessDialog() override;

    /** @param title shown in the title bar as plain text; also the window title. */
    void SetTitleName(const QString& title);
    /** @return the bar at the top; never null, the dialog's own. */
    KdTitleBar* titleBar() const;
    /**
     * Puts a widget between title bar and buttons.
     * @param widget becomes a child of the dialog; a former one is deleted. Null: no content.
     */
    void setContentWidget(QWidget* widget);
    /** @return the content; null when there is none, or it was destroyed. */
    QWidget* contentWidget() const;
    /** @return where a dialog puts its buttons, right-aligned; never null, the dialog's own. */
    QHBoxLayout* buttonBarLayout() const;
    /** @param visible false: the bar of buttons takes no room; true at first. */
    void setButtonBarVisible(bool visible);
    /** @param mask one of KdTitleBar::Buttons; anything else shows the close button only. */
    void setTitleBarButtons(int mask);
    /**
     * See KdTitleBar::SetMinimizedEnable().
     * @param enable whether the minimise button minimises the window itself; true at first.
     */
    void SetMinimizedEnable(bool enable);

protected:
    bool event(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void addBorder();
    QSize wantedSize(const QSize& room) const;
    void fit(const QSize& room);
    bool isFitted() const;
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
    QSize m_fitted; ///< to its content; invalid: its size is somebody else's
    QPoint m_shownAt;
    QElapsedTimer m_sinceShown;
};
