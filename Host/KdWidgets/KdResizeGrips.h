#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QList>
#include <QObject>
#include <QRect>

class QWidget;

/**
 * Lets a frameless window be resized at its edges and corners with the mouse, within its smallest
 * and largest size. The grips are children of the window; tell them by place() when its size has
 * changed. GUI thread.
 */
class KDWIDGETS_EXPORT KdResizeGrips : public QObject
{
    Q_OBJECT

public:
    /** @param window a top-level widget; owns the grips, and must not be null. */
    explicit KdResizeGrips(QWidget* window);
    ~KdResizeGrips() override;

    /**
     * Puts the grips over the window's edges as they are now; hides them while it fills the screen.
     */
    void place();

    /**
     * @param geometry of the window when the drag began.
     * @param edges those that are dragged.
     * @param by how far, to the right and down.
     * @param smallest size that the window may have.
     * @param largest size that the window may have.
     * @return the geometry that follows, within the sizes. The edges across stay where they are.
     */
    static QRect dragged(const QRect& geometry, Qt::Edges edges, const QPoint& by,
                         const QSize& smallest, const QSize& largest);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void press(QWidget* grip, const QPoint& globalPos);
    void drag(QWidget* grip, const QPoint& globalPos);

    QWidget* m_pWindow;
    QList<QWidget*> m_grips;
    QPoint m_pressed;
    QRect m_geometry;
};
