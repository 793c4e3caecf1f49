#include "WebcamFixture.h"

#include <Support/ClipProbe.h>
#include <Support/FlashBeep.h>
#include <Support/FlashBeepSource.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>

#include <algorithm>
#include <cmath>

using namespace KdVBLMODEL;

namespace {

constexpr double kMostApart = 0.040;

/** A flash, and how much later its beep begins. */
struct Pair
{
    double flash;
    double offset;
    double gap; ///< without a picture before the flash, beyond the usual: it may have been earlier
};

double gapBefore(const QVector<double>& pictures, double time)
{
    constexpr double kUsual = 1.0 / 30.0 + 0.002;
    const auto at = std::lower_bound(pictures.begin(), pictures.end(), time);
    return at == pictures.begin() ? 0.0 : qMax(0.0, time - *(at - 1) - kUsual);
}

/** @param cuts where pauses were, in seconds: flashes and beeps there are not whole */
QVector<Pair> wholePairs(const QString& path, const QVector<double>& cuts)
{
    constexpr double kNear = 0.3;
    const ClipInfo clip = ClipProbe::probe(path);
    const QVector<double>& pictures = clip.pictureTimes;
    const QVector<double> ends = cuts + QVector<double>{0.0, clip.pictureLength};
    const QVector<double> flashes = FlashBeep::flashes(path);
    const QVector<double> offsets = FlashBeep::offsets(path);
    QVector<Pair> pairs;
    for (int i = 0; i < qMin(flashes.size(), offsets.size()); ++i) {
        const bool isCut = std::any_of(ends.begin(), ends.end(), [&](double cut) {
            return std::abs(flashes[i] - cut) < kNear;
        });
        if (!isCut) {
            pairs.append({flashes[i], offsets[i], gapBefore(pictures, flashes[i])});
        }
    }
    return pairs;
}

QString text(const QVector<Pair>& pairs)
{
    QStringList texts;
    for (const Pair& pair : pairs) {
        texts.append(QStringLiteral("%1 ms").arg(pair.offset * 1000.0, 0, 'f', 1));
    }
    return texts.join(QStringLiteral(", "));
}

} // namespace

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
    void checkOffsets(int least, const QVector<double>& cuts = {});
};

void tst_WebcamSync::checkOffsets(int least, const QVector<double>& cuts)
{
    const QVector<Pair> pairs = wholePairs(path(), cuts);
    qInfo("The beeps come late by: %s", qPrintable(text(pairs)));
    QVERIFY2(pairs.size() >= least, qPrintable(text(pairs)));
    for (const Pair& pair : pairs) {
        const double late = pair.offset > 0.0 ? pair.offset : qMin(0.0, pair.offset + pair.gap);
        QVERIFY2(std::abs(late) < kMostApart, qPrintable(text(pairs)));
    }
    const ClipInfo clip = ClipProbe::probe(path());
    QCOMPARE(clip.pictureBegin, 0.0);
    QCOMPARE(clip.soundBegin, 0.0);
    QVERIFY(std::abs(clip.pictureLength - clip.soundLength) < 0.025);
}

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
    QVERIFY(recorder.record(path(), true));
    QVERIFY(recorder.waitForTime(8500));
    QVERIFY(recorder->stop());
    checkOffsets(4);
}

void tst_WebcamSync::tenPausesPartNothing()
{
    FlashBeepSource source;
    QVERIFY(source.plug());
    WebcamFixture recorder;
    QVERIFY(recorder.choose(kdtMicrophone, source.microphoneDescription()));
    QVERIFY(recorder.open(source.cameraDescription(), QSize(640, 480)));
    QVERIFY(recorder.record(path(), true));
    QVector<double> cuts;
    for (int i = 1; i <= 10; ++i) {
        QVERIFY(recorder.waitForTime(i * 1500));
        QVERIFY(recorder->pause());
        cuts.append(static_cast<double>(recorder.events().lastTime()) / 1000.0);
        const int frames = recorder.events().frameCount();
        QTRY_VERIFY_WITH_TIMEOUT(recorder.events().frameCount() > frames + 3 + 2 * i, 10000);
        QVERIFY(recorder->resume());
    }
    QVERIFY(recorder.waitForTime(18500));
    QVERIFY(recorder->stop());
    checkOffsets(4, cuts);
    const double seconds = MediaProbe::probe(path()).seconds;
    QVERIFY2(std::abs(seconds - 18.5) < 0.5, qPrintable(QString::number(seconds)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamSync>(argc, argv);
}

#include "tst_WebcamSync.moc"
