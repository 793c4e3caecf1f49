// Records a voice-over in a process of its own and prints, as "name value" lines, what it saw. The
// engine, or a bare GStreamer pipeline as an application would write it in an afternoon:
//   voice_over_child engine|bare FOLDER SECONDS TAKES
// Every take after the first is a warm one.

#include <KdRecord/KdCaptureEngine.h>

#include <gst/gst.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <atomic>
#include <cstdio>
#include <limits>
#include <memory>

namespace {

constexpr int kBitrate = 128000;
constexpr int kRate = 48000;
constexpr double kDevicePatienceMs = 10000.0;

double elapsedMs(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) * 1e-6;
}

void waitSeconds(double seconds)
{
    QTimer::singleShot(static_cast<int>(seconds * 1000.0), qApp, &QCoreApplication::quit);
    QCoreApplication::exec();
}

void print(const char* name, int take, double value)
{
    std::printf("%s_%s %.3f\n", take == 0 ? "cold" : "warm", name, value);
}

class FirstSample : public KdVBLMODEL::IKdRecorderEventObserver
{
public:
    explicit FirstSample(const QElapsedTimer& sinceStart) : m_sinceStart(sinceStart) {}

    void onTimeCallback(long long msec) override
    {
        const double first = elapsedMs(m_sinceStart) - static_cast<double>(msec);
        if (first < m_first.load()) {
            m_first.store(first);
        }
        m_last.store(msec);
    }

    double milliseconds() const { return m_first.load(); }
    void reset() { m_first.store(std::numeric_limits<double>::max()); }
    long long last() const { return m_last.load(); }

private:
    const QElapsedTimer& m_sinceStart;
    std::atomic<double> m_first{std::numeric_limits<double>::max()};
    std::atomic<long long> m_last{0};
};

int recordWithEngine(const QString& folder, double seconds, int takes)
{
    QElapsedTimer sinceStart;
    FirstSample observer(sinceStart);
    QObject owner;
    QElapsedTimer total;
    total.start();
    KdVBLMODEL::IKdAudioRecorder* recorder = KdVBLMODEL::createAudioRecorder(&owner);
    recorder->addEventObserver(&observer);
    // As the dialog has them: its level meter keeps the microphone open between takes.
    recorder->setCallbackSwitch3(true);
    recorder->setCallbackSwitch2(true);
    QList<KdVBLMODEL::_KdCaptureDevInf> devices;
    recorder->getDevices(&devices);
    while (devices.isEmpty() && elapsedMs(total) < kDevicePatienceMs) {
        waitSeconds(0.005);
        recorder->getDevices(&devices);
    }
    if (devices.isEmpty()) {
        return 1;
    }
    KdVBLMODEL::KdAudioFormat format;
    format.bitrate = kBitrate;
    format.samplerate = kRate;
    recorder->setInterval(10);
    bool ok = true;
    for (int take = 0; take < takes && ok; ++take) {
        recorder->setDevice(0);
        recorder->setAudioFormat(&format);
        recorder->setOutputFile(folder + QStringLiteral("/take%1.m4a").arg(take));
        if (take == 0) {
            print("process_to_start_ms", take, elapsedMs(total));
        }
        observer.reset();
        sinceStart.start();
        ok = recorder->start();
        print("start_call_ms", take, elapsedMs(sinceStart));
        waitSeconds(seconds);
        QElapsedTimer stop;
        stop.start();
        ok = recorder->stop() && ok;
        print("stop_ms", take, elapsedMs(stop));
        print("first_sample_ms", take, observer.milliseconds());
    }
    recorder->removeEventObserver(&observer);
    recorder->release();
    return ok ? 0 : 1;
}

struct BareTake
{
    QElapsedTimer sinceStart;
    std::atomic<double> first{-1.0};
};

GstPadProbeReturn noteFirst(GstPad*, GstPadProbeInfo* info, gpointer data)
{
    auto* const take = static_cast<BareTake*>(data);
    if (take->first.load() < 0.0) {
        const GstBuffer* const buffer = GST_PAD_PROBE_INFO_BUFFER(info);
        take->first.store(elapsedMs(take->sinceStart) -
                          static_cast<double>(GST_BUFFER_DURATION(buffer)) * 1e-6);
    }
    return GST_PAD_PROBE_OK;
}

bool recordBareTake(const QString& path, double seconds, int number)
{
    BareTake take;
    take.sinceStart.start();
    // The bench makes the path itself, so no outside text reaches the description.
    GstElement* const pipeline = gst_parse_launch(
        qPrintable(QStringLiteral(
                       "pulsesrc ! audioconvert ! audioresample ! audio/x-raw,rate=%1,channels=2 "
                       "! avenc_aac name=encoder bitrate=%2 ! mp4mux ! filesink location=%3")
                       .arg(kRate)
                       .arg(kBitrate)
                       .arg(path)),
        nullptr);
    GstElement* const encoder = gst_bin_get_by_name(GST_BIN(pipeline), "encoder");
    GstPad* const pad = gst_element_get_static_pad(encoder, "sink");
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER, noteFirst, &take, nullptr);
    gst_object_unref(pad);
    gst_object_unref(encoder);
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    print("start_call_ms", number, elapsedMs(take.sinceStart));
    waitSeconds(seconds);

    QElapsedTimer stop;
    stop.start();
    gst_element_send_event(pipeline, gst_event_new_eos());
    GstBus* const bus = gst_element_get_bus(pipeline);
    GstMessage* const end = gst_bus_timed_pop_filtered(
        bus, 5 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool ok = end && GST_MESSAGE_TYPE(end) == GST_MESSAGE_EOS;
    if (end) {
        gst_message_unref(end);
    }
    gst_object_unref(bus);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    print("stop_ms", number, elapsedMs(stop));
    print("first_sample_ms", number, take.first.load());
    gst_object_unref(pipeline);
    return ok;
}

int recordBare(const QString& folder, double seconds, int takes)
{
    QElapsedTimer total;
    total.start();
    gst_init(nullptr, nullptr);
    print("process_to_start_ms", 0, elapsedMs(total));
    for (int take = 0; take < takes; ++take) {
        if (!recordBareTake(folder + QStringLiteral("/take%1.m4a").arg(take), seconds, take)) {
            return 1;
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 5) {
        std::fprintf(stderr, "usage: voice_over_child engine|bare FOLDER SECONDS TAKES\n");
        return 2;
    }
    const auto record = arguments.at(1) == QLatin1String("engine") ? recordWithEngine : recordBare;
    return record(arguments.at(2), arguments.at(3).toDouble(), arguments.at(4).toInt());
}
