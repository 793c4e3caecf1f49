#include <Studio/StudioPipeWire.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <functional>

namespace StudioPipeWire {

namespace {

using PropertyTest = std::function<bool(const QJsonObject&)>;

bool anyNode(const QByteArray& dump, const PropertyTest& test)
{
    const QJsonArray objects = QJsonDocument::fromJson(dump).array();
    return std::any_of(objects.begin(), objects.end(), [&test](const QJsonValue& value) {
        const QJsonObject object = value.toObject();
        const bool isNode = object.value(QStringLiteral("type")).toString() ==
                            QLatin1String("PipeWire:Interface:Node");
        const QJsonObject info = object.value(QStringLiteral("info")).toObject();
        return isNode && test(info.value(QStringLiteral("props")).toObject());
    });
}

} // namespace

bool hasMicrophone(const QByteArray& dump)
{
    return anyNode(dump, [](const QJsonObject& properties) {
        const QString mediaClass = properties.value(QStringLiteral("media.class")).toString();
        return mediaClass == QLatin1String("Audio/Source") ||
               mediaClass == QLatin1String("Audio/Source/Virtual") ||
               mediaClass == QLatin1String("Audio/Duplex");
    });
}

bool hasCamera(const QByteArray& dump)
{
    return anyNode(dump, [](const QJsonObject& properties) {
        return properties.value(QStringLiteral("media.class")).toString() ==
               QLatin1String("Video/Source");
    });
}

bool hasNode(const QByteArray& dump, const QString& nodeName)
{
    return anyNode(dump, [&nodeName](const QJsonObject& properties) {
        return properties.value(QStringLiteral("node.name")).toString() == nodeName;
    });
}

} // namespace StudioPipeWire
