#include <KdVBLModel/KdAudioCapture.h>

#include <Support/KdTestCase.h>

#include <atomic>

using namespace KdVBLMODEL;

namespace {

const KdCaptureDevice kDevice{kdtMicrophone, QStringLiteral("test"), QStringLiteral("Test Device")};

GstElement* tone(int buffers = -1)
{
    GstElement* source = gst_element_factory_make("audiotestsrc", nullptr);
    g_object_set(source, "is-live", TRUE, "num-buffers", buffers, nullptr);
    return source;
}

/** What a capture reports. */
struct Reports
{
    std::atomic<int> blocks{0};
    std::atomic<int> levels{0};
    std::atomic<int> failures{0};

    KdAudioCapture::Callbacks callbacks()
    {
        KdAudioCapture::Callbacks callbacks;
        callbacks.samples = [this](GstBuffer*) { ++blocks; };
        callbacks.level = [this](double) { ++levels; };
        callbacks.failed = [this] { ++failures; };
        return callbacks;
    }
};

} // namespace

class tst_KdAudioCapture : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void aRunningInputGivesSoundAndLevels();
    void anInputThatEndsHasFailedOnce();
    void anInputThatBreaksIsReportedInItsOwnWords();
    void anInputThatCannotBeOpenedDoesNotStart();
    void anInputThatFallsSilentIsStalled();
    void nothingIsCalledAfterTheEnd();
};

void tst_KdAudioCapture::aRunningInputGivesSoundAndLevels()
{
    Reports reports;
    KdAudioCapture capture(kDevice, tone(), reports.callbacks());
    capture.chain().setLevelInterval(20);
    QVERIFY(capture.start());
    QTRY_VERIFY(reports.blocks > 3 && reports.levels > 3);
    QVERIFY(!capture.hasFailed());
    QVERIFY(!capture.isStalled());
    QCOMPARE(reports.failures.load(), 0);
    QCOMPARE(capture.device().id, kDevice.id);
}

void tst_KdAudioCapture::anInputThatEndsHasFailedOnce()
{
    Reports reports;
    KdAudioCapture capture(kDevice, tone(5), reports.callbacks());
    QVERIFY(capture.start());
    QTRY_COMPARE(reports.failures.load(), 1);
    QVERIFY(capture.hasFailed());
    QCOMPARE(reports.blocks.load(), 5);
}

void tst_KdAudioCapture::anInputThatBreaksIsReportedInItsOwnWords()
{
    expectLog(QStringLiteral("^KdCapturePipeline::handle: .*Failed after iterations"));
    Reports reports;
    GstElement* bin = gst_bin_new(nullptr);
    GstElement* source = tone();
    GstElement* breaker = gst_element_factory_make("identity", nullptr);
    g_object_set(breaker, "error-after", 3, nullptr);
    gst_bin_add_many(GST_BIN(bin), source, breaker, nullptr);
    QVERIFY(gst_element_link(source, breaker));
    const KdGstPtr<GstPad> pad(gst_element_get_static_pad(breaker, "src"));
    gst_element_add_pad(bin, gst_ghost_pad_new("src", pad.get()));
    KdAudioCapture capture(kDevice, bin, reports.callbacks());
    QVERIFY(capture.start());
    QTRY_COMPARE(reports.failures.load(), 1);
}

void tst_KdAudioCapture::anInputThatCannotBeOpenedDoesNotStart()
{
    expectLog(QStringLiteral("The audio input Test Device cannot be opened: it is not plugged in"));
    Reports reports;
    KdAudioCapture capture(kDevice, nullptr, reports.callbacks());
    QVERIFY(!capture.start());
}

void tst_KdAudioCapture::anInputThatFallsSilentIsStalled()
{
    Reports reports;
    KdAudioCapture capture(kDevice, gst_element_factory_make("appsrc", nullptr),
                           reports.callbacks());
    QVERIFY(capture.start());
    QVERIFY(!capture.isStalled());
    QTRY_VERIFY(capture.isStalled());
    QCOMPARE(reports.failures.load(), 0);
}

void tst_KdAudioCapture::nothingIsCalledAfterTheEnd()
{
    for (int round = 0; round < 20; ++round) {
        auto reports = std::make_unique<Reports>();
        auto capture = std::make_unique<KdAudioCapture>(kDevice, tone(), reports->callbacks());
        QVERIFY(capture->start());
        capture.reset();
        reports.reset();
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioCapture>(argc, argv);
}

#include "tst_KdAudioCapture.moc"
