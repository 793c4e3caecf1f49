#include <Studio/StudioApplication.h>

#include <KCore/KCoreDirs.h>
#include <KdAppSettings/KdAppSettings.h>
#include <KdCore/KdLazySingletonManager.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdConfigEngine.h>
#include <Studio/KdDemoMicrophone.h>
#include <Studio/StudioImporter.h>
#include <Studio/StudioLanguages.h>
#include <Studio/StudioQuitSignals.h>
#include <Studio/StudioVoiceOver.h>
#include <Studio/StudioWindow.h>

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <cstdlib>

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

} // namespace

StudioApplication::StudioApplication(const StudioOptions& options, QObject* parent)
    : QObject(parent), m_options(options)
{
}

StudioApplication::~StudioApplication()
{
    m_voiceOver.reset();
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
    if (m_options.voiceOverSeconds > 0.0) {
        startVoiceOver();
    }
    return QApplication::exec();
}

void StudioApplication::applySettings()
{
    if (!m_options.takesFolder.isEmpty()) {
        setZentraDocumentDir(m_options.takesFolder);
        KdAppSettings::GetInstance()->Load();
        KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(
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
    if (KdDemoMicrophone::isMicrophoneThere()) {
        return true;
    }
    say(stderr, QStringLiteral(
                    "studio: there is no microphone; making one in which a demonstration speaks."));
    m_microphone = std::make_unique<KdDemoMicrophone>();
    const QString error = m_microphone->start();
    if (!error.isEmpty()) {
        say(stderr, QStringLiteral("studio: %1").arg(error));
        return false;
    }
    return true;
}

void StudioApplication::startVoiceOver()
{
    m_voiceOver =
        std::make_unique<StudioVoiceOver>(m_window->session(), m_options.voiceOverSeconds);
    connect(m_window->importer(), &StudioImporter::imported, m_voiceOver.get(),
            &StudioVoiceOver::noteImported);
    connect(m_window->importer(), &StudioImporter::failed, m_voiceOver.get(),
            &StudioVoiceOver::noteImportFailed);
    connect(m_voiceOver.get(), &StudioVoiceOver::finished, this, &StudioApplication::endVoiceOver);
    QMetaObject::invokeMethod(m_voiceOver.get(), &StudioVoiceOver::run, Qt::QueuedConnection);
}

void StudioApplication::endVoiceOver(const StudioVoiceOverResult& result)
{
    if (result.error.isEmpty()) {
        say(stdout, result.path);
        say(stdout, result.fileInfo.trimmed());
        say(stdout, result.fileExportInfo.trimmed());
    } else {
        say(stderr, QStringLiteral("studio: no voice-over was recorded. %1").arg(result.error));
    }
    m_window->close();
    QApplication::exit(result.error.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE);
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
    connect(signalsToQuit, &StudioQuitSignals::quitRequested, this, [this](int signalNumber) {
        m_window->close();
        QApplication::exit(128 + signalNumber);
    });
}
