#include "RecorderScenes.h"

#include <functional>

namespace {

using Act = std::function<void(RecorderStage& stage)>;

UserScene scene(const char* suffix, UserScene::Kind kind, const RecorderManual& manual,
                const Act& act, bool withDevices = true)
{
    const auto show = [manual, act, withDevices](const UserScene::Look& look) {
        RecorderStage stage(withDevices);
        stage.setView(manual.open());
        act(stage);
        look(*stage.view());
    };
    return {manual.name + QByteArray(suffix), kind, show};
}

/** A take runs; then a button is pressed that brings a window of that class up. */
Act press(const RecorderManual& manual, const char* button, const char* className)
{
    return [manual, button, className](RecorderStage& stage) {
        stage.record(manual.start, manual.seconds);
        stage.press(button);
        RecorderStage::waitForWindow(className);
    };
}

} // namespace

UserScenes takeScenes(const RecorderManual& manual)
{
    const Act nothing = [](RecorderStage&) {};
    const Act count = [manual](RecorderStage& stage) {
        stage.setCountdown(manual.seconds, 9);
        stage.press(manual.start);
        RecorderStage::waitForWindow(manual.countdown);
    };
    const Act record = [manual](RecorderStage& stage) {
        stage.record(manual.start, manual.seconds);
    };
    return {scene("", UserScene::Window, manual, nothing),
            scene(" without a device", UserScene::Window, manual, nothing, false),
            scene(" counting down", UserScene::Window, manual, count),
            scene(" recording", UserScene::Window, manual, record),
            scene(" paused", UserScene::Passing, manual, press(manual, manual.pause, "KdToast")),
            scene(" about to record again", UserScene::Passing, manual,
                  press(manual, manual.again, "KdPopovers"))};
}
