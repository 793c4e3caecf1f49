#include <KdVBLModel/KdDeviceOffer.h>

#include <KdVBLModel/KdGst.h>

#include <QStringList>

using namespace KdVBLMODEL;

namespace {

constexpr auto kInternalName = "internal-name";

_KdDevType kindOf(const QString& deviceClass)
{
    const QStringList words = deviceClass.split(QLatin1Char('/'));
    if (words.contains(QLatin1String("Video")) && (words.contains(QLatin1String("Source")) ||
                                                   words.contains(QLatin1String("CameraSource")))) {
        return kdtWebcam;
    }
    const bool isInput =
        words.contains(QLatin1String("Audio")) && words.contains(QLatin1String("Source"));
    return isInput ? kdtMicrophone : kdtNone;
}

bool isMonitorOfOutput(const KdDeviceFacts& facts)
{
    const auto is = [&facts](const char* key, const char* value) {
        return facts.properties.value(QLatin1String(key)) == QLatin1String(value);
    };
    return is("device.class", "monitor") || is("wasapi2.device.loopback", "true") ||
           is("media.class", "Audio/Sink");
}

/** The first that a system gives; ids and serials of objects are used again or never twice. */
QString idOf(const KdDeviceFacts& facts, _KdDevType kind)
{
    const QStringList videoKeys = {QStringLiteral("api.v4l2.path"), QStringLiteral("device.path")};
    const QStringList commonKeys = {QStringLiteral("node.name"), QLatin1String(kInternalName),
                                    QStringLiteral("device.id"), QStringLiteral("device.path")};
    const QStringList keys = kind == kdtWebcam ? videoKeys + commonKeys : commonKeys;
    for (const QString& key : keys) {
        QString value = facts.properties.value(key);
        if (!value.isEmpty()) {
            return value;
        }
    }
    return facts.displayName;
}

/** The PulseAudio source says when its device goes; the PipeWire one does not. */
int preferenceOf(const QString& provider)
{
    if (provider == QLatin1String("GstPulseDevice")) {
        return 3;
    }
    return provider == QLatin1String("GstPipeWireDevice") ? 1 : 2;
}

void addToFacts(const GValue* value, const QString& key, KdDeviceFacts* facts)
{
    if (G_VALUE_HOLDS_STRING(value)) {
        facts->properties.insert(key, QString::fromUtf8(g_value_get_string(value)));
    } else if (G_VALUE_HOLDS_BOOLEAN(value)) {
        facts->properties.insert(key, QLatin1String(g_value_get_boolean(value) ? "true" : "false"));
    }
}

gboolean addField(GQuark field, const GValue* value, gpointer facts)
{
    addToFacts(value, QString::fromUtf8(g_quark_to_string(field)),
               static_cast<KdDeviceFacts*>(facts));
    return TRUE;
}

} // namespace

std::optional<KdDeviceOffer> kdOfferFrom(const KdDeviceFacts& facts)
{
    KdDeviceOffer offer;
    offer.kind = kindOf(facts.deviceClass);
    if (offer.kind == kdtNone || (offer.kind == kdtMicrophone && isMonitorOfOutput(facts))) {
        return std::nullopt;
    }
    offer.id = idOf(facts, offer.kind);
    offer.name = facts.displayName.simplified();
    if (offer.name.isEmpty()) {
        offer.name = offer.id.simplified();
    }
    if (offer.name.isEmpty()) {
        return std::nullopt;
    }
    offer.preference = preferenceOf(facts.provider);
    offer.isDefault = facts.properties.value(QStringLiteral("is-default")) == QLatin1String("true");
    return offer;
}

KdDeviceFacts kdFactsOf(GstDevice* device)
{
    KdDeviceFacts facts;
    facts.provider = QString::fromUtf8(G_OBJECT_TYPE_NAME(device));
    facts.displayName = QString::fromUtf8(KdGCharPtr(gst_device_get_display_name(device)).get());
    facts.deviceClass = QString::fromUtf8(KdGCharPtr(gst_device_get_device_class(device)).get());
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(device), kInternalName)) {
        gchar* name = nullptr;
        g_object_get(device, kInternalName, &name, nullptr);
        facts.properties.insert(QLatin1String(kInternalName),
                                QString::fromUtf8(KdGCharPtr(name).get()));
    }
    if (GstStructure* properties = gst_device_get_properties(device)) {
        gst_structure_foreach(properties, addField, &facts);
        gst_structure_free(properties);
    }
    return facts;
}
