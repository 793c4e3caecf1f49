#include "WebcamRecordFixture.h"

#include <KdRecord/KdCountCtrlVideo.h>

/** The webcam panel destroyed while the engine calls it without a pause. */
class tst_KdWebcamRecordPanelFlood : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void destroyedAThousandTimesInAFlood();

private:
    static void roundOfAFlood(int round);
};

/** In the preview, in the countdown and in a take by turns; on the screen only as often as needed
 * to stay quick. */
void tst_KdWebcamRecordPanelFlood::roundOfAFlood(int round)
{
    KdWebcamRecordPanel flooded;
    flooded.InitUI();
    if (round % 100 == 0) {
        flooded.show();
        QVERIFY(QTest::qWaitForWindowExposed(&flooded));
    }
    auto* const start = flooded.findChild<QAbstractButton*>(QLatin1String(kStart));
    if (round % 3 != 0) {
        start->click();
    }
    if (round % 3 == 2) {
        auto* const countdown = flooded.findChild<KdCountCtrlVideo*>(QLatin1String(kCountdown));
        countdown->Abort();
        Q_EMIT countdown->sigFinish();
    }
    // What the engine has posted by now is delivered, so that the panel is in the midst of it.
    QCoreApplication::sendPostedEvents(&flooded);
}

void tst_KdWebcamRecordPanelFlood::destroyedAThousandTimesInAFlood()
{
    engine->script().take = QByteArray();
    engine->startFlood(1);
    for (int round = 0; round < 1000; ++round) {
        roundOfAFlood(round);
        drain();
    }
    QVERIFY(engine->floodCount() > 1000);
    engine->stopFlood();
    QCOMPARE(engine->observerCount(), 0);
    QVERIFY(!isLocked());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelFlood>(argc, argv);
}

#include "tst_KdWebcamRecordPanelFlood.moc"
