#include <KdVBLModel/KdMp4Boxes.h>
#include <KdVBLModel/KdMp4Bytes.h>
#include <KdVBLModel/KdMp4MovieReader.h>
#include <KdVBLModel/KdMp4MovieWriter.h>
#include <Support/CpuTimer.h>
#include <Support/KdTestCase.h>

#include <QRandomGenerator>

namespace {

constexpr qint64 kFile = Q_INT64_C(6) * 1024 * 1024 * 1024;

QByteArray box(const char (&type)[5], const QByteArray& content)
{
    return KdMp4Boxes::serialize(kdFourCc(type), content);
}

/** Numbers of 32 bit, one behind the other. */
QByteArray numbers(std::initializer_list<quint32> values)
{
    KdMp4ByteWriter bytes;
    for (const quint32 value : values) {
        bytes.u32(value);
    }
    return bytes.bytes();
}

QByteArray track(quint32 id, const QByteArray& tables)
{
    const QByteArray description = box("stsd", numbers({0, 0}));
    const QByteArray media = box("mdhd", numbers({0, 0, 0, 48000, 0, 0})) +
                             box("minf", box("stbl", description + tables));
    return box("trak", box("tkhd", numbers({0, 0, 0, id, 0, 0})) +
                           box("edts", box("elst", numbers({0, 1, 7, 0, 0x10000}))) +
                           box("mdia", media));
}

QByteArray header(const QByteArray& tracks)
{
    return box("mvhd", numbers({0, 0, 0, 1000, 0})) + tracks +
           box("mvex", box("trex", numbers({0, 1, 1, 0, 0, 0})));
}

// Two samples in the first chunk, one in the second; the second sample is no key frame.
QByteArray plainTables()
{
    return box("stts", numbers({0, 2, 2, 1024, 1, 500})) + box("stss", numbers({0, 2, 1, 3})) +
           box("stsc", numbers({0, 2, 1, 2, 1, 2, 1, 1})) +
           box("stsz", numbers({0, 0, 3, 10, 20, 30})) + box("stco", numbers({0, 2, 1000, 5000}));
}

/** A fragment of track 1 that begins at time 2548 and whose data lies behind base. */
QByteArray fragment(const QByteArray& runs, quint32 base = 100000)
{
    const QByteArray head = box("tfhd", numbers({0x1, 1, 0, base}));
    return box("mfhd", numbers({0, 1})) +
           box("traf", head + box("tfdt", numbers({0, 2548})) + runs);
}

KdMp4Movie movieWith(const QByteArray& tables)
{
    return KdMp4MovieReader::read(header(track(1, tables)), kFile);
}

} // namespace

class tst_KdMp4MovieReader : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void samplesOfTheTablesAreFound();
    void samplesBeyondTheFileAreLeftOut();
    void headerThatMakesNoSenseHasNoTracks_data();
    void headerThatMakesNoSenseHasNoTracks();
    void countsThatLieAreBounded_data();
    void countsThatLieAreBounded();
    void fragmentAddsItsSamples();
    void missingSizeReachesToTheNextRun();
    void missingLengthIsThatOfTheSampleBefore();
    void gapBetweenFragmentsIsKept();
    void runsThatMakeNoSenseAreLeftOut_data();
    void runsThatMakeNoSenseAreLeftOut();
    void damagedHeadersAndFragmentsComeToAnEnd();
    void writtenMovieIsReadBack();
    void offsetsBeyondFourGigabytesAreWritten();
    void negativeCompositionOffsetsAreWritten();
    void lengthsAreWrittenEverywhere();
};

void tst_KdMp4MovieReader::samplesOfTheTablesAreFound()
{
    const KdMp4Movie movie = movieWith(plainTables());
    QVERIFY(movie.isFragmented);
    QCOMPARE(movie.tracks.size(), 1);
    const KdMp4Track& track = movie.tracks.first();
    QCOMPARE(track.timescale, 48000U);
    QCOMPARE(track.samples.size(), 3);
    QCOMPARE(track.samples[0].offset, qint64(1000));
    QCOMPARE(track.samples[1].offset, qint64(1010));
    QCOMPARE(track.samples[2].offset, qint64(5000));
    QCOMPARE(track.samples[2].size, 30U);
    QCOMPARE(track.samples[2].duration, 500U);
    QVERIFY(track.samples[0].isSync && !track.samples[1].isSync && track.samples[2].isSync);
    QCOMPARE(track.duration, quint64(2548));
    QCOMPARE(movie.durationMs(), qint64(53));
}

void tst_KdMp4MovieReader::samplesBeyondTheFileAreLeftOut()
{
    const KdMp4Movie movie = KdMp4MovieReader::read(header(track(1, plainTables())), 5029);
    QCOMPARE(movie.tracks.first().samples.size(), 2);
    QCOMPARE(movie.tracks.first().duration, quint64(2048));
}

void tst_KdMp4MovieReader::headerThatMakesNoSenseHasNoTracks_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no tracks") << header(QByteArray());
    QTest::newRow("empty track") << header(box("trak", QByteArray()));
    QTest::newRow("track within a track") << header(box("trak", track(1, plainTables())));
    QTest::newRow("id 0") << header(track(0, plainTables()));
    QTest::newRow("text") << QByteArray("This is no header.");
}

void tst_KdMp4MovieReader::headerThatMakesNoSenseHasNoTracks()
{
    QFETCH(QByteArray, content);
    KdMp4Movie movie = KdMp4MovieReader::read(content, kFile);
    QVERIFY(movie.tracks.isEmpty());
    QCOMPARE(movie.durationMs(), qint64(0));
    KdMp4FragmentReader::append(&movie, fragment(box("trun", numbers({0, 1}))), 0, kFile);
    QVERIFY(movie.tracks.isEmpty());
}

void tst_KdMp4MovieReader::countsThatLieAreBounded_data()
{
    constexpr quint32 kMost = 0xffffffff;
    QTest::addColumn<QByteArray>("tables");
    const QByteArray sizes = box("stsz", numbers({0, 0, 3, 10, 20, 30}));
    QTest::newRow("common size") << box("stsz", numbers({0, 1, kMost})) +
                                        box("stsc", numbers({0, 1, 1, kMost, 1})) +
                                        box("stco", numbers({0, 1, 0}));
    QTest::newRow("sizes") << box("stsz", numbers({0, 0, kMost, 1})) +
                                  box("stsc", numbers({0, kMost, 1, kMost, 1})) +
                                  box("stco", numbers({0, kMost, 0}));
    QTest::newRow("chunks that go back")
        << sizes + box("stsc", numbers({0, 3, 5, 1, 1, 1, 1, 1, kMost, 1, 1})) +
               box("stco", numbers({0, 3, 0, 1, 2}));
    QTest::newRow("times") << plainTables() + box("stts", numbers({0, kMost, kMost, kMost}));
    QTest::newRow("size 0") << box("stsz", numbers({0, 0, 1, 0})) +
                                   box("stsc", numbers({0, 1, 1, 1, 1})) +
                                   box("stco", numbers({0, 1, 0}));
}

void tst_KdMp4MovieReader::countsThatLieAreBounded()
{
    QFETCH(QByteArray, tables);
    CpuTimer timer;
    timer.start();
    const KdMp4Movie movie = movieWith(tables);
    QCOMPARE(movie.tracks.size(), 1);
    QVERIFY(movie.tracks.first().samples.size() <= kMp4MostSamples);
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
}

void tst_KdMp4MovieReader::fragmentAddsItsSamples()
{
    KdMp4Movie movie = movieWith(plainTables());
    // Two samples with length and size, data 16 bytes behind the base; the second is no key frame.
    const QByteArray run = box("trun", numbers({0x701, 2, 16, 1024, 40, 0, 600, 50, 0x10000}));
    KdMp4FragmentReader::append(&movie, fragment(run), 200000, kFile);
    const QVector<KdMp4Sample>& samples = movie.tracks.first().samples;
    QCOMPARE(samples.size(), 5);
    QCOMPARE(samples[3].offset, qint64(100016));
    QCOMPARE(samples[4].offset, qint64(100056));
    QCOMPARE(samples[4].size, 50U);
    QVERIFY(samples[3].isSync && !samples[4].isSync);
    QCOMPARE(movie.tracks.first().duration, quint64(2548 + 1624));
}

void tst_KdMp4MovieReader::missingSizeReachesToTheNextRun()
{
    KdMp4Movie movie = movieWith(plainTables());
    const QByteArray runs = box("trun", numbers({0x301, 1, 0, 1024, 40})) +
                            box("trun", numbers({0x101, 1, 40, 1024})) +
                            box("trun", numbers({0x301, 1, 100, 1024, 30})) +
                            box("trun", numbers({0x101, 1, 130, 1024}));
    KdMp4FragmentReader::append(&movie, fragment(runs), 100200, kFile);
    const QVector<KdMp4Sample>& samples = movie.tracks.first().samples;
    QCOMPARE(samples.size(), 7);
    QCOMPARE(samples[4].offset, qint64(100040));
    QCOMPARE(samples[4].size, 60U);
    // The last one reaches to the fragment's own header.
    QCOMPARE(samples[6].size, 70U);
}

void tst_KdMp4MovieReader::missingLengthIsThatOfTheSampleBefore()
{
    KdMp4Movie movie = movieWith(plainTables());
    const QByteArray runs =
        box("trun", numbers({0x301, 1, 0, 1024, 40})) + box("trun", numbers({0x201, 1, 40, 40}));
    KdMp4FragmentReader::append(&movie, fragment(runs), 200000, kFile);
    QCOMPARE(movie.tracks.first().samples.last().duration, 1024U);
    QCOMPARE(movie.tracks.first().duration, quint64(2548 + 2048));
}

void tst_KdMp4MovieReader::gapBetweenFragmentsIsKept()
{
    KdMp4Movie movie = movieWith(plainTables());
    movie.tracks.first().duration -= 100;
    movie.tracks.first().samples.last().duration -= 100;
    KdMp4FragmentReader::append(&movie, fragment(box("trun", numbers({0x301, 1, 0, 1024, 40}))),
                                200000, kFile);
    QCOMPARE(movie.tracks.first().samples[2].duration, 500U);
    QCOMPARE(movie.tracks.first().duration, quint64(2548 + 1024));
}

void tst_KdMp4MovieReader::runsThatMakeNoSenseAreLeftOut_data()
{
    constexpr quint32 kMost = 0xffffffff;
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("cut") << fragment(box("trun", numbers({0x301, 2, 0, 1024, 40}))).left(60);
    QTest::newRow("no such track")
        << box("traf", box("tfhd", numbers({0, 9})) + box("trun", numbers({0, 1})));
    QTest::newRow("many without size") << fragment(box("trun", numbers({0x101, 2, 0, 1024, 1024})));
    QTest::newRow("before the file")
        << fragment(box("trun", numbers({0x301, 1, 0x80000000, 1024, 40})), 5);
    QTest::newRow("behind the file")
        << fragment(box("trun", numbers({0x301, 1, 0, 1024, kMost})), kMost);
    QTest::newRow("as many as can be said") << fragment(box("trun", numbers({0, kMost})));
    QTest::newRow("no head") << box("traf", box("trun", numbers({0x301, 1, 0, 1024, 40})));
    QTest::newRow("huge base") << box("traf", box("tfhd", numbers({0x1, 1, kMost, kMost})) +
                                                  box("trun", numbers({0x301, 1, 0, 1, 1})));
}

void tst_KdMp4MovieReader::runsThatMakeNoSenseAreLeftOut()
{
    QFETCH(QByteArray, content);
    KdMp4Movie movie = movieWith(plainTables());
    KdMp4FragmentReader::append(&movie, content, 0, 200000);
    QCOMPARE(movie.tracks.first().samples.size(), 3);
}

void tst_KdMp4MovieReader::damagedHeadersAndFragmentsComeToAnEnd()
{
    QRandomGenerator random(20261120);
    const QByteArray goodHeader = header(track(1, plainTables()) + track(2, plainTables()));
    const QByteArray goodFragment =
        fragment(box("trun", numbers({0x701, 2, 16, 1024, 40, 0, 600, 50, 0x10000})) +
                 box("trun", numbers({0x201, 1, 600, 50})));
    CpuTimer timer;
    timer.start();
    for (int round = 0; round < 3000; ++round) {
        QByteArray damagedHeader = goodHeader;
        QByteArray damagedFragment = goodFragment;
        for (int i = 0; i < 3; ++i) {
            damagedHeader[int(random.bounded(damagedHeader.size()))] = char(random.bounded(256));
            damagedFragment[int(random.bounded(damagedFragment.size()))] =
                char(random.bounded(256));
        }
        KdMp4Movie movie = KdMp4MovieReader::read(damagedHeader, 300000);
        KdMp4FragmentReader::append(&movie, damagedFragment, 200000, 300000);
        for (const KdMp4Track& each : qAsConst(movie.tracks)) {
            for (const KdMp4Sample& sample : each.samples) {
                QVERIFY(sample.offset >= 0 && sample.offset + sample.size <= 300000);
            }
        }
        QVERIFY(!KdMp4MovieWriter::write(movie).isEmpty());
    }
    QVERIFY2(timer.elapsed() < 60000, qPrintable(QString::number(timer.elapsed())));
}

void tst_KdMp4MovieReader::writtenMovieIsReadBack()
{
    KdMp4Movie movie = movieWith(plainTables());
    movie.tracks.first().samples[1].compositionOffset = 300;
    const QByteArray written = KdMp4Boxes::find(KdMp4MovieWriter::write(movie), kdFourCc("moov"));
    const KdMp4Movie again = KdMp4MovieReader::read(written, kFile);
    QVERIFY(!again.isFragmented);
    QCOMPARE(again.tracks.size(), 1);
    const QVector<KdMp4Sample>& before = movie.tracks.first().samples;
    const QVector<KdMp4Sample>& after = again.tracks.first().samples;
    QCOMPARE(after.size(), before.size());
    for (int i = 0; i < before.size(); ++i) {
        QCOMPARE(after[i].offset, before[i].offset);
        QCOMPARE(after[i].size, before[i].size);
        QCOMPARE(after[i].duration, before[i].duration);
        QCOMPARE(after[i].compositionOffset, before[i].compositionOffset);
        QCOMPARE(after[i].isSync, before[i].isSync);
    }
}

void tst_KdMp4MovieReader::offsetsBeyondFourGigabytesAreWritten()
{
    KdMp4Movie movie = movieWith(plainTables());
    movie.tracks.first().samples.last().offset = kFile - 100;
    const QByteArray written = KdMp4Boxes::find(KdMp4MovieWriter::write(movie), kdFourCc("moov"));
    const KdMp4Movie again = KdMp4MovieReader::read(written, kFile);
    QCOMPARE(again.tracks.first().samples.size(), 3);
    QCOMPARE(again.tracks.first().samples.first().offset, qint64(1000));
    QCOMPARE(again.tracks.first().samples.last().offset, kFile - 100);
}

void tst_KdMp4MovieReader::negativeCompositionOffsetsAreWritten()
{
    KdMp4Movie movie = movieWith(plainTables());
    movie.tracks.first().samples.last().compositionOffset = -200;
    const QByteArray written = KdMp4Boxes::find(KdMp4MovieWriter::write(movie), kdFourCc("moov"));
    QVERIFY(written.contains(QByteArray("ctts\1", 5)));
    const KdMp4Movie again = KdMp4MovieReader::read(written, kFile);
    QCOMPARE(again.tracks.first().samples.last().compositionOffset, -200);
}

void tst_KdMp4MovieReader::lengthsAreWrittenEverywhere()
{
    const QByteArray written =
        KdMp4Boxes::find(KdMp4MovieWriter::write(movieWith(plainTables())), kdFourCc("moov"));
    const QByteArray track = KdMp4Boxes::find(written, kdFourCc("trak"));
    const QByteArray media = KdMp4Boxes::find(track, kdFourCc("mdia"));
    // 2548 of 48000 are 53.1 of 1000, and what has begun counts.
    QCOMPARE(KdMp4Boxes::find(written, kdFourCc("mvhd")), numbers({0, 0, 0, 1000, 54}));
    QCOMPARE(KdMp4Boxes::find(track, kdFourCc("tkhd")), numbers({0, 0, 0, 1, 0, 54}));
    QCOMPARE(KdMp4Boxes::find(KdMp4Boxes::find(track, kdFourCc("edts")), kdFourCc("elst")),
             numbers({0, 1, 54, 0, 0x10000}));
    QCOMPARE(KdMp4Boxes::find(media, kdFourCc("mdhd")), numbers({0, 0, 0, 48000, 2548, 0}));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdMp4MovieReader>(argc, argv);
}

#include "tst_KdMp4MovieReader.moc"
