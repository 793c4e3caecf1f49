#include <KdVBLModel/KdCameraCapture.h>
#include <KdVBLModel/KdMonotonicTime.h>

#include <Support/KdTestCase.h>
#include <Support/Patience.h>

#include <QElapsedTimer>

#include <atomic>
#include <mutex>

using namespace KdVBLMODEL;

namespace {

const KdCaptureDevice kDevice{kdtWebcam, QStringLiteral("test"), QStringLiteral("Test Camera")};
const KdCameraMode kMode{QSize(160, 120), 30, 1, false};

GstElement* picture(int buffers = -1)
{
    GstElement* source = gst_element_factory_make("videotestsrc", nullptr);
    g_object_set(source, "is-live", TRUE, "num-buffers", buffers, nullptr);
    return source;
}

/** Two elements as one source. */
GstElement* chained(GstElement* source, GstElement* next)
{
    GstElement* bin = gst_bin_new(nullptr);
    gst_bin_add_many(GST_BIN(bin), source, next, nullptr);
    gst_element_link(source, next);
    const KdGstPtr<GstPad> pad(gst_element_get_static_pad(next, "src"));
    gst_element_add_pad(bin, gst_ghost_pad_new("src", pad.get()));
    return bin;
}

/** What a capture reports. */
struct Reports
{
    std::atomic<int> pictures{0};
    std::atomic<int> failures{0};
    std::atomic<int> slownessMs{0};
    std::atomic<qint64> oldestNs{0};
    std::mutex mutex;
    QByteArray format;

    KdCameraChain::Receiver receiver()
    {
        return {[this](const GstCaps* caps) {
                    const std::lock_guard<std::mutex> lock(mutex);
                    format = KdGCharPtr(gst_caps_to_string(caps)).get();
                },
                [this](GstBuffer*, qint64 captureNs) {
                    ++pictures;
                    oldestNs = qMax(oldestNs.load(), kdMonotonicNs() - captureNs);
                    // A receiver that takes its time is what is tested: nothing may pile up.
                    QTest::qSleep(qMax(1, slownessMs.load()));
                }};
    }
    std::function<void()> failed()
    {
        return [this] { ++failures; };
    }
    QByteArray formatNow()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return format;
    }
};

} // namespace

class tst_KdCameraCapture : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void aRunningCameraGivesPicturesInItsMode();
    void jpegIsUnpacked();
    void picturesCarryTheTimeOfTheirCapture();
    void aSlowReceiverLosesPicturesAndGetsNewOnes();
    void aCameraThatEndsHasFailedOnce();
    void aCameraThatBreaksIsReportedInItsOwnWords();
    void aCameraThatDoesNotHaveTheModeFails();
    void aCameraThatCannotBeOpenedFails();
    void aCameraThatFallsSilentIsStalled();
    void nothingIsCalledAfterSilence();
};

void tst_KdCameraCapture::aRunningCameraGivesPicturesInItsMode()
{
    Reports reports;
    KdCameraCapture capture(kDevice, kMode, picture(), reports.receiver(), reports.failed());
    QVERIFY(!capture.hasPicture());
    capture.start();
    QTRY_VERIFY(reports.pictures > 3);
    QVERIFY(capture.hasStarted() && capture.hasPicture());
    QVERIFY(!capture.hasFailed() && !capture.isStalled());
    QVERIFY(reports.formatNow().contains("width=(int)160"));
    QVERIFY(reports.formatNow().contains("framerate=(fraction)30/1"));
    QCOMPARE(reports.failures.load(), 0);
    QCOMPARE(capture.device().id, kDevice.id);
    QCOMPARE(capture.mode().size, kMode.size);
}

void tst_KdCameraCapture::jpegIsUnpacked()
{
    Reports reports;
    KdCameraMode mode = kMode;
    mode.isJpeg = true;
    KdCameraCapture capture(kDevice, mode,
                            chained(picture(), gst_element_factory_make("jpegenc", nullptr)),
                            reports.receiver(), reports.failed());
    capture.start();
    QTRY_VERIFY(reports.pictures > 3);
    QVERIFY(reports.formatNow().startsWith("video/x-raw"));
}

void tst_KdCameraCapture::picturesCarryTheTimeOfTheirCapture()
{
    Reports reports;
    KdCameraCapture capture(kDevice, kMode, picture(), reports.receiver(), reports.failed());
    capture.start();
    QTRY_VERIFY(reports.pictures > 30);
    QVERIFY2(reports.oldestNs < 500000000, qPrintable(QString::number(reports.oldestNs.load())));
}

void tst_KdCameraCapture::aSlowReceiverLosesPicturesAndGetsNewOnes()
{
    Reports reports;
    reports.slownessMs = 200;
    KdCameraCapture capture(kDevice, kMode, picture(), reports.receiver(), reports.failed());
    capture.start();
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY(reports.pictures >= 10);
    QVERIFY(timer.elapsed() >= 1800);
    QVERIFY(!capture.isStalled() && !capture.hasFailed());
    // At most those that wait are old: four of them, a thirtieth of a second each, and the
    // slowness.
    QVERIFY2(reports.oldestNs < 1500000000, qPrintable(QString::number(reports.oldestNs.load())));
}

void tst_KdCameraCapture::aCameraThatEndsHasFailedOnce()
{
    Reports reports;
    KdCameraCapture capture(kDevice, kMode, picture(5), reports.receiver(), reports.failed());
    capture.start();
    QTRY_COMPARE(reports.failures.load(), 1);
    QVERIFY(capture.hasFailed());
}

void tst_KdCameraCapture::aCameraThatBreaksIsReportedInItsOwnWords()
{
    expectLog(QStringLiteral("^KdCapturePipeline::handle: .*Failed after iterations"));
    Reports reports;
    GstElement* breaker = gst_element_factory_make("identity", nullptr);
    g_object_set(breaker, "error-after", 3, nullptr);
    KdCameraCapture capture(kDevice, kMode, chained(picture(), breaker), reports.receiver(),
                            reports.failed());
    capture.start();
    QTRY_COMPARE(reports.failures.load(), 1);
}

void tst_KdCameraCapture::aCameraThatDoesNotHaveTheModeFails()
{
    expectLog(QStringLiteral("^KdCapturePipeline::handle: "));
    Reports reports;
    GstElement* fixed = gst_element_factory_make("capsfilter", nullptr);
    const KdGstCapsPtr other(gst_caps_from_string("video/x-raw, width=64, height=48"));
    g_object_set(fixed, "caps", other.get(), nullptr);
    KdCameraCapture capture(kDevice, kMode, chained(picture(), fixed), reports.receiver(),
                            reports.failed());
    capture.start();
    QTRY_COMPARE(reports.failures.load(), 1);
    QVERIFY(!capture.hasPicture());
}

void tst_KdCameraCapture::aCameraThatCannotBeOpenedFails()
{
    expectLog(QStringLiteral("The camera Test Camera cannot be opened: it is not plugged in"));
    Reports reports;
    KdCameraCapture capture(kDevice, kMode, nullptr, reports.receiver(), reports.failed());
    capture.start();
    QCOMPARE(reports.failures.load(), 1);
    QVERIFY(capture.hasFailed());
}

void tst_KdCameraCapture::aCameraThatFallsSilentIsStalled()
{
    Reports reports;
    KdCameraCapture capture(kDevice, kMode, gst_element_factory_make("appsrc", nullptr),
                            reports.receiver(), reports.failed());
    capture.start();
    QVERIFY(!capture.isStalled());
    QTRY_VERIFY_WITH_TIMEOUT(capture.isStalled(), KdTest::patience(15000));
    QCOMPARE(reports.failures.load(), 0);
}

void tst_KdCameraCapture::nothingIsCalledAfterSilence()
{
    for (int round = 0; round < 20; ++round) {
        auto reports = std::make_unique<Reports>();
        KdCameraCapture capture(kDevice, kMode, picture(5), reports->receiver(), reports->failed());
        capture.start();
        if (round % 2) {
            QTRY_VERIFY(reports->pictures > 0);
        }
        capture.silence();
        reports.reset();
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCameraCapture>(argc, argv);
}

#include "tst_KdCameraCapture.moc"
