#include <KdVBLModel/KdMp4Boxes.h>
#include <KdVBLModel/KdMp4Bytes.h>
#include <Support/CpuTimer.h>
#include <Support/KdTestCase.h>

#include <QBuffer>
#include <QRandomGenerator>

namespace {

QByteArray shortHeader(quint32 size, const QByteArray& type)
{
    return KdMp4ByteWriter().u32(size).bytes() + type;
}

QByteArray longHeader(quint64 size, const QByteArray& type)
{
    return shortHeader(1, type) + KdMp4ByteWriter().u64(size).bytes();
}

} // namespace

class tst_KdMp4Boxes : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void boxesAreFoundInOrder();
    void malformedBoxesEndTheReading_data();
    void malformedBoxesEndTheReading();
    void onlyWhatWasAskedForIsRead();
    void contentIsReadWholeOrNotAtAll();
    void elementsInMemoryAreFound();
    void serializedBoxesAreReadBack();
    void anyBytesComeToAnEnd();
    void manyEmptyBoxesComeToAnEnd();
    void numbersBeyondTheEndAreZero();
};

void tst_KdMp4Boxes::boxesAreFoundInOrder()
{
    QByteArray bytes = shortHeader(12, "ftyp") + "mp42" + shortHeader(8, "free") +
                       longHeader(20, "mdat") + "wave" + shortHeader(0, "moof") + "rest";
    QBuffer file(&bytes);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QVector<KdMp4Box> boxes = KdMp4Boxes::between(&file, 0);
    QCOMPARE(boxes.size(), 4);
    QCOMPARE(boxes[0].type, kdFourCc("ftyp"));
    QCOMPARE(boxes[0].end(), qint64(12));
    QCOMPARE(boxes[1].contentSize(), qint64(0));
    QCOMPARE(boxes[2].contentOffset(), qint64(36));
    QCOMPARE(boxes[2].contentSize(), qint64(4));
    QVERIFY(!boxes[2].isOpenEnded);
    QVERIFY(boxes[3].isOpenEnded && !boxes[3].isTruncated);
    QCOMPARE(boxes[3].end(), qint64(bytes.size()));
}

void tst_KdMp4Boxes::malformedBoxesEndTheReading_data()
{
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("less than a header") << QByteArray("\0\0\0\x10moo", 7) << false;
    for (quint32 size = 2; size < 8; ++size) {
        QTest::newRow(qPrintable(QStringLiteral("size %1").arg(size)))
            << shortHeader(size, "moov") << false;
    }
    QTest::newRow("longer than the file") << shortHeader(100, "moov") << true;
    QTest::newRow("longest short size") << shortHeader(0xffffffff, "moov") << true;
    QTest::newRow("long size without room for it") << shortHeader(1, "moov") << false;
    QTest::newRow("long size 0") << longHeader(0, "moov") << false;
    QTest::newRow("long size below its header") << longHeader(15, "moov") << false;
    QTest::newRow("longest long size") << longHeader(~Q_UINT64_C(0), "moov") << true;
    QTest::newRow("negative long size") << longHeader(Q_UINT64_C(1) << 63, "moov") << true;
    QTest::newRow("zeros, as a power cut leaves them") << QByteArray(64, '\0') << false;
    QTest::newRow("no text for a type") << shortHeader(8, QByteArray("\1\2\3\4", 4)) << false;
    QTest::newRow("size 0 reaches to the end") << shortHeader(0, "mdat") << true;
}

void tst_KdMp4Boxes::malformedBoxesEndTheReading()
{
    QFETCH(QByteArray, second);
    QFETCH(bool, isListed);
    QByteArray bytes = shortHeader(8, "free") + second;
    QBuffer file(&bytes);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QVector<KdMp4Box> boxes = KdMp4Boxes::between(&file, 0);
    QCOMPARE(boxes.size(), isListed ? 2 : 1);
    QCOMPARE(boxes[0].type, kdFourCc("free"));
    if (isListed) {
        QCOMPARE(boxes[1].end(), qint64(bytes.size()));
        QVERIFY(boxes[1].isTruncated || boxes[1].isOpenEnded);
    }
    QVERIFY(KdMp4Boxes::parse(bytes).size() <= boxes.size());
}

void tst_KdMp4Boxes::onlyWhatWasAskedForIsRead()
{
    QByteArray bytes =
        shortHeader(8, "one ") + shortHeader(12, "two ") + "four" + shortHeader(8, "thre");
    QBuffer file(&bytes);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QVector<KdMp4Box> part = KdMp4Boxes::between(&file, 8, 18);
    QCOMPARE(part.size(), 1);
    QVERIFY(part[0].isTruncated);
    QCOMPARE(part[0].end(), qint64(18));
    QVERIFY(KdMp4Boxes::between(&file, 1000).isEmpty());
    QVERIFY(KdMp4Boxes::between(&file, 20, 4).isEmpty());
    QCOMPARE(KdMp4Boxes::between(&file, -5).size(), 3);
}

void tst_KdMp4Boxes::contentIsReadWholeOrNotAtAll()
{
    QByteArray bytes = shortHeader(12, "good") + "four" + shortHeader(50, "cut ") + "four";
    QBuffer file(&bytes);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QVector<KdMp4Box> boxes = KdMp4Boxes::between(&file, 0);
    QCOMPARE(boxes.size(), 2);
    QCOMPARE(KdMp4Boxes::content(&file, boxes[0], 4), QByteArray("four"));
    QVERIFY(KdMp4Boxes::content(&file, boxes[0], 3).isNull());
    QVERIFY(KdMp4Boxes::content(&file, boxes[1], 1000).isNull());
}

void tst_KdMp4Boxes::elementsInMemoryAreFound()
{
    const QByteArray bytes = shortHeader(12, "mvhd") + "head" + longHeader(20, "trak") + "one " +
                             shortHeader(12, "trak") + "two ";
    const QVector<KdMp4Element> elements = KdMp4Boxes::parse(bytes);
    QCOMPARE(elements.size(), 3);
    QCOMPARE(elements[2].content, QByteArray("two "));
    QCOMPARE(KdMp4Boxes::find(bytes, kdFourCc("trak")), QByteArray("one "));
    QVERIFY(KdMp4Boxes::find(bytes, kdFourCc("mdia")).isNull());
    QCOMPARE(KdMp4Boxes::parse(bytes.left(bytes.size() - 1)).size(), 2);
}

void tst_KdMp4Boxes::serializedBoxesAreReadBack()
{
    const QByteArray inner = KdMp4Boxes::serialize(kdFourCc("stsz"), "sizes");
    const QByteArray outer = KdMp4Boxes::serialize(kdFourCc("stbl"), inner);
    QCOMPARE(KdMp4Boxes::find(KdMp4Boxes::find(outer, kdFourCc("stbl")), kdFourCc("stsz")),
             QByteArray("sizes"));
}

void tst_KdMp4Boxes::anyBytesComeToAnEnd()
{
    QRandomGenerator random(20261120);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes(int(random.bounded(400)), '\0');
        for (char& byte : bytes) {
            // Small numbers make boxes within boxes, letters make types.
            byte = char(random.bounded(3) == 0 ? random.bounded(256) : random.bounded(2) * 'm');
        }
        QBuffer file(&bytes);
        QVERIFY(file.open(QIODevice::ReadOnly));
        qint64 end = 0;
        const QVector<KdMp4Box> boxes = KdMp4Boxes::between(&file, 0);
        for (const KdMp4Box& box : boxes) {
            QCOMPARE(box.offset, end);
            QVERIFY(box.contentSize() >= 0);
            end = box.end();
        }
        QVERIFY(end <= bytes.size());
        QVERIFY(KdMp4Boxes::parse(bytes).size() <= boxes.size());
    }
}

void tst_KdMp4Boxes::manyEmptyBoxesComeToAnEnd()
{
    QByteArray bytes = shortHeader(8, "free").repeated(200000);
    QBuffer file(&bytes);
    QVERIFY(file.open(QIODevice::ReadOnly));
    CpuTimer timer;
    timer.start();
    QCOMPARE(KdMp4Boxes::between(&file, 0).size(), 200000);
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
}

void tst_KdMp4Boxes::numbersBeyondTheEndAreZero()
{
    const QByteArray bytes("\1\2\3\4\5", 5);
    KdMp4ByteReader reader(bytes);
    QCOMPARE(reader.u8(), 1U);
    QCOMPARE(reader.u24(), 0x020304U);
    QVERIFY(reader.isGood());
    QCOMPARE(reader.u32(), 0U);
    QVERIFY(!reader.isGood());
    QCOMPARE(reader.left(), 0);
    QCOMPARE(reader.u64(), Q_UINT64_C(0));
    KdMp4ByteReader other(bytes);
    other.skip(-1);
    QVERIFY(!other.isGood());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdMp4Boxes>(argc, argv);
}

#include "tst_KdMp4Boxes.moc"
