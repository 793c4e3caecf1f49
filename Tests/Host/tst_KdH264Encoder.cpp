#include <KdVBLModel/KdH264Encoder.h>
#include <Support/KdTestCase.h>

class tst_KdH264Encoder : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theBitRateFollowsSizeAndRate_data();
    void theBitRateFollowsSizeAndRate();
    void theBitRateGrowsSlowerThanThePicture();
};

void tst_KdH264Encoder::theBitRateFollowsSizeAndRate_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("rate");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QTest::newRow("720p at 30") << QSize(1280, 720) << 30.0 << 4000000 << 4000000;
    QTest::newRow("480p at 30") << QSize(640, 480) << 30.0 << 1500000 << 2000000;
    QTest::newRow("1080p at 30") << QSize(1920, 1080) << 30.0 << 7000000 << 8000000;
    QTest::newRow("1080p at 60") << QSize(1920, 1080) << 60.0 << 12000000 << 13000000;
    QTest::newRow("2160p at 30") << QSize(3840, 2160) << 30.0 << 20000000 << 21000000;
    QTest::newRow("tiny") << QSize(16, 16) << 1.0 << 200000 << 200000;
    QTest::newRow("as much as there is") << QSize(4096, 2304) << 240.0 << 50000000 << 50000000;
}

void tst_KdH264Encoder::theBitRateFollowsSizeAndRate()
{
    QFETCH(QSize, size);
    QFETCH(double, rate);
    QFETCH(int, least);
    QFETCH(int, most);
    const int bitrate = KdH264Encoder::bitrateFor(size, rate);
    QVERIFY2(bitrate >= least && bitrate <= most, qPrintable(QString::number(bitrate)));
}

void tst_KdH264Encoder::theBitRateGrowsSlowerThanThePicture()
{
    const int once = KdH264Encoder::bitrateFor(QSize(640, 360), 30.0);
    const int fourTimes = KdH264Encoder::bitrateFor(QSize(1280, 720), 30.0);
    QVERIFY(fourTimes > 2 * once);
    QVERIFY(fourTimes < 4 * once);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdH264Encoder>(argc, argv);
}

#include "tst_KdH264Encoder.moc"
