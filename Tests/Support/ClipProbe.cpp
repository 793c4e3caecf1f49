#include "ClipProbe.h"

#include "Command.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int kTimeoutMs = 120000;

double number(const QJsonObject& object, const char* name)
{
    bool isNumber = false;
    const double value = object.value(QLatin1String(name)).toString().toDouble(&isNumber);
    return isNumber ? value : -1.0;
}

void readStream(const QJsonObject& stream, ClipInfo* info)
{
    const bool isPicture = stream.value(QLatin1String("codec_type")) == QLatin1String("video");
    (isPicture ? info->pictureBegin : info->soundBegin) = number(stream, "start_time");
    (isPicture ? info->pictureLength : info->soundLength) = number(stream, "duration");
    if (isPicture) {
        info->profile = stream.value(QLatin1String("profile")).toString();
        info->colourRange = stream.value(QLatin1String("color_range")).toString();
        info->colourMatrix = stream.value(QLatin1String("color_space")).toString();
    }
}

void readPacket(const QJsonObject& packet, ClipInfo* info)
{
    if (packet.value(QLatin1String("codec_type")) == QLatin1String("video")) {
        info->pictureTimes.append(number(packet, "pts_time"));
        info->pictureLengths.append(number(packet, "duration_time"));
        info->isKeyPicture.append(
            packet.value(QLatin1String("flags")).toString().contains(QLatin1Char('K')));
    }
}

} // namespace

ClipInfo ClipProbe::probe(const QString& path)
{
    const Command::Result result = Command::run(
        QStringLiteral("ffprobe"),
        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_streams"),
         QStringLiteral("-show_packets"), QStringLiteral("-of"), QStringLiteral("json"), path},
        kTimeoutMs);
    ClipInfo info;
    const QJsonObject found = QJsonDocument::fromJson(result.output).object();
    const QJsonArray streams = found.value(QLatin1String("streams")).toArray();
    for (const QJsonValue& stream : streams) {
        readStream(stream.toObject(), &info);
    }
    const QJsonArray packets = found.value(QLatin1String("packets")).toArray();
    for (const QJsonValue& packet : packets) {
        readPacket(packet.toObject(), &info);
    }
    return info;
}

QByteArray ClipProbe::picture(const QString& path, int index)
{
    return Command::run(QStringLiteral("ffmpeg"),
                        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                         QStringLiteral("-vf"), QStringLiteral("select=eq(n\\,%1)").arg(index),
                         QStringLiteral("-frames:v"), QStringLiteral("1"), QStringLiteral("-f"),
                         QStringLiteral("rawvideo"), QStringLiteral("-")},
                        kTimeoutMs)
        .output;
}
