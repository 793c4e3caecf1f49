#include "RecorderScenes.h"

#include <KdRecord/KAdvanceSettings.h>
#include <KdRecord/KAudioSettings.h>
#include <KdRecord/KQuestionLabel.h>
#include <KdRecord/KVideoSettings.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdWidgets/KdFramelessDialog.h>

#include <QComboBox>
#include <QVBoxLayout>

namespace {

constexpr const char* kStart = "KAudioCapture_RecorderButton";
constexpr const char* kSeconds = "KAudioCapture_CountdownBox";

void open(RecorderStage& stage)
{
    stage.setView(new KdAudioRecordView(nullptr));
}

void idle(const UserScene::Look& look)
{
    RecorderStage stage;
    open(stage);
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
    RecorderStage::waitForWindow("KdCountCtrl");
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
    stage.press("KAudioCapture_ButtonPause");
    RecorderStage::waitForWindow("KdToast");
    look(*stage.view());
}

void reRecord(const UserScene::Look& look)
{
    RecorderStage stage;
    open(stage);
    stage.record(kStart, kSeconds);
    stage.press("KAudioCapture_ButtonReRecord");
    RecorderStage::waitForWindow("KdPopovers");
    look(*stage.view());
}

/** As the voice-over's dialog shows it. */
void openAdvanced(RecorderStage& stage)
{
    auto* const dialog = new KAdvanceSettings;
    dialog->setFixedSize(480, 473);
    stage.setView(dialog);
}

void advanced(const UserScene::Look& look)
{
    RecorderStage stage;
    openAdvanced(stage);
    look(*stage.view());
}

void advancedTip(const UserScene::Look& look)
{
    RecorderStage stage;
    openAdvanced(stage);
    stage.view()->findChild<KQuestionLabel*>()->setFocus(Qt::TabFocusReason);
    RecorderStage::waitForWindow("KdTipWidget");
    look(*stage.view());
}

void advancedToast(const UserScene::Look& look)
{
    RecorderStage stage;
    openAdvanced(stage);
    auto* const page = stage.view()->findChild<KAudioSettings*>();
    page->loadData({0x20434141, 1, 22050, 512, 1, true});
    auto* const mode = page->findChild<QWidget*>(QStringLiteral("KAudioSettings_BitrateMode"));
    mode->findChild<QComboBox*>()->setCurrentIndex(1);
    RecorderStage::waitForWindow("KdToast");
    look(*stage.view());
}

void video(const UserScene::Look& look)
{
    RecorderStage stage;
    auto* const dialog = new KdFramelessDialog;
    dialog->setButtonBarVisible(false);
    auto* const content = new QWidget(dialog);
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(32, 12, 32, 32);
    layout->addWidget(new KVideoSettings(content));
    dialog->setContentWidget(content);
    dialog->setFixedSize(480, 400);
    stage.setView(dialog);
    look(*dialog);
}

} // namespace

UserScenes voiceOverScenes()
{
    return {{"voice-over", UserScene::Window, idle},
            {"voice-over without a device", UserScene::Window, noDevice},
            {"voice-over counting down", UserScene::Window, counting},
            {"voice-over recording", UserScene::Window, recording},
            {"voice-over paused", UserScene::Passing, paused},
            {"voice-over about to record again", UserScene::Passing, reRecord},
            {"advanced settings", UserScene::Window, advanced},
            {"advanced settings' tip", UserScene::Passing, advancedTip},
            {"advanced settings' toast", UserScene::Passing, advancedToast},
            {"video settings", UserScene::Window, video}};
}
