#include <KdRecord/KdAudioTakeReport.h>

#include <QJsonDocument>
#include <QJsonObject>

QString KdAudioTakeReport::fileInfo(const Values& values)
{
    const QJsonObject object{
        {QStringLiteral("sampling_rate"), values.samplingRate},
        {QStringLiteral("audio_channels"), values.audioChannels},
        {QStringLiteral("file_duration"), values.fileDuration},
        {QStringLiteral("device_name"), values.deviceName},
    };
    return QString::fromUtf8(QJsonDocument(object).toJson());
}

QString KdAudioTakeReport::fileExportInfo()
{
    return QString::fromUtf8(QJsonDocument(QJsonObject()).toJson());
}
