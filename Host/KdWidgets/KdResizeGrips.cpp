#include <KdWidgets/KdResizeGrips.h>

#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <array>

namespace {

constexpr int kThickness = 5;
constexpr int kCorner = 12;
constexpr const char* kEdges = "edges";

struct Grip
{
    const char* name;
    Qt::Edges edges;
    Qt::CursorShape cursor;
};

/** Corners last: they lie over the edges. */
const std::array<Grip, 8>& grips()
{
    static const std::array<Grip, 8> all{{
        {"KdResizeGrip_Left", Qt::LeftEdge, Qt::SizeHorCursor},
        {"KdResizeGrip_Right", Qt::RightEdge, Qt::SizeHorCursor},
        {"KdResizeGrip_Top", Qt::TopEdge, Qt::SizeVerCursor},
        {"KdResizeGrip_Bottom", Qt::BottomEdge, Qt::SizeVerCursor},
        {"KdResizeGrip_TopLeft", Qt::TopEdge | Qt::LeftEdge, Qt::SizeFDiagCursor},
        {"KdResizeGrip_TopRight", Qt::TopEdge | Qt::RightEdge, Qt::SizeBDiagCursor},
        {"KdResizeGrip_BottomLeft", Qt::BottomEdge | Qt::LeftEdge, Qt::SizeBDiagCursor},
        {"KdResizeGrip_BottomRight", Qt::BottomEdge | Qt::RightEdge, Qt::SizeFDiagCursor},
    }};
    return all;
}

Qt::Edges edgesOf(const QWidget* grip)
{
    return Qt::Edges(grip->property(kEdges).toInt());
}

bool isCorner(Qt::Edges edges)
{
    return (edges & (Qt::LeftEdge | Qt::RightEdge)) && (edges & (Qt::TopEdge | Qt::BottomEdge));
}

QRect areaOf(Qt::Edges edges, const QSize& window)
{
    const int size = isCorner(edges) ? kCorner : kThickness;
    const bool sideways = edges & (Qt::LeftEdge | Qt::RightEdge);
    const bool upright = edges & (Qt::TopEdge | Qt::BottomEdge);
    const QSize area(sideways ? size : window.width(), upright ? size : window.height());
    const int x = edges & Qt::RightEdge ? window.width() - area.width() : 0;
    const int y = edges & Qt::BottomEdge ? window.height() - area.height() : 0;
    return {QPoint(x, y), area};
}

/** Where windows cannot place themselves the compositor has to resize them. */
bool resizedByCompositor(const QWidget* window, Qt::Edges edges)
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) &&
           window->windowHandle() && window->windowHandle()->startSystemResize(edges);
}

} // namespace

KdResizeGrips::KdResizeGrips(QWidget* window) : QObject(window), m_pWindow(window)
{
    for (const Grip& grip : grips()) {
        auto* const widget = new QWidget(window);
        widget->setObjectName(QString::fromLatin1(grip.name));
        widget->setCursor(grip.cursor);
        widget->setProperty(kEdges, static_cast<int>(grip.edges));
        widget->installEventFilter(this);
        m_grips.append(widget);
    }
    place();
}

KdResizeGrips::~KdResizeGrips()
{
    qDeleteAll(m_grips);
}

void KdResizeGrips::place()
{
    for (QWidget* const grip : qAsConst(m_grips)) {
        grip->setGeometry(areaOf(edgesOf(grip), m_pWindow->size()));
        grip->raise();
        grip->setVisible(!m_pWindow->isMaximized());
    }
}

QRect KdResizeGrips::dragged(const QRect& geometry, Qt::Edges edges, const QPoint& by,
                             const QSize& smallest, const QSize& largest)
{
    const int wider = edges & Qt::RightEdge ? by.x() : edges & Qt::LeftEdge ? -by.x() : 0;
    const int higher = edges & Qt::BottomEdge ? by.y() : edges & Qt::TopEdge ? -by.y() : 0;
    const QSize size =
        (geometry.size() + QSize(wider, higher)).expandedTo(smallest).boundedTo(largest);
    QRect result(geometry.topLeft(), size);
    if (edges & Qt::LeftEdge) {
        result.moveRight(geometry.right());
    }
    if (edges & Qt::TopEdge) {
        result.moveBottom(geometry.bottom());
    }
    return result;
}

bool KdResizeGrips::eventFilter(QObject* watched, QEvent* event)
{
    auto* const grip = qobject_cast<QWidget*>(watched);
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    if (!grip || (!isPress && event->type() != QEvent::MouseMove)) {
        return false;
    }
    const auto* const mouse = static_cast<QMouseEvent*>(event);
    if (isPress && mouse->button() == Qt::LeftButton) {
        press(grip, mouse->globalPos());
    } else if (!isPress && (mouse->buttons() & Qt::LeftButton) && m_geometry.isValid()) {
        drag(grip, mouse->globalPos());
    }
    return true;
}

void KdResizeGrips::press(QWidget* grip, const QPoint& globalPos)
{
    const bool isElsewhere = resizedByCompositor(m_pWindow, edgesOf(grip));
    m_geometry = isElsewhere ? QRect() : m_pWindow->geometry();
    m_pressed = globalPos;
}

void KdResizeGrips::drag(QWidget* grip, const QPoint& globalPos)
{
    const QSize smallest = m_pWindow->minimumSize().expandedTo(m_pWindow->minimumSizeHint());
    m_pWindow->setGeometry(dragged(m_geometry, edgesOf(grip), globalPos - m_pressed, smallest,
                                   m_pWindow->maximumSize()));
}
