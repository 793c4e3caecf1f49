#include "VoiceOverShots.h"

#include "DialogStage.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KAudioSettings.h>
#include <KdRecord/KComboboxExt.h>
#include <KdRecord/KQuestionLabel.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <Support/ScriptedEngine.h>
#include <Support/SmallDisk.h>

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <memory>

namespace {

/** An open dialog over an engine that answers as told. */
class Stage : public DialogStage
{
public:
    explicit Stage(bool withDevice = true)
    {
        if (!withDevice) {
            m_engine.script().microphones.clear();
        }
        m_engine.script().take = "take";
        useFolder(QDir::tempPath() + QStringLiteral("/Project/Voice-over"));
        m_view = new KdAudioRecordView(nullptr);
        m_view->doModal();
        setDialog(m_view);
    }

    ~Stage() { delete m_view; }

    ScriptedEngine& engine() { return m_engine; }
    KdAudioRecordView* view() const { return m_view; }

    void useFolder(const QString& folder)
    {
        KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(
            folder);
    }

    void setCountdown(int seconds)
    {
        m_view->findChild<KdDoubleSpinBox*>(QStringLiteral("KAudioCapture_CountdownBox"))
            ->setValue(seconds);
    }

    void record()
    {
        setCountdown(0);
        press(QStringLiteral("KAudioCapture_RecorderButton"));
        Shot::waitFor([this] { return m_engine.count("start") > 0; }, "the take");
        m_engine.deliverTime(83000);
        m_engine.deliverVolume(64);
        Shot::letPass(300);
    }

private:
    ScriptedEngine m_engine;
    QPointer<KdAudioRecordView> m_view;
};

bool idle(const Shot& shot)
{
    const Stage stage;
    return shot.take(stage.view(), QStringLiteral("voice-over-idle"));
}

bool focused(const Shot& shot)
{
    const Stage stage;
    Shot::waitFor([&] { return stage.view()->isActiveWindow(); }, "the active window");
    stage.view()
        ->findChild<QWidget*>(QStringLiteral("KAudioCapture_DeviceBox"))
        ->setFocus(Qt::TabFocusReason);
    return shot.take(stage.view(), QStringLiteral("voice-over-focus"));
}

bool noDevice(const Shot& shot)
{
    const Stage stage(false);
    return shot.take(stage.view(), QStringLiteral("voice-over-no-device"));
}

bool counting(const Shot& shot)
{
    Stage stage;
    stage.setCountdown(3);
    stage.press(QStringLiteral("KAudioCapture_RecorderButton"));
    Shot::letPass(800);
    const bool ok = shot.take(stage.view(), QStringLiteral("voice-over-countdown"));
    stage.press(QStringLiteral("KAudioCapture_pButtonStop"));
    return ok;
}

bool recordingAndPaused(const Shot& shot)
{
    Stage stage;
    stage.record();
    bool ok = shot.take(stage.view(), QStringLiteral("voice-over-recording"));
    stage.press(QStringLiteral("KAudioCapture_ButtonReRecord"));
    Stage::waitForWindow(QStringLiteral("KdPopovers"));
    ok = shot.take(stage.view(), QStringLiteral("voice-over-re-record")) && ok;
    if (QWidget* const popover = Stage::visibleWindow(QStringLiteral("KdPopovers"))) {
        popover->close();
    }
    stage.press(QStringLiteral("KAudioCapture_ButtonPause"));
    Stage::waitForWindow(QStringLiteral("KdToast"));
    return shot.take(stage.view(), QStringLiteral("voice-over-paused")) && ok;
}

bool tooShort(const Shot& shot)
{
    Stage stage;
    stage.setCountdown(0);
    stage.press(QStringLiteral("KAudioCapture_RecorderButton"));
    Shot::waitFor([&] { return stage.engine().count("start") > 0; }, "the take");
    QCoreApplication::processEvents();
    stage.shootWhenShown(shot, QStringLiteral("KOldMessageDialog"),
                         QStringLiteral("voice-over-message-too-short"));
    stage.press(QStringLiteral("KAudioCapture_RecorderButton"));
    return stage.ok();
}

bool noPermission(const Shot& shot)
{
    Stage stage;
    stage.useFolder(QStringLiteral("/proc/takes"));
    stage.shootWhenShown(shot, QStringLiteral("KOldMessageDialog"),
                         QStringLiteral("voice-over-message-permission"));
    stage.press(QStringLiteral("KAudioCapture_RecorderButton"));
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
    stage.useFolder(folder);
    stage.shootWhenShown(shot, QStringLiteral("KOldMessageDialog"),
                         QStringLiteral("voice-over-message-little-space"));
    stage.press(QStringLiteral("KAudioCapture_RecorderButton"));
    return stage.ok();
}

bool startFails(const Shot& shot)
{
    Stage stage;
    stage.setCountdown(0);
    stage.engine().fail("start");
    stage.shootWhenShown(shot, QStringLiteral("KOldMessageDialog"),
                         QStringLiteral("voice-over-message-device-issue"));
    stage.press(QStringLiteral("KAudioCapture_RecorderButton"));
    Shot::waitFor([&] { return stage.engine().count("start") > 0; }, "the start");
    QCoreApplication::processEvents();
    return stage.ok();
}

bool deviceLost(const Shot& shot)
{
    Stage stage;
    stage.record();
    Shot::letPass(1000);
    stage.shootWhenShown(shot, QStringLiteral("KOldMessageDialog"),
                         QStringLiteral("voice-over-message-device-lost"));
    stage.engine().deliverDevice(KdVBLMODEL::fcdAudioInputRemoved, 0);
    Shot::letPass(1500);
    return stage.ok();
}

bool diskFull(const Shot& shot)
{
    Stage stage;
    const QString folder = QDir::tempPath() + QStringLiteral("/Project/Full");
    stage.useFolder(folder);
    stage.record();
    Shot::letPass(1000);
    // The take's disk is a full one from now on.
    const SmallDisk disk(folder, 4096);
    QFile take(stage.engine().lastCall("setOutputFile").argument<QString>(0));
    if (!disk.isMounted() || !take.open(QIODevice::WriteOnly)) {
        return false;
    }
    stage.shootWhenShown(shot, QStringLiteral("KOldMessageDialog"),
                         QStringLiteral("voice-over-message-disk-full"));
    stage.engine().script().status = [](int) { return int(KdVBLMODEL::fcsEnded); };
    stage.waitForShot();
    return stage.ok();
}

bool shootAdvancedSettings(const Shot& shot, QWidget* dialog, KAudioSettings* page)
{
    bool ok = shot.take(dialog, QStringLiteral("advanced-settings"));
    if (auto* const question = dialog->findChild<KQuestionLabel*>()) {
        QTest::mouseMove(question, question->rect().center());
        Stage::waitForWindow(QStringLiteral("KdTipWidget"));
        ok = shot.take(dialog, QStringLiteral("advanced-settings-tip")) && ok;
        QTest::mouseMove(dialog, QPoint(5, 5));
        Shot::waitFor([] { return Stage::visibleWindow(QStringLiteral("KdTipWidget")) == nullptr; },
                      "the tip's end");
    }
    const QList<KdComboBox*> boxes = page->findChildren<KdComboBox*>();
    boxes.at(2)->showPopup();
    Shot::letPass(200);
    ok = shot.take(dialog, QStringLiteral("advanced-settings-list")) && ok;
    boxes.at(2)->hidePopup();

    _AudioAdvanceData data = page->data();
    data.channels = 1;
    data.sampleRate = 22050;
    data.bitrate = 512;
    data.bitrateMode = 1;
    page->loadData(data);
    boxes.last()->setCurrentIndex(boxes.last()->findData(2));
    Stage::waitForWindow(QStringLiteral("KdToast"));
    return shot.take(dialog, QStringLiteral("advanced-settings-toast")) && ok;
}

} // namespace

bool takeVoiceOverShots(const Shot& shot)
{
    bool ok = true;
    for (const auto& state : {idle, focused, noDevice, counting, recordingAndPaused, tooShort,
                              noPermission, littleSpace, startFails, deviceLost, diskFull}) {
        ok = state(shot) && ok;
    }
    return ok;
}

bool takeAdvancedSettingsShots(const Shot& shot)
{
    Stage stage;
    bool ok = false;
    auto* const poll = new QTimer(stage.view());
    QObject::connect(poll, &QTimer::timeout, poll, [&] {
        auto* const page = stage.view()->findChild<KAudioSettings*>();
        if (!page || !page->isVisible()) {
            return;
        }
        poll->stop();
        ok = shootAdvancedSettings(shot, page->window(), page);
        page->window()->close();
    });
    poll->start(50);
    stage.press(QStringLiteral("KAudioCapture_ButtonAdvance"));
    return ok;
}
