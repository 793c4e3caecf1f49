#include "ClipFeeder.h"

#include <Support/FlashBeep.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>

#include <cmath>

using namespace KdVBLMODEL;

namespace {

constexpr double kApart = 0.040;

KdWebcamTakeFormat clipFormat(bool hasSound = true, QSize size = QSize(320, 180))
{
    KdWebcamTakeFormat format;
    format.size = size;
    format.hasSound = hasSound;
    format.sound.samplerate = 48000;
    return format;
}

} // namespace

/** A take of pictures and sound, from what comes in to what a player makes of the file. */
class tst_KdWebcamTake : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void soundAndPictureStayTogether_data();
    void soundAndPictureStayTogether();

private:
    QString path() const { return temporaryPath(QStringLiteral("take.mp4")); }
};

void tst_KdWebcamTake::soundAndPictureStayTogether_data()
{
    QTest::addColumn<int>("samplerate");
    QTest::addColumn<int>("bitrateMode");
    QTest::newRow("48 kHz, variable") << 48000 << int(fbmVariable);
    QTest::newRow("44.1 kHz, variable") << 44100 << int(fbmVariable);
    QTest::newRow("44.1 kHz, constant") << 44100 << int(fbmConstant);
    QTest::newRow("22 kHz, constant") << 22050 << int(fbmConstant);
}

void tst_KdWebcamTake::soundAndPictureStayTogether()
{
    QFETCH(int, samplerate);
    QFETCH(int, bitrateMode);
    KdWebcamTakeFormat format = clipFormat();
    format.sound.samplerate = samplerate;
    format.sound.bitrateMode = bitrateMode;
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    feeder.run(6.5);
    QVERIFY(take.finish());
    const QVector<double> offsets = FlashBeep::offsets(path());
    QCOMPARE(offsets.size(), 6);
    for (const double offset : offsets) {
        QVERIFY2(std::abs(offset) < kApart, qPrintable(QString::number(offset)));
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamTake>(argc, argv);
}

#include "tst_KdWebcamTake.moc"
