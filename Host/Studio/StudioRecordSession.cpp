#include <Studio/StudioRecordSession.h>

#include <KdZentraCore/KdWindowsApi.h>

#include <QWidget>

namespace {

/** The lock comes without a signal, in the countdown already. */
constexpr int kLockPollMs = 50;

} // namespace

StudioRecordSession::StudioRecordSession(QWidget* mainWindow)
    : QObject(mainWindow), m_pMainWindow(mainWindow)
{
    m_lockTimer.setInterval(kLockPollMs);
    connect(&m_lockTimer, &QTimer::timeout, this, &StudioRecordSession::lookAtLock);
}

void StudioRecordSession::open()
{
    if (m_pView) {
        m_pView->showNormal();
        m_pView->raise();
        m_pView->activateWindow();
        return;
    }
    m_pView = makeView(m_pMainWindow);
    connect(m_pView, &QObject::destroyed, this, &StudioRecordSession::noteGone);
    m_lockTimer.start();
    Q_EMIT opened();
    showView();
}

void StudioRecordSession::noteGone()
{
    m_pView.clear();
    m_lockTimer.stop();
    lookAtLock();
    Q_EMIT mute(false);
    Q_EMIT closed();
}

void StudioRecordSession::close()
{
    if (m_pView) {
        m_pView->close();
    }
}

void StudioRecordSession::lookAtLock()
{
    const bool locked = !KdWindowsApi::IsWindowsEnableApi(m_pMainWindow->winId());
    if (locked != m_locked) {
        m_locked = locked;
        Q_EMIT lockChanged(locked);
    }
}
