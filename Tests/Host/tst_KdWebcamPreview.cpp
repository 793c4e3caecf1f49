#include "WebcamFixture.h"

#include <Support/KdTestCase.h>
#include <Support/Patience.h>
#include <Support/ProcessUse.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <QElapsedTimer>

#include <array>
#include <cmath>

using namespace KdVBLMODEL;

namespace {

constexpr int kPatienceMs = 20000;

constexpr QSize kVga(640, 480);
constexpr QSize kHd(1280, 720);

/** Whether it is near the colour: a camera's pictures are compressed. */
bool isLike(QRgb pixel, const QColor& colour)
{
    return std::abs(qRed(pixel) - colour.red()) < 16 &&
           std::abs(qGreen(pixel) - colour.green()) < 16 &&
           std::abs(qBlue(pixel) - colour.blue()) < 16 && qAlpha(pixel) == 255;
}

/** Whether the thirds of a frame are where the virtual camera has them. */
bool showsThirds(const QImage& frame)
{
    const int y = frame.height() / 3;
    const int third = frame.width() / 3;
    return !frame.isNull() && isLike(frame.pixel(third / 2, y), QColor(220, 30, 30)) &&
           isLike(frame.pixel(third * 3 / 2, y), QColor(30, 200, 30)) &&
           isLike(frame.pixel(third * 5 / 2, y), QColor(30, 30, 220));
}

} // namespace

/** The live picture. */
class tst_KdWebcamPreview : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void withoutACameraThereIsNoPreview();
    void makingARecorderTakesNoTime();
    void aCameraIsListedWithItsKindNameAndIdentity();
    void aCamerasResolutionsAndRatesAreListed();
    void badInputIsRefused();
    void framesShowTheCamerasPicture_data();
    void framesShowTheCamerasPicture();
    void thePictureMoves();
    void aSizeOfARangeIsShown();
    void resolutionAndRateAreSwitchedInPreview();
    void theCameraIsSwitchedInPreview();
    void anOperationNeverWaitsForTheCamera();
    void manyStartsOpenTheCameraOnce();
    void aPreviewThatEndsIsSilent();
    void framesEndWithTheirSwitch();
    void aSlowObserverGetsFewerFramesAndHoldsNobodyUp();
    void anotherCameraIsAnnounced();
    void aCameraThatGoesEndsThePreviewAndComesBack();
    void aCameraThatGivesNothingAnyMoreIsReported();
    void aCameraThatAnotherProgramHoldsIsOccupied_data();
    void aCameraThatAnotherProgramHoldsIsOccupied();
    void theLevelIsShownBesideThePreview();
    void removingTheObserverAmongFramesIsABarrier();
    void manyRoundsLeakNothing();

private:
    /** How often the camera was opened in this test function. */
    int openings() const;
    void allowCameraTrouble() { allowLog(QStringLiteral("KdCapturePipeline::handle")); }
};

void tst_KdWebcamPreview::withoutACameraThereIsNoPreview()
{
    WebcamFixture recorder;
    QCOMPARE(recorder.deviceNames(kdtWebcam), QStringList());
    QVERIFY(!recorder->startPreview());
    QVERIFY(recorder->stopPreview());
    QList<QSize> resolutions{kVga};
    QList<double> rates{1.0};
    recorder->getResolutions(&resolutions);
    recorder->getFrameRates(&rates);
    QVERIFY(resolutions.isEmpty() && rates.isEmpty());
    QCOMPARE(recorder->curStatus(), fcsNoStart);
}

void tst_KdWebcamPreview::makingARecorderTakesNoTime()
{
    // The best of some: a busy machine may take the processor away at any moment.
    qint64 fastest = 1000;
    for (int i = 0; i < 10; ++i) {
        QElapsedTimer timer;
        timer.start();
        IKdWebcamRecorder* recorder = createWebcamRecorder();
        fastest = qMin(fastest, timer.elapsed());
        recorder->release();
    }
    QVERIFY2(fastest < 10, qPrintable(QString::number(fastest)));
}

void tst_KdWebcamPreview::aCameraIsListedWithItsKindNameAndIdentity()
{
    VirtualCamera camera;
    VirtualMicrophone microphone;
    QVERIFY(camera.plug() && microphone.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtWebcam, camera.description()));
    QList<_KdCaptureDevInf> devices;
    QVERIFY(recorder->getDevices(kdtWebcam, &devices));
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices[0].devType, int(kdtWebcam));
    QCOMPARE(devices[0].index, 0);
    QCOMPARE(devices[0].name, QStringLiteral("HD Webcam"));
    QCOMPARE(devices[0].id, QStringLiteral("hd_webcam"));
    QVERIFY(recorder.choose(kdtMicrophone, microphone.description()));
    QCOMPARE(recorder.deviceNames(kdtMicrophone), QStringList(QStringLiteral("USB Microphone")));
}

void tst_KdWebcamPreview::aCamerasResolutionsAndRatesAreListed()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtWebcam, camera.description()));
    QList<QSize> resolutions;
    recorder->getResolutions(&resolutions);
    QCOMPARE(resolutions, QList<QSize>({kHd, kVga, QSize(320, 240)}));
    QVERIFY(recorder->setResolution(kVga));
    QList<double> rates;
    recorder->getFrameRates(&rates);
    QCOMPARE(rates, QList<double>({30.0, 15.0}));
    QVERIFY(recorder->setResolution(kHd));
    recorder->getFrameRates(&rates);
    QCOMPARE(rates, QList<double>({30.0}));
}

void tst_KdWebcamPreview::badInputIsRefused()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtWebcam, camera.description()));
    QVERIFY(recorder->setResolution(kVga));
    for (const int index : {-1, 1, 1000}) {
        QVERIFY(!recorder->setDevice(kdtWebcam, index));
        QVERIFY(!recorder->setDevice(kdtMicrophone, index));
    }
    QVERIFY(!recorder->setDevice(kdtSpeaker, 0));
    QVERIFY(!recorder->setResolution(QSize(641, 480)));
    QVERIFY(!recorder->setResolution(QSize()));
    QVERIFY(!recorder->setVideoFormat(nullptr));
    QVERIFY(!recorder->setAudioFormat(nullptr));
    KdVideoFormat format;
    for (const double rate : {0.0, -1.0, 60.0, std::nan("")}) {
        format.frameRate = rate;
        QVERIFY(!recorder->setVideoFormat(&format));
    }
    format.frameRate = 15.0;
    format.fourcc = 0;
    QVERIFY(!recorder->setVideoFormat(&format));
    QVERIFY(!recorder->getDevices(kdtWebcam, nullptr));
    QList<_KdCaptureDevInf> devices{_KdCaptureDevInf()};
    QVERIFY(!recorder->getDevices(kdtCursor, &devices));
    QVERIFY(devices.isEmpty());
    recorder->getResolutions(nullptr);
    recorder->getFrameRates(nullptr);
    recorder->addEventObserver(nullptr);
    recorder->removeEventObserver(nullptr);
    // What was chosen before holds.
    QVERIFY(recorder->startPreview());
    QVERIFY(recorder.showsFrame(kVga));
}

void tst_KdWebcamPreview::framesShowTheCamerasPicture_data()
{
    QTest::addColumn<QString>("format");
    for (const char* format : {"YUY2", "I420", "NV12", "BGRx", "MJPG"}) {
        QTest::newRow(format) << QString::fromLatin1(format);
    }
}

void tst_KdWebcamPreview::framesShowTheCamerasPicture()
{
    QFETCH(QString, format);
    VirtualCamera camera(QStringLiteral("hd_webcam"), QStringLiteral("HD Webcam"),
                         {format + QStringLiteral(":640x480@30")});
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    QVERIFY(showsThirds(recorder.events().lastFrame()));
    QVERIFY(!recorder.events().wasCalledOnTestThread());
    // The options are the display's business here.
    recorder->setRecordFlip(true);
    QVERIFY(recorder->setRecordDisplayShape(fcrsCircle));
    QVERIFY(recorder.showsFrame(kVga));
    QVERIFY(showsThirds(recorder.events().lastFrame()));
}

void tst_KdWebcamPreview::thePictureMoves()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    const QImage before = recorder.events().lastFrame();
    QTRY_VERIFY(recorder.events().lastFrame() != before);
    // And not faster than it should.
    recorder.events().clearFrames();
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY_WITH_TIMEOUT(recorder.events().frameCount() >= 60, kPatienceMs);
    QVERIFY2(timer.elapsed() > 1500, qPrintable(QString::number(timer.elapsed())));
}

void tst_KdWebcamPreview::aSizeOfARangeIsShown()
{
    VirtualCamera camera(QStringLiteral("range_cam"), QStringLiteral("Range"),
                         {QStringLiteral("YUY2:160x120-1280x720@5-60")});
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), QSize(848, 480)));
    QList<double> rates;
    recorder->getFrameRates(&rates);
    QCOMPARE(rates.first(), 30.0);
    QCOMPARE(rates.last(), 60.0);
}

void tst_KdWebcamPreview::resolutionAndRateAreSwitchedInPreview()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    QVERIFY(recorder.showAt(kHd) && recorder.showsFrame(kHd));
    QVERIFY(showsThirds(recorder.events().lastFrame()));
    QVERIFY(recorder.showAt(kVga, 15.0) && recorder.showsFrame(kVga));
    recorder.events().clearFrames();
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY_WITH_TIMEOUT(recorder.events().frameCount() >= 30, kPatienceMs);
    QVERIFY2(timer.elapsed() > 1500, qPrintable(QString::number(timer.elapsed())));
}

void tst_KdWebcamPreview::theCameraIsSwitchedInPreview()
{
    VirtualCamera first(QStringLiteral("cam_1"), QStringLiteral("First"),
                        {QStringLiteral("YUY2:640x480@30")});
    VirtualCamera second(QStringLiteral("cam_2"), QStringLiteral("Second"),
                         {QStringLiteral("MJPG:1280x720@15"), QStringLiteral("YUY2:320x240@15")});
    QVERIFY(first.plug() && second.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(first.description(), kVga));
    for (int round = 0; round < 3; ++round) {
        QVERIFY(recorder.open(second.description(), kHd));
        QVERIFY(recorder.open(first.description(), kVga));
    }
}

void tst_KdWebcamPreview::anOperationNeverWaitsForTheCamera()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtWebcam, camera.description()));
    // The best of some: a busy machine may take the processor away at any moment.
    qint64 fastest = 1000;
    for (int i = 0; i < 5; ++i) {
        QElapsedTimer timer;
        timer.start();
        QVERIFY(recorder.showAt(i % 2 ? kVga : kHd));
        QVERIFY(recorder->stopPreview());
        QVERIFY(recorder->startPreview());
        fastest = qMin(fastest, timer.elapsed());
    }
    QVERIFY2(fastest < 20, qPrintable(QString::number(fastest)));
}

void tst_KdWebcamPreview::manyStartsOpenTheCameraOnce()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    // As a panel does that sets everything again: nothing changed, and the picture goes on.
    for (int round = 0; round < 20; ++round) {
        QVERIFY(recorder->setDevice(kdtWebcam, 0));
        QVERIFY(recorder.showAt(kVga));
        QTest::qWait(10);
    }
    QVERIFY(recorder.showsFrame(kVga));
    QCOMPARE(openings(), 1);
    // And one that sets everything, thing by thing, gets the last of it.
    QVERIFY(recorder->stopPreview());
    QVERIFY(recorder.showAt(kHd) && recorder.showAt(kVga) && recorder.showAt(kHd));
    QVERIFY(recorder.showsFrame(kHd));
}

int tst_KdWebcamPreview::openings() const
{
    return static_cast<int>(logLines().filter(QStringLiteral("Opening HD Webcam")).size());
}

void tst_KdWebcamPreview::aPreviewThatEndsIsSilent()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    QVERIFY(recorder->stopPreview());
    // A call that ran already may end.
    QTRY_VERIFY([&] {
        const int count = recorder.events().frameCount();
        QTest::qWait(200);
        return recorder.events().frameCount() == count;
    }());
    QVERIFY(recorder->startPreview());
    QVERIFY(recorder.showsFrame(kVga));
}

void tst_KdWebcamPreview::framesEndWithTheirSwitch()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    recorder->setCallbackSwitch3(false);
    QTRY_VERIFY([&] {
        const int count = recorder.events().frameCount();
        QTest::qWait(200);
        return recorder.events().frameCount() == count;
    }());
    recorder->setCallbackSwitch3(true);
    QVERIFY(recorder.showsFrame(kVga));
}

void tst_KdWebcamPreview::aSlowObserverGetsFewerFramesAndHoldsNobodyUp()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture slow;
    WebcamFixture quick;
    QVERIFY(slow.open(camera.description(), kVga));
    QVERIFY(quick.open(camera.description(), kVga));
    slow.events().setSlowness(300);
    slow.events().clearFrames();
    quick.events().clearFrames();
    QTRY_VERIFY_WITH_TIMEOUT(quick.events().frameCount() >= 60, kPatienceMs);
    QVERIFY2(slow.events().frameCount() < quick.events().frameCount() / 2,
             qPrintable(QString::number(slow.events().frameCount())));
    // What it gets is new, not what waited.
    slow.events().setSlowness(0);
    QVERIFY(slow->stopPreview());
}

void tst_KdWebcamPreview::anotherCameraIsAnnounced()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    recorder.events().clear();
    VirtualCamera other(QStringLiteral("other_cam"), QStringLiteral("Other"));
    QVERIFY(other.plug());
    QVERIFY(recorder.hears(fcdWebcamListChanged));
    VirtualMicrophone microphone;
    QVERIFY(microphone.plug());
    QVERIFY(recorder.hears(fcdAudioInputAdded));
    QVERIFY(microphone.unplug());
    QVERIFY(recorder.hears(fcdAudioInputRemoved));
    QVERIFY(other.unplug());
    QVERIFY(recorder.hears(fcdWebcamRemoved));
    QCOMPARE(recorder.events().deviceEvents().size(), 4);
    QVERIFY(recorder.showsFrame(kVga));
}

void tst_KdWebcamPreview::aCameraThatGoesEndsThePreviewAndComesBack()
{
    allowCameraTrouble();
    VirtualCamera camera;
    VirtualCamera other(QStringLiteral("other_cam"), QStringLiteral("Other"));
    QVERIFY(camera.plug() && other.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    for (int round = 0; round < 3; ++round) {
        recorder.events().clear();
        QVERIFY(camera.unplug());
        QVERIFY(recorder.hears(fcdWebcamRemoved));
        QVERIFY(!recorder->startPreview()); // and never that of another camera
        recorder.events().clear();
        QVERIFY(camera.plug());
        QVERIFY(recorder.hears(fcdWebcamListChanged));
        QVERIFY(recorder->startPreview());
        QVERIFY(recorder.showsFrame(kVga));
        QVERIFY(showsThirds(recorder.events().lastFrame()));
    }
}

void tst_KdWebcamPreview::aCameraThatGivesNothingAnyMoreIsReported()
{
    allowCameraTrouble();
    expectLog(QStringLiteral("The camera HD Webcam gives nothing any more"));
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    camera.hold();
    QVERIFY(recorder.hears(fcdWebcamRemoved));
    camera.letGo();
    QVERIFY(recorder->startPreview());
    QVERIFY(recorder.showsFrame(kVga));
}

void tst_KdWebcamPreview::aCameraThatAnotherProgramHoldsIsOccupied_data()
{
    QTest::addColumn<bool>("answers");
    QTest::newRow("opens and gives nothing") << true;
    QTest::newRow("does not even open") << false;
}

void tst_KdWebcamPreview::aCameraThatAnotherProgramHoldsIsOccupied()
{
    QFETCH(bool, answers);
    allowCameraTrouble();
    allowLog(QStringLiteral("The camera HD Webcam gives nothing"));
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtWebcam, camera.description()));
    answers ? camera.occupy() : camera.hold();
    QVERIFY(recorder.showAt(kVga));
    QVERIFY(recorder.hears(fcdWebcamOccupied));
    QCOMPARE(recorder.countOf(fcdWebcamOccupied), 1);
    QCOMPARE(recorder.countOf(fcdWebcamRemoved), 0);
    QCOMPARE(recorder.events().frameCount(), 0);
    answers ? camera.free() : camera.letGo();
    QVERIFY(recorder->startPreview());
    QVERIFY(recorder.showsFrame(kVga));
}

void tst_KdWebcamPreview::theLevelIsShownBesideThePreview()
{
    QTemporaryDir sounds;
    const QString tone = sounds.filePath(QStringLiteral("tone.wav"));
    QVERIFY(TestSound::writeTone(tone, 997.0, -12.0, 30.0));
    VirtualCamera camera;
    VirtualMicrophone microphone;
    QVERIFY(camera.plug() && microphone.plug() && microphone.play(tone));
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    QVERIFY(recorder.events().levels().isEmpty());
    QVERIFY(recorder.choose(kdtMicrophone, microphone.description()));
    QTRY_VERIFY2(std::abs(recorder.events().lastLevel() - 80) <= 1,
                 qPrintable(QString::number(recorder.events().lastLevel())));
    // Who looks at nothing is not listened to.
    QVERIFY(recorder->stopPreview());
    QTRY_COMPARE(recorder.events().lastLevel(), 0);
}

void tst_KdWebcamPreview::removingTheObserverAmongFramesIsABarrier()
{
    VirtualCamera camera;
    QVERIFY(camera.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(camera.description(), kVga));
    for (int round = 0; round < 100; ++round) {
        auto events = std::make_unique<WebcamEvents>();
        recorder->addEventObserver(events.get());
        if (round % 2) {
            QTRY_VERIFY(events->frameCount() > 0);
        }
        recorder->removeEventObserver(events.get());
        events.reset();
    }
}

void tst_KdWebcamPreview::manyRoundsLeakNothing()
{
    constexpr int kAtATime = 5;
    // As many fewer as a sanitizer, which looks for leaks itself, makes them slower.
    const int rounds = 1000 / KdTest::patience(1);
    constexpr qint64 kMostKbPerRound = 2;
    VirtualCamera camera;
    QVERIFY(camera.plug());
    const auto playRounds = [&camera] {
        std::array<WebcamFixture, kAtATime> recorders;
        const auto opens = [&camera](WebcamFixture& recorder) {
            return recorder.choose(kdtWebcam, camera.description()) &&
                   recorder.showAt(QSize(320, 240));
        };
        const auto shows = [](WebcamFixture& recorder) {
            return recorder.showsFrame(QSize(320, 240));
        };
        return std::all_of(recorders.begin(), recorders.end(), opens) &&
               std::all_of(recorders.begin(), recorders.end(), shows);
    };
    for (int warmUp = 0; warmUp < 4; ++warmUp) {
        QVERIFY(playRounds());
    }
    const ProcessUse before = ProcessUse::now();
    for (int round = 0; round < rounds; round += kAtATime) {
        QVERIFY(playRounds());
    }
    QTRY_VERIFY2(ProcessUse::now().files <= before.files,
                 qPrintable(QString::number(ProcessUse::now().files - before.files)));
    QTRY_VERIFY2(ProcessUse::now().threads <= before.threads,
                 qPrintable(QString::number(ProcessUse::now().threads - before.threads)));
    const qint64 grownKb = ProcessUse::now().heapKb - before.heapKb;
    QVERIFY2(grownKb < kMostKbPerRound * rounds,
             qPrintable(QStringLiteral("%1 kB more").arg(grownKb)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamPreview>(argc, argv);
}

#include "tst_KdWebcamPreview.moc"
