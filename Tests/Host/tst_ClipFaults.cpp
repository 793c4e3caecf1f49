#include "ClipFeeder.h"
#include "WriteFaults.h"

#include <KdVBLModel/KdTakeCheck.h>
#include <KdVBLModel/KdTakeRepair.h>
#include <Support/ClipProbe.h>
#include <Support/FileFaults.h>
#include <Support/FlashBeep.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cmath>

using Call = WriteFaults::Call;
using Outcome = RepairResult::Outcome;

namespace {

constexpr double kMostLostMs = 1000.0;
constexpr int kForEver = 1000000;

KdWebcamTakeFormat clipFormat(QSize size)
{
    KdWebcamTakeFormat format;
    format.size = size;
    format.hasSound = true;
    return format;
}

struct Frames
{
    int sound = -1;
    int pictures = -1;
};

/** What a player gets out of a file; -1 when it cannot be read. */
Frames playable(const QString& path)
{
    const KdTakeContents contents = KdTakeCheck::read(path);
    return contents.isReadable ? Frames{contents.audioFrames, contents.videoFrames} : Frames{};
}

} // namespace

/** Clips of sound and picture whose recording is killed, or whose disk fails. */
class tst_ClipFaults : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void killedAfterAnyWriteOnlyTheLastMomentIsLost();
    void minutesKilledAtAnyMomentComeBack();
    void anyWriteMayFail_data();
    void anyWriteMayFail();
    void fullDiskKeepsWhatFitted_data();
    void fullDiskKeepsWhatFitted();

private:
    QString folder() const { return temporaryPath(QStringLiteral("takes")); }
    QString path() const { return QDir(folder()).filePath(QStringLiteral("VID_1.mp4")); }
    QStringList leftOvers() const
    {
        return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /** @return what is in a copy of the file as it is, after its repair. */
    ClipInfo repairedCopy(const QString& copy);
    /** @return whether a file was kept. */
    bool record(double seconds)
    {
        const KdWebcamTakeFormat format = clipFormat(QSize(160, 90));
        KdWebcamTake take;
        if (!take.open(path(), format, 100)) {
            return false;
        }
        ClipFeeder(take, format).run(seconds);
        return take.finish();
    }
};

void tst_ClipFaults::killedAfterAnyWriteOnlyTheLastMomentIsLost()
{
    QVERIFY(QDir().mkpath(folder()));
    // What is in the file after each write is what a kill would leave.
    QVector<QByteArray> states;
    {
        WriteFaults writes(path());
        writes.onWritten([&] { states.append(TestFiles::read(path())); });
        QVERIFY(record(2.2));
    }
    const Frames whole = playable(path());
    QVERIFY(states.size() > 100);
    QVERIFY(whole.pictures > 60 && whole.sound > 90);
    Frames before{0, 0};
    for (int i = 0; i < states.size(); ++i) {
        TestFiles::write(path(), states[i]);
        const RepairResult repaired = KdTakeRepair::run(path());
        const QString what = QStringLiteral("after write %1: %2").arg(i + 1).arg(repaired.message);
        if (repaired.outcome == Outcome::NothingRecoverable) {
            QVERIFY2(before.pictures == 0 && i < states.size() / 2, qPrintable(what));
            continue;
        }
        QVERIFY2(repaired.outcome == Outcome::Repaired, qPrintable(what));
        const Frames now = playable(path());
        // The muxer finalises with one frame of sound that nothing names.
        QVERIFY2(now.pictures >= before.pictures - 1 && now.sound >= before.sound - 1,
                 qPrintable(what));
        before = now;
    }
    QCOMPARE(before.pictures, whole.pictures);
    QCOMPARE(before.sound, whole.sound);
}

ClipInfo tst_ClipFaults::repairedCopy(const QString& copy)
{
    QFile::remove(copy);
    const bool isCopied = QFile::copy(path(), copy);
    return isCopied && KdTakeRepair::run(copy).outcome == Outcome::Repaired ? ClipProbe::probe(copy)
                                                                            : ClipInfo();
}

// Some of the muxer's fragments lack sizes; in minutes there are such.
void tst_ClipFaults::minutesKilledAtAnyMomentComeBack()
{
    QVERIFY(QDir().mkpath(folder()));
    const KdWebcamTakeFormat format = clipFormat(QSize(160, 90));
    KdWebcamTake take;
    QVERIFY(take.open(path(), format, 100));
    ClipFeeder feeder(take, format);
    QRandomGenerator random(20261120);
    const QString copy = QDir(folder()).filePath(QStringLiteral("copy.mp4"));
    for (int i = 0; i < 24; ++i) {
        feeder.run(1.0 + random.generateDouble() * 6.0);
        // The clock runs faster than the encoder; once that is done, this is what a kill leaves.
        const auto captured = static_cast<double>(take.recordedMs());
        ClipInfo clip;
        QTRY_VERIFY_WITH_TIMEOUT(
            (clip = repairedCopy(copy), captured - clip.pictureLength * 1000.0 <= kMostLostMs &&
                                            captured - clip.soundLength * 1000.0 <= kMostLostMs),
            20000);
        if (i % 8 == 7) {
            const MediaInfo media = MediaProbe::probe(copy);
            QVERIFY2(media.isReadable, qPrintable(media.complaint));
            for (const double offset : FlashBeep::offsets(copy)) {
                QVERIFY2(std::abs(offset) < 0.040, qPrintable(QString::number(offset)));
            }
        }
    }
    QVERIFY(take.finish());
    QVERIFY(MediaProbe::probe(path()).isReadable);
}

void tst_ClipFaults::anyWriteMayFail_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("count");
    QTest::newRow("the disk is full from then on") << ENOSPC << kForEver;
    QTest::newRow("the disk was full for a moment") << ENOSPC << 1;
    QTest::newRow("the disk is broken from then on") << EIO << kForEver;
}

void tst_ClipFaults::anyWriteMayFail()
{
    QFETCH(int, error);
    QFETCH(int, count);
    allowLog(QStringLiteral("^KdTake"));
    constexpr int kStep = 3;
    int calls = kForEver;
    for (int number = 1; number <= calls; number += kStep) {
        QVERIFY(QDir().mkpath(folder()));
        {
            WriteFaults writes(path());
            writes.fail(Call::Write, number, error, count);
            const bool isKept = record(0.8);
            if (writes.calls(Call::Write) < number) {
                QVERIFY(isKept);
                calls = 0;
            }
            QCOMPARE(isKept, QFileInfo::exists(path()));
        }
        if (QFileInfo::exists(path())) {
            const RepairResult repaired = KdTakeRepair::run(path());
            QVERIFY2(repaired.outcome == Outcome::Repaired, qPrintable(repaired.message));
            QVERIFY(playable(path()).pictures > 0);
        } else {
            QCOMPARE(leftOvers(), QStringList());
        }
        QVERIFY(QDir(folder()).removeRecursively());
    }
    QCOMPARE(calls, 0);
}

void tst_ClipFaults::fullDiskKeepsWhatFitted_data()
{
    QTest::addColumn<int>("kilobytes");
    for (int kilobytes = 20; kilobytes <= 140; kilobytes += 15) {
        QTest::addRow("%d KiB", kilobytes) << kilobytes;
    }
}

void tst_ClipFaults::fullDiskKeepsWhatFitted()
{
    QFETCH(int, kilobytes);
    constexpr double kSeconds = 20.0;
    allowLog(QStringLiteral("^KdTake"));
    QVERIFY(QDir().mkpath(folder()));
    bool isKept = false;
    {
        const FileFaults::FileSizeLimit limit(rlim_t(kilobytes * 1024));
        isKept = record(kSeconds);
    }
    if (!isKept) {
        QCOMPARE(leftOvers(), QStringList());
        QVERIFY(kilobytes < 40); // less than a first half second
        return;
    }
    const RepairResult repaired = KdTakeRepair::run(path());
    QVERIFY2(repaired.outcome == Outcome::Repaired, qPrintable(repaired.message));
    const MediaInfo media = MediaProbe::probe(path());
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    // As much as there was room for.
    const double bytesASecond = static_cast<double>(QFileInfo(path()).size()) / media.seconds;
    const double fitting = qMin(kSeconds, kilobytes * 1024 / bytesASecond);
    QVERIFY2(media.seconds > fitting - 1.2, qPrintable(QString::number(media.seconds)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_ClipFaults>(argc, argv);
}

#include "tst_ClipFaults.moc"
