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

QWidget* open()
{
    return new KdAudioRecordView(nullptr);
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
    const RecorderManual manual{"voice-over",
                                open,
                                "KAudioCapture_RecorderButton",
                                "KAudioCapture_CountdownBox",
                                "KAudioCapture_ButtonPause",
                                "KAudioCapture_ButtonReRecord",
                                "KdCountCtrl"};
    return takeScenes(manual) +
           UserScenes{{"advanced settings", UserScene::Window, advanced},
                      {"advanced settings' tip", UserScene::Passing, advancedTip},
                      {"advanced settings' toast", UserScene::Passing, advancedToast},
                      {"video settings", UserScene::Window, video}};
}
