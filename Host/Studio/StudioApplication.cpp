#include <Studio/StudioApplication.h>

#include <KCore/KCoreDirs.h>
#include <KdAppSettings/KdAppSettings.h>
#include <KdCore/KdLazySingletonManager.h>
#include <KdRecord/KdCaptureEngine.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdConfigEngine.h>
#include <Studio/KdDemoCamera.h>
#include <Studio/KdDemoMicrophone.h>
#include <Studio/StudioGst.h>
#include <Studio/StudioImporter.h>
#include <Studio/StudioLanguages.h>
#include <Studio/StudioQuitSignals.h>
#include <Studio/StudioRecordSession.h>
#include <Studio/StudioTakeAnalyser.h>
#include <Studio/StudioUnattendedTake.h>
#include <Studio/StudioWindow.h>

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

constexpr int kUserScope = 1;

QString configGroup()
{
    return QStringLiteral("Studio");
}

void remember(const QString& key, const QString& value)
{
    KdConfigEngine::instance()->setValue(kUserScope, configGroup(), key, value);
}

QString remembered(const QString& key, const QString& fallback)
{
    return KdConfigEngine::instance()->value(kUserScope, configGroup(), key, fallback).toString();
}

void say(std::FILE* stream, const QString& text)
{
    std::fprintf(stream, "%s\n", text.toUtf8().constData());
    std::fflush(stream);
}

/** Says what is wrong. @return whether nothing is */
bool works(const QString& error)
{
    if (!error.isEmpty()) {
        say(stderr, QStringLiteral("studio: %1").arg(error));
    }
    return error.isEmpty();
}

} // namespace

StudioApplication::StudioApplication(const StudioOptions& options, QObject* parent)
    : QObject(parent), m_options(options)
{
}

StudioApplication::~StudioApplication()
{
    m_take.reset();
    m_window.reset();
    KdLazySingletonManager::instance()->releaseAll();
}

int StudioApplication::run()
{
    applySettings();
    if (m_options.demo && !prepareDemo()) {
        return EXIT_FAILURE;
    }
    m_window = std::make_unique<StudioWindow>(m_languages.get());
    connect(m_window.get(), &StudioWindow::skinChosen, this, &StudioApplication::useSkin);
    connect(m_window.get(), &StudioWindow::languageChosen, this, &StudioApplication::useLanguage);
    m_window->show();
    m_window->openTakes();
    handleQuitSignals();
    QMetaObject::invokeMethod(this, &StudioApplication::warmEngineUp, Qt::QueuedConnection);
    planTakes();
    return QApplication::exec();
}

// A capture engine begins to look for devices with its first recorder. Done by then, the first
// dialog that is opened has them at once.
void StudioApplication::warmEngineUp()
{
    if (auto* const recorder = KdVBLMODEL::createAudioRecorder(this)) {
        recorder->release();
    }
    if (auto* const recorder = KdVBLMODEL::createWebcamRecorder()) {
        recorder->release();
    }
}

void StudioApplication::applySettings()
{
    if (!m_options.takesFolder.isEmpty()) {
        setZentraDocumentDir(m_options.takesFolder);
        KdAppSettings::GetInstance()->Load();
        KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(
            QDir::toNativeSeparators(m_options.takesFolder));
        KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetCaptureFileFolder(
            QDir::toNativeSeparators(m_options.takesFolder));
    }
    IKdProjectManager::getInstance()->setFrameRate(m_options.frameRate);
    m_languages = std::make_unique<StudioLanguages>();
    const QString skin = remembered(QStringLiteral("Skin"), QStringLiteral("dark"));
    const QString language = remembered(QStringLiteral("Language"), QStringLiteral("en"));
    KdSkin::KdSkinManager::instance()->setSkin(m_options.skin.isEmpty() ? skin : m_options.skin);
    m_languages->use(m_options.language.isEmpty() ? language : m_options.language);
}

bool StudioApplication::prepareDemo()
{
    const bool voiceOverOnly = m_options.voiceOverSeconds > 0.0 && m_options.webcamSeconds <= 0.0;
    const QString error = prepareMicrophone();
    return works(error.isEmpty() && !voiceOverOnly ? prepareCamera() : error);
}

QString StudioApplication::prepareMicrophone()
{
    if (KdDemoMicrophone::isMicrophoneThere()) {
        return {};
    }
    say(stderr, QStringLiteral(
                    "studio: there is no microphone; making one in which a demonstration speaks."));
    m_microphone = std::make_unique<KdDemoMicrophone>();
    return m_microphone->start();
}

QString StudioApplication::prepareCamera()
{
    if (KdDemoCamera::isCameraThere()) {
        return {};
    }
    say(stderr,
        QStringLiteral("studio: there is no camera; making one with a demonstration's picture."));
    m_camera = std::make_unique<KdDemoCamera>();
    return m_camera->start();
}

void StudioApplication::planTakes()
{
    if (m_options.voiceOverSeconds > 0.0) {
        m_plan.append({QStringLiteral("voice-over"), m_window->voiceOver(),
                       StudioRecorderManual::voiceOver(), m_options.voiceOverSeconds});
    }
    if (m_options.webcamSeconds > 0.0) {
        m_plan.append({QStringLiteral("webcam"), m_window->webcam(), StudioRecorderManual::webcam(),
                       m_options.webcamSeconds});
    }
    if (!m_plan.isEmpty()) {
        QMetaObject::invokeMethod(this, &StudioApplication::startNextTake, Qt::QueuedConnection);
    }
}

void StudioApplication::startNextTake()
{
    if (m_plan.isEmpty()) {
        leave(EXIT_SUCCESS);
        return;
    }
    m_planned = m_plan.takeFirst();
    // On its first start for a user GStreamer looks through all of its plug-ins. The time that
    // takes is not to count as a device's absence.
    StudioGst::start();
    m_take = std::make_unique<StudioUnattendedTake>(
        m_planned.session, m_planned.manual, m_planned.seconds, StudioUnattendedTake::Patience());
    const StudioUnattendedTake* const take = m_take.get();
    connect(m_window->importer(), &StudioImporter::imported, take,
            &StudioUnattendedTake::noteImported);
    connect(m_window->importer(), &StudioImporter::failed, take,
            &StudioUnattendedTake::noteImportFailed);
    connect(take, &StudioUnattendedTake::halfRecorded, this, &StudioApplication::keepPictures);
    connect(take, &StudioUnattendedTake::finished, this, &StudioApplication::endTake);
    m_take->run();
}

void StudioApplication::endTake(const StudioTakeResult& result)
{
    if (m_isLeaving) {
        return;
    }
    if (!result.error.isEmpty()) {
        say(stderr,
            QStringLiteral("studio: the %1 take failed. %2").arg(m_planned.name, result.error));
        leave(EXIT_FAILURE);
        return;
    }
    say(stdout, result.path);
    say(stdout, result.fileInfo.trimmed());
    say(stdout, result.fileExportInfo.trimmed());
    // Later: the recorder is about to return, and the take is still being looked into.
    if (m_window->analyser()->isBusy()) {
        connect(
            m_window->analyser(), &StudioTakeAnalyser::idle, m_take.get(), [this] { finishTake(); },
            Qt::QueuedConnection);
    } else {
        QMetaObject::invokeMethod(this, &StudioApplication::finishTake, Qt::QueuedConnection);
    }
}

void StudioApplication::finishTake()
{
    keepPictures();
    startNextTake();
}

void StudioApplication::keepPictures()
{
    if (m_options.screenshots.isEmpty()) {
        return;
    }
    const QDir folder(m_options.screenshots);
    const auto keep = [&folder](QWidget* window, const QString& name) {
        const QString path = folder.filePath(name + QStringLiteral(".png"));
        if (!folder.mkpath(QStringLiteral(".")) || !window->grab().save(path)) {
            say(stderr, QStringLiteral("studio: the picture %1 could not be kept.").arg(path));
        }
    };
    keep(m_window.get(), QStringLiteral("studio"));
    if (m_planned.session->isOpen()) {
        keep(m_planned.session->view(), m_planned.name);
    }
}

void StudioApplication::leave(int status)
{
    // Closing ends a running take, whose end asks to leave, too.
    if (std::exchange(m_isLeaving, true)) {
        return;
    }
    m_window->close();
    QApplication::exit(status);
}

void StudioApplication::useSkin(const QString& name)
{
    KdSkin::KdSkinManager::instance()->setSkin(name);
    remember(QStringLiteral("Skin"), name);
}

void StudioApplication::useLanguage(const QString& code)
{
    m_languages->use(code);
    remember(QStringLiteral("Language"), code);
}

void StudioApplication::handleQuitSignals()
{
    auto* const signalsToQuit = new StudioQuitSignals(this);
    connect(signalsToQuit, &StudioQuitSignals::quitRequested, this,
            [this](int signalNumber) { leave(128 + signalNumber); });
}
