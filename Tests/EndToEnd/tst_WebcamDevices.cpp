#include "ClipPicture.h"
#include "WebcamStage.h"

#include <KdRecord/KdCountCtrl.h>
#include <KdWidgets/KdToolButton.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/Patience.h>

#include <QFileInfo>

/** Cameras, sizes and rates that are chosen, and devices that come and go. */
class tst_WebcamDevices : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void sizeAndRateAreSwitchedInPreview();
    void cameraIsSwitchedInPreview();
    void secondCameraIsListedWhenItComes();
    void cameraThatGoesInPreviewComesBack();
    void cameraThatGoesInTheCountdownEndsIt();
    void cameraThatGoesInMidTakeLeavesTheClip();
    void microphoneThatGoesInMidTakeLeavesTheClip();
    void takeGoesOnWhenACameraOfThatNameGoes();
    void occupiedCameraIsSaid();

private:
    QString folder() const { return temporaryPath(QStringLiteral("clips")); }
    /** Everything that a device's end may log. */
    void allowLossInLog()
    {
        allowLog(QStringLiteral("(?i)disconnected|lost|gone|killed|removed|no longer|"
                                "no such entity|gives nothing|Failed to|handle|error"));
    }
    static QStringList sorted(QStringList list)
    {
        list.sort();
        return list;
    }
    static QStringList none() { return {QStringLiteral("No Device")}; }
};

void tst_WebcamDevices::sizeAndRateAreSwitchedInPreview()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    QCOMPARE(sorted(stage.choices(WebcamStage::kResolution)),
             (QStringList{QStringLiteral("1280x720"), QStringLiteral("320x240"),
                          QStringLiteral("640x480")}));
    stage.choose(WebcamStage::kResolution, QStringLiteral("640x480"));
    QVERIFY(stage.waitForPicture(QSize(640, 480)));
    QCOMPARE(sorted(stage.choices(WebcamStage::kFrameRate)),
             (QStringList{QStringLiteral("15 fps"), QStringLiteral("30 fps")}));
    stage.choose(WebcamStage::kFrameRate, QStringLiteral("15 fps"));
    QVERIFY(stage.waitForPicture(QSize(640, 480)));
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(2500));
    QVERIFY(stage.stopTake());
    const WebcamStage::Report report = stage.lastReport();
    QCOMPARE(report.fileInfo.value(QLatin1String("frame_rate")).toString(),
             QStringLiteral("15fps"));
    const MediaInfo media = MediaProbe::probe(report.path);
    QCOMPARE(QSize(media.width, media.height), QSize(640, 480));
    stage.choose(WebcamStage::kResolution, QStringLiteral("320x240"));
    QVERIFY(stage.waitForPicture(QSize(320, 240)));
}

void tst_WebcamDevices::cameraIsSwitchedInPreview()
{
    WebcamStage stage(folder());
    VirtualCamera other(QStringLiteral("small_cam"), QStringLiteral("Small Camera"),
                        {QStringLiteral("MJPG:320x240@30")});
    QVERIFY(stage.camera().plug());
    QVERIFY(other.plug());
    QVERIFY(stage.open());
    QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera).size(), 2, 8000);
    for (int round = 0; round < 2; ++round) {
        stage.choose(WebcamStage::kCamera, other.description());
        QVERIFY(stage.waitForPicture(QSize(320, 240)));
        QCOMPARE(stage.choices(WebcamStage::kResolution), QStringList(QStringLiteral("320x240")));
        stage.choose(WebcamStage::kCamera, stage.camera().description());
        QTRY_COMPARE(stage.choices(WebcamStage::kResolution).size(), 3);
    }
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1300));
    QVERIFY(stage.stopTake());
    QCOMPARE(stage.lastReport().fileInfo.value(QLatin1String("device_name")).toString(),
             stage.camera().description());
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
}

void tst_WebcamDevices::secondCameraIsListedWhenItComes()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    VirtualCamera other(QStringLiteral("other_cam"), QStringLiteral("Other Camera"));
    QVERIFY(other.plug());
    QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera).size(), 2, 8000);
    // The one that was shown stays chosen.
    QTRY_COMPARE(stage.choice(WebcamStage::kCamera), stage.camera().description());
    QVERIFY(other.unplug());
    QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera),
                              QStringList(stage.camera().description()), 8000);
}

void tst_WebcamDevices::cameraThatGoesInPreviewComesBack()
{
    allowLossInLog();
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    for (int round = 0; round < 2; ++round) {
        stage.answers().answerMessage(QDialogButtonBox::Ok);
        QVERIFY(stage.camera().unplug());
        QTRY_COMPARE_WITH_TIMEOUT(stage.answers().pending(), 0, 8000);
        QCOMPARE(stage.answers().messages().last(),
                 QStringLiteral("The Camera HD Webcam is lost."));
        QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera), none(), 8000);
        QVERIFY(!stage.control<KdToolButton>(WebcamStage::kStart)->isEnabled());
        QVERIFY(stage.camera().plug());
        QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera),
                                  QStringList(stage.camera().description()), 8000);
        QTRY_VERIFY(stage.control<KdToolButton>(WebcamStage::kStart)->isEnabled());
        QVERIFY(stage.waitForPicture(QSize(1280, 720)));
    }
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1300));
    QVERIFY(stage.stopTake());
    QVERIFY(MediaProbe::probe(stage.lastReport().path).isReadable);
}

void tst_WebcamDevices::cameraThatGoesInTheCountdownEndsIt()
{
    allowLossInLog();
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    stage.setCountdown(9);
    stage.press(WebcamStage::kStart);
    auto* const countdown = stage.control<KdCountCtrl>("KCameraCapture_Countdown");
    QTRY_VERIFY_WITH_TIMEOUT(countdown->isVisible(), 5000);
    stage.answers().answerMessage(QDialogButtonBox::Ok);
    QVERIFY(stage.camera().unplug());
    QTRY_VERIFY_WITH_TIMEOUT(!countdown->isVisible(), 8000);
    QTRY_COMPARE_WITH_TIMEOUT(stage.answers().messages(),
                              QStringList(QStringLiteral("The Camera HD Webcam is lost.")), 8000);
    QTRY_VERIFY(!stage.control<KdToolButton>(WebcamStage::kStart)->isChecked());
    QVERIFY(!stage.isRecording());
}

void tst_WebcamDevices::cameraThatGoesInMidTakeLeavesTheClip()
{
    allowLossInLog();
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(3000));
    stage.answers().answerMessage(QDialogButtonBox::Ok);
    QVERIFY(stage.camera().unplug());
    const qint64 recorded = stage.lastElapsed();
    QTRY_COMPARE_WITH_TIMEOUT(stage.answers().messages(),
                              QStringList(QStringLiteral("The Camera HD Webcam is lost.")), 10000);
    QVERIFY(stage.waitForReports(1));
    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(media.seconds * 1000.0 >= static_cast<double>(recorded) - 200.0,
             qPrintable(QStringLiteral("%1 s kept of %2 ms").arg(media.seconds).arg(recorded)));
    QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera), none(), 8000);
    QVERIFY(stage.camera().plug());
    QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera),
                              QStringList(stage.camera().description()), 8000);
    QVERIFY(stage.waitForPicture(QSize(1280, 720)));
}

void tst_WebcamDevices::microphoneThatGoesInMidTakeLeavesTheClip()
{
    allowLossInLog();
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.microphone().plug());
    QVERIFY(stage.open());
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(3000));
    stage.answers().answerMessage(QDialogButtonBox::Ok);
    QVERIFY(stage.microphone().unplug());
    const qint64 recorded = stage.lastElapsed();
    QTRY_COMPARE_WITH_TIMEOUT(
        stage.answers().messages(),
        QStringList(QStringLiteral("Audio device USB Microphone connection lost.")), 10000);
    QVERIFY(stage.waitForReports(1));
    const MediaInfo media = MediaProbe::probe(stage.lastReport().path);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(media.seconds * 1000.0 >= static_cast<double>(recorded) - 200.0,
             qPrintable(QStringLiteral("%1 s kept of %2 ms").arg(media.seconds).arg(recorded)));
    QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kMicrophone), none(), 8000);
    QVERIFY(stage.control<KdToolButton>(WebcamStage::kStart)->isEnabled());
}

void tst_WebcamDevices::takeGoesOnWhenACameraOfThatNameGoes()
{
    const QString name = QStringLiteral("HD Webcam");
    // Outlives the dialog, which opens it again when its list is made anew.
    VirtualCamera twin(QStringLiteral("twin_cam"), name, {QStringLiteral("MJPG:320x240@30")});
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    QVERIFY(twin.plug());
    const QString twinName = name + QStringLiteral(" (2)");
    QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera), (QStringList{name, twinName}),
                              8000);
    stage.choose(WebcamStage::kCamera, twinName);
    QVERIFY(stage.waitForPicture(QSize(320, 240)));
    QVERIFY(stage.startTake());
    QVERIFY(stage.waitForElapsed(1000));
    QVERIFY(stage.camera().unplug());
    QVERIFY(stage.waitForElapsed(stage.lastElapsed() + 1500));
    QVERIFY(stage.isRecording());
    QVERIFY(stage.stopTake());
    QTRY_COMPARE_WITH_TIMEOUT(stage.choices(WebcamStage::kCamera), QStringList(twinName), 8000);
    QCOMPARE(stage.answers().messages(), QStringList());
    QCOMPARE(stage.lastReport().fileInfo.value(QLatin1String("device_name")).toString(), twinName);
}

void tst_WebcamDevices::occupiedCameraIsSaid()
{
    allowLossInLog();
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    stage.camera().occupy();
    stage.answers().answerMessage(QDialogButtonBox::Ok);
    stage.show();
    QTRY_COMPARE_WITH_TIMEOUT(
        stage.answers().messages(),
        QStringList(QStringLiteral("Webcam is being used by another application, please close "
                                   "other application and try again.")),
        KdTest::patience(10000));
    QVERIFY(stage.view());
    stage.camera().free();
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamDevices>(argc, argv);
}

#include "tst_WebcamDevices.moc"
