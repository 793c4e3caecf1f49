#include "StudioScenes.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioAudioSettingsDialog.h>
#include <Studio/StudioDevicesDialog.h>
#include <Studio/StudioResources.h>
#include <Studio/StudioVideoSettingsDialog.h>

#include <Support/DialogDriver.h>

#include <QCoreApplication>
#include <QLabel>
#include <QListWidget>
#include <QTest>

#include <functional>

using namespace KdVBLMODEL;

namespace {

using Prepare = std::function<void(EngineScript& script)>;
using Happen = std::function<void(ScriptedEngine& engine)>;

_KdCaptureDevInf device(_KdDevType type, int index, const char* name)
{
    return {type, index, QString::fromLatin1(name), QString::fromLatin1(name)};
}

void plugIn(EngineScript& script)
{
    script.webcams = {device(kdtWebcam, 0, "Cam A"), device(kdtWebcam, 1, "Cam B")};
    script.microphones = {device(kdtMicrophone, 0, "Mic A"), device(kdtMicrophone, 1, "Mic B")};
}

void unplugAll(EngineScript& script)
{
    script.webcams.clear();
    script.microphones.clear();
}

void plugInLongName(EngineScript& script)
{
    unplugAll(script);
    script.webcams = {
        device(kdtWebcam, 0,
               "Cam A in the lid of a laptop, with another one beside it for infrared light")};
}

QString news(const QWidget& dialog)
{
    return dialog.findChild<QLabel*>(QStringLiteral("Studio_Cameras_Message"))->text();
}

/** The dialog as it is, or after something has happened to the cameras. */
template <typename Dialog>
void show(const Prepare& prepare, const Happen& happen, const UserScene::Look& look)
{
    KdAppSettings::GetInstance()->Load();
    ScriptedEngine engine;
    prepare(engine.script());
    initStudioResources();
    QWidget studio; // whose sheet holds for its dialogs
    KdSkin::KdSkinManager::instance()->applyStyleSheet(&studio,
                                                       QStringLiteral("Studio/StudioWindow"), 0);
    Dialog dialog(&studio);
    dialog.setAttribute(Qt::WA_DeleteOnClose, false);
    dialog.show();
    if (!QTest::qWaitForWindowActive(&dialog)) {
        DialogDriver::fail(QStringLiteral("The window does not get the keyboard"));
    }
    if (happen) {
        const QString before = news(dialog);
        happen(engine);
        DialogDriver::waitUntil([&] { return news(dialog) != before; }, QStringLiteral("news"));
        QCoreApplication::processEvents(); // the dialog follows what it has to show
    }
    look(dialog);
}

template <typename Dialog>
UserScene window(const char* name, const Prepare& prepare = plugIn, const Happen& happen = {})
{
    return {name, UserScene::Window, [prepare, happen](const UserScene::Look& look) {
                show<Dialog>(prepare, happen, look);
            }};
}

void unplugFirst(ScriptedEngine& engine)
{
    engine.script().webcams.removeFirst();
    engine.deliverDevice(fcdWebcamRemoved, 0);
}

void plugInAnother(ScriptedEngine& engine)
{
    engine.script().webcams.append(device(kdtWebcam, 2, "Cam C"));
    engine.deliverDevice(fcdWebcamListChanged, 2);
}

void occupy(ScriptedEngine& engine)
{
    engine.deliverDevice(fcdWebcamOccupied, 0);
}

} // namespace

UserScenes studioSideScenes()
{
    using Devices = StudioDevicesDialog;
    return {window<Devices>("devices"),
            window<Devices>("no devices", unplugAll),
            window<Devices>("a device that was unplugged", plugIn, unplugFirst),
            window<Devices>("a device that was plugged in", plugIn, plugInAnother),
            window<Devices>("a camera that is in use", plugIn, occupy),
            window<Devices>("a lost device with a long name", plugInLongName, unplugFirst),
            window<StudioAudioSettingsDialog>("audio settings"),
            window<StudioVideoSettingsDialog>("video settings")};
}
