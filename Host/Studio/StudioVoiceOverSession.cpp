#include <Studio/StudioVoiceOverSession.h>

#include <KdRecord/KdAudioRecordView.h>

KdFramelessDialog* StudioVoiceOverSession::makeView(QWidget* mainWindow)
{
    using View = KdAudioRecordView;
    using Session = StudioVoiceOverSession;
    m_pDialog = new View(mainWindow);
    connect(m_pDialog, &View::sigStartCapture, this, &Session::takeStarted);
    connect(m_pDialog, &View::sigStartCaptureFailed, this, &Session::takeStartFailed);
    connect(m_pDialog, &View::sigCaptureDoing, this, &Session::takeRuns);
    connect(m_pDialog, &View::sigFinished, this, &Session::takeFinished);
    connect(m_pDialog, &View::sigMute, this, &Session::mute);
    return m_pDialog;
}

void StudioVoiceOverSession::showView()
{
    m_pDialog->doModal();
}
