#include <KdVBLModel/KdDiskReserve.h>

#include <Support/KdTestCase.h>

#include <QStorageInfo>

class tst_KdDiskReserve : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theReserveGrowsWithTheTake();
    void theReserveCoversWhatIsUnderWay();
    void anHourFitsIntoItsReserve();
    void anHourOfPicturesFitsIntoItsReserve();
    void theDiskOfAFileThatIsNotThereYetIsAsked();
    void aDiskThatDoesNotTellIsUnknownNotFull();
};

void tst_KdDiskReserve::theReserveGrowsWithTheTake()
{
    const qint64 begin = KdDiskReserve::bytesToFinish(0, 44100, 128000);
    const qint64 minute = KdDiskReserve::bytesToFinish(60000, 44100, 128000);
    QVERIFY(begin > qint64(64) * 1024);
    QVERIFY2(begin < qint64(128) * 1024, "a take must be possible on a disk of a few hundred KiB");
    QVERIFY(minute > begin);
}

void tst_KdDiskReserve::theReserveCoversWhatIsUnderWay()
{
    const qint64 low = KdDiskReserve::bytesToFinish(0, 44100, 96000);
    const qint64 high = KdDiskReserve::bytesToFinish(0, 44100, 512000);
    QCOMPARE(high - low, 2 * (512000 - 96000) / 8);
}

void tst_KdDiskReserve::anHourFitsIntoItsReserve()
{
    // An index of 4 bytes for each packet's size and 8 for its place is what can be needed at most.
    const qint64 packets = 3600LL * 96000 / 1024;
    QVERIFY(KdDiskReserve::bytesToFinish(qint64(3600) * 1000, 96000, 128000) > packets * 12);
}

void tst_KdDiskReserve::anHourOfPicturesFitsIntoItsReserve()
{
    // Of each picture its size, its length and, as sound lies between, its place.
    constexpr qint64 kPictures = qint64(3600) * 60;
    const qint64 sound = KdDiskReserve::bytesToFinish(qint64(3600) * 1000, 48000, 4128000);
    const qint64 both =
        KdDiskReserve::bytesToFinishClip(qint64(3600) * 1000, kPictures, 48000, 4128000);
    QVERIFY(both - sound >= kPictures * (4 + 8 + 8));
    QVERIFY(KdDiskReserve::bytesToFinishClip(0, 0, 0, 4000000) > 1000000);
}

void tst_KdDiskReserve::theDiskOfAFileThatIsNotThereYetIsAsked()
{
    const qint64 free = KdDiskReserve::freeBytesAt(temporaryPath(QStringLiteral("later.m4a")));
    const qint64 total = QStorageInfo(temporaryPath(QString())).bytesTotal();
    QVERIFY(free >= 0);
    QVERIFY(free <= total);
}

void tst_KdDiskReserve::aDiskThatDoesNotTellIsUnknownNotFull()
{
    QCOMPARE(KdDiskReserve::freeBytesAt(temporaryPath(QStringLiteral("no/such/folder/x.m4a"))),
             qint64(-1));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDiskReserve>(argc, argv);
}

#include "tst_KdDiskReserve.moc"
