#include <Studio/StudioRecordSession.h>

#include <KdRecord/KdAudioRecordView.h>
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
    m_pView = new KdAudioRecordView(m_pMainWindow);
    connectView();
    m_lockTimer.start();
    m_pView->doModal();
    Q_EMIT opened();
}

void StudioRecordSession::connectView()
{
    KdAudioRecordView* const view = m_pView;
    connect(view, &KdAudioRecordView::sigStartCapture, this, &StudioRecordSession::takeStarted);
    connect(view, &KdAudioRecordView::sigStartCaptureFailed, this,
            &StudioRecordSession::takeStartFailed);
    connect(view, &KdAudioRecordView::sigCaptureDoing, this, &StudioRecordSession::takeRuns);
    connect(view, &KdAudioRecordView::sigFinished, this, &StudioRecordSession::takeFinished);
    connect(view, &KdAudioRecordView::sigMute, this, &StudioRecordSession::mute);
    connect(view, &QObject::destroyed, this, [this] {
        m_pView.clear();
        m_lockTimer.stop();
        lookAtLock();
        Q_EMIT mute(false);
        Q_EMIT closed();
    });
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
