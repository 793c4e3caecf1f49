#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QList>
#include <QObject>
#include <QRect>

class QWidget;

/**
 * Lets a frameless window be resized at its edges and corners with the mouse, within its smallest
 * and largest size. The grips are children of the window; tell them when its size has changed.
 */
class KDWIDGETS_EXPORT KdResizeGrips : public QObject
{
    Q_OBJECT

public:
    /** @param window also the parent */
    explicit KdResizeGrips(QWidget* window);
    ~KdResizeGrips() override;

    /** Puts the grips over the window's edges as they are now. */
    void place();

    /** @return the geometry that follows from dragging those edges by that much, within the sizes.
     * The edges across stay where they are. */
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
