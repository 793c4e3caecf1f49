#include <Studio/StudioVoiceOver.h>

#include <KdRecord/KdAudioRecordView.h>
#include <Studio/StudioMessageWatch.h>
#include <Studio/StudioMouse.h>
#include <Studio/StudioRecordSession.h>
#include <Studio/StudioSoundServer.h>

#include <QWidget>

namespace {

constexpr int kPressPollMs = 50;

QString startButton()
{
    return QStringLiteral("KAudioCapture_RecorderButton");
}

QString okButton()
{
    return QStringLiteral("KPropertyPanel_Btn");
}

} // namespace

StudioVoiceOver::StudioVoiceOver(StudioRecordSession* session, double seconds,
                                 const Patience& patience, QObject* parent)
    : QObject(parent), m_pSession(session), m_seconds(seconds), m_patience(patience)
{
    m_deadline.setSingleShot(true);
    m_pressPoll.setInterval(kPressPollMs);
    m_take.setSingleShot(true);
    m_take.setTimerType(Qt::PreciseTimer);
    connect(&m_deadline, &QTimer::timeout, this, &StudioVoiceOver::handleTimeout);
    connect(&m_pressPoll, &QTimer::timeout, this, &StudioVoiceOver::tryToPress);
    connect(&m_take, &QTimer::timeout, this, &StudioVoiceOver::stopTake);
    connectSession();
}

StudioVoiceOver::StudioVoiceOver(StudioRecordSession* session, double seconds, QObject* parent)
    : StudioVoiceOver(session, seconds, Patience(), parent)
{
}

StudioVoiceOver::~StudioVoiceOver() = default;

void StudioVoiceOver::connectSession()
{
    connect(m_pSession, &StudioRecordSession::takeStarted, this, &StudioVoiceOver::handleStarted);
    connect(m_pSession, &StudioRecordSession::takeFinished, this, &StudioVoiceOver::handleFinished);
    connect(m_pSession, &StudioRecordSession::closed, this, &StudioVoiceOver::handleClosed);
}

void StudioVoiceOver::run()
{
    m_watch = std::make_unique<StudioMessageWatch>();
    connect(m_watch.get(), &StudioMessageWatch::messageShown, this,
            &StudioVoiceOver::handleMessage);
    const bool server = StudioSoundServer::isReachable(QProcessEnvironment::systemEnvironment());
    enter(Step::Microphone, server ? m_patience.microphone : m_patience.withoutServer);
    m_pSession->open();
    pressWhenPossible(startButton());
}

void StudioVoiceOver::enter(Step step, int patienceMs)
{
    m_step = step;
    m_deadline.start(patienceMs);
}

QWidget* StudioVoiceOver::control() const
{
    const QWidget* const view = m_pSession->view();
    return view ? view->findChild<QWidget*>(m_controlName) : nullptr;
}

QString StudioVoiceOver::obstacle() const
{
    const QWidget* const button = control();
    return button ? StudioMouse::obstacle(button)
                  : QStringLiteral("The recorder has no control %1.").arg(m_controlName);
}

void StudioVoiceOver::pressWhenPossible(const QString& objectName)
{
    m_controlName = objectName;
    m_pressPoll.start();
}

void StudioVoiceOver::tryToPress()
{
    if (!obstacle().isEmpty()) {
        return;
    }
    m_pressPoll.stop();
    if (m_step == Step::Microphone) {
        enter(Step::Countdown, m_patience.countdown);
    }
    StudioMouse::click(control());
}

void StudioVoiceOver::handleStarted()
{
    if (m_step != Step::Countdown) {
        return;
    }
    const int milliseconds = static_cast<int>(m_seconds * 1000.0);
    enter(Step::Recording, milliseconds + m_patience.stop);
    m_take.start(milliseconds);
}

void StudioVoiceOver::stopTake()
{
    if (m_step == Step::Recording) {
        enter(Step::Stopping, m_patience.stop);
        pressWhenPossible(startButton());
    }
}

void StudioVoiceOver::handleFinished(const QString& path, const QString& fileInfo,
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

void StudioVoiceOver::noteImported(const QString& path)
{
    Q_UNUSED(path)
    if (m_step == Step::Importing) {
        enter(Step::Closing, m_patience.closing);
        pressWhenPossible(okButton());
    }
}

void StudioVoiceOver::noteImportFailed(const QString& path, const QString& why)
{
    if (m_step == Step::Importing) {
        fail(QStringLiteral("The file %1 could not be imported. %2").arg(path, why));
    }
}

void StudioVoiceOver::handleMessage(const QString& text)
{
    // The recorder is still inside the message; what follows waits until it is answered.
    QTimer::singleShot(0, this, [this, text] { fail(text); });
    if (m_result.error.isEmpty()) {
        m_result.error = text;
    }
}

void StudioVoiceOver::handleTimeout()
{
    switch (m_step) {
    case Step::Microphone:
        fail(missingSoundText());
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

QString StudioVoiceOver::missingSoundText() const
{
    if (!StudioSoundServer::isReachable(QProcessEnvironment::systemEnvironment())) {
        return QStringLiteral(
            "There is no sound server: neither PipeWire nor PulseAudio answers in this session. "
            "\"./dev run --demo\" brings one of its own.");
    }
    const QWidget* const button = control();
    if (!button || button->isEnabled()) {
        return obstacle();
    }
    return QStringLiteral(
        "There is no microphone: the sound server knows no recording device. Connect one, or use "
        "--demo.");
}

void StudioVoiceOver::handleClosed()
{
    if (m_step == Step::Closing) {
        finish();
    } else if (m_step != Step::Idle && m_step != Step::Over) {
        fail(QStringLiteral("The recorder was closed before the take was finished."));
    }
}

void StudioVoiceOver::fail(const QString& error)
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
    } else if (m_step != Step::Closing) {
        enter(Step::Closing, m_patience.closing);
        m_pSession->close();
    }
}

void StudioVoiceOver::finish()
{
    if (m_step == Step::Over) {
        return;
    }
    m_step = Step::Over;
    m_deadline.stop();
    m_watch.reset();
    Q_EMIT finished(m_result);
}
