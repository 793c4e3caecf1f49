#include <Studio/StudioWebcamSession.h>

#include <KdRecord/KdWebcamRecordView.h>
#include <Studio/StudioMessageWatch.h>

#include <QAbstractButton>

StudioWebcamSession::StudioWebcamSession(QWidget* mainWindow) : StudioRecordSession(mainWindow)
{
    connect(&m_starts, &StudioStartWatch::startEnded, this, [this] { Q_EMIT takeStarted(false); });
    connect(this, &StudioRecordSession::opened, this, [this] { Q_EMIT mute(true); });
}

void StudioWebcamSession::finish()
{
    if (!isOpen()) {
        return;
    }
    // A take that is not kept is told of, and a program that ends cannot wait for an answer.
    const StudioMessageWatch answers;
    auto* const ok = view()->findChild<QAbstractButton*>(QStringLiteral("KCameraCapture_OkButton"));
    if (ok) {
        ok->click();
    }
    close();
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
