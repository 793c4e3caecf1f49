#include "WebcamHelperFixture.h"

#include <KCore/KAIModuleHelper.h>

#include <limits>

using namespace KdVBLMODEL;

using Responses = QVector<int>;

/** Another resolution, another frame rate, another background. */
class tst_KdWebcamRecorderHelperPicture : public WebcamHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void settingAResolutionGoesThroughEveryStepInOrder();
    void settingAResolutionStartsThePreviewTwiceWithANewIdEach();
    void aRefusedResolutionIsTheCurrentOneAllTheSame();
    void aResolutionWithoutAFrameRateIsShownAtTheOldOne();
    void setsAResolutionWithoutARecorder();

    void settingAFrameRateStartsThePreviewOnce();
    void aRefusedFrameRateIsTheCurrentOneAllTheSame();
    void setsAFrameRateWithoutARecorderAndAWord();
    void handsOnAbsurdValues();

    void asksForOneModuleForEveryEffectButNone_data();
    void asksForOneModuleForEveryEffectButNone();
    void refusesAnEffectWithoutItsModule_data();
    void refusesAnEffectWithoutItsModule();
    void takesAnEffectAwayWithoutAQuestion();
};

void tst_KdWebcamRecorderHelperPicture::cleanup()
{
    KAIModuleHelper::offer(KAIModuleHelper::kBackgroundModule, nullptr);
    WebcamHelperFixture::cleanup();
}

void tst_KdWebcamRecorderHelperPicture::settingAResolutionGoesThroughEveryStepInOrder()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.takeResponses();
    m_engine->clearCalls();
    m_engine->script().frameRates = {60.0, 25.0};
    helper.slotSetCurrentResolution(QSize(640, 480));
    const QStringList expected{QStringLiteral("setResolution(640x480)"),
                               QStringLiteral("getFrameRates()"),
                               QStringLiteral("setVideoFormat(fourcc=C264 rate=60)"),
                               QStringLiteral("startPreview()"), QStringLiteral("startPreview()")};
    QCOMPARE(m_engine->calls(), expected);
    QCOMPARE(helper.takeResponses(), Responses{9});
    QCOMPARE(helper.getCurrentResolution(), QSize(640, 480));
    QCOMPARE(helper.getCurrentFrameRate(), 60.0);
    QCOMPARE(helper.frameRates(), QList<double>({60.0, 25.0}));
}

void tst_KdWebcamRecorderHelperPicture::settingAResolutionStartsThePreviewTwiceWithANewIdEach()
{
    ReadyHelper helper;
    QStringList ids =
        previewIdsOf(helper, [&helper] { helper.slotSetCurrentResolution(QSize(640, 480)); });
    QCOMPARE(ids.size(), 1 + 2);
    QCOMPARE(ids.last(), helper.previewId());
    QCOMPARE(ids.removeDuplicates(), 0);
}

void tst_KdWebcamRecorderHelperPicture::aRefusedResolutionIsTheCurrentOneAllTheSame()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.takeResponses();
    m_engine->clearCalls();
    m_engine->fail("setResolution");
    expectLog(QStringLiteral("Failed to set resolution"));
    helper.slotSetCurrentResolution(QSize(123, 45));
    QCOMPARE(helper.getCurrentResolution(), QSize(123, 45));
    QCOMPARE(m_engine->count("setVideoFormat"), 1);
    QCOMPARE(m_engine->count("startPreview"), 2);
    QCOMPARE(helper.takeResponses(), Responses{9});
    QCOMPARE(messages(KdBaseLog::Warning),
             QStringList(QStringLiteral("slotSetCurrentResolution: "
                                        "Failed to set resolution(123 x 45) to webcam Webcam")));
}

void tst_KdWebcamRecorderHelperPicture::aResolutionWithoutAFrameRateIsShownAtTheOldOne()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.slotSetCurrentFrameRate(15.0);
    helper.takeResponses();
    m_engine->clearCalls();
    m_engine->script().frameRates.clear();
    helper.slotSetCurrentResolution(QSize(640, 480));
    QCOMPARE(m_engine->count("setVideoFormat"), 0);
    QCOMPARE(m_engine->count("startPreview"), 1);
    QCOMPARE(helper.getCurrentFrameRate(), 15.0);
    QVERIFY(helper.frameRates().isEmpty());
    QCOMPARE(helper.takeResponses(), Responses{9});
}

void tst_KdWebcamRecorderHelperPicture::setsAResolutionWithoutARecorder()
{
    KdWebcamRecorderHelper helper(nullptr);
    helper.slotSetCurrentResolution(QSize(640, 480));
    QCOMPARE(helper.getCurrentResolution(), QSize(640, 480));
    QCOMPARE(messages(KdBaseLog::Info).value(1),
             QStringLiteral("slotSetCurrentResolution: Set resolution(640 x 480) to webcam "));
}

void tst_KdWebcamRecorderHelperPicture::settingAFrameRateStartsThePreviewOnce()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.takeResponses();
    m_engine->clearCalls();
    QStringList ids = previewIdsOf(helper, [&helper] { helper.slotSetCurrentFrameRate(29.97); });
    QCOMPARE(m_engine->calls(),
             QStringList({QStringLiteral("setVideoFormat(fourcc=C264 rate=29.97)"),
                          QStringLiteral("startPreview()")}));
    QCOMPARE(ids.removeDuplicates(), 0);
    QCOMPARE(helper.getCurrentFrameRate(), 29.97);
    QVERIFY(helper.takeResponses().isEmpty());
    QCOMPARE(
        messages(KdBaseLog::Info).last(),
        QStringLiteral("slotSetCurrentFrameRate: Set frameRates(29.970000 fps) to webcam Webcam"));
}

void tst_KdWebcamRecorderHelperPicture::aRefusedFrameRateIsTheCurrentOneAllTheSame()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    m_engine->clearCalls();
    m_engine->fail("setVideoFormat");
    expectLog(QStringLiteral("Failed to set frameRates"));
    helper.slotSetCurrentFrameRate(240.0);
    QCOMPARE(helper.getCurrentFrameRate(), 240.0);
    QCOMPARE(m_engine->count("startPreview"), 1);
    QCOMPARE(messages(KdBaseLog::Warning),
             QStringList(QStringLiteral("slotSetCurrentFrameRate: Failed to set "
                                        "frameRates(240.000000 fps) to webcam Webcam")));
}

void tst_KdWebcamRecorderHelperPicture::setsAFrameRateWithoutARecorderAndAWord()
{
    KdWebcamRecorderHelper helper(nullptr);
    helper.slotSetCurrentFrameRate(25.0);
    QCOMPARE(helper.getCurrentFrameRate(), 25.0);
    QVERIFY(messages(KdBaseLog::Info).isEmpty());
}

void tst_KdWebcamRecorderHelperPicture::handsOnAbsurdValues()
{
    ReadyHelper helper;
    helper.slotSetCurrentResolution(QSize());
    QCOMPARE(m_engine->lastCall("setResolution").argument<QSize>(0), QSize());
    QVERIFY(!helper.getCurrentResolution().isValid());
    for (const double rate : {0.0, -1.0, std::numeric_limits<double>::infinity()}) {
        helper.slotSetCurrentFrameRate(rate);
        QCOMPARE(helper.getCurrentFrameRate(), rate);
        QCOMPARE(m_engine->lastCall("setVideoFormat").argument<KdVideoFormat>(0).frameRate, rate);
    }
}

void tst_KdWebcamRecorderHelperPicture::asksForOneModuleForEveryEffectButNone_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("remove") << int(fcbmRemove);
    QTest::newRow("blur") << int(fcbmBlur);
    QTest::newRow("unknown") << 2;
    QTest::newRow("unknown, negative") << -2;
}

void tst_KdWebcamRecorderHelperPicture::asksForOneModuleForEveryEffectButNone()
{
    QFETCH(int, mode);
    int asked = 0;
    KAIModuleHelper::offer(5, [&asked] { return ++asked > 0; });
    ReadyHelper helper;
    m_engine->clearCalls();
    helper.setAIEffectType(static_cast<_KdCaptureRecordBackgroundMode>(mode));
    QCOMPARE(asked, 1);
    QCOMPARE(m_engine->calls(), QStringList(QStringLiteral("setBackgroundMode(%1)").arg(mode)));
    QCOMPARE(int(helper.getCurAIEffectType()), mode);
    QCOMPARE(messages(KdBaseLog::Info),
             QStringList(QStringLiteral("setAIEffectType: KAIMODULE_CHECK 5 success")));
}

void tst_KdWebcamRecorderHelperPicture::refusesAnEffectWithoutItsModule_data()
{
    asksForOneModuleForEveryEffectButNone_data();
}

void tst_KdWebcamRecorderHelperPicture::refusesAnEffectWithoutItsModule()
{
    QFETCH(int, mode);
    for (const int other : {0, 1, 2, 3, 4, 6}) {
        KAIModuleHelper::offer(other, [] { return true; });
    }
    KAIModuleHelper::offer(5, [] { return false; });
    ReadyHelper helper;
    m_engine->clearCalls();
    helper.setAIEffectType(static_cast<_KdCaptureRecordBackgroundMode>(mode));
    for (const int other : {0, 1, 2, 3, 4, 6}) {
        KAIModuleHelper::offer(other, nullptr);
    }
    QVERIFY(m_engine->calls().isEmpty());
    QCOMPARE(messages(KdBaseLog::Info),
             QStringList(QStringLiteral("setAIEffectType: KAIMODULE_CHECK 5 false")));
}

void tst_KdWebcamRecorderHelperPicture::takesAnEffectAwayWithoutAQuestion()
{
    int asked = 0;
    KAIModuleHelper::offer(5, [&asked] { return ++asked > 0; });
    ReadyHelper helper;
    helper.setAIEffectType(fcbmBlur);
    KAIModuleHelper::offer(5, [&asked] { return ++asked < 0; });
    helper.setAIEffectType(fcbmNone);
    QCOMPARE(asked, 1);
    QCOMPARE(helper.getCurAIEffectType(), fcbmNone);
    QCOMPARE(messages(KdBaseLog::Info).size(), 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderHelperPicture>(argc, argv);
}

#include "tst_KdWebcamRecorderHelperPicture.moc"
