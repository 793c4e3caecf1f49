#include "WebcamRecordFixture.h"

#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdRecord/KdWebcamRecordView.h>
#include <KdRecord/KdWebcamRecorderHelper.h>

using namespace KdVBLMODEL;

/** The webcam panel and its dialog destroyed while the engine calls them without a pause. */
class tst_KdWebcamRecordPanelFlood : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void destroyedAThousandTimesInAFlood();

private:
    static constexpr int kRounds = 1000;
    /** On the screen only as often as needed to stay quick; prime, so that all kinds are. */
    static constexpr int kShownEvery = 71;

    void make(int round);
    void begin(int round);
    void loseDevice(int round);
    void roundOfAFlood(int round);

    int m_takes = 0;
    int m_countdowns = 0;
    int m_losses = 0;
};

void tst_KdWebcamRecordPanelFlood::make(int round)
{
    if (round % 2 == 0) {
        auto* const made = new KdWebcamRecordPanel;
        window = made;
        made->InitUI();
    } else {
        auto* const made = new KdWebcamRecordView(nullptr);
        window = made;
        made->initDevices();
    }
}

/** The preview, the countdown and a take by turns. */
void tst_KdWebcamRecordPanelFlood::begin(int round)
{
    if (round % 3 != 0) {
        button(kStart)->click();
    }
    if (round % 3 == 2) {
        auto* const countdown = control<KdCountCtrlVideo>(kCountdown);
        countdown->Abort();
        Q_EMIT countdown->sigFinish();
    }
}

/** One that is used now and then, and what the panel does about it is on its way. */
void tst_KdWebcamRecordPanelFlood::loseDevice(int round)
{
    const bool isCamera = round % 5 == 0;
    const bool isUsed = round % 4 == 0;
    if (isUsed && isCamera) {
        setCameras({QStringLiteral("Cam B")});
    } else if (isUsed) {
        setMicrophones({QStringLiteral("Mic B")});
    }
    auto* const helper = window->findChild<KdWebcamRecorderHelper*>();
    const auto note = [this](int response) {
        m_losses += response == 10 || response == 11 ? 1 : 0;
    };
    connect(helper, &KdWebcamRecorderHelper::sigRecorderResponeType, this, note);
    engine->deliverDevice(isCamera ? fcdWebcamRemoved : fcdAudioInputRemoved, 0);
    // What the engine has posted by now is delivered, so that the panel is in the midst of it.
    QCoreApplication::sendPostedEvents(helper);
    setCameras({QStringLiteral("Cam A"), QStringLiteral("Cam B")});
    setMicrophones({QStringLiteral("Mic A"), QStringLiteral("Mic B")});
}

void tst_KdWebcamRecordPanelFlood::roundOfAFlood(int round)
{
    make(round);
    if (round % kShownEvery == 0) {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
    }
    // At once, not when the camera has settled: frames are taken over while the window goes.
    control<KdWebCamDisplayLabel>(kDisplay)->startRender();
    begin(round);
    m_takes += engine->status() == fcsRecording ? 1 : 0;
    loseDevice(round);
    m_countdowns += isCountingDown() ? 1 : 0;
    delete window;
}

void tst_KdWebcamRecordPanelFlood::destroyedAThousandTimesInAFlood()
{
    engine->script().take = QByteArray();
    engine->startFlood(1);
    for (int round = 0; round < kRounds; ++round) {
        roundOfAFlood(round);
        drain();
    }
    QVERIFY(engine->floodCount() > kRounds);
    engine->stopFlood();
    QCOMPARE(m_takes, kRounds / 3);
    QCOMPARE(engine->count("start"), m_takes);
    QVERIFY(m_countdowns > kRounds / 5);
    QVERIFY(m_losses > kRounds / 10);
    QCOMPARE(engine->observerCount(), 0);
    QVERIFY(!isLocked());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelFlood>(argc, argv);
}

#include "tst_KdWebcamRecordPanelFlood.moc"
