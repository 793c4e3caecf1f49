#include "ClipPicture.h"
#include "WebcamStage.h"

#include <Support/ClipProbe.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

/** A clip from the red button to the file in the host's hands, and the options it is recorded with.
 */
class tst_WebcamTake : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void clipIsRecordedAsChosenAndReported_data();
    void clipIsRecordedAsChosenAndReported();
    void flipAndCircleAreSeenAndRecordedAlike();

private:
    QString folder() const { return temporaryPath(QStringLiteral("clips")); }
    void checkReport(const WebcamStage& stage) const;
    void checkPictures(const WebcamStage::Report& report, double seconds) const;
};

void tst_WebcamTake::clipIsRecordedAsChosenAndReported_data()
{
    QTest::addColumn<bool>("sound");
    QTest::newRow("with sound") << true;
    QTest::newRow("without sound") << false;
}

void tst_WebcamTake::clipIsRecordedAsChosenAndReported()
{
    QFETCH(bool, sound);
    WebcamStage stage(folder());
    const QString tone = temporaryPath(QStringLiteral("tone.wav"));
    QVERIFY(TestSound::writeTone(tone, 1000.0, -12.0, 60.0));
    QVERIFY(stage.camera().plug());
    QVERIFY(!sound || stage.microphone().plug());
    QVERIFY(stage.open());
    QCOMPARE(stage.choice(WebcamStage::kCamera), stage.camera().description());
    stage.choose(WebcamStage::kResolution, QStringLiteral("1280x720"));
    QVERIFY(stage.waitForPicture(QSize(1280, 720)));
    QVERIFY(!sound || stage.microphone().play(tone));
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(5000));
    QVERIFY(stage.stopTake());

    checkReport(stage);
    const WebcamStage::Report report = stage.lastReport();
    const MediaInfo media = MediaProbe::probe(report.path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QCOMPARE(media.videoCodec, QStringLiteral("h264"));
    QCOMPARE(media.audioCodec, sound ? QStringLiteral("aac") : QString());
    QCOMPARE(QSize(media.width, media.height), QSize(1280, 720));
    const double elapsed = static_cast<double>(stage.lastElapsed()) / 1000.0;
    QVERIFY2(std::abs(media.seconds - elapsed) <= 0.150,
             qPrintable(QStringLiteral("%1 s, %2 s reported").arg(media.seconds).arg(elapsed)));
    if (sound) {
        QVERIFY(MediaProbe::meanDecibel(report.path, 0.5, 4.0) > -25.0);
    }
    checkPictures(report, media.seconds);
}

void tst_WebcamTake::checkReport(const WebcamStage& stage) const
{
    QCOMPARE(stage.reports().size(), 1);
    const WebcamStage::Report report = stage.lastReport();
    QCOMPARE(QFileInfo(report.path).absolutePath(), folder());
    QVERIFY(QRegularExpression(QStringLiteral("^VID_\\d{8}_\\d{6}\\.mp4$"))
                .match(QFileInfo(report.path).fileName())
                .hasMatch());
    const QJsonObject expected{
        {QStringLiteral("video_resolution"), QStringLiteral("1280x720")},
        {QStringLiteral("frame_rate"), QStringLiteral("30fps")},
        {QStringLiteral("record_type"), QStringLiteral("camera_record")},
        {QStringLiteral("file_duration"), 5},
        {QStringLiteral("device_name"), QStringLiteral("HD Webcam")},
        {QStringLiteral("camera_record_backgroud"), QString()},
        {QStringLiteral("camera_record_shape"), QStringLiteral("square")},
        {QStringLiteral("is_use_mirror"), false},
        {QStringLiteral("is_camera_zoom"), true},
    };
    QCOMPARE(report.fileInfo, expected);
    QCOMPARE(report.fileExportInfo.value(QLatin1String("video_codec")).toString(),
             QStringLiteral("H264"));
    QCOMPARE(QDir(folder()).entryList(QDir::Files | QDir::Hidden),
             QStringList(QFileInfo(report.path).fileName()));
}

void tst_WebcamTake::checkPictures(const WebcamStage::Report& report, double seconds) const
{
    const ClipInfo clip = ClipProbe::probe(report.path);
    const double rate = clip.pictures() / seconds;
    QVERIFY2(std::abs(rate - 30.0) <= 1.5, qPrintable(QStringLiteral("%1 a second").arg(rate)));
    const double longest =
        *std::max_element(clip.pictureLengths.cbegin(), clip.pictureLengths.cend());
    QVERIFY2(longest <= 0.25, qPrintable(QStringLiteral("%1 s without motion").arg(longest)));
    QSet<int> places;
    for (const double second : {0.05, 1.0, 2.0, 3.0, 4.0, 4.8}) {
        const QImage picture = ClipPicture::at(report.path, second);
        QCOMPARE(picture.size(), QSize(1280, 720));
        QVERIFY(ClipPicture::isRed(picture.pixelColor(200, 300)));
        QVERIFY(ClipPicture::isGreen(picture.pixelColor(640, 300)));
        QVERIFY(ClipPicture::isBlue(picture.pixelColor(1080, 300)));
        places.insert(ClipPicture::squareAt(picture));
    }
    QVERIFY2(places.size() >= 4 && !places.contains(-1), "The square does not move");
}

void tst_WebcamTake::flipAndCircleAreSeenAndRecordedAlike()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    stage.pressOption("KRecorder_Mirror_RoundBtn");
    stage.pressOption("KRecorder_Circle_RoundBtn");
    QVERIFY(stage.waitForPicture(QSize(1280, 720)));
    const auto isFlippedAndRound = [](const QImage& picture) {
        const auto at = [&picture](double x, double y) {
            return picture.pixelColor(static_cast<int>(x * picture.width()),
                                      static_cast<int>(y * picture.height()));
        };
        // Blue is at the left now, as far as the circle lets it be seen.
        return ClipPicture::isBlue(at(0.30, 0.5)) && ClipPicture::isGreen(at(0.5, 0.5)) &&
               ClipPicture::isRed(at(0.70, 0.5)) && ClipPicture::isBlack(at(0.02, 0.5)) &&
               ClipPicture::isBlack(at(0.98, 0.5)) && ClipPicture::isBlack(at(0.25, 0.04));
    };
    QTRY_VERIFY(isFlippedAndRound(stage.shownPicture()));
    const QImage shown = stage.shownPicture();
    const QString path = stage.recordClip(1500);
    QVERIFY(!path.isEmpty());
    const QImage recorded = ClipPicture::at(path, 0.8);
    QVERIFY(isFlippedAndRound(recorded));
    const double apart = ClipPicture::difference(shown, recorded);
    QVERIFY2(apart < 6.0, qPrintable(QString::number(apart)));
    const QJsonObject info = stage.lastReport().fileInfo;
    QCOMPARE(info.value(QLatin1String("camera_record_shape")).toString(), QStringLiteral("circle"));
    QCOMPARE(info.value(QLatin1String("is_use_mirror")).toBool(), true);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamTake>(argc, argv);
}

#include "tst_WebcamTake.moc"
