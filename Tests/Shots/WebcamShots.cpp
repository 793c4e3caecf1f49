#include "WebcamShots.h"

#include "DialogStage.h"
#include "WebcamScene.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdWebcamRecordView.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdZentraCore/KdConfigEngine.h>
#include <Studio/StudioLanguages.h>
#include <Support/ScriptedEngine.h>
#include <Support/SmallDisk.h>

#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QTest>
#include <QTimer>

#include <utility>

using namespace KdVBLMODEL;

namespace {

const QString kMessage = QStringLiteral("KOldMessageDialog");
const QString kRecord = QStringLiteral("KProDlg_KCameraCptBtn");
constexpr int kFrameMs = 100;

/** The open dialog over an engine whose camera sees somebody in a room. */
class Stage : public DialogStage
{
public:
    explicit Stage(bool withDevices = true)
    {
        if (withDevices) {
            bringDevices();
        } else {
            takeDevices();
        }
        m_engine.script().take = "take";
        forgetOptions();
        useFolder(QDir::tempPath() + QStringLiteral("/Project/Webcam"));
        m_view = new KdWebcamRecordView(nullptr);
        m_view->initDevices();
        m_view->move(4, 4);
        m_view->show();
        setDialog(m_view);
        startCamera();
    }

    ~Stage() { delete m_view; }

    ScriptedEngine& engine() { return m_engine; }
    KdWebcamRecordView* view() const { return m_view; }

    static void useFolder(const QString& folder)
    {
        KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetCaptureFileFolder(
            folder);
    }

    void showPersonAlone() { m_frame = WebcamScene::frame(false); }

    void setCountdown(int seconds)
    {
        child<KdDoubleSpinBox>("KCameraCapture_CountdownBox")->setValue(seconds);
    }

    void enterPicture()
    {
        QEvent event(QEvent::Enter);
        QCoreApplication::sendEvent(child<QWidget>("KCameraCapture_Display"), &event);
    }

    template <typename T>
    T* child(const char* name) const
    {
        return m_view->findChild<T*>(QLatin1String(name));
    }

    /** Starts a take, and lets the minimum length of one pass. */
    void record()
    {
        setCountdown(0);
        press(kRecord);
        Shot::waitFor([this] { return m_engine.count("start") > 0; }, "the take");
        m_engine.deliverTime(83000);
        m_engine.deliverVolume(22);
        Shot::letPass(1300);
        m_engine.deliverVolume(22);
        Shot::letPass(100);
    }

    void loseCamera() { m_engine.script().webcams.removeFirst(); }
    void loseMicrophone() { m_engine.script().microphones.removeFirst(); }

    /** Takes the message that a report brings. */
    bool shootMessageOf(const Shot& shot, int report, const QString& name)
    {
        shootWhenShown(shot, kMessage, name);
        m_engine.deliverDevice(report, 0);
        waitForShot();
        return ok();
    }

private:
    void bringDevices()
    {
        m_engine.script().webcams = {
            {kdtWebcam, 0, QStringLiteral("Integrated Camera"), QStringLiteral("camera-1")},
            {kdtWebcam, 1, QStringLiteral("USB Camera"), QStringLiteral("camera-2")}};
        m_engine.script().microphones = {
            {kdtMicrophone, 0, QStringLiteral("USB Microphone"), QStringLiteral("microphone-1")},
            {kdtMicrophone, 1, QStringLiteral("Headset"), QStringLiteral("microphone-2")}};
        m_engine.script().resolutions = {QSize(1280, 720), QSize(640, 480)};
    }

    void takeDevices()
    {
        m_engine.script().webcams.clear();
        m_engine.script().microphones.clear();
    }

    /** As chosen in the preview of an earlier stage. */
    static void forgetOptions()
    {
        auto* const config = KdConfigEngine::instance();
        const QString group = QStringLiteral("WebCamFuncConfig");
        config->setValue(1, group, QStringLiteral("WebCamFuncShape"), int(fcrsSquare));
        config->setValue(1, group, QStringLiteral("WebCamFuncBackground"), int(fcbmNone));
        config->setValue(1, group, QStringLiteral("WebCamFuncFlip"), false);
    }

    void startCamera()
    {
        QObject::connect(&m_camera, &QTimer::timeout, &m_camera, [this] {
            if (m_engine.isPreviewing()) {
                m_engine.deliverFrame(m_frame);
            }
        });
        m_camera.start(kFrameMs);
        Shot::letPass(4 * kFrameMs);
    }

    ScriptedEngine m_engine;
    QImage m_frame = WebcamScene::frame(true);
    QTimer m_camera;
    QPointer<KdWebcamRecordView> m_view;
};

bool preview(const Shot& shot)
{
    const Stage stage;
    return shot.take(stage.view(), QStringLiteral("webcam-preview"));
}

bool focused(const Shot& shot)
{
    const Stage stage;
    Shot::waitFor([&] { return stage.view()->isActiveWindow(); }, "the active window");
    auto* const picture = stage.child<QWidget>("KCameraCapture_Display");
    // It may have the focus already, but not by the Tab key.
    picture->clearFocus();
    picture->setFocus(Qt::TabFocusReason);
    return shot.take(stage.view(), QStringLiteral("webcam-focus"));
}

bool noDevice(const Shot& shot)
{
    const Stage stage(false);
    return shot.take(stage.view(), QStringLiteral("webcam-no-device"));
}

bool openList(const Shot& shot)
{
    const Stage stage;
    auto* const sizes = stage.child<QComboBox>("KCameraCapture_ResolutionBox");
    sizes->showPopup();
    Shot::letPass(200);
    const bool ok = shot.take(stage.view(), QStringLiteral("webcam-list"));
    sizes->hidePopup();
    return ok;
}

bool strip(const Shot& shot)
{
    Stage stage;
    stage.enterPicture();
    bool ok = shot.take(stage.view(), QStringLiteral("webcam-strip"));
    stage.press(QStringLiteral("KRecorder_Blurred_RoundBtn"));
    ok = shot.take(stage.view(), QStringLiteral("webcam-strip-blur")) && ok;
    stage.press(QStringLiteral("KRecorder_Mirror_RoundBtn"));
    ok = shot.take(stage.view(), QStringLiteral("webcam-strip-flip")) && ok;
    stage.press(QStringLiteral("KRecorder_Circle_RoundBtn"));
    ok = shot.take(stage.view(), QStringLiteral("webcam-strip-circle")) && ok;
    stage.press(QStringLiteral("KRecorder_Removal_RoundBtn"));
    stage.showPersonAlone();
    Shot::letPass(2 * kFrameMs);
    return shot.take(stage.view(), QStringLiteral("webcam-strip-remove")) && ok;
}

bool counting(const Shot& shot)
{
    Stage stage;
    stage.setCountdown(3);
    stage.press(kRecord);
    Shot::letPass(800);
    const bool ok = shot.take(stage.view(), QStringLiteral("webcam-countdown"));
    stage.press(kRecord);
    return ok;
}

bool recordingAndPaused(const Shot& shot)
{
    Stage stage;
    stage.record();
    bool ok = shot.take(stage.view(), QStringLiteral("webcam-recording"));
    stage.press(QStringLiteral("KCameraCapture_ButtonReRecord"));
    Stage::waitForWindow(QStringLiteral("KdPopovers"));
    ok = shot.take(stage.view(), QStringLiteral("webcam-re-record")) && ok;
    if (QWidget* const popover = Stage::visibleWindow(QStringLiteral("KdPopovers"))) {
        popover->close();
    }
    stage.press(QStringLiteral("KCameraCapture_ButtonPause"));
    Stage::waitForWindow(QStringLiteral("KdToast"));
    return shot.take(stage.view(), QStringLiteral("webcam-paused")) && ok;
}

// Messages

bool occupied(const Shot& shot)
{
    Stage stage;
    return stage.shootMessageOf(shot, fcdWebcamOccupied, QStringLiteral("webcam-message-occupied"));
}

bool noPermission(const Shot& shot)
{
    Stage stage;
    Stage::useFolder(QStringLiteral("/proc/clips"));
    stage.shootWhenShown(shot, kMessage, QStringLiteral("webcam-message-permission"));
    stage.press(kRecord);
    return stage.ok();
}

bool littleSpace(const Shot& shot)
{
    Stage stage;
    const QString folder = QDir::tempPath() + QStringLiteral("/Project/Nearly full");
    const SmallDisk disk(folder, 4096);
    if (!disk.isMounted()) {
        return false;
    }
    Stage::useFolder(folder);
    stage.shootWhenShown(shot, kMessage, QStringLiteral("webcam-message-little-space"));
    stage.press(kRecord);
    return stage.ok();
}

bool tooShort(const Shot& shot)
{
    Stage stage;
    stage.setCountdown(0);
    stage.press(kRecord);
    Shot::waitFor([&] { return stage.engine().count("start") > 0; }, "the take");
    QCoreApplication::processEvents();
    stage.shootWhenShown(shot, kMessage, QStringLiteral("webcam-message-too-short"));
    stage.press(kRecord);
    return stage.ok();
}

bool startFails(const Shot& shot)
{
    Stage stage;
    stage.setCountdown(0);
    stage.engine().fail("start");
    stage.shootWhenShown(shot, kMessage, QStringLiteral("webcam-message-start-failed"));
    stage.press(kRecord);
    stage.waitForShot();
    return stage.ok();
}

bool cameraLost(const Shot& shot)
{
    Stage stage;
    stage.record();
    stage.loseCamera();
    return stage.shootMessageOf(shot, fcdWebcamRemoved,
                                QStringLiteral("webcam-message-camera-lost"));
}

bool microphoneLost(const Shot& shot)
{
    Stage stage;
    stage.loseMicrophone();
    return stage.shootMessageOf(shot, fcdAudioInputRemoved,
                                QStringLiteral("webcam-message-microphone-lost"));
}

bool bothLost(const Shot& shot)
{
    Stage stage;
    stage.loseCamera();
    stage.loseMicrophone();
    return stage.shootMessageOf(shot, fcdWebcamRemoved, QStringLiteral("webcam-message-both-lost"));
}

bool diskFull(const Shot& shot)
{
    Stage stage;
    const QString folder = QDir::tempPath() + QStringLiteral("/Project/Full");
    const SmallDisk disk(folder, 4096);
    if (!disk.isMounted()) {
        return false;
    }
    stage.record();
    // The take fits nowhere now: its folder is where little space is left.
    Stage::useFolder(folder);
    stage.shootWhenShown(shot, kMessage, QStringLiteral("webcam-message-disk-full"));
    stage.engine().script().status = [](int) { return int(fcsEnded); };
    stage.waitForShot();
    return stage.ok();
}

bool languages(const Shot& shot)
{
    StudioLanguages languages;
    bool ok = true;
    for (const char* const code : {"de", "zh_CN"}) {
        const QString name = QLatin1String(code);
        ok = languages.use(name) && ok;
        const Stage stage;
        ok = shot.take(stage.view(), QStringLiteral("webcam-preview-") + name.left(2)) && ok;
    }
    return languages.use(QStringLiteral("en")) && ok;
}

} // namespace

bool takeWebcamShots(const Shot& shot)
{
    bool ok = true;
    for (const auto& state :
         {preview, focused, noDevice, openList, strip, counting, recordingAndPaused, occupied,
          noPermission, littleSpace, tooShort, startFails, cameraLost, microphoneLost, bothLost,
          diskFull, languages}) {
        ok = state(shot) && ok;
    }
    return ok;
}
