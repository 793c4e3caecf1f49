#include <KdVBLModel/KdAudioChain.h>

#include <Support/KdTestCase.h>

#include <cmath>
#include <condition_variable>

#include <gst/audio/audio.h>

namespace {

GstElement* element(const char* factory)
{
    return gst_element_factory_make(factory, nullptr);
}

/** A sine at half of full scale, in the format that a device may have. */
GstElement* source(const char* caps)
{
    GstElement* bin = gst_bin_new(nullptr);
    GstElement* tone = element("audiotestsrc");
    GstElement* filter = element("capsfilter");
    g_object_set(tone, "volume", 0.5, "freq", 1000.0, "is-live", TRUE, nullptr);
    gst_util_set_object_arg(G_OBJECT(filter), "caps", caps);
    gst_bin_add_many(GST_BIN(bin), tone, filter, nullptr);
    gst_element_link(tone, filter);
    const KdGstPtr<GstPad> pad(gst_element_get_static_pad(filter, "src"));
    gst_element_add_pad(bin, gst_ghost_pad_new("src", pad.get()));
    return bin;
}

/** Runs a chain, collects what it gives and what its meter says. */
class Listener
{
public:
    explicit Listener(GstElement* from)
        : chain(from, [this](GstBuffer* buffer) { take(buffer); })
        , m_pipeline(kdSink(gst_pipeline_new(nullptr)))
    {
        // A race detector does not see that threads which GLib keeps come to this object later.
        const std::lock_guard<std::mutex> lock(m_mutex);
        gst_bin_add(GST_BIN(m_pipeline.get()), chain.bin());
        const KdGstPtr<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
        gst_bus_set_sync_handler(bus.get(), onMessage, this, nullptr);
    }
    ~Listener()
    {
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
        // Its threads have ended, which a race detector does not see: here is what they wrote.
        const std::lock_guard<std::mutex> lock(m_mutex);
    }

    bool listen(size_t samples)
    {
        gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
        std::unique_lock<std::mutex> lock(m_mutex);
        return m_changed.wait_for(lock, std::chrono::seconds(10),
                                  [&] { return m_samples.size() >= samples && !m_levels.empty(); });
    }
    float peak() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        float peak = 0.0F;
        for (const float sample : m_samples) {
            peak = std::max(peak, std::abs(sample));
        }
        return peak;
    }
    double level() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_levels.back();
    }
    KdAudioChain chain;

private:
    void take(GstBuffer* buffer)
    {
        GstMapInfo map;
        gst_buffer_map(buffer, &map, GST_MAP_READ);
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto* samples = reinterpret_cast<const float*>(map.data);
        m_samples.insert(m_samples.end(), samples, samples + map.size / sizeof(float));
        gst_buffer_unmap(buffer, &map);
        m_changed.notify_all();
    }

    static GstBusSyncReply onMessage(GstBus*, GstMessage* message, gpointer self)
    {
        auto* listener = static_cast<Listener*>(self);
        const auto level = KdAudioChain::peakDecibel(gst_message_get_structure(message));
        if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ELEMENT && level) {
            const std::lock_guard<std::mutex> lock(listener->m_mutex);
            listener->m_levels.push_back(*level);
            listener->m_changed.notify_all();
        }
        gst_message_unref(message);
        return GST_BUS_DROP;
    }

    KdGstPtr<GstElement> m_pipeline;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<float> m_samples;
    std::vector<double> m_levels;
};

} // namespace

class tst_KdAudioChain : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void whateverADeviceGivesComesOutInOneFormat_data();
    void whateverADeviceGivesComesOutInOneFormat();
    void theVolumeIsAppliedBeforeTheMeter_data();
    void theVolumeIsAppliedBeforeTheMeter();
    void theLastArrivalIsKnown();
    void aDeviceWithoutASourceMakesAnInvalidChain();
    void onlyAMetersMessageHasALevel();
};

void tst_KdAudioChain::whateverADeviceGivesComesOutInOneFormat_data()
{
    QTest::addColumn<QByteArray>("caps");

    QTest::newRow("as it is") << QByteArray("audio/x-raw,format=F32LE,rate=48000,channels=2");
    QTest::newRow("telephone") << QByteArray("audio/x-raw,format=S16LE,rate=8000,channels=1");
    QTest::newRow("studio") << QByteArray("audio/x-raw,format=S24LE,rate=96000,channels=2");
    QTest::newRow("unsigned bytes") << QByteArray("audio/x-raw,format=U8,rate=44100,channels=2");
}

void tst_KdAudioChain::whateverADeviceGivesComesOutInOneFormat()
{
    QFETCH(QByteArray, caps);
    Listener listener(source(caps.constData()));
    listener.chain.setLevelInterval(20);
    QVERIFY(listener.chain.isValid());
    QVERIFY(listener.listen(9600));
    QVERIFY2(std::abs(listener.peak() - 0.5F) < 0.05F,
             qPrintable(QString::number(listener.peak())));
    QVERIFY2(std::abs(listener.level() + 6.0) < 1.0, qPrintable(QString::number(listener.level())));

    const KdGstCapsPtr format(KdAudioChain::createCaps());
    GstAudioInfo info;
    QVERIFY(gst_audio_info_from_caps(&info, format.get()));
    QCOMPARE(info.rate, KdAudioChain::kSamplerate);
    QCOMPARE(info.bpf, KdAudioChain::kBytesPerFrame);
}

void tst_KdAudioChain::theVolumeIsAppliedBeforeTheMeter_data()
{
    QTest::addColumn<double>("volume");
    QTest::addColumn<double>("peak");

    QTest::newRow("not set") << -1.0 << 0.5;
    QTest::newRow("full") << 1.0 << 0.5;
    QTest::newRow("half") << 0.5 << 0.25;
    QTest::newRow("none") << 0.0 << 0.0;
    QTest::newRow("too much") << 1.1 << 0.5;
    QTest::newRow("no number") << std::nan("") << 0.5;
}

void tst_KdAudioChain::theVolumeIsAppliedBeforeTheMeter()
{
    QFETCH(double, volume);
    QFETCH(double, peak);
    Listener listener(source("audio/x-raw,format=F32LE,rate=48000,channels=2"));
    listener.chain.setVolume(volume);
    listener.chain.setLevelInterval(20);
    QVERIFY(listener.listen(9600));
    QVERIFY(std::abs(double(listener.peak()) - peak) < 0.01);
    QVERIFY(peak == 0.0 ? listener.level() < -60.0
                        : std::abs(listener.level() - 20.0 * std::log10(peak)) < 0.5);
}

void tst_KdAudioChain::theLastArrivalIsKnown()
{
    Listener listener(source("audio/x-raw,format=F32LE,rate=48000,channels=2"));
    QCOMPARE(listener.chain.lastArrivalNs(), qint64(0));
    listener.chain.setLevelInterval(20);
    QVERIFY(listener.listen(1));
    const qint64 first = listener.chain.lastArrivalNs();
    QVERIFY(first > 0);
    QTRY_VERIFY(listener.chain.lastArrivalNs() > first);
}

void tst_KdAudioChain::aDeviceWithoutASourceMakesAnInvalidChain()
{
    KdAudioChain chain(nullptr, [](GstBuffer*) {});
    QVERIFY(!chain.isValid());
    QVERIFY(!chain.error().empty());
    QVERIFY(chain.bin());
    chain.setVolume(0.5);
    chain.setLevelInterval(50);
}

void tst_KdAudioChain::onlyAMetersMessageHasALevel()
{
    QVERIFY(!KdAudioChain::peakDecibel(nullptr));
    GstStructure* other = gst_structure_new_empty("other");
    QVERIFY(!KdAudioChain::peakDecibel(other));
    gst_structure_free(other);
    GstStructure* bare = gst_structure_new_empty("level");
    QVERIFY(!KdAudioChain::peakDecibel(bare));
    gst_structure_free(bare);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioChain>(argc, argv);
}

#include "tst_KdAudioChain.moc"
