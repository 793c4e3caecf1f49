#include "RecorderScenes.h"

#include <KdRecord/KAdvanceSettings.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdRecord/KdOutputFolderCheck.h>
#include <KdRecord/KdRecordNotices.h>

#include <QComboBox>

namespace {

using Tell = std::function<void(KdRecordNotices& notices, QWidget& panel)>;

UserScene message(const char* name, const std::unique_ptr<WindowAnswers>& answers, const Tell& tell)
{
    const auto show = [&answers, tell](const UserScene::Look& look) {
        QWidget panel;
        panel.resize(480, 320);
        RecorderStage::show(&panel);
        answers->handle(QStringLiteral("KOldMessageDialog"), [&look](QWidget& shown) {
            look(shown);
            shown.close();
        });
        KdRecordNotices notices(&panel);
        tell(notices, panel);
    };
    return {name, UserScene::Passing, show};
}

UserScene tip()
{
    const auto show = [](const UserScene::Look& look) {
        QWidget panel;
        panel.resize(480, 320);
        RecorderStage::show(&panel);
        KdRecordNotices notices(&panel);
        notices.showAdded(&panel);
        RecorderStage::waitForWindow("KdTipWidget");
        look(panel);
    };
    return {"tip after a take", UserScene::Passing, show};
}

template <typename Dialog>
UserScene list(const char* name, const QSize& size, const char* owner)
{
    const auto show = [size, owner](const UserScene::Look& look) {
        RecorderStage stage;
        auto* const dialog = new Dialog(nullptr);
        dialog->setFixedSize(size);
        stage.setView(dialog);
        auto* const widget = stage.view()->findChild<QWidget*>(QLatin1String(owner));
        auto* const own = qobject_cast<QComboBox*>(widget);
        auto* const box = own ? own : widget->findChild<QComboBox*>();
        box->showPopup();
        RecorderStage::waitForWindow("QComboBoxPrivateContainer");
        look(*stage.view());
        box->hidePopup();
    };
    return {name, UserScene::Passing, show};
}

const QString kMicrophone = QStringLiteral("Mic A");
const QString kCamera = QStringLiteral("Cam A");

} // namespace

UserScenes messageScenes(const std::unique_ptr<WindowAnswers>& answers)
{
    using Notices = KdRecordNotices;
    return {
        tip(),
        list<KdAudioRecordView>("voice-over's list", {480, 448}, "KAudioCapture_InputBox"),
        list<KAdvanceSettings>("advanced settings' list", {480, 473}, "KAudioSettings_Channel"),
        message("no device", answers, [](Notices& n, QWidget&) { n.tellNoDevice(); }),
        message("start failed", answers, [](Notices& n, QWidget&) { n.tellStartFailed(); }),
        message("too short", answers, [](Notices& n, QWidget&) { n.tellTooShort(); }),
        message("disk full", answers, [](Notices& n, QWidget&) { n.tellTakeEnded(true); }),
        message("webcam in use", answers, [](Notices& n, QWidget&) { n.tellWebcamOccupied(); }),
        message("microphone lost", answers,
                [](Notices& n, QWidget&) { n.tellDeviceLost(kMicrophone); }),
        message("camera lost", answers,
                [](Notices& n, QWidget&) { n.tellDevicesLost(kCamera, std::nullopt); }),
        message("both lost", answers,
                [](Notices& n, QWidget&) { n.tellDevicesLost(kCamera, kMicrophone); }),
        message("no permission", answers,
                [](Notices&, QWidget& panel) { KdOutputFolderCheck::tellNoPermission(&panel); }),
        message("little space", answers, [](Notices&, QWidget& panel) {
            const QTemporaryDir folder;
            KdOutputFolderCheck([](const QString&) {
                return qint64(400);
            }).mayRecordInto(folder.path(), &panel);
        })};
}
