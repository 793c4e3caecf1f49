#include "RecorderScenes.h"

#include <KdRecord/KdOutputFolderCheck.h>
#include <KdRecord/KdRecordNotices.h>

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

const QString kMicrophone = QStringLiteral("Mic A");
const QString kCamera = QStringLiteral("Cam A");

} // namespace

UserScenes messageScenes(const std::unique_ptr<WindowAnswers>& answers)
{
    using Notices = KdRecordNotices;
    return {
        tip(),
        message("no device", answers, [](Notices& n, QWidget&) { n.tellNoDevice(); }),
        message("start failed", answers, [](Notices& n, QWidget&) { n.tellStartFailed(); }),
        message("too short", answers, [](Notices& n, QWidget&) { n.tellTooShort(); }),
        message("disk full", answers, [](Notices& n, QWidget&) { n.tellDiskFull(); }),
        message("webcam in use", answers, [](Notices& n, QWidget&) { n.tellWebcamOccupied(); }),
        message("microphone lost", answers,
                [](Notices& n, QWidget&) { n.tellDeviceLost(kMicrophone); }),
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
