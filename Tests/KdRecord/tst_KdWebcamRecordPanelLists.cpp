#include "WebcamRecordFixture.h"

#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdZentraCore/KdConfigEngine.h>

#include <QComboBox>

using namespace KdVBLMODEL;

/** The webcam panel's lists, and what the user chooses from them. */
class tst_KdWebcamRecordPanelLists : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void newPanelOnlyMakesItsRecorder();
    void fullReloadGoesInOrder();
    void storedDevicesAreSelected();
    void lastOfEqualNamesIsSelected();
    void anyNameIsShownAsItIs_data();
    void anyNameIsShownAsItIs();

    void storedSizeAndRateComeFirst();
    void sizeThatIsNotThereFallsBackToTheCurrentOne_data();
    void sizeThatIsNotThereFallsBackToTheCurrentOne();
    void rateThatIsNoneFallsBackToTheCurrentOne_data();
    void rateThatIsNoneFallsBackToTheCurrentOne();
    void ratesReadInTwoSignificantDigits();

    void chosenCameraIsShownWithTheOptions();
    void refusedCameraLeavesTheFormerOne();
    void chosenMicrophoneIsTold();
    void refusedMicrophoneLeavesTheFormerOne();
    void chosenSizeRebuildsTheRates();
    void chosenRateIsTold();
    void optionsOfTheStripReachTheRecorder();
    void storedOptionsReachTheRecorder();

    void withoutDevicesTheListsSaySo();

private:
    QStringList previewCommands() const;
};

void tst_KdWebcamRecordPanelLists::newPanelOnlyMakesItsRecorder()
{
    makePanel();
    QCOMPARE(engine->created(), 1);
    QCOMPARE(engine->observerCount(), 1);
    QCOMPARE(engine->count("setDevice"), 0);
    QCOMPARE(engine->count("startPreview"), 0);
    QCOMPARE(choices(kCamera), QStringList());
}

void tst_KdWebcamRecordPanelLists::fullReloadGoesInOrder()
{
    makePanel();
    engine->clearCalls();
    panel->InitUI();
    QCOMPARE(signalTexts, texts({"order 7", "camera 0", "microphone 0"}));
    QCOMPARE(choices(kCamera), texts({"Cam A", "Cam B"}));
    QCOMPARE(choices(kMicrophone), texts({"Mic A", "Mic B"}));
    QCOMPARE(choices(kResolution), texts({"640x480", "1280x720", "1920x1080"}));
    QCOMPARE(choices(kFrameRate), texts({"30 fps", "15 fps"}));
    QCOMPARE(choice(kResolution), QStringLiteral("1920x1080"));
    QCOMPARE(choice(kFrameRate), QStringLiteral("30 fps"));
    QCOMPARE(control<QWidget>(kCamera)->toolTip().contains(QStringLiteral("Cam A")), true);
    QCOMPARE(control<QWidget>(kMicrophone)->toolTip().contains(QStringLiteral("Mic A")), true);
    QVERIFY(button(kStart)->isEnabled());
    QCOMPARE(engine->callsOf("setDevice"), texts({"setDevice(2, 0)", "setDevice(8, 0)"}));
    QVERIFY(engine->isPreviewing());
    QStringList log;
    for (const QString& line : logLines()) {
        if (line.startsWith(QLatin1String("KdWebcamRecordPanel::"))) {
            log.append(line.mid(line.indexOf(QLatin1String(": ")) + 2));
        }
    }
    log.removeAll(QStringLiteral("switch resoution preview"));
    QCOMPARE(log, texts({"InitUI BEGIN", "Camera devices count: 2", "Switch camera BEGIN",
                         "Switch camera END", "Audio devices count: 2", "InitUI END"}));
}

void tst_KdWebcamRecordPanelLists::storedDevicesAreSelected()
{
    KRecordSettingData choices;
    choices.selectedCameraDeviceName = QStringLiteral("Cam B");
    choices.selectedAudioDeviceName = QStringLiteral("Mic B");
    store(choices);
    makePanel();
    panel->InitUI();
    QCOMPARE(signalTexts, texts({"order 7", "camera 1", "microphone 1"}));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam B"));
    QCOMPARE(engine->selectedDevice(kdtWebcam).name, QStringLiteral("Cam B"));
    QCOMPARE(engine->selectedDevice(kdtMicrophone).name, QStringLiteral("Mic B"));
}

void tst_KdWebcamRecordPanelLists::lastOfEqualNamesIsSelected()
{
    setCameras({QStringLiteral("Cam"), QStringLiteral("Other"), QStringLiteral("Cam")});
    KRecordSettingData choices;
    choices.selectedCameraDeviceName = QStringLiteral("Cam");
    store(choices);
    showPanel();
    QCOMPARE(control<QComboBox>(kCamera)->currentIndex(), 2);
    QCOMPARE(engine->selectedDevice(kdtWebcam).index, 2);
}

void tst_KdWebcamRecordPanelLists::anyNameIsShownAsItIs_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("place marker") << QStringLiteral("Cam %1 %2");
    QTest::newRow("markup") << QStringLiteral("<b>Cam</b> &amp;");
    QTest::newRow("right to left") << QStringLiteral("كاميرا");
    QTest::newRow("the text for none") << QStringLiteral("No Device");
    QTest::newRow("long") << QString(5000, QLatin1Char('c'));
}

void tst_KdWebcamRecordPanelLists::anyNameIsShownAsItIs()
{
    QFETCH(QString, name);
    setCameras({name});
    showPanel();
    QCOMPARE(choice(kCamera), name);
    QCOMPARE(statusText(), QStringLiteral("Live Record"));
    QCOMPARE(control<QWidget>(kCamera)->width(), 200);
    startTake();
    passTime(1000);
    stopTake();
    QVERIFY(signalTexts.last().endsWith(name + QLatin1Char(')')));
}

void tst_KdWebcamRecordPanelLists::storedSizeAndRateComeFirst()
{
    KRecordSettingData choices;
    choices.selectedCameraDeviceName = QStringLiteral("Cam A");
    choices.cameraWidth = 1280;
    choices.cameraHeight = 720;
    choices.frameRate = 15.0;
    store(choices);
    showPanel();
    QCOMPARE(choice(kResolution), QStringLiteral("1280x720"));
    QCOMPARE(choice(kFrameRate), QStringLiteral("15 fps"));
    QCOMPARE(engine->lastCall("setResolution").argument<QSize>(0), QSize(1280, 720));
    // What is shown is what is recorded.
    QCOMPARE(engine->lastCall("setVideoFormat").argument<KdVideoFormat>(0).frameRate, 15.0);
    startTake();
    QCOMPARE(engine->lastCall("setVideoFormat").argument<KdVideoFormat>(0).frameRate, 15.0);
    passTime(1000);
    stopTake();
    QCOMPARE(signalTexts.last(),
             QStringLiteral("sigCaptureFinished(path, 1280x720, 15, 0, Cam A)"));
}

void tst_KdWebcamRecordPanelLists::sizeThatIsNotThereFallsBackToTheCurrentOne_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("not stored") << QSize(-1, -1);
    QTest::newRow("half") << QSize(1280, -1);
    QTest::newRow("of another camera") << QSize(800, 600);
}

void tst_KdWebcamRecordPanelLists::sizeThatIsNotThereFallsBackToTheCurrentOne()
{
    QFETCH(QSize, size);
    KRecordSettingData choices;
    choices.cameraWidth = size.width();
    choices.cameraHeight = size.height();
    store(choices);
    showPanel();
    QCOMPARE(choice(kResolution), QStringLiteral("1920x1080"));
    QCOMPARE(engine->lastCall("setResolution").argument<QSize>(0), QSize(1920, 1080));
}

void tst_KdWebcamRecordPanelLists::rateThatIsNoneFallsBackToTheCurrentOne_data()
{
    QTest::addColumn<double>("rate");
    QTest::newRow("not stored") << -1.0;
    QTest::newRow("zero") << 0.0;
    QTest::newRow("of another camera") << 24.0;
}

void tst_KdWebcamRecordPanelLists::rateThatIsNoneFallsBackToTheCurrentOne()
{
    QFETCH(double, rate);
    KRecordSettingData choices;
    choices.frameRate = rate;
    store(choices);
    showPanel();
    QCOMPARE(choice(kFrameRate), QStringLiteral("30 fps"));
    QCOMPARE(engine->lastCall("setVideoFormat").argument<KdVideoFormat>(0).frameRate, 30.0);
}

void tst_KdWebcamRecordPanelLists::ratesReadInTwoSignificantDigits()
{
    engine->script().frameRates = {30.0, 29.97, 7.5, 60.0};
    KRecordSettingData choices;
    choices.frameRate = 29.97;
    store(choices);
    showPanel();
    QCOMPARE(this->choices(kFrameRate), texts({"30 fps", "30 fps", "7.5 fps", "60 fps"}));
    // The two that read alike are told apart all the same.
    QCOMPARE(control<QComboBox>(kFrameRate)->currentIndex(), 1);
    QCOMPARE(engine->lastCall("setVideoFormat").argument<KdVideoFormat>(0).frameRate, 29.97);
}

QStringList tst_KdWebcamRecordPanelLists::previewCommands() const
{
    QStringList commands = engine->commands();
    commands.erase(std::remove_if(commands.begin(), commands.end(),
                                  [](const QString& call) {
                                      return call.startsWith(QLatin1String("setResolution")) ||
                                             call.startsWith(QLatin1String("setVideoFormat")) ||
                                             call.startsWith(QLatin1String("startPreview"));
                                  }),
                   commands.end());
    return commands;
}

void tst_KdWebcamRecordPanelLists::chosenCameraIsShownWithTheOptions()
{
    showPanel();
    engine->script().resolutionsOf[QStringLiteral("id-Cam B")] = {QSize(320, 240)};
    engine->clearCalls();
    choose(kCamera, QStringLiteral("Cam B"));
    QCOMPARE(signalTexts, texts({"order 7", "camera 1"}));
    QCOMPARE(previewCommands(), texts({"stopPreview()", "setDevice(2, 1)", "setRecordFlip(false)",
                                       "setRecordDisplayShape(1)", "setBackgroundMode(-1)"}));
    QCOMPARE(choices(kResolution), texts({"320x240"}));
    QVERIFY(engine->isPreviewing());
    QVERIFY(control<QWidget>(kCamera)->toolTip().contains(QStringLiteral("Cam B")));
}

void tst_KdWebcamRecordPanelLists::refusedCameraLeavesTheFormerOne()
{
    showPanel();
    engine->during("setDevice", [this] {
        if (engine->lastCall("setDevice").argument<int>(1) == 1) {
            engine->fail("setDevice");
        } else {
            engine->succeed("setDevice");
        }
    });
    expectLog(QStringLiteral("Failed to switch camera device, device index = 1"));
    choose(kCamera, QStringLiteral("Cam B"));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    QVERIFY(control<QWidget>(kCamera)->toolTip().contains(QStringLiteral("Cam A")));
    // Its picture was stopped for the switch, and is shown again.
    QCOMPARE(signalTexts, texts({"order 7", "camera 1", "camera 0"}));
    QVERIFY(engine->isPreviewing());
    QCOMPARE(engine->selectedDevice(kdtWebcam).name, QStringLiteral("Cam A"));
}

void tst_KdWebcamRecordPanelLists::chosenMicrophoneIsTold()
{
    showPanel();
    choose(kMicrophone, QStringLiteral("Mic B"));
    QCOMPARE(signalTexts, texts({"microphone 1"}));
    QCOMPARE(engine->selectedDevice(kdtMicrophone).name, QStringLiteral("Mic B"));
    QVERIFY(control<QWidget>(kMicrophone)->toolTip().contains(QStringLiteral("Mic B")));
}

void tst_KdWebcamRecordPanelLists::refusedMicrophoneLeavesTheFormerOne()
{
    showPanel();
    engine->fail("setDevice");
    expectLog(QStringLiteral("Failed to switch audio device, device index = 1"));
    choose(kMicrophone, QStringLiteral("Mic B"));
    QCOMPARE(choice(kMicrophone), QStringLiteral("Mic A"));
}

void tst_KdWebcamRecordPanelLists::chosenSizeRebuildsTheRates()
{
    KRecordSettingData choices;
    choices.frameRate = 15.0;
    store(choices);
    showPanel();
    QCOMPARE(choice(kFrameRate), QStringLiteral("15 fps"));
    engine->script().frameRates = {60.0, 15.0};
    choose(kResolution, QStringLiteral("640x480"));
    QCOMPARE(signalTexts, texts({"width 640"}));
    QCOMPARE(this->choices(kFrameRate), texts({"60 fps", "15 fps"}));
    // Of a size that was chosen just now the recorder's rate counts, not the stored one.
    QCOMPARE(choice(kFrameRate), QStringLiteral("60 fps"));
    const QStringList ofTheChoice =
        logLines().filter(QStringLiteral("KdWebcamRecordPanel::slotOnResoutionChanged: "));
    QCOMPARE(ofTheChoice,
             texts({"KdWebcamRecordPanel::slotOnResoutionChanged: switch resoution",
                    "KdWebcamRecordPanel::slotOnResoutionChanged: switch resoution updateUI"}));
}

void tst_KdWebcamRecordPanelLists::chosenRateIsTold()
{
    showPanel();
    engine->clearCalls();
    choose(kFrameRate, QStringLiteral("15 fps"));
    QCOMPARE(signalTexts, texts({"rate 15"}));
    QCOMPARE(engine->commands(), texts({"setVideoFormat(fourcc=C264 rate=15)", "startPreview()"}));
}

void tst_KdWebcamRecordPanelLists::optionsOfTheStripReachTheRecorder()
{
    showPanel();
    const auto* const display = control<KdWebCamDisplayLabel>(kDisplay);
    control<QAbstractButton>("KRecorder_Circle_RoundBtn")->click();
    control<QAbstractButton>("KRecorder_Mirror_RoundBtn")->click();
    QCOMPARE(panel->recordDisplayShape(), fcrsCircle);
    QCOMPARE(display->shape(), fcrsCircle);
    QVERIFY(panel->isRecordFlipped());
    QVERIFY(display->isFlipped());
    engine->clearCalls();
    control<QAbstractButton>("KRecorder_Blurred_RoundBtn")->click();
    QCOMPARE(display->backgroundMode(), fcbmBlur);
    control<QAbstractButton>("KRecorder_Blurred_RoundBtn")->click();
    QCOMPARE(display->backgroundMode(), fcbmNone);
    QCOMPARE(engine->callsOf("setBackgroundMode").last(), QStringLiteral("setBackgroundMode(-1)"));
    QCOMPARE(panel->aiEffectType(), fcbmNone);

    // A camera chosen afterwards has them too.
    engine->clearCalls();
    choose(kCamera, QStringLiteral("Cam B"));
    QCOMPARE(engine->callsOf("setRecordDisplayShape"), texts({"setRecordDisplayShape(0)"}));
    QCOMPARE(engine->callsOf("setRecordFlip"), texts({"setRecordFlip(true)"}));
}

void tst_KdWebcamRecordPanelLists::storedOptionsReachTheRecorder()
{
    const QString group = QStringLiteral("WebCamFuncConfig");
    KdConfigEngine::instance()->setValue(1, group, QStringLiteral("WebCamFuncShape"), 0);
    KdConfigEngine::instance()->setValue(1, group, QStringLiteral("WebCamFuncFlip"), true);
    makePanel();
    QCOMPARE(panel->recordDisplayShape(), fcrsCircle);
    QVERIFY(panel->isRecordFlipped());
}

void tst_KdWebcamRecordPanelLists::withoutDevicesTheListsSaySo()
{
    setCameras({});
    setMicrophones({});
    showPanel();
    QCOMPARE(choices(kCamera), texts({"No Device"}));
    QCOMPARE(choices(kMicrophone), texts({"No Device"}));
    QCOMPARE(choices(kResolution), QStringList());
    QCOMPARE(choices(kFrameRate), QStringList());
    QCOMPARE(statusText(), QStringLiteral("No Device"));
    QVERIFY(control<QWidget>(kCamera)->toolTip().contains(QStringLiteral("No Device")));
    QVERIFY(!button(kStart)->isEnabled());
    QVERIFY(control<QWidget>(kHint)->isVisible());
    // No engine is asked for what cannot be.
    QCOMPARE(engine->count("setDevice") + engine->count("startPreview"), 0);

    setCameras({QStringLiteral("Cam A")});
    lookAtDevices(fcdWebcamListChanged);
    QVERIFY(!control<QWidget>(kHint)->isVisible());
    QCOMPARE(statusText(), QStringLiteral("Live Record"));
    startTake();
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelLists>(argc, argv);
}

#include "tst_KdWebcamRecordPanelLists.moc"
