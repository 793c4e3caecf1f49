#include "RecorderScenes.h"

#include <KdRecord/KdWebcamRecordView.h>

#include <Support/DialogDriver.h>

namespace {

constexpr const char* kStart = "KProDlg_KCameraCptBtn";
constexpr const char* kSeconds = "KCameraCapture_CountdownBox";

void open(RecorderStage& stage)
{
    auto* const view = new KdWebcamRecordView(nullptr);
    view->initDevices();
    stage.setView(view);
}

void preview(const UserScene::Look& look)
{
    RecorderStage stage;
    open(stage);
    look(*stage.view());
}

void strip(const UserScene::Look& look)
{
    RecorderStage stage;
    open(stage);
    auto* const picture =
        stage.view()->findChild<QWidget*>(QStringLiteral("KCameraCapture_Display"));
    picture->clearFocus();
    picture->setFocus(Qt::TabFocusReason);
    DialogDriver::waitUntil(
        [picture] {
            return picture->findChild<QWidget*>(QStringLiteral("KRecorder_Mirror_RoundBtn"))
                ->isVisible();
        },
        QStringLiteral("the strip"));
    look(*stage.view());
}

void noDevice(const UserScene::Look& look)
{
    RecorderStage stage(false);
    open(stage);
    look(*stage.view());
}

void counting(const UserScene::Look& look)
{
    RecorderStage stage;
    open(stage);
    stage.setCountdown(kSeconds, 9);
    stage.press(kStart);
    RecorderStage::waitForWindow("KdCountCtrlVideo");
    look(*stage.view());
}

void recording(const UserScene::Look& look)
{
    RecorderStage stage;
    open(stage);
    stage.record(kStart, kSeconds);
    look(*stage.view());
}

void paused(const UserScene::Look& look)
{
    RecorderStage stage;
    open(stage);
    stage.record(kStart, kSeconds);
    stage.press("KCameraCapture_ButtonPause");
    RecorderStage::waitForWindow("KdToast");
    look(*stage.view());
}

void reRecord(const UserScene::Look& look)
{
    RecorderStage stage;
    open(stage);
    stage.record(kStart, kSeconds);
    stage.press("KCameraCapture_ButtonReRecord");
    RecorderStage::waitForWindow("KdPopovers");
    look(*stage.view());
}

} // namespace

UserScenes webcamScenes()
{
    return {{"webcam", UserScene::Window, preview},
            {"webcam's strip", UserScene::Window, strip},
            {"webcam without a device", UserScene::Window, noDevice},
            {"webcam counting down", UserScene::Window, counting},
            {"webcam recording", UserScene::Window, recording},
            {"webcam paused", UserScene::Passing, paused},
            {"webcam about to record again", UserScene::Passing, reRecord}};
}
