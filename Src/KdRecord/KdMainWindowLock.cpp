#include <KdRecord/KdMainWindowLock.h>

#include <KdZentraCore/KdUtility.h>
#include <KdZentraCore/KdWindowsApi.h>

#include <QWidget>

#include <utility>

KdMainWindowLock::~KdMainWindowLock()
{
    if (m_lockedWindow) {
        KdWindowsApi::SetWindwosEnableApi(m_lockedWindow, true);
    }
}

void KdMainWindowLock::setLocked(bool locked)
{
    const QWidget* const window = KdUtility::gGetMainWindow();
    const WId current = window ? window->winId() : 0;
    const WId former = std::exchange(m_lockedWindow, locked ? current : 0);
    if (former && former != current) {
        KdWindowsApi::SetWindwosEnableApi(former, true);
    }
    if (current) {
        KdWindowsApi::SetWindwosEnableApi(current, !locked);
    }
}
