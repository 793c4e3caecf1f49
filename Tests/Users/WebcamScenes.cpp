#include "RecorderScenes.h"

#include <KdRecord/KdWebcamRecordView.h>

#include <Support/DialogDriver.h>

namespace {

QWidget* open()
{
    auto* const view = new KdWebcamRecordView(nullptr);
    view->initDevices();
    return view;
}

void strip(const UserScene::Look& look)
{
    RecorderStage stage;
    stage.setView(open());
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

} // namespace

UserScenes webcamScenes()
{
    const RecorderManual manual{"webcam",
                                open,
                                "KProDlg_KCameraCptBtn",
                                "KCameraCapture_CountdownBox",
                                "KCameraCapture_ButtonPause",
                                "KCameraCapture_ButtonReRecord",
                                "KdCountCtrlVideo"};
    return takeScenes(manual) + UserScenes{{"webcam's strip", UserScene::Window, strip}};
}
