// shots FOLDER: makes every screenshot, in both skins at 100 and 200 %. The scale is fixed when a
// process starts, hence the two processes.

#include "PreviewShots.h"
#include "Shot.h"
#include "StudioShots.h"
#include "VideoSettingsShots.h"
#include "VoiceOverShots.h"

#include <KCore/KCoreDirs.h>
#include <KdAppSettings/KdAppSettings.h>
#include <KdCore/KdBaseLog.h>
#include <KdWidgets/KdSkinManager.h>

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

bool takeAll(const QString& folder)
{
    bool ok = true;
    const QStringList skins = KdSkin::KdSkinManager::instance()->skins();
    for (const QString& skin : skins) {
        KdSkin::KdSkinManager::instance()->setSkin(skin);
        const Shot shot(folder, skin);
        ok = takeVoiceOverShots(shot) && ok;
        ok = takeAdvancedSettingsShots(shot) && ok;
        ok = takeVideoSettingsShots(shot) && ok;
        ok = takePreviewShots(shot) && ok;
        ok = takeStudioShots(shot) && ok;
    }
    return ok;
}

int runAtScale(const QStringList& arguments, const QString& scale)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(arguments.first(), {arguments.at(1), QStringLiteral("--child")});
    process.waitForFinished(-1);
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : 1;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationDisplayName(QStringLiteral("Studio"));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2 || !QDir().mkpath(arguments.at(1))) {
        QTextStream(stderr) << "usage: shots FOLDER\n";
        return 2;
    }
    if (arguments.size() == 2) {
        const int single = runAtScale(arguments, QStringLiteral("1"));
        const int twofold = runAtScale(arguments, QStringLiteral("2"));
        return single == 0 && twofold == 0 ? 0 : 1;
    }
    const QTemporaryDir home;
    setZentraDocumentDir(home.path());
    KdAppSettings::GetInstance()->Load();
    KdBaseLog::defaultLogger()->setLevel(KdBaseLog::Warning);
    return takeAll(arguments.at(1)) ? 0 : 1;
}
