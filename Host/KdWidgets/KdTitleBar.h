#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QWidget>

class KdLabel;
class QToolButton;

/** The bar of a frameless dialog: title left, buttons right, 40 high; dragging it moves the window.
 */
class KDWIDGETS_EXPORT KdTitleBar : public QWidget
{
    Q_OBJECT

public:
    /** What ButtonClick() carries. Object names: "KdTitleBar_Close", "KdTitleBar_Minimize". */
    enum ButtonId : int
    {
        CloseButton = 1,
        MinimizeButton = 4
    };
    /** Masks for setButtons(). */
    enum Buttons : int
    {
        CloseOnly = 1,
        MinimizeToTrayAndClose = 32
    };

    explicit KdTitleBar(QWidget* parent = nullptr);

    /** Plain text, elided where it does not fit. */
    void setTitle(const QString& title);
    QString title() const;
    /** @param mask one of Buttons; anything else shows the close button only. */
    void setButtons(int mask);
    /** While false the minimise button only reports itself; while true, the default, it also
     * minimises the window. */
    void SetMinimizedEnable(bool enable);
    /** Whether the window's size is the user's, which it is not by default: then a double click on
     * the bar fills the screen, and back. */
    void SetResizeble(bool enable);
    bool isResizeble() const { return m_bResizeble; }

Q_SIGNALS:
    void ResizebleChanged(bool enabled);
    /**
     * A button was pressed; id is a ButtonId. The close button closes the window afterwards, unless
     * a receiver has destroyed it.
     */
    void ButtonClick(int id);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QToolButton* addButton(const QString& name);
    void minimizePressed();
    void closePressed();
    void retranslate();

    KdLabel* m_pTitle = nullptr;
    QToolButton* m_pMinimize = nullptr;
    QToolButton* m_pClose = nullptr;
    QPoint m_dragStart;
    bool m_bDragging = false;
    bool m_bMinimizes = true;
    bool m_bResizeble = false;
};
