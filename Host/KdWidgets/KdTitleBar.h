#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QWidget>

class KdLabel;
class QToolButton;

/**
 * The bar of a frameless dialog: title left, buttons right, 40 high; dragging it moves the window.
 * GUI thread.
 */
class KDWIDGETS_EXPORT KdTitleBar : public QWidget
{
    Q_OBJECT

public:
    /** What ButtonClick() carries. Object names: "KdTitleBar_Close", "KdTitleBar_Minimize". */
    enum ButtonId : int
    {
        CloseButton = 1,   ///< closes the window
        MinimizeButton = 4 ///< minimises the window, or only says so
    };
    /** Masks for setButtons(). */
    enum Buttons : int
    {
        CloseOnly = 1,              ///< the close button
        MinimizeToTrayAndClose = 32 ///< a minimise button beside it
    };

    /** @param parent owns the bar; its window is the one that is moved and closed. May be null. */
    explicit KdTitleBar(QWidget* parent = nullptr);

    /** @param title plain text, elided where it does not fit. */
    void setTitle(const QString& title);
    /** @return the whole title. */
    QString title() const;
    /** @param mask one of Buttons; anything else shows the close button only. */
    void setButtons(int mask);
    /**
     * @param enable false: the minimise button only reports itself; true, the default: it also
     * minimises the window.
     */
    void SetMinimizedEnable(bool enable);
    /**
     * Says whether the window's size is the user's, which it is not by default: then a double click
     * on the bar fills the screen, and back.
     * @param enable whether it is.
     */
    void SetResizeble(bool enable);
    /** @return whether the window's size is the user's. */
    bool isResizeble() const { return m_bResizeble; }

Q_SIGNALS:
    /** @param enabled what SetResizeble() was told, when that is something new. */
    void ResizebleChanged(bool enabled);
    /**
     * A button was pressed. The close button closes the window afterwards, unless a receiver has
     * destroyed it.
     * @param id a ButtonId.
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
