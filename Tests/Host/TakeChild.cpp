#include "ClipFeeder.h"

#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdTakeFile.h>
#include <KdVBLModel/KdTakeWriter.h>

#include <QCoreApplication>

#include <gst/gst.h>

#include <chrono>
#include <cstdio>
#include <thread>

// What a test needs another process for:
//   kd_take_child write audio|video FILE   records until it is killed and tells how much it has
//   heard kd_take_child claim FILE               waits for a line, then claims FILE and tells how
//   that went

namespace {

int fail(const QString& error)
{
    std::fprintf(stderr, "%s\n", error.toUtf8().constData());
    return 1;
}

void tell(qint64 ms)
{
    std::printf("%lld\n", static_cast<long long>(ms));
    std::fflush(stdout);
}

void handOver(GstElement* /*sink*/, GstBuffer* buffer, GstPad* /*pad*/, gpointer writer)
{
    auto* const take = static_cast<KdTakeWriter*>(writer);
    take->push(gst_buffer_ref(buffer));
    tell(take->framesPushed() * 1000 / take->samplerate());
}

// As the recorder does it, with a source of our own.
int writeSound(const QString& path)
{
    KdTakeWriter writer;
    QString error;
    if (!writer.open(path, {}, false, &error)) {
        return fail(error);
    }
    const auto pipeline = kdSink(gst_pipeline_new(nullptr));
    GstElement* const source = gst_element_factory_make("audiotestsrc", nullptr);
    GstElement* const convert = gst_element_factory_make("audioconvert", nullptr);
    GstElement* const filter = gst_element_factory_make("capsfilter", nullptr);
    GstElement* const sink = gst_element_factory_make("fakesink", nullptr);
    g_object_set(source, "is-live", TRUE, "samplesperbuffer", writer.samplerate() / 100, nullptr);
    gst_util_set_object_arg(G_OBJECT(source), "wave", "pink-noise");
    g_object_set(filter, "caps", writer.inputCaps(), nullptr);
    g_object_set(sink, "signal-handoffs", TRUE, nullptr);
    g_signal_connect(sink, "handoff", G_CALLBACK(handOver), &writer);
    gst_bin_add_many(GST_BIN(pipeline.get()), source, convert, filter, sink, nullptr);
    gst_element_link_many(source, convert, filter, sink, nullptr);
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    const KdGstPtr<GstBus> bus(gst_element_get_bus(pipeline.get()));
    gst_message_unref(
        gst_bus_timed_pop_filtered(bus.get(), GST_CLOCK_TIME_NONE, GST_MESSAGE_ERROR));
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    return fail(QStringLiteral("The source failed."));
}

int writeSoundAndPicture(const QString& path)
{
    KdWebcamTakeFormat format;
    format.size = QSize(640, 360);
    format.hasSound = true;
    KdWebcamTake take;
    if (!take.open(path, format, 100)) {
        return fail(QStringLiteral("The take cannot be opened."));
    }
    ClipFeeder feeder(take, format);
    const auto begin = std::chrono::steady_clock::now();
    for (;;) {
        feeder.run(0.01);
        tell(qint64(feeder.second() * 1000.0));
        std::this_thread::sleep_until(begin + std::chrono::duration<double>(feeder.second()));
    }
}

int write(const QString& path, bool hasVideo)
{
    gst_init(nullptr, nullptr);
    return hasVideo ? writeSoundAndPicture(path) : writeSound(path);
}

int claim(const QString& path)
{
    std::puts("ready");
    std::fflush(stdout);
    std::getchar();
    KdTakeFile file;
    QString error;
    const bool isClaimed = file.claim(path, &error);
    file.begun();
    std::puts(isClaimed ? "claimed" : "refused");
    return isClaimed ? 0 : fail(error);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("write")) {
        return write(arguments.value(3), arguments.value(2) == QLatin1String("video"));
    }
    return claim(arguments.value(2));
}
