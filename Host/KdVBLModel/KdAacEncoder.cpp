#include "KdAacEncoder.h"

#include <KdCore/KdBaseLog.h>

#include <gst/gst.h>

namespace {

GstElement* createVariable(const KdAacFormat& format)
{
    GstElement* encoder = gst_element_factory_make("avenc_aac", nullptr);
    if (encoder) {
        gst_util_set_object_arg(G_OBJECT(encoder), "aac-coder", "fast");
        g_object_set(encoder, "bitrate", gint(format.bitrate), nullptr);
    }
    return encoder;
}

GstElement* createConstant(const KdAacFormat& format)
{
    GstElement* encoder = gst_element_factory_make("voaacenc", nullptr);
    if (encoder) {
        // Beyond its limit the encoder falls back to a quarter of the rate without a word.
        const int limit = aacMaxConstantBitrate(format.samplerate, format.channels);
        g_object_set(encoder, "bitrate", gint(qMin(format.bitrate, limit)), nullptr);
    }
    return encoder;
}

constexpr int kPacket = 1024;

// Both measured: the first sample that is heard of a sound that begins at once, and how much of it
// is missing at its end.
constexpr int kVariableDelay = 1024;
constexpr int kConstantDelay = 1600;

bool isConstant(GstElement* encoder)
{
    GstElementFactory* const factory = gst_element_get_factory(encoder);
    return factory && qstrcmp(GST_OBJECT_NAME(factory), "voaacenc") == 0;
}

} // namespace

GstElement* KdAacEncoder::create(const KdAacFormat& format, QString* error)
{
    GstElement* wanted = format.isConstant ? createConstant(format) : createVariable(format);
    if (wanted) {
        return wanted;
    }
    GstElement* other = format.isConstant ? createVariable(format) : createConstant(format);
    if (other) {
        KdBaseLog::write(KdBaseLog::Warning,
                         {"Host/KdVBLModel/KdAacEncoder", "KdAacEncoder::create"},
                         "The element %s is not installed; the bit rate is %s instead",
                         format.isConstant ? "voaacenc" : "avenc_aac",
                         format.isConstant ? "variable" : "constant");
    } else if (error) {
        *error = QStringLiteral("No AAC encoder is installed, neither avenc_aac nor voaacenc.");
    }
    return other;
}

int KdAacEncoder::delay(GstElement* encoder)
{
    return isConstant(encoder) ? kConstantDelay : kVariableDelay;
}

int KdAacEncoder::framesToFlush(GstElement* encoder, qint64 frames)
{
    if (!isConstant(encoder)) {
        return 0;
    }
    const qint64 heard = frames + kConstantDelay;
    return static_cast<int>((heard + kPacket - 1) / kPacket * kPacket - frames);
}

GstCaps* KdAacEncoder::inputCaps(const KdAacFormat& format)
{
    return gst_caps_new_simple("audio/x-raw", "rate", G_TYPE_INT, gint(format.samplerate),
                               "channels", G_TYPE_INT, gint(format.channels), nullptr);
}
