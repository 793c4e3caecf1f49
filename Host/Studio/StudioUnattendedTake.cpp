#include <Studio/StudioUnattendedTake.h>

#include <Studio/StudioMessageWatch.h>
#include <Studio/StudioMouse.h>
#include <Studio/StudioRecordSession.h>
#include <Studio/StudioSoundServer.h>
#include <Studio/StudioVideoDevices.h>

#include <QDialog>

#include <utility>

namespace {

constexpr int kPressPollMs = 50;

bool hasSoundServer()
{
    return StudioSoundServer::isReachable(QProcessEnvironment::systemEnvironment());
}

QString missingMicrophone()
{
    return hasSoundServer()
               ? QStringLiteral("There is no microphone: the sound server knows no recording "
                                "device. Connect one, or use --demo.")
               : QStringLiteral("There is no sound server: neither PipeWire nor PulseAudio answers "
                                "in this session. \"./dev run --demo\" brings one of its own.");
}

/** Asks nobody who may take long to answer. */
bool canHaveCamera()
{
    return StudioVideoDevices::hasCamera() || hasSoundServer();
}

QString missingCamera()
{
    return QStringLiteral("There is no camera: neither this machine nor the session's video server "
                          "knows one. Connect one, or use --demo.");
}

} // namespace

StudioRecorderManual StudioRecorderManual::voiceOver()
{
    return {QStringLiteral("KAudioCapture_RecorderButton"), QStringLiteral("KPropertyPanel_Btn"),
            hasSoundServer, missingMicrophone};
}

StudioRecorderManual StudioRecorderManual::webcam()
{
    return {QStringLiteral("KProDlg_KCameraCptBtn"), QStringLiteral("KCameraCapture_OkButton"),
            canHaveCamera, missingCamera};
}

StudioUnattendedTake::StudioUnattendedTake(StudioRecordSession* session,
                                           StudioRecorderManual manual, double seconds,
                                           const Patience& patience, QObject* parent)
    : QObject(parent)
    , m_pSession(session)
    , m_manual(std::move(manual))
    , m_seconds(seconds)
    , m_patience(patience)
{
    m_deadline.setSingleShot(true);
    m_pressPoll.setInterval(kPressPollMs);
    m_take.setSingleShot(true);
    m_take.setTimerType(Qt::PreciseTimer);
    m_half.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, &StudioUnattendedTake::handleTimeout);
    connect(&m_pressPoll, &QTimer::timeout, this, &StudioUnattendedTake::tryToPress);
    connect(&m_take, &QTimer::timeout, this, &StudioUnattendedTake::stopTake);
    connect(&m_half, &QTimer::timeout, this, &StudioUnattendedTake::halfRecorded);
    connectSession();
}

StudioUnattendedTake::~StudioUnattendedTake() = default;

void StudioUnattendedTake::connectSession()
{
    connect(m_pSession, &StudioRecordSession::takeStarted, this,
            &StudioUnattendedTake::handleStarted);
    connect(m_pSession, &StudioRecordSession::takeFinished, this,
            &StudioUnattendedTake::handleFinished);
    connect(m_pSession, &StudioRecordSession::closed, this, &StudioUnattendedTake::handleClosed);
}

void StudioUnattendedTake::run()
{
    // The dialog is modal itself.
    m_watch = std::make_unique<StudioMessageWatch>(
        [session = m_pSession](const QDialog* dialog) { return dialog != session->view(); });
    connect(m_watch.get(), &StudioMessageWatch::messageShown, this,
            &StudioUnattendedTake::handleMessage);
    enter(Step::Device, m_manual.canHaveDevice() ? m_patience.device : m_patience.withoutServer);
    pressWhenPossible(m_manual.startButton);
    m_pSession->open();
}

void StudioUnattendedTake::enter(Step step, int patienceMs)
{
    m_step = step;
    m_deadline.start(patienceMs);
}

QWidget* StudioUnattendedTake::control() const
{
    const QWidget* const view = m_pSession->view();
    return view ? view->findChild<QWidget*>(m_controlName) : nullptr;
}

QString StudioUnattendedTake::obstacle() const
{
    const QWidget* const button = control();
    return button ? StudioMouse::obstacle(button)
                  : QStringLiteral("The recorder has no control %1.").arg(m_controlName);
}

void StudioUnattendedTake::pressWhenPossible(const QString& objectName)
{
    m_controlName = objectName;
    m_pressPoll.start();
}

void StudioUnattendedTake::tryToPress()
{
    if (!obstacle().isEmpty()) {
        return;
    }
    m_pressPoll.stop();
    if (m_step == Step::Device) {
        enter(Step::Countdown, m_patience.countdown);
    }
    StudioMouse::click(control());
}

void StudioUnattendedTake::handleStarted()
{
    if (m_step != Step::Countdown) {
        return;
    }
    const int milliseconds = static_cast<int>(m_seconds * 1000.0);
    enter(Step::Recording, milliseconds + m_patience.stop);
    m_take.start(milliseconds);
    m_half.start(milliseconds / 2);
}

void StudioUnattendedTake::stopTake()
{
    if (m_step == Step::Recording) {
        enter(Step::Stopping, m_patience.stop);
        pressWhenPossible(m_manual.startButton);
    }
}

void StudioUnattendedTake::handleFinished(const QString& path, const QString& fileInfo,
                                          const QString& fileExportInfo)
{
    if (m_step != Step::Stopping && m_step != Step::Recording) {
        return;
    }
    if (path.isEmpty()) {
        fail(QStringLiteral("The recorder kept no file."));
        return;
    }
    m_take.stop();
    m_result.path = path;
    m_result.fileInfo = fileInfo;
    m_result.fileExportInfo = fileExportInfo;
    enter(Step::Importing, m_patience.import);
}

void StudioUnattendedTake::noteImported(const QString& path)
{
    Q_UNUSED(path)
    if (m_step == Step::Importing) {
        enter(Step::Closing, m_patience.closing);
        pressWhenPossible(m_manual.okButton);
    }
}

void StudioUnattendedTake::noteImportFailed(const QString& path, const QString& why)
{
    if (m_step == Step::Importing) {
        fail(QStringLiteral("The file %1 could not be imported. %2").arg(path, why));
    }
}

void StudioUnattendedTake::handleMessage(const QString& text)
{
    // The recorder is still inside the message; what follows waits until it is answered.
    QTimer::singleShot(0, this, [this, text] { fail(text); });
    if (m_result.error.isEmpty()) {
        m_result.error = text;
    }
}

void StudioUnattendedTake::handleTimeout()
{
    switch (m_step) {
    case Step::Device:
        fail(missingDeviceText());
        return;
    case Step::Countdown:
        fail(QStringLiteral("The recording did not begin within %1 s.")
                 .arg(m_patience.countdown / 1000));
        return;
    case Step::Recording:
    case Step::Stopping:
        fail(QStringLiteral("The recording did not end within %1 s.").arg(m_patience.stop / 1000));
        return;
    case Step::Importing:
        fail(
            QStringLiteral("The file was not imported within %1 s.").arg(m_patience.import / 1000));
        return;
    case Step::Closing:
        fail(QStringLiteral("The recorder did not close within %1 s.")
                 .arg(m_patience.closing / 1000));
        finish();
        return;
    case Step::Idle:
    case Step::Over:
        return;
    }
}

QString StudioUnattendedTake::missingDeviceText() const
{
    const QWidget* const button = control();
    return button && button->isEnabled() ? obstacle() : m_manual.missingDevice();
}

void StudioUnattendedTake::handleClosed()
{
    if (m_step == Step::Closing) {
        finish();
    } else if (m_step != Step::Idle && m_step != Step::Over) {
        fail(QStringLiteral("The recorder was closed before the take was finished."));
    }
}

void StudioUnattendedTake::fail(const QString& error)
{
    if (m_step == Step::Over) {
        return;
    }
    if (m_result.error.isEmpty()) {
        m_result.error = error;
    }
    m_pressPoll.stop();
    m_take.stop();
    if (!m_pSession->isOpen()) {
        finish();
        return;
    }
    if (m_step != Step::Closing) {
        enter(Step::Closing, m_patience.closing);
    }
    m_pSession->close();
}

void StudioUnattendedTake::finish()
{
    if (m_step == Step::Over) {
        return;
    }
    m_step = Step::Over;
    m_deadline.stop();
    m_watch.reset();
    Q_EMIT finished(m_result);
}
