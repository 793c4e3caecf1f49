#include "StudioShots.h"

#include "WebcamScene.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioDevicesDialog.h>
#include <Studio/StudioImporter.h>
#include <Studio/StudioLanguages.h>
#include <Studio/StudioRecordSession.h>
#include <Studio/StudioRecovery.h>
#include <Studio/StudioSettingsDialog.h>
#include <Studio/StudioSideWindows.h>
#include <Studio/StudioTakeLibrary.h>
#include <Studio/StudioWindow.h>
#include <Support/Command.h>
#include <Support/ScriptedEngine.h>
#include <Support/VirtualMicrophone.h>

#include <QAbstractButton>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString kFileInfo =
    QStringLiteral("{\n    \"audio_channels\": 2,\n    \"device_name\": \"USB Microphone\",\n"
                   "    \"file_duration\": %1,\n    \"sampling_rate\": 16\n}\n");

const QString kClipInfo = QStringLiteral(
    "{\n    \"camera_record_backgroud\": \"\",\n    \"camera_record_shape\": \"square\",\n"
    "    \"device_name\": \"Integrated Camera\",\n    \"file_duration\": %1,\n"
    "    \"frame_rate\": \"30fps\",\n    \"is_camera_zoom\": false,\n"
    "    \"is_use_mirror\": false,\n    \"video_resolution\": \"1280x720\"\n}\n");

QStringList options(const QString& text)
{
    return text.split(QLatin1Char(' '));
}

/** Studio over a takes folder of its own. */
class Bench
{
public:
    Bench()
    {
        m_engine.script().take = "take";
        KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(
            m_folder.path());
        m_window = std::make_unique<StudioWindow>(&m_languages);
        KdUtility::gSetMainWindow(m_window.get());
        m_window->setGeometry(4, 4, 940, 580);
        m_window->openTakes();
        m_window->show();
    }

    ~Bench()
    {
        m_window->voiceOver()->close();
        KdUtility::gSetMainWindow(nullptr);
    }

    StudioWindow* window() const { return m_window.get(); }
    ScriptedEngine& engine() { return m_engine; }
    QString folder() const { return m_folder.path(); }

    /** A spoken take of some seconds, imported as a recorder's. */
    void import(const QString& name, const QString& words, int seconds)
    {
        makeTake(name, words, seconds, {});
        importTake(name, kFileInfo.arg(seconds));
    }

    /** The same before a webcam. */
    void importClip(const QString& name, const QString& words, int seconds)
    {
        const QString picture = m_folder.filePath(QStringLiteral("scene.png"));
        WebcamScene::frame(true).save(picture);
        makeTake(name, words, seconds,
                 options(QStringLiteral("-loop 1 -framerate 30 -i")) + QStringList(picture) +
                     options(QStringLiteral("-c:v libx264 -preset ultrafast -pix_fmt yuv420p")));
        QFile::remove(picture);
        importTake(name, kClipInfo.arg(seconds));
    }

private:
    /** @param picture what brings a picture with the sound */
    void makeTake(const QString& name, const QString& words, int seconds,
                  const QStringList& picture)
    {
        const QString speech = m_folder.filePath(QStringLiteral("speech.wav"));
        TestSound::writeSpeech(speech, words, seconds);
        Command::run(QStringLiteral("ffmpeg"),
                     options(QStringLiteral("-v error -i")) + QStringList(speech) + picture +
                         QStringList{QStringLiteral("-t"), QString::number(seconds),
                                     m_folder.filePath(name)});
        QFile::remove(speech);
    }

    void importTake(const QString& name, const QString& fileInfo)
    {
        m_window->importer()->import(m_folder.filePath(name), fileInfo, QStringLiteral("{\n}\n"));
        const int wanted = ++m_imported;
        Shot::waitFor([this, wanted] { return m_window->library()->count() >= wanted; },
                      "an imported take");
    }

    ScriptedEngine m_engine;
    QTemporaryDir m_folder;
    StudioLanguages m_languages;
    std::unique_ptr<StudioWindow> m_window;
    int m_imported = 0;
};

void importSome(Bench& bench)
{
    bench.import(
        QStringLiteral("REC_20260314_091500.m4a"),
        QStringLiteral("Welcome back. Today we look at how light falls on a table of fruit."), 9);
    bench.import(QStringLiteral("REC_20260314_092210.m4a"),
                 QStringLiteral("And this is how it looks at night."), 5);
    bench.import(QStringLiteral("REC_20260314_093045.m4a"),
                 QStringLiteral("Thank you for watching, and see you in the next part."), 6);
    Shot::letPass(1200);
}

bool clip(Bench& bench, const Shot& shot)
{
    bench.importClip(QStringLiteral("VID_20260314_093512.mp4"),
                     QStringLiteral("Hello, and welcome to a new series from my kitchen."), 7);
    Shot::letPass(2500);
    return shot.take(bench.window(), QStringLiteral("studio-clip"));
}

bool recording(Bench& bench, const Shot& shot)
{
    bench.window()->voiceOver()->open();
    KdFramelessDialog* const view = bench.window()->voiceOver()->view();
    if (!Shot::waitFor([view] { return view->isVisible(); }, "the dialog")) {
        return false;
    }
    view->findChild<KdDoubleSpinBox*>(QStringLiteral("KAudioCapture_CountdownBox"))->setValue(0);
    auto* const button =
        view->findChild<QAbstractButton*>(QStringLiteral("KAudioCapture_RecorderButton"));
    QTest::mouseClick(button, Qt::LeftButton);
    Shot::waitFor([&] { return bench.engine().count("start") > 0; }, "the take");
    bench.engine().deliverTime(12400);
    bench.engine().deliverVolume(58);
    Shot::letPass(600);
    const bool ok = shot.take(bench.window(), QStringLiteral("studio-recording"));
    Shot::letPass(700);
    QTest::mouseClick(button, Qt::LeftButton);
    return ok;
}

bool recovery(Bench& bench, const Shot& shot)
{
    UnfinishedTake take;
    take.record.takePath = bench.folder() + QStringLiteral("/REC_20260314_094107.m4a");
    take.record.started = QDateTime(QDate(2026, 3, 14), QTime(9, 41, 7), Qt::UTC);
    take.bytes = 734003;
    Q_EMIT bench.window()->findChild<StudioRecovery*>()->found({take});
    Shot::letPass(200);
    return shot.take(bench.window(), QStringLiteral("studio-recovery"));
}

KdVBLMODEL::_KdCaptureDevInf device(KdVBLMODEL::_KdDevType type, int index, const QString& name)
{
    return {type, index, name, name};
}

/** The list of devices after the current camera was unplugged, and both pages of settings. */
bool sideWindows(Bench& bench, const Shot& shot)
{
    using namespace KdVBLMODEL;
    EngineScript& script = bench.engine().script();
    const _KdCaptureDevInf lost = device(kdtWebcam, 0, QStringLiteral("USB Camera"));
    script.webcams = {lost, device(kdtWebcam, 1, QStringLiteral("Integrated Camera"))};
    script.microphones = {device(kdtMicrophone, 0, QStringLiteral("USB Microphone")),
                          device(kdtMicrophone, 1, QStringLiteral("Built-in Audio"))};
    StudioSideWindows* const side = bench.window()->sideWindows();
    side->openDevices();
    script.webcams.removeFirst();
    bench.engine().deliverDevice(fcdWebcamRemoved, 0);
    Shot::letPass(300);
    bool ok = shot.take(side->devices(), QStringLiteral("studio-devices"));
    side->openAudioSettings();
    ok = shot.take(side->audioSettings(), QStringLiteral("studio-audio-settings")) && ok;
    side->openVideoSettings();
    ok = shot.take(side->videoSettings(), QStringLiteral("studio-video-settings")) && ok;
    side->closeAll();
    return ok;
}

} // namespace

bool takeStudioShots(const Shot& shot)
{
    bool ok = true;
    {
        Bench empty;
        ok = shot.take(empty.window(), QStringLiteral("studio-empty"));
        ok = sideWindows(empty, shot) && ok;
    }
    {
        Bench withClip;
        importSome(withClip);
        ok = clip(withClip, shot) && ok;
    }
    Bench bench;
    importSome(bench);
    ok = shot.take(bench.window(), QStringLiteral("studio-takes")) && ok;
    ok = recording(bench, shot) && ok;
    bench.window()->voiceOver()->close();
    Shot::letPass(300);
    return recovery(bench, shot) && ok;
}
