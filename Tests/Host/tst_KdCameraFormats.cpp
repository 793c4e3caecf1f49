#include <KdVBLModel/KdCameraFormats.h>
#include <KdVBLModel/KdGst.h>

#include <Support/KdTestCase.h>

namespace {

KdGstCapsPtr capsFrom(const char* text)
{
    return KdGstCapsPtr(gst_caps_from_string(text));
}

KdCameraFormats formatsOf(const char* caps)
{
    return KdCameraFormats(capsFrom(caps).get());
}

QStringList texts(const QList<QSize>& sizes)
{
    QStringList texts;
    for (const QSize& size : sizes) {
        texts.append(QStringLiteral("%1x%2").arg(size.width()).arg(size.height()));
    }
    return texts;
}

QStringList texts(const QList<double>& rates)
{
    QStringList texts;
    for (const double rate : rates) {
        texts.append(QString::number(rate));
    }
    return texts;
}

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/** What a common camera on USB 2 offers: raw pictures only as fast as the wire is. */
constexpr const char* kUsb2 =
    "video/x-raw, format=YUY2, width=640, height=480, framerate={ 30/1, 15/1 };"
    "video/x-raw, format=YUY2, width=1280, height=720, framerate=10/1;"
    "image/jpeg, width=1280, height=720, framerate={ 30/1, 60/1 };"
    "image/jpeg, width=640, height=480, framerate=30/1;"
    "image/jpeg, width=1920, height=1080, framerate=30/1";

} // namespace

class tst_KdCameraFormats : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void resolutionsAreListedOnceTheLargestFirst_data();
    void resolutionsAreListedOnceTheLargestFirst();
    void ratesAreThoseOfTheResolutionTheUsualFirst_data();
    void ratesAreThoseOfTheResolutionTheUsualFirst();
    void everyListedResolutionHasARateAndAMode_data();
    void everyListedResolutionHasARateAndAMode();
    void rawIsTakenWhereItReachesTheRate_data();
    void rawIsTakenWhereItReachesTheRate();
    void aModeAsksForWhatItIs();
    void whatIsNotOfferedHasNoMode();
};

void tst_KdCameraFormats::resolutionsAreListedOnceTheLargestFirst_data()
{
    QTest::addColumn<QByteArray>("caps");
    QTest::addColumn<QStringList>("resolutions");
    const auto row = [](const char* name, const char* caps, const char* resolutions) {
        QTest::newRow(name) << QByteArray(caps) << words(resolutions);
    };
    row("a common camera", kUsb2, "1920x1080 1280x720 640x480");
    row("lists", "video/x-raw, width={ 320, 640 }, height=240", "640x240 320x240");
    row("of equal areas the wider",
        "video/x-raw, width=200, height=400; video/x-raw, width=400, height=200",
        "400x200 200x400");
    row("a range", "video/x-raw, width=[ 320, 1280 ], height=[ 240, 720 ]",
        "1280x720 1024x576 960x540 800x600 848x480 640x480 640x360 480x270 424x240 352x288 "
        "320x240");
    row("a range that ends oddly", "video/x-raw, width=[ 600, 700 ], height=[ 400, 500 ]",
        "700x500 640x480");
    row("a range without an end",
        "video/x-raw, width=[ 1280, 2147483647 ], height=[ 720, 2147483647 ]",
        "1920x1080 1600x1200 1600x900 1280x960 1280x720");
    row("a range with steps", "video/x-raw, width=[ 320, 1280, 320 ], height=[ 240, 960, 240 ]",
        "1280x960 1280x720 640x480 320x240");
    row("one side fixed", "video/x-raw, width=640, height=[ 100, 480 ]", "640x480 640x360");
    row("none of the usual", "video/x-raw, width=[ 20, 30 ], height=[ 20, 30 ]", "30x30");
    row("nothing", "", "");
    row("what is no picture", "video/x-h264, width=640, height=480; audio/x-raw", "");
    row("outside of memory", "video/x-raw(memory:DMABuf), width=640, height=480", "");
    row("impossible",
        "video/x-raw, width=0, height=480; video/x-raw, width=-3, height=4;"
        "video/x-raw, width=100000, height=100000",
        "");
    row("without a size", "video/x-raw, format=YUY2", "");
}

void tst_KdCameraFormats::resolutionsAreListedOnceTheLargestFirst()
{
    QFETCH(QByteArray, caps);
    QTEST(texts(formatsOf(caps.constData()).resolutions()), "resolutions");
}

void tst_KdCameraFormats::ratesAreThoseOfTheResolutionTheUsualFirst_data()
{
    QTest::addColumn<QByteArray>("caps");
    QTest::addColumn<QStringList>("rates");
    const auto row = [](const char* name, const char* rates, const char* listed) {
        QTest::newRow(name) << QByteArray("video/x-raw, width=640, height=480, framerate=") + rates
                            << words(listed);
    };
    row("one", "25/1", "25");
    row("30 first, then what is slower, then what is faster", "{ 5/1, 120/1, 30/1, 60/1, 15/1 }",
        "30 15 5 60 120");
    row("none as slow as 30", "{ 120/1, 60/1 }", "60 120");
    row("those of television", "{ 30000/1001, 25/1 }", "29.97 25");
    row("a range", "[ 5/1, 60/1 ]", "30 25 24 20 15 10 5 50 60");
    row("a range that ends oddly", "[ 1/1, 27/1 ]", "27 25 24 20 15 10 5");
    row("a range without an end", "[ 0/1, 2147483647/1 ]", "30 25 24 20 15 10 5 50 60");
    row("not said", "0/1", "30");
    QTest::newRow("not even named")
        << QByteArray("video/x-raw, width=640, height=480") << words("30");
    QTest::newRow("of all formats") << QByteArray(kUsb2) << words("30 15");
}

void tst_KdCameraFormats::ratesAreThoseOfTheResolutionTheUsualFirst()
{
    QFETCH(QByteArray, caps);
    const KdCameraFormats formats = formatsOf(caps.constData());
    QTEST(texts(formats.frameRates(QSize(640, 480))), "rates");
    QVERIFY(formats.frameRates(QSize(641, 480)).isEmpty());
}

void tst_KdCameraFormats::everyListedResolutionHasARateAndAMode_data()
{
    resolutionsAreListedOnceTheLargestFirst_data();
}

void tst_KdCameraFormats::everyListedResolutionHasARateAndAMode()
{
    QFETCH(QByteArray, caps);
    QFETCH(QStringList, resolutions);
    const KdCameraFormats formats = formatsOf(caps.constData());
    QCOMPARE(formats.resolutions().size(), resolutions.size());
    const KdGstCapsPtr offered = capsFrom(caps.constData());
    for (const QSize& size : formats.resolutions()) {
        QVERIFY(!formats.frameRates(size).isEmpty());
        const auto mode = formats.mode(size, formats.frameRates(size).first());
        QVERIFY(mode && mode->size == size);
        const KdGstCapsPtr asked(KdCameraFormats::createCaps(*mode));
        QVERIFY(gst_caps_can_intersect(asked.get(), offered.get()));
    }
}

void tst_KdCameraFormats::rawIsTakenWhereItReachesTheRate_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("wanted");
    QTest::addColumn<double>("rate");
    QTest::addColumn<bool>("isJpeg");
    const QSize vga(640, 480);
    const QSize hd(1280, 720);
    QTest::newRow("both can: raw") << vga << 30.0 << 30.0 << false;
    QTest::newRow("raw alone can") << vga << 15.0 << 15.0 << false;
    QTest::newRow("raw is too slow") << hd << 30.0 << 30.0 << true;
    QTest::newRow("raw is fast enough") << hd << 10.0 << 10.0 << false;
    QTest::newRow("only JPEG") << QSize(1920, 1080) << 30.0 << 30.0 << true;
    QTest::newRow("the nearest") << hd << 50.0 << 60.0 << true;
    QTest::newRow("as it was shown, with two digits") << vga << 29.97 << 30.0 << false;
    QTest::newRow("nothing wanted") << vga << 0.0 << 15.0 << false;
}

void tst_KdCameraFormats::rawIsTakenWhereItReachesTheRate()
{
    QFETCH(QSize, size);
    QFETCH(double, wanted);
    const auto mode = formatsOf(kUsb2).mode(size, wanted);
    QVERIFY(mode);
    QCOMPARE(mode->size, size);
    QTEST(mode->frameRate(), "rate");
    QTEST(mode->isJpeg, "isJpeg");
}

void tst_KdCameraFormats::aModeAsksForWhatItIs()
{
    const auto isCaps = [](const KdCameraMode& mode, const char* text) {
        const KdGstCapsPtr caps(KdCameraFormats::createCaps(mode));
        return gst_caps_is_equal(caps.get(), capsFrom(text).get()) != FALSE;
    };
    QVERIFY(isCaps({QSize(640, 480), 30000, 1001, false},
                   "video/x-raw, width=640, height=480, framerate=30000/1001"));
    QVERIFY(isCaps({QSize(1280, 720), 30, 1, true},
                   "image/jpeg, width=1280, height=720, framerate=30/1"));
    // Who does not say how fast it is cannot be asked for a rate.
    QVERIFY(isCaps({QSize(640, 480), 0, 1, false}, "video/x-raw, width=640, height=480"));
}

void tst_KdCameraFormats::whatIsNotOfferedHasNoMode()
{
    QVERIFY(!formatsOf(kUsb2).mode(QSize(640, 481), 30.0));
    QVERIFY(!formatsOf(kUsb2).mode(QSize(), 30.0));
    QVERIFY(!KdCameraFormats().mode(QSize(640, 480), 30.0));
    QVERIFY(KdCameraFormats(nullptr).resolutions().isEmpty());
    const KdGstCapsPtr anything(gst_caps_new_any());
    QVERIFY(KdCameraFormats(anything.get()).resolutions().isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCameraFormats>(argc, argv);
}

#include "tst_KdCameraFormats.moc"
