#include "CameraFixture.h"

#include <Support/ClipProbe.h>
#include <Support/MediaProbe.h>
#include <Support/Patience.h>
#include <Support/TestFiles.h>

#include <QElapsedTimer>

#include <cmath>

using namespace KdVBLMODEL;

namespace {

/** The brightness of a place of a decoded picture, 16 to 235. */
int lumaAt(const QByteArray& picture, QSize size, double x, double y)
{
    const int row = static_cast<int>(y * size.height());
    const int column = static_cast<int>(x * size.width());
    const int at = row * size.width() + column;
    return at < picture.size() ? static_cast<uchar>(picture[at]) : -1;
}

// The virtual camera's thirds.
constexpr int kRedLuma = 82;
constexpr int kGreenLuma = 124;
constexpr int kBlueLuma = 58;

bool isNear(int value, int wanted)
{
    return std::abs(value - wanted) < 10;
}

/** Whether the middle line of a picture shows these from left to right. */
bool shows(const QByteArray& picture, QSize size, int left, int middle, int right)
{
    return isNear(lumaAt(picture, size, 1.0 / 6, 0.5), left) &&
           isNear(lumaAt(picture, size, 3.0 / 6, 0.5), middle) &&
           isNear(lumaAt(picture, size, 5.0 / 6, 0.5), right);
}

} // namespace

/** Takes of a camera, with and without a microphone. */
class tst_KdWebcamRecorder : public CameraFixture
{
    Q_OBJECT

private Q_SLOTS:
    void withoutACameraThereIsNoTake();
    void withoutTheMicrophoneThatItNeedsThereIsNoTake();
    void aTakeHoldsWhatTheCameraGave_data();
    void aTakeHoldsWhatTheCameraGave();
    void aTakeOfJpegPicturesHasTheirColours();
    void thePreviewGoesOnWhileATakeStartsPausesAndStops();
    void aTakeNeedsNoPreview();
    void flipAndShapeAreRecordedAndNotPreviewed();
    void tenPausesAreInNeitherFileNorTime();
    void aTakeIsRecordedAgainUnderItsName();
    void aFileOfSomebodyElseIsLeftAlone();
    void aSecondStartEndsTheTakeAndBeginsAnother();
    void whatIsSetInMidTakeCountsFromTheNextStart();
    void callsOutOfOrderAreHarmless();
    void anUnusableOutputFileIsRefused();
};

void tst_KdWebcamRecorder::withoutACameraThereIsNoTake()
{
    expectLog(QStringLiteral("There is nothing to record: no chosen camera is there"));
    WebcamFixture recorder;
    QVERIFY(!recorder.record(takePath()));
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QVERIFY(!QFile::exists(takePath()));
    QVERIFY(recorder->stop());
}

void tst_KdWebcamRecorder::withoutTheMicrophoneThatItNeedsThereIsNoTake()
{
    expectLog(QStringLiteral("There is nothing to record: no chosen audio input is there"));
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(!recorder.record(takePath(), true));
    QVERIFY(!QFile::exists(takePath()));
    QVERIFY(recorder.showsFrame(kVga));
    QVERIFY(recorder.record(takePath(), false));
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(recorder->stop());
}

void tst_KdWebcamRecorder::aTakeHoldsWhatTheCameraGave_data()
{
    QTest::addColumn<bool>("withSound");
    QTest::newRow("with sound") << true;
    QTest::newRow("without sound") << false;
}

void tst_KdWebcamRecorder::aTakeHoldsWhatTheCameraGave()
{
    QFETCH(bool, withSound);
    QVERIFY(plugBoth());
    WebcamFixture recorder;
    QVERIFY(prepare(recorder));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(recorder.record(takePath(), withSound));
    QVERIFY2(timer.elapsed() < KdTest::patience(300), qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(recorder->curStatus(), fcsRecording);
    QCOMPARE(recorder->getOutputFile(), takePath());
    QVERIFY(recorder.waitForTime(3000));
    timer.start();
    QVERIFY(recorder->stop());
    QVERIFY2(timer.elapsed() < KdTest::patience(2000),
             qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(recorder->curStatus(), fcsNoStart);

    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QCOMPARE(info.videoCodec, QStringLiteral("h264"));
    QCOMPARE(info.audioCodec, withSound ? QStringLiteral("aac") : QString());
    QCOMPARE(QSize(info.width, info.height), kVga);
    const double told = double(recorder.events().lastTime()) / 1000.0;
    QVERIFY2(std::abs(info.seconds - told) < 0.2,
             qPrintable(QStringLiteral("%1 s, told %2").arg(info.seconds).arg(told)));
    const ClipInfo clip = ClipProbe::probe(takePath());
    // A busy machine may lose some; a frozen picture would be one.
    QVERIFY2(clip.pictures() > 60, qPrintable(QString::number(clip.pictures())));
    for (const int index : {0, clip.pictures() / 2, clip.pictures() - 1}) {
        QVERIFY(
            shows(ClipProbe::picture(takePath(), index), kVga, kRedLuma, kGreenLuma, kBlueLuma));
    }
    QVERIFY(ClipProbe::picture(takePath(), 10) != ClipProbe::picture(takePath(), 40));
    if (withSound) {
        const double loudness = MediaProbe::steadyToneDecibel(takePath(), 997.0);
        QVERIFY2(std::abs(loudness + 12.0) < 1.0, qPrintable(QString::number(loudness)));
        QVERIFY(std::abs(clip.soundLength - clip.pictureLength) < 0.04);
    }
    QVERIFY(!recorder.events().wasCalledOnTestThread());
}

void tst_KdWebcamRecorder::aTakeOfJpegPicturesHasTheirColours()
{
    m_camera = std::make_unique<VirtualCamera>(QStringLiteral("jpeg_cam"), QStringLiteral("JPEG"),
                                               QStringList(QStringLiteral("MJPG:640x480@30")));
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder->stop());
    QVERIFY(shows(ClipProbe::picture(takePath(), 5), kVga, kRedLuma, kGreenLuma, kBlueLuma));
}

void tst_KdWebcamRecorder::thePreviewGoesOnWhileATakeStartsPausesAndStops()
{
    QVERIFY(plugBoth());
    WebcamFixture recorder;
    QVERIFY(prepare(recorder));
    QVERIFY(recorder.record(takePath(), true));
    QVERIFY(recorder.showsFrame(kVga));
    QVERIFY(recorder->pause());
    QCOMPARE(recorder->curStatus(), fcsPaused);
    QVERIFY(recorder.showsFrame(kVga));
    QVERIFY(recorder->resume());
    QVERIFY(recorder.showsFrame(kVga));
    // A preview that is started again, as panels do, disturbs nothing.
    QVERIFY(recorder->startPreview());
    const qint64 told = qMax<qint64>(0, recorder.events().lastTime());
    QVERIFY(recorder.waitForTime(told + 500));
    QVERIFY(recorder->stop());
    QVERIFY(recorder.showsFrame(kVga));
    QVERIFY(MediaProbe::probe(takePath()).isReadable);
}

void tst_KdWebcamRecorder::aTakeNeedsNoPreview()
{
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder->stopPreview());
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(300));
    recorder.events().clearFrames();
    QVERIFY(recorder.waitForTime(1000));
    QCOMPARE(recorder.events().frameCount(), 0);
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(takePath()).isReadable);
}

void tst_KdWebcamRecorder::flipAndShapeAreRecordedAndNotPreviewed()
{
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QCOMPARE(recorder->getRecordDisplayShape(), fcrsSquare);
    QVERIFY(!recorder->getRecordFlip());
    recorder->setRecordFlip(true);
    QVERIFY(recorder->setRecordDisplayShape(fcrsCircle));
    QVERIFY(!recorder->setRecordDisplayShape(_KdCaptureRecordShape(7)));
    QVERIFY(recorder->getRecordFlip());
    QCOMPARE(recorder->getRecordDisplayShape(), fcrsCircle);
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(500));
    const QColor left = recorder.events().lastFrame().pixelColor(20, 20);
    QVERIFY(left.red() > 180 && left.blue() < 80);
    QVERIFY(recorder->stop());
    const QByteArray picture = ClipProbe::picture(takePath(), 5);
    QVERIFY(isNear(lumaAt(picture, kVga, 0.25, 0.5), kBlueLuma));
    QVERIFY(isNear(lumaAt(picture, kVga, 0.75, 0.5), kRedLuma));
    for (const double x : {0.02, 0.98}) {
        for (const double y : {0.02, 0.98}) {
            QVERIFY(isNear(lumaAt(picture, kVga, x, y), 16));
        }
    }
}

void tst_KdWebcamRecorder::tenPausesAreInNeitherFileNorTime()
{
    QVERIFY(plugBoth());
    WebcamFixture recorder;
    QVERIFY(prepare(recorder));
    QVERIFY(recorder.record(takePath(), true));
    QVERIFY(recorder.waitForTime(200));
    for (int i = 1; i <= 10; ++i) {
        QVERIFY(recorder.waitForTime(200 + 200LL * i));
        QVERIFY(recorder->pause());
        const qint64 told = recorder.events().lastTime();
        QVERIFY(recorder.showsFrame(kVga)); // some time passes
        QTest::qWait(100);
        QVERIFY(recorder.events().lastTime() <= told + 200);
        QVERIFY(recorder->resume());
    }
    QVERIFY(recorder.waitForTime(2700));
    QVERIFY(recorder->stop());
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    const double told = double(recorder.events().lastTime()) / 1000.0;
    QVERIFY2(std::abs(info.seconds - told) < 0.2,
             qPrintable(QStringLiteral("%1 s, told %2").arg(info.seconds).arg(told)));
    const ClipInfo clip = ClipProbe::probe(takePath());
    QVERIFY(std::abs(clip.soundLength - clip.pictureLength) < 0.04);
}

void tst_KdWebcamRecorder::aTakeIsRecordedAgainUnderItsName()
{
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(1500));
    QVERIFY(recorder->stop());
    recorder->setRecordFlip(true);
    recorder.events().clear();
    QVERIFY(recorder->start());
    QVERIFY(recorder.waitForTime(500));
    QVERIFY(recorder->stop());
    const MediaInfo info = MediaProbe::probe(takePath());
    QVERIFY2(info.isReadable, qPrintable(info.complaint));
    QVERIFY2(info.seconds < 1.2, qPrintable(QString::number(info.seconds)));
    QVERIFY(shows(ClipProbe::picture(takePath(), 5), kVga, kBlueLuma, kGreenLuma, kRedLuma));
    QCOMPARE(QDir(QFileInfo(takePath()).path()).entryList(QDir::Files | QDir::Hidden),
             QStringList(QStringLiteral("take.mp4")));
    // One that never begins costs nothing.
    allowCameraTrouble();
    allowLog(QStringLiteral("The camera HD Webcam gives nothing"));
    QVERIFY(recorder->stopPreview());
    m_camera->occupy();
    recorder.events().clear();
    recorder->start();
    QVERIFY(recorder.hears(fcdWebcamOccupied));
    recorder->stop();
    QVERIFY(std::abs(MediaProbe::probe(takePath()).seconds - info.seconds) < 0.001);
}

void tst_KdWebcamRecorder::aFileOfSomebodyElseIsLeftAlone()
{
    allowLog(QStringLiteral("KdTakeFile|KdWebcamTake|KdClipWriter"));
    TestFiles::write(takePath(), "precious");
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(!recorder.record(takePath()));
    QCOMPARE(recorder->curStatus(), fcsNoStart);
    QCOMPARE(TestFiles::read(takePath()), QByteArray("precious"));
    QVERIFY(recorder.showsFrame(kVga));
}

void tst_KdWebcamRecorder::aSecondStartEndsTheTakeAndBeginsAnother()
{
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    const QString first = takePath(QStringLiteral("first.mp4"));
    const QString second = takePath(QStringLiteral("second.mp4"));
    QVERIFY(recorder.record(first));
    QVERIFY(recorder.waitForTime(400));
    QVERIFY(recorder.record(second));
    QCOMPARE(recorder->getOutputFile(), second);
    QVERIFY(recorder.waitForTime(400));
    QVERIFY(recorder->stop());
    QVERIFY(MediaProbe::probe(first).isReadable);
    QVERIFY(MediaProbe::probe(second).isReadable);
}

void tst_KdWebcamRecorder::whatIsSetInMidTakeCountsFromTheNextStart()
{
    VirtualCamera other(QStringLiteral("other_cam"), QStringLiteral("Other"),
                        {QStringLiteral("YUY2:320x240@30")});
    QVERIFY(other.plug() && m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(200));
    QVERIFY(recorder.choose(kdtWebcam, other.description()));
    QVERIFY(recorder->startPreview());
    recorder->setOutputFile(takePath(QStringLiteral("next.mp4")));
    QCOMPARE(recorder->getOutputFile(), takePath());
    QVERIFY(recorder.waitForTime(700));
    QCOMPARE(recorder.events().lastSize(), kVga);
    QVERIFY(recorder->stop());
    QCOMPARE(MediaProbe::probe(takePath()).width, 640);
    QVERIFY(recorder.showsFrame(kSmall));
    recorder.events().clear();
    QVERIFY(recorder->start());
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(recorder->stop());
    QCOMPARE(MediaProbe::probe(takePath(QStringLiteral("next.mp4"))).width, 320);
}

void tst_KdWebcamRecorder::callsOutOfOrderAreHarmless()
{
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(!recorder->pause());
    QVERIFY(!recorder->resume());
    QVERIFY(recorder->stop());
    QVERIFY(recorder->setOnlyWebcam(true));
    recorder->setInterval(-5);
    QVERIFY(recorder.open(m_camera->description(), kVga));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(!recorder->resume());
    QVERIFY(recorder->pause());
    QVERIFY(!recorder->pause());
    QVERIFY(recorder->resume());
    QVERIFY(recorder.waitForTime(300));
    QVERIFY(recorder->stop());
    QVERIFY(recorder->stop());
}

void tst_KdWebcamRecorder::anUnusableOutputFileIsRefused()
{
    allowLog(QStringLiteral("KdTakeFile|KdWebcamTake|KdClipWriter"));
    QVERIFY(m_camera->plug());
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kVga));
    for (const QString& path : {QString(), QStringLiteral("/proc/take.mp4"),
                                takePath(QStringLiteral("no/such/take.mp4")), QDir::tempPath()}) {
        QVERIFY2(!recorder.record(path), qPrintable(path));
        QCOMPARE(recorder->curStatus(), fcsNoStart);
    }
    QVERIFY(recorder.showsFrame(kVga));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorder>(argc, argv);
}

#include "tst_KdWebcamRecorder.moc"
