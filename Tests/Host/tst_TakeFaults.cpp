#include "TakeSound.h"
#include "WriteFaults.h"

#include <KdVBLModel/KdTakeCheck.h>
#include <KdVBLModel/KdTakeJournal.h>
#include <KdVBLModel/KdTakeRepair.h>
#include <KdVBLModel/KdTakeWriter.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <memory>
#include <sys/mount.h>

#include <gst/gst.h>

using Call = WriteFaults::Call;
using Outcome = RepairResult::Outcome;
using Result = KdTakeWriter::Result;

namespace {

constexpr qint64 kMostLostMs = 1000;
constexpr int kForEver = 1000000;

/** A disk that is full soon: a small file system where we may mount one, else a limit on all files.
 */
class SmallDisk
{
public:
    SmallDisk(const QString& folder, int bytes) : m_folder(folder.toLocal8Bit())
    {
        const QByteArray options = "size=" + QByteArray::number(bytes);
        m_isMounted = mount("tmpfs", m_folder.constData(), "tmpfs", 0, options.constData()) == 0;
        if (!m_isMounted) {
            m_limit = std::make_unique<FileFaults::FileSizeLimit>(rlim_t(bytes));
        }
    }
    ~SmallDisk()
    {
        m_limit.reset();
        if (m_isMounted && umount2(m_folder.constData(), MNT_DETACH) != 0) {
            qFatal("The small disk cannot be taken away again");
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    /** Somebody makes room. */
    void enlarge()
    {
        m_limit.reset();
        if (m_isMounted) {
            mount("tmpfs", m_folder.constData(), "tmpfs", MS_REMOUNT, "size=100m");
        }
    }

private:
    QByteArray m_folder;
    bool m_isMounted = false;
    std::unique_ptr<FileFaults::FileSizeLimit> m_limit;
};

int playableFrames(const QString& path)
{
    const KdTakeContents contents = KdTakeCheck::read(path);
    return contents.isReadable ? contents.audioFrames : -1;
}

} // namespace

/** Everything from the first sample to the finished file, while the disk fails in every way. */
class tst_TakeFaults : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void killedAfterAnyWriteOnlyTheLastMomentIsLost();
    void anyWriteMayFail_data();
    void anyWriteMayFail();
    void writesInPartsAreNoFailure();
    void interruptedWritesAreNoFailure();
    void syncThatFailsIsNoSuccess();
    void fullDiskKeepsWhatFitted_data();
    void fullDiskKeepsWhatFitted();
    void folderRemovedInMidTakeIsNoSuccess();
    void folderMovedInMidTakeIsNoSuccessButTheTakeIsWhole();
    void fileReplacedInMidTakeIsNoSuccessAndStays();

private:
    QString folder() const { return temporaryPath(QStringLiteral("takes")); }
    QString path() const { return QDir(folder()).filePath(QStringLiteral("REC_1.m4a")); }
    QStringList leftOvers() const
    {
        return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /** Records until the writer has failed or the seconds are over. */
    Result record(double seconds, KdTakeWriter* writer);
    void checkHonest(Result result);
};

Result tst_TakeFaults::record(double seconds, KdTakeWriter* writer)
{
    if (!writer->open(path(), {}, false, nullptr)) {
        return Result::Lost;
    }
    TakeSound::pushSeconds(*writer, seconds);
    return writer->finish();
}

// What the writer says of a take must be true of the file.
void tst_TakeFaults::checkHonest(Result result)
{
    if (result == Result::Lost) {
        QVERIFY2(!QFileInfo::exists(path()), qPrintable(leftOvers().join(QLatin1Char(' '))));
        QCOMPARE(leftOvers(), QStringList());
        return;
    }
    QVERIFY(playableFrames(path()) > 0);
    if (result == Result::Finished) {
        QCOMPARE(leftOvers(), QStringList(QStringLiteral("REC_1.m4a")));
    }
}

void tst_TakeFaults::killedAfterAnyWriteOnlyTheLastMomentIsLost()
{
    QVERIFY(QDir().mkpath(folder()));
    // What is in the file after each write is what a kill would leave.
    QVector<QByteArray> states;
    {
        WriteFaults writes(path());
        writes.onWritten([&] { states.append(TestFiles::read(path())); });
        KdTakeWriter writer;
        QCOMPARE(record(2.2, &writer), Result::Finished);
    }
    const int whole = playableFrames(path());
    QVERIFY(states.size() > 100);
    QVERIFY(whole > 90);
    int before = 0;
    for (int i = 0; i < states.size(); ++i) {
        TestFiles::write(path(), states[i]);
        const RepairResult repaired = KdTakeRepair::run(path());
        // Each frame is a write of its own, and every write but a few of the frames'.
        const qint64 writtenMs = qint64(qMin(i, whole)) * 1024 * 1000 / 44100;
        const QString what = QStringLiteral("after write %1: %2").arg(i + 1).arg(repaired.message);
        if (repaired.outcome == Outcome::NothingRecoverable) {
            QVERIFY2(writtenMs <= kMostLostMs && before == 0, qPrintable(what));
            continue;
        }
        QVERIFY2(repaired.outcome == Outcome::Repaired, qPrintable(what));
        QVERIFY2(writtenMs - repaired.durationMs <= kMostLostMs, qPrintable(what));
        const int frames = playableFrames(path());
        QVERIFY2(frames >= before, qPrintable(what));
        before = frames;
    }
    QCOMPARE(before, whole);
    QVERIFY(MediaProbe::probe(path()).isReadable);
}

void tst_TakeFaults::anyWriteMayFail_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("count");
    QTest::newRow("the disk is full from then on") << ENOSPC << kForEver;
    QTest::newRow("the disk was full for a moment") << ENOSPC << 1;
    QTest::newRow("the disk is broken from then on") << EIO << kForEver;
    QTest::newRow("the quota is used up") << EDQUOT << kForEver;
}

void tst_TakeFaults::anyWriteMayFail()
{
    QFETCH(int, error);
    QFETCH(int, count);
    allowLog(QStringLiteral("^KdTake"));
    QVERIFY(QDir().mkpath(folder()));
    constexpr double kSeconds = 0.8;
    int calls = kForEver;
    for (int number = 1; number <= calls; ++number) {
        {
            WriteFaults writes(path());
            writes.fail(Call::Write, number, error, count);
            KdTakeWriter writer;
            const Result result = record(kSeconds, &writer);
            if (writes.calls(Call::Write) < number) {
                // One write more than a take needs: nothing has failed.
                QCOMPARE(result, Result::Finished);
                calls = 0;
            } else {
                QVERIFY2(result != Result::Finished, qPrintable(QString::number(number)));
                QVERIFY(!writer.error().isEmpty());
            }
            checkHonest(result);
        }
        if (QFileInfo::exists(path())) {
            QCOMPARE(KdTakeRepair::run(path()).outcome, Outcome::Repaired);
            QVERIFY(playableFrames(path()) > 0);
        }
        QVERIFY(QDir(folder()).removeRecursively() && QDir().mkpath(folder()));
    }
    QCOMPARE(calls, 0);
}

void tst_TakeFaults::writesInPartsAreNoFailure()
{
    QVERIFY(QDir().mkpath(folder()));
    WriteFaults writes(path());
    writes.fail(Call::Write, 1, 0, kForEver);
    KdTakeWriter writer;
    QCOMPARE(record(1.2, &writer), Result::Finished);
    QVERIFY(writes.calls(Call::Write) > 50);
    QVERIFY(MediaProbe::probe(path()).isReadable);
}

void tst_TakeFaults::interruptedWritesAreNoFailure()
{
    QVERIFY(QDir().mkpath(folder()));
    for (int number = 1; number < 60; number += 7) {
        WriteFaults writes(path());
        writes.fail(Call::Write, number, EINTR, 2);
        KdTakeWriter writer;
        QCOMPARE(record(1.2, &writer), Result::Finished);
        checkHonest(Result::Finished);
        QVERIFY(QFile::remove(path()));
    }
}

void tst_TakeFaults::syncThatFailsIsNoSuccess()
{
    allowLog(QStringLiteral("^KdTakeOutput::finish: "));
    QVERIFY(QDir().mkpath(folder()));
    WriteFaults writes(path());
    writes.fail(Call::Sync, 1, EIO, kForEver);
    KdTakeWriter writer;
    QCOMPARE(record(1.2, &writer), Result::Kept);
    QVERIFY(writes.calls(Call::Sync) > 0);
    checkHonest(Result::Kept);
}

void tst_TakeFaults::fullDiskKeepsWhatFitted_data()
{
    QTest::addColumn<int>("kilobytes");
    for (int kilobytes = 4; kilobytes <= 80; kilobytes += 4) {
        QTest::addRow("%d KiB", kilobytes) << kilobytes;
    }
}

void tst_TakeFaults::fullDiskKeepsWhatFitted()
{
    QFETCH(int, kilobytes);
    constexpr int kSeconds = 8;
    allowLog(QStringLiteral("^KdTake"));
    QVERIFY(QDir().mkpath(folder()));
    SmallDisk disk(folder(), kilobytes * 1024);
    KdVBLMODEL::KdAudioFormat format;
    format.bitrateMode = KdVBLMODEL::fbmConstant;
    KdTakeWriter writer;
    if (!writer.open(path(), format, false, nullptr)) {
        QCOMPARE(leftOvers(), QStringList());
        return;
    }
    TakeSound::pushSeconds(writer, kSeconds);
    const Result result = writer.finish();
    QVERIFY(result != Result::Finished);
    checkHonest(result);
    const double seconds = result == Result::Kept ? MediaProbe::probe(path()).seconds : 0.0;
    // The journal, and what the file has beside the sound, take a page or two.
    const double fitting = (kilobytes - 12) * 1024 * 8.0 / format.bitrate;
    QVERIFY2(seconds > qMin(fitting, double(kSeconds)) - 1.0, qPrintable(QString::number(seconds)));
    if (result == Result::Kept) {
        disk.enlarge();
        const RepairResult repaired = KdTakeRepair::run(path());
        QVERIFY2(repaired.outcome == Outcome::Repaired, qPrintable(repaired.message));
        QVERIFY(double(repaired.durationMs) / 1000.0 >= seconds - 0.03);
        const MediaInfo media = MediaProbe::probe(path());
        QVERIFY2(media.isReadable, qPrintable(media.complaint));
    }
}

void tst_TakeFaults::folderRemovedInMidTakeIsNoSuccess()
{
    expectLog(QStringLiteral("^KdTakeOutput::finish: The take .* did not end well"));
    QVERIFY(QDir().mkpath(folder()));
    KdTakeWriter writer;
    QVERIFY(writer.open(path(), {}, false, nullptr));
    QVERIFY(TakeSound::pushSeconds(writer, 1.0));
    QVERIFY(QDir(folder()).removeRecursively());
    QVERIFY(TakeSound::pushSeconds(writer, 1.0));
    QCOMPARE(writer.finish(), Result::Lost);
    QVERIFY(!QFileInfo::exists(folder()));
}

void tst_TakeFaults::folderMovedInMidTakeIsNoSuccessButTheTakeIsWhole()
{
    expectLog(QStringLiteral("^KdTakeOutput::finish: The take .* did not end well"));
    QVERIFY(QDir().mkpath(folder()));
    const QString moved = temporaryPath(QStringLiteral("moved"));
    KdTakeWriter writer;
    QVERIFY(writer.open(path(), {}, false, nullptr));
    QVERIFY(TakeSound::pushSeconds(writer, 1.0));
    QVERIFY(QDir().rename(folder(), moved));
    QVERIFY(TakeSound::pushSeconds(writer, 1.0));
    QCOMPARE(writer.finish(), Result::Lost);
    const MediaInfo media = MediaProbe::probe(QDir(moved).filePath(QStringLiteral("REC_1.m4a")));
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY(qAbs(media.seconds - 2.0) < 0.1);
    // Its journal moved with it, and leads to it at the next start.
    QCOMPARE(KdTakeJournal::findIn(moved).size(), 1);
}

void tst_TakeFaults::fileReplacedInMidTakeIsNoSuccessAndStays()
{
    expectLog(QStringLiteral("^KdTakeOutput::finish: The take .* did not end well"));
    QVERIFY(QDir().mkpath(folder()));
    KdTakeWriter writer;
    QVERIFY(writer.open(path(), {}, false, nullptr));
    QVERIFY(TakeSound::pushSeconds(writer, 1.0));
    QVERIFY(QFile::remove(path()));
    TestFiles::write(path(), "a stranger's");
    QCOMPARE(writer.finish(), Result::Lost);
    QCOMPARE(TestFiles::read(path()), QByteArray("a stranger's"));
    QCOMPARE(leftOvers(), QStringList(QStringLiteral("REC_1.m4a")));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_TakeFaults>(argc, argv);
}

#include "tst_TakeFaults.moc"
