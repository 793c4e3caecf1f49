#include "DrawnPerson.h"

#include <KCore/KAIModuleHelper.h>
#include <KdVBLModel/KdBackgroundEffect.h>
#include <Support/KdTestCase.h>

#include <atomic>
#include <climits>
#include <cstring>
#include <thread>
#include <vector>

using namespace KdVBLMODEL;

namespace {

constexpr auto kPatience = std::chrono::seconds(60);

/** A frame in memory that shows when anything beside it is touched. */
class GuardedFrame
{
public:
    GuardedFrame(int width, int height, int padding)
        : m_width(width)
        , m_height(height)
        , m_stride(4 * width + padding)
        , m_bytes(static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(height) +
                      2 * kGuard,
                  kUntouched)
    {
    }

    uchar* pixels() { return m_bytes.data() + kGuard; }
    int stride() const { return m_stride; }
    bool isUntouched() const { return changed(0, m_bytes.size()) == 0; }
    /** @return whether all that was touched lies within the rows. */
    bool isTouchedInsideOnly() const
    {
        std::size_t outside = changed(0, kGuard) + changed(m_bytes.size() - kGuard, m_bytes.size());
        for (int y = 0; y < m_height; ++y) {
            const std::size_t row =
                kGuard + static_cast<std::size_t>(y) * static_cast<std::size_t>(m_stride);
            outside += changed(row + 4 * static_cast<std::size_t>(m_width),
                               row + static_cast<std::size_t>(m_stride));
        }
        return outside == 0;
    }

private:
    static constexpr std::size_t kGuard = 64;
    static constexpr uchar kUntouched = 0x5a;

    std::size_t changed(std::size_t from, std::size_t to) const
    {
        std::size_t count = 0;
        for (std::size_t i = from; i < to; ++i) {
            count += m_bytes[i] != kUntouched ? 1U : 0U;
        }
        return count;
    }

    int m_width;
    int m_height;
    int m_stride;
    std::vector<uchar> m_bytes;
};

void apply(KdBackgroundEffect& effect, _KdCaptureRecordBackgroundMode mode, cv::Mat& frame)
{
    effect.apply(mode, frame.data, frame.cols, frame.rows, static_cast<int>(frame.step));
}

cv::Mat alphaOf(const cv::Mat& frame)
{
    cv::Mat alpha;
    cv::extractChannel(frame, alpha, 3);
    return alpha;
}

/** @return how much a part of a frame changed on average, over all channels. */
double change(const cv::Mat& before, const cv::Mat& after, const cv::Mat& where)
{
    cv::Mat difference;
    cv::absdiff(before, after, difference);
    const cv::Scalar mean = cv::mean(difference, where);
    return (mean[0] + mean[1] + mean[2]) / 3.0;
}

/** An effect that has found the person. */
class KnowingEffect : public KdBackgroundEffect
{
public:
    explicit KnowingEffect(const DrawnPerson& person)
    {
        cv::Mat frame = person.frame();
        ::apply(*this, fcbmBlur, frame);
        knows = waitForMask(kPatience);
    }

    bool knows = false;
};

} // namespace

class tst_KdBackgroundEffect : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void moduleIsOfferedWithTheEngine();
    void noTreatmentLeavesEveryByte_data();
    void noTreatmentLeavesEveryByte();
    void frameThatIsNoneIsLeftAlone_data();
    void frameThatIsNoneIsLeftAlone();
    void anySizeAndStrideStaysWithinItsRows_data();
    void anySizeAndStrideStaysWithinItsRows();
    void allIsBackgroundUntilThePersonIsKnown();
    void removingKeepsThePersonAlone();
    void blurringKeepsThePersonSharp();
    void changeOfSizeBeginsWithAllBackground();
    void resetBeginsWithAllBackground();
    void effectMayBeToggledWhileFramesRun();
    void effectMayGoWhileThePersonIsBeingFound();
    void layingOverBlackShadesByAlpha();
    void layingOverBlackStaysWithinItsRows();
};

void tst_KdBackgroundEffect::moduleIsOfferedWithTheEngine()
{
    QVERIFY(KdBackgroundEffect::isAvailable());
    QVERIFY(KAIModuleHelper::isAvailableForUse(5));
}

void tst_KdBackgroundEffect::noTreatmentLeavesEveryByte_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("none") << -1;
    QTest::newRow("unknown") << 2;
    QTest::newRow("smallest") << INT_MIN;
    QTest::newRow("largest") << INT_MAX;
}

void tst_KdBackgroundEffect::noTreatmentLeavesEveryByte()
{
    QFETCH(int, mode);
    KdBackgroundEffect effect;
    GuardedFrame frame(320, 180, 12);
    effect.apply(static_cast<_KdCaptureRecordBackgroundMode>(mode), frame.pixels(), 320, 180,
                 frame.stride());
    QVERIFY(frame.isUntouched());
}

void tst_KdBackgroundEffect::frameThatIsNoneIsLeftAlone_data()
{
    QTest::addColumn<bool>("isNull");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("stride");
    QTest::newRow("null") << true << 64 << 36 << 256;
    QTest::newRow("no width") << false << 0 << 36 << 256;
    QTest::newRow("no height") << false << 64 << 0 << 256;
    QTest::newRow("negative width") << false << -64 << 36 << 256;
    QTest::newRow("negative height") << false << 64 << -36 << 256;
    QTest::newRow("short stride") << false << 64 << 36 << 255;
    QTest::newRow("no stride") << false << 64 << 36 << 0;
    QTest::newRow("negative stride") << false << 64 << 36 << -256;
    QTest::newRow("width without end") << false << INT_MAX << 36 << 256;
}

void tst_KdBackgroundEffect::frameThatIsNoneIsLeftAlone()
{
    QFETCH(bool, isNull);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, stride);
    KdBackgroundEffect effect;
    GuardedFrame frame(64, 36, 0);
    for (const auto mode : {fcbmRemove, fcbmBlur}) {
        effect.apply(mode, isNull ? nullptr : frame.pixels(), width, height, stride);
    }
    KdBackgroundEffect::layOverBlack(isNull ? nullptr : frame.pixels(), width, height, stride);
    QVERIFY(frame.isUntouched());
}

void tst_KdBackgroundEffect::anySizeAndStrideStaysWithinItsRows_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("padding");
    QTest::newRow("dot") << 1 << 1 << 0;
    QTest::newRow("dot in a row") << 1 << 1 << 60;
    QTest::newRow("tiny") << 2 << 3 << 4;
    QTest::newRow("line") << 1920 << 1 << 0;
    QTest::newRow("pole") << 1 << 1080 << 8;
    QTest::newRow("odd") << 641 << 359 << 0;
    QTest::newRow("odd stride") << 319 << 181 << 3;
    QTest::newRow("padded") << 640 << 360 << 256;
    QTest::newRow("portrait") << 360 << 640 << 0;
}

void tst_KdBackgroundEffect::anySizeAndStrideStaysWithinItsRows()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, padding);
    KdBackgroundEffect effect;
    GuardedFrame frame(width, height, padding);
    for (const auto mode : {fcbmBlur, fcbmRemove}) {
        effect.apply(mode, frame.pixels(), width, height, frame.stride());
        QVERIFY(effect.waitForMask(kPatience));
    }
    QVERIFY(!frame.isUntouched());
    QVERIFY(frame.isTouchedInsideOnly());
}

void tst_KdBackgroundEffect::allIsBackgroundUntilThePersonIsKnown()
{
    const DrawnPerson person;
    KdBackgroundEffect effect;
    cv::Mat frame = person.frame();
    apply(effect, fcbmRemove, frame);
    QCOMPARE(cv::countNonZero(frame.reshape(1)), 0);
    QVERIFY(effect.waitForMask(kPatience));
}

void tst_KdBackgroundEffect::removingKeepsThePersonAlone()
{
    const DrawnPerson person;
    KnowingEffect effect(person);
    QVERIFY(effect.knows);
    const cv::Mat before = person.frame();
    cv::Mat frame = before.clone();
    apply(effect, fcbmRemove, frame);
    const cv::Mat truth = person.truth();
    const cv::Mat found = alphaOf(frame) > 127;
    const int both = cv::countNonZero(found & truth);
    QVERIFY(both > cv::countNonZero(found | truth) * 85 / 100);
    const cv::Mat opaque = alphaOf(frame) == 255;
    QVERIFY(cv::countNonZero(opaque) > cv::countNonZero(truth) * 75 / 100);
    QCOMPARE(change(before, frame, opaque), 0.0);
    const cv::Mat clear = alphaOf(frame) == 0;
    QVERIFY(cv::countNonZero(clear) > cv::countNonZero(~truth) * 85 / 100);
    frame.setTo(cv::Scalar::all(0), ~clear);
    QCOMPARE(cv::countNonZero(frame.reshape(1)), 0); // no colour is left where nothing shows
}

void tst_KdBackgroundEffect::blurringKeepsThePersonSharp()
{
    const DrawnPerson person;
    KnowingEffect effect(person);
    QVERIFY(effect.knows);
    const cv::Mat before = person.frame();
    cv::Mat frame = before.clone();
    apply(effect, fcbmBlur, frame);
    const cv::Mat truth = person.truth();
    QVERIFY(change(before, frame, truth) < 3.0);
    QVERIFY(change(before, frame, ~truth) > 12.0);
    QCOMPARE(cv::countNonZero(alphaOf(frame) != 255), 0);
}

void tst_KdBackgroundEffect::changeOfSizeBeginsWithAllBackground()
{
    const DrawnPerson person;
    const DrawnPerson larger({960, 540});
    KnowingEffect effect(person);
    cv::Mat frame = larger.frame();
    apply(effect, fcbmRemove, frame);
    QCOMPARE(cv::countNonZero(frame.reshape(1)), 0);
    QVERIFY(effect.waitForMask(kPatience));
    frame = larger.frame();
    apply(effect, fcbmRemove, frame);
    QVERIFY(cv::countNonZero(frame.reshape(1)) > 0);
}

void tst_KdBackgroundEffect::resetBeginsWithAllBackground()
{
    const DrawnPerson person;
    KnowingEffect effect(person);
    effect.reset();
    cv::Mat frame = person.frame();
    apply(effect, fcbmRemove, frame);
    QCOMPARE(cv::countNonZero(frame.reshape(1)), 0);
}

void tst_KdBackgroundEffect::effectMayBeToggledWhileFramesRun()
{
    const DrawnPerson person({320, 180});
    const cv::Mat before = person.frame();
    KdBackgroundEffect effect;
    std::atomic<int> mode{fcbmNone};
    std::atomic<bool> isDone{false};
    std::atomic<int> untouched{0};
    std::atomic<int> treated{0};
    std::thread frames([&] {
        while (!isDone) {
            cv::Mat frame = before.clone();
            apply(effect, static_cast<_KdCaptureRecordBackgroundMode>(mode.load()), frame);
            ++(std::memcmp(frame.data, before.data, frame.total() * 4) == 0 ? untouched : treated);
        }
    });
    for (int i = 0; i < 60; ++i) {
        const int soFar = untouched + treated;
        mode = i % 3 - 1;
        if (i % 10 == 9) {
            effect.reset();
        }
        QTRY_VERIFY_WITH_TIMEOUT(untouched + treated > soFar, 20000);
    }
    isDone = true;
    frames.join();
    QVERIFY(untouched > 0);
    QVERIFY(treated > 0);
}

void tst_KdBackgroundEffect::effectMayGoWhileThePersonIsBeingFound()
{
    const DrawnPerson person;
    for (int i = 0; i < 20; ++i) {
        cv::Mat frame = person.frame();
        KdBackgroundEffect effect;
        apply(effect, fcbmBlur, frame);
    }
}

void tst_KdBackgroundEffect::layingOverBlackShadesByAlpha()
{
    cv::Mat frame(1, 4, CV_8UC4);
    frame.at<cv::Vec4b>(0, 0) = {10, 20, 30, 255};
    frame.at<cv::Vec4b>(0, 1) = {200, 100, 50, 0};
    frame.at<cv::Vec4b>(0, 2) = {255, 100, 0, 51};
    frame.at<cv::Vec4b>(0, 3) = {255, 255, 255, 254};
    KdBackgroundEffect::layOverBlack(frame.data, 4, 1, 16);
    QVERIFY(frame.at<cv::Vec4b>(0, 0) == cv::Vec4b(10, 20, 30, 255));
    QVERIFY(frame.at<cv::Vec4b>(0, 1) == cv::Vec4b(0, 0, 0, 255));
    QVERIFY(frame.at<cv::Vec4b>(0, 2) == cv::Vec4b(51, 20, 0, 255));
    QVERIFY(frame.at<cv::Vec4b>(0, 3) == cv::Vec4b(254, 254, 254, 255));
}

void tst_KdBackgroundEffect::layingOverBlackStaysWithinItsRows()
{
    GuardedFrame frame(3, 2, 5);
    KdBackgroundEffect::layOverBlack(frame.pixels(), 3, 2, frame.stride());
    QVERIFY(!frame.isUntouched());
    QVERIFY(frame.isTouchedInsideOnly());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdBackgroundEffect>(argc, argv);
}

#include "tst_KdBackgroundEffect.moc"
