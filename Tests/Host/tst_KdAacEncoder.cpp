#include <KdVBLModel/KdAacEncoder.h>
#include <Support/KdTestCase.h>

#include <gst/gst.h>

#include <memory>

using KdVBLMODEL::KdAudioFormat;

namespace {

struct Unref
{
    void operator()(void* object) const { gst_object_unref(object); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
    void operator()(GstMessage* message) const { gst_message_unref(message); }
};

/** What came out of the encoder and, decoded, out of the decoder. */
struct Encoded
{
    qint64 bytes = 0;
    qint64 samples = 0;
    int rate = 0;
    int channels = 0;
    QString error;
    double seconds() const { return rate ? double(samples) / rate : 0.0; }
    double bitrate() const { return double(bytes) * 8.0 / seconds(); }
};

GstPadProbeReturn countBytes(GstPad* /*pad*/, GstPadProbeInfo* info, gpointer data)
{
    static_cast<Encoded*>(data)->bytes +=
        qint64(gst_buffer_get_size(GST_PAD_PROBE_INFO_BUFFER(info)));
    return GST_PAD_PROBE_OK;
}

GstPadProbeReturn countSamples(GstPad* pad, GstPadProbeInfo* info, gpointer data)
{
    auto* const encoded = static_cast<Encoded*>(data);
    const std::unique_ptr<GstCaps, Unref> caps(gst_pad_get_current_caps(pad));
    const GstStructure* const format = gst_caps_get_structure(caps.get(), 0);
    gst_structure_get_int(format, "rate", &encoded->rate);
    gst_structure_get_int(format, "channels", &encoded->channels);
    const qint64 bytes = qint64(gst_buffer_get_size(GST_PAD_PROBE_INFO_BUFFER(info)));
    encoded->samples += bytes / (qint64(sizeof(float)) * encoded->channels);
    return GST_PAD_PROBE_OK;
}

void probe(GstElement* element, const char* pad, GstPadProbeCallback callback, Encoded* encoded)
{
    const std::unique_ptr<GstPad, Unref> source(gst_element_get_static_pad(element, pad));
    gst_pad_add_probe(source.get(), GST_PAD_PROBE_TYPE_BUFFER, callback, encoded, nullptr);
}

QString runToEnd(GstElement* pipeline)
{
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    const std::unique_ptr<GstBus, Unref> bus(gst_element_get_bus(pipeline));
    const std::unique_ptr<GstMessage, Unref> message(gst_bus_timed_pop_filtered(
        bus.get(), 20 * GST_SECOND, GstMessageType(GST_MESSAGE_EOS | GST_MESSAGE_ERROR)));
    gst_element_set_state(pipeline, GST_STATE_NULL);
    if (!message) {
        return QStringLiteral("The pipeline did not end");
    }
    return GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS
               ? QString()
               : QStringLiteral("The pipeline failed");
}

/** Encodes and decodes some seconds of sound; wave as audiotestsrc names it. */
Encoded encode(const KdAacFormat& format, const char* wave, int seconds)
{
    Encoded encoded;
    const std::unique_ptr<GstElement, Unref> pipeline(gst_pipeline_new(nullptr));
    GstElement* const source = gst_element_factory_make("audiotestsrc", nullptr);
    GstElement* const convert = gst_element_factory_make("audioconvert", nullptr);
    GstElement* const filter = gst_element_factory_make("capsfilter", nullptr);
    GstElement* const encoder = KdAacEncoder::create(format, &encoded.error);
    GstElement* const parser = gst_element_factory_make("aacparse", nullptr);
    GstElement* const decoder = gst_element_factory_make("avdec_aac", nullptr);
    GstElement* const back = gst_element_factory_make("audioconvert", nullptr);
    GstElement* const floats = gst_element_factory_make("capsfilter", nullptr);
    GstElement* const sink = gst_element_factory_make("fakesink", nullptr);
    if (!encoder) {
        return encoded;
    }
    gst_util_set_object_arg(G_OBJECT(source), "wave", wave);
    g_object_set(source, "volume", 0.5, "samplesperbuffer", 1024, "num-buffers",
                 seconds * format.samplerate / 1024, nullptr);
    const std::unique_ptr<GstCaps, Unref> caps(KdAacEncoder::inputCaps(format));
    g_object_set(filter, "caps", caps.get(), nullptr);
    gst_util_set_object_arg(G_OBJECT(floats), "caps",
                            "audio/x-raw,format=F32LE,layout=interleaved");
    gst_bin_add_many(GST_BIN(pipeline.get()), source, convert, filter, encoder, parser, decoder,
                     back, floats, sink, nullptr);
    gst_element_link_many(source, convert, filter, encoder, parser, decoder, back, floats, sink,
                          nullptr);
    probe(encoder, "src", countBytes, &encoded);
    probe(floats, "src", countSamples, &encoded);
    encoded.error = runToEnd(pipeline.get());
    return encoded;
}

} // namespace

class tst_KdAacEncoder : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void everyOfferedChoiceIsDecodableAac_data();
    void everyOfferedChoiceIsDecodableAac();
    void constantBitrateIsHeldWhateverTheSound_data();
    void constantBitrateIsHeldWhateverTheSound();
    void variableBitrateFollowsTheSound();
    void inputCapsHoldRateAndChannels();
};

void tst_KdAacEncoder::everyOfferedChoiceIsDecodableAac_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("channels");
    for (const int mode : {KdVBLMODEL::fbmVariable, KdVBLMODEL::fbmConstant}) {
        for (const int rate : {22050, 24000, 32000, 44100, 48000, 96000}) {
            for (const int channels : {1, 2}) {
                const QString row =
                    QStringLiteral("%1 %2 Hz, %3 channels")
                        .arg(mode == KdVBLMODEL::fbmVariable ? QStringLiteral("VBR")
                                                             : QStringLiteral("CBR"))
                        .arg(rate)
                        .arg(channels);
                QTest::newRow(qPrintable(row)) << mode << rate << channels;
            }
        }
    }
}

void tst_KdAacEncoder::everyOfferedChoiceIsDecodableAac()
{
    QFETCH(int, mode);
    QFETCH(int, rate);
    QFETCH(int, channels);
    // Above this even noise needs no more bits: the finest quantiser is reached.
    constexpr int kAlwaysNeeded = 96000;
    constexpr int kSeconds = 3;
    for (const int kilobits : {96, 128, 160, 192, 256, 320, 512}) {
        KdAudioFormat asked;
        asked.bitrateMode = mode;
        asked.samplerate = rate;
        asked.channels = channels;
        asked.bitrate = kilobits * 1000;
        const KdAacFormat format = nearestAacFormat(asked);
        const Encoded encoded = encode(format, "pink-noise", kSeconds);
        const QString what = QStringLiteral("%1 kbit/s: %2 bit/s. %3")
                                 .arg(kilobits)
                                 .arg(encoded.bitrate())
                                 .arg(encoded.error);
        QVERIFY2(encoded.error.isEmpty(), qPrintable(what));
        QCOMPARE(encoded.rate, rate);
        QCOMPARE(encoded.channels, channels);
        QVERIFY2(qAbs(encoded.seconds() - kSeconds) < 0.2, qPrintable(what));
        QVERIFY2(encoded.bitrate() < 1.08 * format.bitrate, qPrintable(what));
        const double least =
            format.isConstant ? 0.97 * format.bitrate : 0.9 * qMin(format.bitrate, kAlwaysNeeded);
        QVERIFY2(encoded.bitrate() > least, qPrintable(what));
    }
}

void tst_KdAacEncoder::constantBitrateIsHeldWhateverTheSound_data()
{
    QTest::addColumn<QByteArray>("wave");
    QTest::newRow("silence") << QByteArray("silence");
    QTest::newRow("tone") << QByteArray("sine");
    QTest::newRow("ticks") << QByteArray("ticks");
    QTest::newRow("noise") << QByteArray("white-noise");
}

void tst_KdAacEncoder::constantBitrateIsHeldWhateverTheSound()
{
    QFETCH(QByteArray, wave);
    KdAudioFormat asked;
    asked.bitrateMode = KdVBLMODEL::fbmConstant;
    const Encoded encoded = encode(nearestAacFormat(asked), wave.constData(), 4);
    QCOMPARE(encoded.error, QString());
    QVERIFY2(qAbs(encoded.bitrate() - asked.bitrate) < 0.03 * asked.bitrate,
             qPrintable(QString::number(encoded.bitrate())));
}

void tst_KdAacEncoder::variableBitrateFollowsTheSound()
{
    const KdAacFormat format = nearestAacFormat(KdAudioFormat());
    const double silence = encode(format, "silence", 4).bitrate();
    const double tone = encode(format, "sine", 4).bitrate();
    const double noise = encode(format, "pink-noise", 4).bitrate();
    QVERIFY2(silence < 5000, qPrintable(QString::number(silence)));
    QVERIFY2(tone > 2 * silence && tone < 0.8 * noise, qPrintable(QString::number(tone)));
    QVERIFY2(noise > 0.9 * format.bitrate, qPrintable(QString::number(noise)));
}

void tst_KdAacEncoder::inputCapsHoldRateAndChannels()
{
    KdAacFormat format;
    format.samplerate = 32000;
    format.channels = 1;
    const std::unique_ptr<GstCaps, Unref> caps(KdAacEncoder::inputCaps(format));
    const GstStructure* const structure = gst_caps_get_structure(caps.get(), 0);
    int rate = 0;
    int channels = 0;
    QVERIFY(gst_structure_has_name(structure, "audio/x-raw"));
    QVERIFY(gst_structure_get_int(structure, "rate", &rate));
    QVERIFY(gst_structure_get_int(structure, "channels", &channels));
    QCOMPARE(rate, 32000);
    QCOMPARE(channels, 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAacEncoder>(argc, argv);
}

#include "tst_KdAacEncoder.moc"
