#include "KdAppSettings.h"

#include "KdSettingsXml.h"

#include <KCore/KCoreDirs.h>
#include <KdCore/KdBaseLog.h>
#include <KdCore/KdDomDocument.h>

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

QString settingsPath()
{
    return getZentraDocumentDir() + QStringLiteral("/HostSettings.xml");
}

/** @param name of the folder in the user's folder for such files */
QString standardFolder(QStandardPaths::StandardLocation location, const QString& name)
{
    const QString folder = QStandardPaths::writableLocation(location);
    return (folder.isEmpty() ? QDir::homePath() : folder) + QLatin1Char('/') + name;
}

} // namespace

QString KFolderSettings::GetRecorderVoiceFolder() const
{
    return m_sRecorderVoiceFolder.trimmed().isEmpty()
               ? standardFolder(QStandardPaths::MusicLocation, QStringLiteral("Recordings"))
               : m_sRecorderVoiceFolder;
}

QString KFolderSettings::GetCaptureFileFolder() const
{
    return m_sCaptureFileFolder.trimmed().isEmpty()
               ? standardFolder(QStandardPaths::MoviesLocation, QStringLiteral("Captures"))
               : m_sCaptureFileFolder;
}

class KdAppSettings::Private
{
public:
    KSettings settings;
};

KdAppSettings::KdAppSettings() : d(std::make_unique<Private>())
{
    Load();
}

KdAppSettings::~KdAppSettings() = default;

KdAppSettings* KdAppSettings::GetInstance()
{
    static KdAppSettings settings;
    return &settings;
}

KSettings* KdAppSettings::GetSettings()
{
    return &d->settings;
}

bool KdAppSettings::Save()
{
    return KdDomDocument::saveXmlContent2File(KdSettingsXml::toDocument(d->settings),
                                              settingsPath());
}

void KdAppSettings::Load()
{
    // Assigned, not replaced: callers keep pointers to the objects inside.
    d->settings = KSettings();
    const QString path = settingsPath();
    QDomDocument document;
    if (KdDomDocument::openXmlFile(document, path, QIODevice::ReadOnly)) {
        KdSettingsXml::read(document, d->settings);
    } else if (QFileInfo::exists(path)) {
        KdBaseLog::write(
            KdBaseLog::Warning, {"Host/KdAppSettings/KdAppSettings", "KdAppSettings::Load"},
            "The settings %s cannot be read and count as absent", path.toUtf8().constData());
    }
}
