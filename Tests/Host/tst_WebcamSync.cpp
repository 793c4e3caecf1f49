#include "WebcamFixture.h"

#include <Support/FlashBeepCheck.h>
#include <Support/FlashBeepSource.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>

#include <cmath>

using namespace KdVBLMODEL;

/** How far sound and picture are apart in takes of a real camera and microphone that flash and beep
 * in step. */
class tst_WebcamSync : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void soundAndPictureStayTogether_data();
    void soundAndPictureStayTogether();
    void tenPausesPartNothing();

private:
    QString path() const { return temporaryPath(QStringLiteral("take.mp4")); }
};

void tst_WebcamSync::soundAndPictureStayTogether_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<QSize>("size");
    QTest::newRow("as it comes") << QStringLiteral("YUY2:640x480@30") << QSize(640, 480);
    QTest::newRow("as JPEG") << QStringLiteral("MJPG:640x480@30") << QSize(640, 480);
}

void tst_WebcamSync::soundAndPictureStayTogether()
{
    QFETCH(QString, mode);
    QFETCH(QSize, size);
    FlashBeepSource source({mode});
    QVERIFY(source.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtMicrophone, source.microphoneDescription()));
    QVERIFY(recorder.open(source.cameraDescription(), size));
    QTRY_VERIFY(recorder.events().frameCount() > 0);
    QVERIFY(recorder.record(path(), true));
    QVERIFY(recorder.waitForTime(8500));
    QVERIFY(recorder->stop());
    FlashBeepCheck::verifyTogether(path(), 4);
}

void tst_WebcamSync::tenPausesPartNothing()
{
    FlashBeepSource source;
    QVERIFY(source.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtMicrophone, source.microphoneDescription()));
    QVERIFY(recorder.open(source.cameraDescription(), QSize(640, 480)));
    QTRY_VERIFY(recorder.events().frameCount() > 0);
    QVERIFY(recorder.record(path(), true));
    QVector<double> cuts;
    for (int i = 1; i <= 10; ++i) {
        QVERIFY(recorder.waitForTime(qint64(i) * 1500));
        QVERIFY(recorder->pause());
        cuts.append(static_cast<double>(recorder.events().lastTime()) / 1000.0);
        const int frames = recorder.events().frameCount();
        QTRY_VERIFY_WITH_TIMEOUT(recorder.events().frameCount() > frames + 3 + 2 * i, 10000);
        QVERIFY(recorder->resume());
    }
    QVERIFY(recorder.waitForTime(18500));
    QVERIFY(recorder->stop());
    FlashBeepCheck::verifyTogether(path(), 4, cuts);
    const double seconds = MediaProbe::probe(path()).seconds;
    QVERIFY2(std::abs(seconds - 18.5) < 0.5, qPrintable(QString::number(seconds)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamSync>(argc, argv);
}

#include "tst_WebcamSync.moc"
