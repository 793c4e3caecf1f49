#include <KdRecord/KdOverlayPlace.h>

#include <QEvent>
#include <QWidget>

namespace {

constexpr int kMostPlacings = 5;
constexpr int kNearEnough = 2;

} // namespace

KdOverlayPlace::KdOverlayPlace(QWidget* overlay, const QWidget* below)
    : QObject(overlay), m_pOverlay(overlay), m_pBelow(below)
{
    m_pOverlay->installEventFilter(this);
}

void KdOverlayPlace::place()
{
    m_pOverlay->move(middleBelow() - m_pOverlay->rect().center());
}

void KdOverlayPlace::show()
{
    m_nPlacingsLeft = kMostPlacings;
    place();
    m_pOverlay->show();
}

bool KdOverlayPlace::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Move && m_nPlacingsLeft > 0) {
        const QPoint offset = m_pOverlay->geometry().center() - middleBelow();
        if (offset.manhattanLength() > kNearEnough) {
            --m_nPlacingsLeft;
            QMetaObject::invokeMethod(this, &KdOverlayPlace::place, Qt::QueuedConnection);
        }
    }
    return QObject::eventFilter(watched, event);
}

QPoint KdOverlayPlace::middleBelow() const
{
    return m_pBelow->mapToGlobal(m_pBelow->rect().center());
}
