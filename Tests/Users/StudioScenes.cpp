#include "StudioScenes.h"

#include <KdVBLModel/KdTrackEvent.h>
#include <Studio/StudioRecordSession.h>
#include <Studio/StudioUsageView.h>

#include <Support/DialogDriver.h>

#include <QCoreApplication>
#include <QMenu>
#include <QPointer>
#include <QTabWidget>
#include <QToolButton>

#include <functional>

namespace {

using Show = std::function<void(StudioStage& stage)>;

UserScene window(const char* name, StudioLanguages& languages, const Show& show)
{
    return {name, UserScene::Window, [&languages, show](const UserScene::Look& look) {
                StudioStage stage(languages);
                show(stage);
                look(stage.window());
            }};
}

UserScene take(const char* name, StudioLanguages& languages, StudioStage::Row row)
{
    return window(name, languages, [row](StudioStage& stage) {
        stage.addTakes();
        stage.choose(row);
    });
}

void failToRepair(StudioStage& stage)
{
    stage.findUnfinished(1);
    // The take that was found is not there: somebody has dealt with it in the meantime.
    DialogDriver::click(stage.window(), QStringLiteral("Studio_RecoveryRepair"));
    auto* const again =
        DialogDriver::child(stage.window(), QStringLiteral("Studio_RecoveryRepair"));
    DialogDriver::waitUntil([again] { return again->isEnabled(); },
                            QStringLiteral("the end of the repair"));
}

/** The recorder's dialog, which has scenes of its own, stays away. */
void record(StudioStage& stage)
{
    stage.addTakes();
    stage.choose(StudioStage::Spoken);
    StudioRecordSession* const session = stage.window().voiceOver();
    Q_EMIT session->mute(true);
    Q_EMIT session->lockChanged(true);
    Q_EMIT session->takeStarted(false);
    Q_EMIT session->takeRuns(12000);
}

void showUsage(StudioStage& stage)
{
    stage.window().findChild<QTabWidget*>(QStringLiteral("Studio_Tabs"))->setCurrentIndex(1);
    QCoreApplication::processEvents();
}

void showSomeUsage(StudioStage& stage)
{
    KdTrackEvent(QStringLiteral("record_expose")).sendEvent();
    KdTrackEvent(QStringLiteral("record_click")).sendEvent();
    showUsage(stage);
    stage.window().findChild<StudioUsageView*>()->setCurrentRow(0);
}

UserScene menu(const char* name, StudioLanguages& languages, const char* button)
{
    const auto show = [&languages, button](const UserScene::Look& look) {
        StudioStage stage(languages);
        auto* const opener = stage.window().findChild<QToolButton*>(QString::fromLatin1(button));
        // As a press does, which returns only when the menu is closed.
        opener->menu()->popup(opener->mapToGlobal(opener->rect().bottomLeft()));
        look(*opener->menu());
        opener->menu()->close();
    };
    return {name, UserScene::Passing, show};
}

UserScene question(const char* name, StudioLanguages& languages)
{
    const auto show = [&languages](const UserScene::Look& look) {
        StudioStage stage(languages);
        stage.findUnfinished(1);
        DialogDriver::click(stage.window(), QStringLiteral("Studio_RecoveryDiscard"));
        // It deletes itself when it is closed, which the window manager can do as well.
        const QPointer<QWidget> popover =
            DialogDriver::child(stage.window(), QStringLiteral("KdPopovers"));
        DialogDriver::waitUntil([&popover] { return popover && popover->isVisible(); },
                                QStringLiteral("the question"));
        look(*popover);
        if (popover) {
            popover->close();
        }
    };
    return {name, UserScene::Passing, show};
}

} // namespace

UserScenes studioScenes(StudioLanguages& languages)
{
    using Stage = StudioStage;
    return {
        window("Studio without takes", languages, [](Stage&) {}),
        window("Studio with takes, none chosen", languages, [](Stage& stage) { stage.addTakes(); }),
        take("Studio with a voice-over", languages, Stage::Spoken),
        take("Studio with a webcam clip", languages, Stage::Clip),
        take("Studio with a missing take", languages, Stage::Missing),
        take("Studio with an unreadable take", languages, Stage::Unreadable),
        take("Studio with a recovered take", languages, Stage::Recovered),
        window("Studio after a crash", languages, [](Stage& stage) { stage.findUnfinished(1); }),
        window("Studio after several crashes", languages,
               [](Stage& stage) { stage.findUnfinished(3); }),
        window("Studio after a repair that failed", languages, failToRepair),
        window("Studio while a take runs", languages, record),
        window("Studio without usage events", languages, showUsage),
        window("Studio's usage events", languages, showSomeUsage),
        menu("Studio's menu of settings", languages, "Studio_Settings"),
        menu("Studio's menu of languages", languages, "Studio_Language"),
        question("Studio's question before it discards", languages)};
}
