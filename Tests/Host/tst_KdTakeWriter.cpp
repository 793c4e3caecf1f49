#include "TakeSound.h"

#include <KdVBLModel/KdTakeJournal.h>
#include <KdVBLModel/KdTakeWriter.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cmath>
#include <gst/gst.h>

using TakeSound::pushSeconds;
using TakeSound::tone;

/** The file of a take, through every end that it can come to. */
class tst_KdTakeWriter : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void finishedTakeHoldsEverythingPushed_data();
    void finishedTakeHoldsEverythingPushed();
    void takeOfOneBlockIsPlayable();
    void takeWithoutSoundLeavesNothing();
    void runningTakePlaysFromACopy();
    void journalLiesBesideTheRunningTakeOnly();
    void unusablePathIsRefusedAndNothingIsLeft_data();
    void unusablePathIsRefusedAndNothingIsLeft();
    void ownLastTakeIsReplacedOnlyByANewOne();
    void fullDiskKeepsWhatFitted();
    void removedFileIsNoSuccess();
    void finishingTwiceGivesTheSameAnswer();
    void writerIsUsedOnce();

private:
    QString takePath() const { return temporaryPath(QStringLiteral("take \" ! %1 \u00e4.m4a")); }
    QStringList files() const
    {
        return QDir(temporaryPath(QString())).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
};

void tst_KdTakeWriter::finishedTakeHoldsEverythingPushed_data()
{
    QTest::addColumn<int>("samplerate");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("bitrate");
    QTest::addColumn<int>("mode");
    QTest::newRow("defaults") << 44100 << 2 << 128000 << 1;
    QTest::newRow("mono, constant") << 22050 << 1 << 96000 << 2;
    QTest::newRow("96 kHz, 512 kbit/s") << 96000 << 2 << 512000 << 1;
}

void tst_KdTakeWriter::finishedTakeHoldsEverythingPushed()
{
    QFETCH(int, samplerate);
    QFETCH(int, channels);
    QFETCH(int, bitrate);
    QFETCH(int, mode);
    KdVBLMODEL::KdAudioFormat format;
    format.samplerate = samplerate;
    format.channels = channels;
    format.bitrate = bitrate;
    format.bitrateMode = mode;
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), format, false, nullptr));
    QVERIFY(pushSeconds(writer, 3.0));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Finished);

    const MediaInfo media = MediaProbe::probe(takePath());
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QCOMPARE(media.audioCodec, QStringLiteral("aac"));
    QCOMPARE(media.samplerate, samplerate);
    QCOMPARE(media.channels, channels);
    // All of it, and no more than the encoder's delay and the rest of a packet.
    QVERIFY2(media.seconds >= 2.999, qPrintable(QString::number(media.seconds)));
    QVERIFY2(media.seconds < 3.001 + (1600 + 1024) / static_cast<double>(samplerate),
             qPrintable(QString::number(media.seconds)));
    // The end of the tone as well, late by the encoder's delay.
    const double end = 3.0 + (mode == KdVBLMODEL::fbmConstant ? 1600 : 1024) / double(samplerate);
    const QVector<float> samples = MediaProbe::samples(takePath(), 48000);
    const double loudness = MediaProbe::toneDecibel(samples, 48000, 1000.0, end - 0.006, 0.01);
    QVERIFY2(loudness > -20.0, qPrintable(QString::number(loudness)));
    QCOMPARE(files(), QStringList(QFileInfo(takePath()).fileName()));
}

void tst_KdTakeWriter::takeOfOneBlockIsPlayable()
{
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), {}, false, nullptr));
    QVERIFY(writer.push(tone(writer, 0)));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Finished);
    QVERIFY(MediaProbe::probe(takePath()).isReadable);
}

void tst_KdTakeWriter::takeWithoutSoundLeavesNothing()
{
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), {}, false, nullptr));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Lost);
    QCOMPARE(files(), QStringList());
}

void tst_KdTakeWriter::runningTakePlaysFromACopy()
{
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), {}, false, nullptr));
    QVERIFY(pushSeconds(writer, 4.0));
    const QString copy = temporaryPath(QStringLiteral("copy.m4a"));
    // A copy is what a kill would leave.
    QTRY_VERIFY_WITH_TIMEOUT((QFile::remove(copy), QFile::copy(takePath(), copy)) &&
                                 MediaProbe::probe(copy).seconds >= 3.0,
                             10000);
    QVERIFY2(MediaProbe::probe(copy).isReadable, qPrintable(MediaProbe::probe(copy).complaint));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Finished);
}

void tst_KdTakeWriter::journalLiesBesideTheRunningTakeOnly()
{
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), {}, false, nullptr));
    const QStringList journals = KdTakeJournal::findIn(temporaryPath(QString()));
    QCOMPARE(journals.size(), 1);
    KdTakeRecord record;
    QVERIFY(KdTakeJournal::read(journals.first(), &record));
    QCOMPARE(record.takePath, takePath());
    QVERIFY(KdTakeJournal::isWriterRunning(record));
    QVERIFY(pushSeconds(writer, 0.2));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Finished);
    QVERIFY(KdTakeJournal::findIn(temporaryPath(QString())).isEmpty());
}

void tst_KdTakeWriter::unusablePathIsRefusedAndNothingIsLeft_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty") << QString();
    QTest::newRow("relative") << QStringLiteral("take.m4a");
    QTest::newRow("missing folder") << QStringLiteral("$/missing/take.m4a");
    QTest::newRow("folder is a file") << QStringLiteral("$/file/take.m4a");
    QTest::newRow("exists") << QStringLiteral("$/file");
    QTest::newRow("name too long") << QStringLiteral("$/") + QString(256, QLatin1Char('n'));
}

void tst_KdTakeWriter::unusablePathIsRefusedAndNothingIsLeft()
{
    QFETCH(QString, path);
    expectLog(QStringLiteral("^KdTakeWriter::open: "));
    TestFiles::write(temporaryPath(QStringLiteral("file")), "precious");
    KdTakeWriter writer;
    QString error;
    QVERIFY(
        !writer.open(path.replace(QLatin1Char('$'), temporaryPath(QString())), {}, false, &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(files(), QStringList(QStringLiteral("file")));
    QCOMPARE(TestFiles::read(temporaryPath(QStringLiteral("file"))), QByteArray("precious"));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Lost);
}

void tst_KdTakeWriter::ownLastTakeIsReplacedOnlyByANewOne()
{
    TestFiles::write(takePath(), "the old take");
    {
        KdTakeWriter unused;
        QVERIFY(unused.open(takePath(), {}, true, nullptr));
        QCOMPARE(unused.finish(), KdTakeWriter::Result::Lost);
    }
    QCOMPARE(TestFiles::read(takePath()), QByteArray("the old take"));
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), {}, true, nullptr));
    QVERIFY(pushSeconds(writer, 1.0));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Finished);
    QVERIFY(MediaProbe::probe(takePath()).isReadable);
    QCOMPARE(files(), QStringList(QFileInfo(takePath()).fileName()));
}

void tst_KdTakeWriter::fullDiskKeepsWhatFitted()
{
    expectLog(QStringLiteral("^KdTakePipeline::noteError: "));
    expectLog(QStringLiteral("^KdTakeOutput::finish: The take .* did not end well"));
    KdVBLMODEL::KdAudioFormat format;
    format.bitrateMode = KdVBLMODEL::fbmConstant;
    format.bitrate = 256000;
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), format, false, nullptr));
    {
        const FileFaults::FileSizeLimit limit(rlim_t(150) * 1024);
        pushSeconds(writer, 10.0);
        QTRY_VERIFY_WITH_TIMEOUT(writer.hasFailed(), 10000);
        QVERIFY(!writer.error().isEmpty());
        QVERIFY(!writer.push(tone(writer, 0)));
        QCOMPARE(writer.finish(), KdTakeWriter::Result::Kept);
    }
    const MediaInfo media = MediaProbe::probe(takePath());
    QVERIFY2(media.seconds >= 3.5, qPrintable(QString::number(media.seconds)));
}

void tst_KdTakeWriter::removedFileIsNoSuccess()
{
    expectLog(QStringLiteral("^KdTakeOutput::finish: The take .* did not end well"));
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), {}, false, nullptr));
    QVERIFY(pushSeconds(writer, 1.0));
    QVERIFY(QFile::remove(takePath()));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Lost);
    QCOMPARE(files(), QStringList());
}

void tst_KdTakeWriter::finishingTwiceGivesTheSameAnswer()
{
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), {}, false, nullptr));
    QVERIFY(pushSeconds(writer, 0.5));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Finished);
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Finished);
    QVERIFY(!writer.push(tone(writer, 0)));
    QVERIFY(!writer.push(nullptr));
}

void tst_KdTakeWriter::writerIsUsedOnce()
{
    expectLog(QStringLiteral("^KdTakeWriter::open: "));
    KdTakeWriter writer;
    QVERIFY(writer.open(takePath(), {}, false, nullptr));
    QVERIFY(!writer.open(temporaryPath(QStringLiteral("other.m4a")), {}, false, nullptr));
    QVERIFY(pushSeconds(writer, 0.5));
    QCOMPARE(writer.finish(), KdTakeWriter::Result::Finished);
    QCOMPARE(files(), QStringList(QFileInfo(takePath()).fileName()));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeWriter>(argc, argv);
}

#include "tst_KdTakeWriter.moc"
