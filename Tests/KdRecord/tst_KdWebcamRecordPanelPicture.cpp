#include "WebcamRecordFixture.h"

#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecorderCodes.h>
#include <Support/WidgetLooks.h>

using namespace KdVBLMODEL;

/** When the webcam panel shows what the camera sees, and when it is black. */
class tst_KdWebcamRecordPanelPicture : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void newPanelIsBlackUntilItIsFilled();
    void changeOfTheSourceIsBlackAtFirst_data();
    void changeOfTheSourceIsBlackAtFirst();
    void choiceOfOtherThingsLeavesThePicture_data();
    void choiceOfOtherThingsLeavesThePicture();
    void responseBringsThePictureBack_data();
    void responseBringsThePictureBack();
    void lossInATakeIsBlackUntilItsReport_data();
    void lossInATakeIsBlackUntilItsReport();
    void reportOfALossIsBlack();
    void abortIsBlack_data();
    void abortIsBlack();

private:
    bool showsFrames() const;
    void showPicture();
    void respond(int response);
};

/** Without a turn of the event loop, so that nothing that waits for its time begins meanwhile. */
bool tst_KdWebcamRecordPanelPicture::showsFrames() const
{
    QImage frame(64, 36, QImage::Format_ARGB32);
    frame.fill(Qt::red);
    engine->deliverFrame(frame);
    auto* const display = control<KdWebCamDisplayLabel>(kDisplay);
    return WidgetLooks::colorAt(*display, display->rect().center()) == QColor(Qt::red);
}

void tst_KdWebcamRecordPanelPicture::showPicture()
{
    showPanel();
    QTRY_VERIFY(showsFrames());
}

void tst_KdWebcamRecordPanelPicture::respond(int response)
{
    QVERIFY(QMetaObject::invokeMethod(panel, "slotRecorderResponeType", Q_ARG(int, response)));
}

void tst_KdWebcamRecordPanelPicture::newPanelIsBlackUntilItIsFilled()
{
    makePanel();
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QVERIFY(!showsFrames());
    panel->InitUI();
    QTRY_VERIFY(showsFrames());
}

void tst_KdWebcamRecordPanelPicture::changeOfTheSourceIsBlackAtFirst_data()
{
    QTest::addColumn<QString>("what");
    for (const char* const what : {"reload", "camera", "size"}) {
        QTest::newRow(what) << QString::fromLatin1(what);
    }
}

void tst_KdWebcamRecordPanelPicture::changeOfTheSourceIsBlackAtFirst()
{
    QFETCH(QString, what);
    showPicture();
    if (what == QLatin1String("reload")) {
        panel->InitUI();
    } else if (what == QLatin1String("camera")) {
        choose(kCamera, QStringLiteral("Cam B"));
    } else {
        choose(kResolution, QStringLiteral("640x480"));
    }
    QVERIFY(!showsFrames());
    QTRY_VERIFY(showsFrames());
}

void tst_KdWebcamRecordPanelPicture::choiceOfOtherThingsLeavesThePicture_data()
{
    QTest::addColumn<QString>("what");
    for (const char* const what : {"microphone", "rate", "take"}) {
        QTest::newRow(what) << QString::fromLatin1(what);
    }
}

void tst_KdWebcamRecordPanelPicture::choiceOfOtherThingsLeavesThePicture()
{
    QFETCH(QString, what);
    showPicture();
    if (what == QLatin1String("microphone")) {
        choose(kMicrophone, QStringLiteral("Mic B"));
    } else if (what == QLatin1String("rate")) {
        choose(kFrameRate, QStringLiteral("15 fps"));
    } else {
        startTake();
        QVERIFY(showsFrames());
        passTime(5000);
        stopTake();
    }
    QVERIFY(showsFrames());
}

void tst_KdWebcamRecordPanelPicture::responseBringsThePictureBack_data()
{
    QTest::addColumn<int>("response");
    QTest::newRow("camera switched") << int(KdWebcamResponse::WebcamSwitched);
    QTest::newRow("camera present") << int(KdWebcamResponse::WebcamPresent);
    QTest::newRow("resolution switched") << int(KdWebcamResponse::ResolutionSwitched);
}

void tst_KdWebcamRecordPanelPicture::responseBringsThePictureBack()
{
    QFETCH(int, response);
    showPicture();
    control<KdWebCamDisplayLabel>(kDisplay)->stopRender();
    QVERIFY(!showsFrames());
    respond(response);
    // What the camera still has of its former setting is not shown.
    QVERIFY(!showsFrames());
    QTRY_VERIFY(showsFrames());
}

void tst_KdWebcamRecordPanelPicture::lossInATakeIsBlackUntilItsReport_data()
{
    QTest::addColumn<int>("response");
    QTest::newRow("camera") << int(KdWebcamResponse::WebcamGoneInTake);
    QTest::newRow("microphone") << int(KdWebcamResponse::AudioInputGoneInTake);
}

void tst_KdWebcamRecordPanelPicture::lossInATakeIsBlackUntilItsReport()
{
    QFETCH(int, response);
    showPicture();
    respond(response);
    QVERIFY(!showsFrames());
    drain();
    QVERIFY(!showsFrames());
    // All are there after all.
    fire(kDeviceChangeTimer);
    QTRY_VERIFY(showsFrames());
}

void tst_KdWebcamRecordPanelPicture::reportOfALossIsBlack()
{
    showPicture();
    setMicrophones({QStringLiteral("Mic B")});
    lookAtDevices(fcdAudioInputRemoved);
    // The camera was found present by the same look, and shows what it sees.
    QTRY_VERIFY(showsFrames());
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        QVERIFY(!showsFrames());
        box.close();
    });
    fire(kDeviceLostTimer);
    QTRY_VERIFY(showsFrames());
}

void tst_KdWebcamRecordPanelPicture::abortIsBlack_data()
{
    QTest::addColumn<QString>("state");
    for (const char* const state : {"preview", "counting", "recording"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

void tst_KdWebcamRecordPanelPicture::abortIsBlack()
{
    QFETCH(QString, state);
    reachState(state);
    QTRY_VERIFY(showsFrames());
    panel->AbordRecorder();
    QVERIFY(!showsFrames());
    drain();
    QVERIFY(!showsFrames());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelPicture>(argc, argv);
}

#include "tst_KdWebcamRecordPanelPicture.moc"
