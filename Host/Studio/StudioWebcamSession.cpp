#include <Studio/StudioWebcamSession.h>

#include <KdRecord/KdWebcamRecordView.h>

StudioWebcamSession::StudioWebcamSession(QWidget* mainWindow) : StudioRecordSession(mainWindow)
{
    connect(&m_starts, &StudioStartWatch::startEnded, this, [this] { Q_EMIT takeStarted(false); });
    connect(this, &StudioRecordSession::opened, this, [this] { Q_EMIT mute(true); });
}

KdFramelessDialog* StudioWebcamSession::makeView(QWidget* mainWindow)
{
    m_pDialog = new KdWebcamRecordView(mainWindow);
    connect(m_pDialog, &KdWebcamRecordView::sigFinished, this, &StudioWebcamSession::takeFinished);
    return m_pDialog;
}

void StudioWebcamSession::showView()
{
    m_pDialog->initDevices();
    m_pDialog->doModal();
}
