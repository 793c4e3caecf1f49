#include <KdVBLModel/KdMp4Bytes.h>
#include <KdVBLModel/KdTakeLayout.h>
#include <Support/KdTestCase.h>

#include <QBuffer>

using State = KdTakeLayout::State;

namespace {

constexpr qint64 kSlot = 16;
constexpr qint64 kFourGigabytes = Q_INT64_C(1) << 32;

QByteArray box(const char (&type)[5], const QByteArray& content)
{
    return KdMp4Boxes::serialize(kdFourCc(type), content);
}

const QByteArray kMedia("some sound");

QByteArray start()
{
    return box("ftyp", "mp42mp41") + box("free", QByteArray());
}

QByteArray fragmentedHeader(const char (&type)[5])
{
    return box(type, box("mvhd", "head") + box("mvex", QByteArray()));
}

KdTakeLayout layoutOf(QByteArray content)
{
    QBuffer file(&content);
    file.open(QIODevice::ReadOnly);
    return KdTakeLayout::of(&file);
}

} // namespace

class tst_KdTakeLayout : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void statesAreTold_data();
    void statesAreTold();
    void buriedHeaderIsFoundAcrossPieces();
    void wordOfTheMediaIsNoHeader();
    void shortSizesReachAsFarAsTheyCan();
    void longSizesTakeTheSamePlace();
};

void tst_KdTakeLayout::statesAreTold_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("state");
    QTest::addColumn<qint64>("mediaEnd");
    const QByteArray first = start() + box("mdat", kMedia);
    const QByteArray fragment = box("mdat", kMedia) + box("moof", "names");
    const QByteArray fragments = first + fragmentedHeader("moov") + fragment;
    const QByteArray renamed = first + fragmentedHeader("hoov") + fragment;
    const QByteArray inside = box("mdat", kMedia + fragmentedHeader("hoov") + fragment);
    const QByteArray index = box("moov", box("mvhd", "head"));
    QTest::newRow("empty") << QByteArray() << int(State::NoIndex) << qint64(0);
    QTest::newRow("first media only") << first << int(State::NoIndex) << qint64(0);
    QTest::newRow("header cut off")
        << fragments.left(first.size() + 10) << int(State::NoIndex) << qint64(0);
    QTest::newRow("fragments") << fragments << int(State::Fragmented) << qint64(fragments.size());
    QTest::newRow("fragments and part of an index")
        << fragments + index.left(9) << int(State::Fragmented) << qint64(fragments.size());
    QTest::newRow("fragments and less than the head of one")
        << fragments + index.left(7) << int(State::Fragmented) << qint64(fragments.size());
    QTest::newRow("fragments and a whole index")
        << fragments + index << int(State::Fragmented) << qint64(fragments.size());
    QTest::newRow("renamed") << renamed << int(State::Hidden) << qint64(renamed.size());
    QTest::newRow("buried") << start() + inside << int(State::Hidden)
                            << qint64((start() + inside).size());
    QTest::newRow("buried, with part of an index")
        << start() + inside + index.left(12) << int(State::Hidden)
        << qint64((start() + inside).size());
    QTest::newRow("whole") << start() + inside + index << int(State::Whole) << qint64(0);
}

void tst_KdTakeLayout::statesAreTold()
{
    QFETCH(QByteArray, content);
    QFETCH(int, state);
    QFETCH(qint64, mediaEnd);
    const KdTakeLayout layout = layoutOf(content);
    QCOMPARE(int(layout.state), state);
    QCOMPARE(layout.mediaEnd, mediaEnd);
    QCOMPARE(layout.slot, content.isEmpty() ? qint64(-1) : kSlot);
}

void tst_KdTakeLayout::buriedHeaderIsFoundAcrossPieces()
{
    const QByteArray header = fragmentedHeader("hoov");
    const int contentAt = start().size() + 8;
    for (int shift = -6; shift <= 2; ++shift) {
        const QByteArray before(1024 * 1024 + shift, 'x');
        const KdTakeLayout layout = layoutOf(start() + box("mdat", before + header));
        QCOMPARE(layout.state, State::Hidden);
        QCOMPARE(layout.header.offset, qint64(contentAt + before.size()));
    }
}

void tst_KdTakeLayout::wordOfTheMediaIsNoHeader()
{
    const QByteArray sound = "hoovhoov" + box("hoov", "no header") + "hoov";
    const KdTakeLayout layout = layoutOf(start() + box("mdat", sound + fragmentedHeader("hoov")));
    QCOMPARE(layout.state, State::Hidden);
    QCOMPARE(layout.header.offset, qint64(start().size() + 8 + sound.size()));
    QCOMPARE(layoutOf(start() + box("mdat", sound)).state, State::NoIndex);
}

void tst_KdTakeLayout::shortSizesReachAsFarAsTheyCan()
{
    const qint64 end = 32 + 8 + kFourGigabytes - 1;
    const QByteArray bytes = KdTakeLayout::mediaHeader(32, end);
    QCOMPARE(bytes, QByteArray("\0\0\0\x08"
                               "free\xff\xff\xff\xffmdat",
                               16));
}

void tst_KdTakeLayout::longSizesTakeTheSamePlace()
{
    const qint64 end = 32 + 8 + kFourGigabytes;
    const QByteArray bytes = KdTakeLayout::mediaHeader(32, end);
    QCOMPARE(bytes.size(), int(KdTakeLayout::kMediaHeaderSize));
    QCOMPARE(bytes, KdMp4ByteWriter().u32(1).u32(kdFourCc("mdat")).u64(quint64(end - 32)).bytes());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeLayout>(argc, argv);
}

#include "tst_KdTakeLayout.moc"
