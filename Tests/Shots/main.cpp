// shots FOLDER [GROUP]...: makes every screenshot, or those of some groups, in both skins at 100
// and 200 %. The scale is fixed when a process starts, hence the two processes.

#include "PreviewShots.h"
#include "Shot.h"
#include "StudioShots.h"
#include "VideoSettingsShots.h"
#include "VoiceOverShots.h"
#include "WebcamShots.h"

#include <KCore/KCoreDirs.h>
#include <KdAppSettings/KdAppSettings.h>
#include <KdCore/KdBaseLog.h>
#include <KdWidgets/KdSkinManager.h>

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QVector>

namespace {

const QString kChild = QStringLiteral("--child");

struct Group
{
    QString name;
    bool (*take)(const Shot& shot);
};

QVector<Group> allGroups()
{
    return {{QStringLiteral("voice-over"), takeVoiceOverShots},
            {QStringLiteral("advanced-settings"), takeAdvancedSettingsShots},
            {QStringLiteral("webcam"), takeWebcamShots},
            {QStringLiteral("video-settings"), takeVideoSettingsShots},
            {QStringLiteral("preview"), takePreviewShots},
            {QStringLiteral("studio"), takeStudioShots}};
}

/** @return what the names say, everything when there is none, nothing when one is unknown. */
QVector<Group> chosenGroups(const QStringList& names)
{
    QVector<Group> chosen;
    for (const Group& group : allGroups()) {
        if (names.isEmpty() || names.contains(group.name)) {
            chosen.append(group);
        }
    }
    return names.isEmpty() || chosen.size() == names.size() ? chosen : QVector<Group>();
}

bool takeAll(const QString& folder, const QVector<Group>& groups)
{
    bool ok = true;
    const QStringList skins = KdSkin::KdSkinManager::instance()->skins();
    for (const QString& skin : skins) {
        KdSkin::KdSkinManager::instance()->setSkin(skin);
        const Shot shot(folder, skin);
        for (const Group& group : groups) {
            ok = group.take(shot) && ok;
        }
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
    process.start(arguments.first(), arguments.mid(1) + QStringList(kChild));
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
    QStringList arguments = QCoreApplication::arguments();
    const bool isChild = arguments.removeOne(kChild);
    const QVector<Group> groups = chosenGroups(arguments.mid(2));
    if (arguments.size() < 2 || groups.isEmpty() || !QDir().mkpath(arguments.at(1))) {
        QTextStream(stderr) << "usage: shots FOLDER [GROUP]...\n";
        return 2;
    }
    if (!isChild) {
        const int single = runAtScale(arguments, QStringLiteral("1"));
        const int twofold = runAtScale(arguments, QStringLiteral("2"));
        return single == 0 && twofold == 0 ? 0 : 1;
    }
    const QTemporaryDir home;
    setZentraDocumentDir(home.path());
    KdAppSettings::GetInstance()->Load();
    KdBaseLog::defaultLogger()->setLevel(KdBaseLog::Warning);
    return takeAll(arguments.at(1), groups) ? 0 : 1;
}
