#include "TakeMaker.h"

#include <KdVBLModel/KdMp4Boxes.h>
#include <KdVBLModel/KdTakeCheck.h>
#include <KdVBLModel/KdTakeRepair.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtEndian>

#include <gst/gst.h>

using Outcome = RepairResult::Outcome;

namespace {

constexpr int kSlot = 32;
constexpr int kFirstMedia = 40;

/** The states that the muxer's finalising goes through, in the order of its writes. */
enum FinaliseStep
{
    Renamed,
    Buried,
    Indexing
};

QVector<KdMp4Box> boxesOf(QByteArray content)
{
    QBuffer file(&content);
    file.open(QIODevice::ReadOnly);
    return KdMp4Boxes::between(&file, 0);
}

int framesIn(const QString& path)
{
    const KdTakeContents contents = KdTakeCheck::read(path);
    return contents.isReadable ? contents.audioFrames + contents.videoFrames : -1;
}

} // namespace

class tst_KdTakeRepair : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void fragmentsBecomeTheFileThatACleanEndMakes_data();
    void fragmentsBecomeTheFileThatACleanEndMakes();
    void everyStepOfTheFinalisingIsMadeGood_data();
    void everyStepOfTheFinalisingIsMadeGood();
    void cutAnywhereKeepsEveryCompleteFragment_data();
    void cutAnywhereKeepsEveryCompleteFragment();
    void zerosAfterAPowerCutAreLeftOut();
    void interruptedRepairIsDoneAgain_data();
    void interruptedRepairIsDoneAgain();
    void finishedFileStaysAsItIs();
    void fileBeyondFourGigabytesIsRepaired();
    void cancelledRepairChangesNothing_data();
    void cancelledRepairChangesNothing();
    void progressRuns();
    void fullDiskKeepsWhatIsThere();
    void fullDiskInTheFinalisingLeavesAReadableFile();
    void unusableFilesAreReported_data();
    void unusableFilesAreReported();
    void unwritableFileIsAFailure();
    void damageAnywhereNeverCrashes();

private:
    QString file() const { return temporaryPath(QStringLiteral("take.mp4")); }
    const QByteArray& finished(bool hasVideo) const { return hasVideo ? m_video : m_audio; }
    QByteArray fragmented(bool hasVideo) const;
    QByteArray stoppedAt(FinaliseStep step, int indexBytes, bool hasVideo) const;
    void checkRepaired(bool hasVideo, int mayMiss);

    QByteArray m_audio;
    QByteArray m_video;
    TakeMaker::Contents m_audioContents;
    TakeMaker::Contents m_videoContents;
};

void tst_KdTakeRepair::initTestCase()
{
    gst_init(nullptr, nullptr);
    QTemporaryDir folder;
    for (const bool hasVideo : {false, true}) {
        TakeMaker::Take take;
        take.path = folder.filePath(QStringLiteral("made.mp4"));
        take.hasVideo = hasVideo;
        // With a picture, long enough for the muxer to leave out sizes and lengths somewhere.
        take.seconds = hasVideo ? 30 : 6;
        QCOMPARE(TakeMaker::write(take), QString());
        (hasVideo ? m_video : m_audio) = TestFiles::read(take.path);
        (hasVideo ? m_videoContents : m_audioContents) = TakeMaker::read(take.path);
    }
}

QByteArray tst_KdTakeRepair::fragmented(bool hasVideo) const
{
    QByteArray content = finished(hasVideo);
    return TakeMaker::unfinalise(&content) ? content : QByteArray();
}

QByteArray tst_KdTakeRepair::stoppedAt(FinaliseStep step, int indexBytes, bool hasVideo) const
{
    QByteArray content = fragmented(hasVideo);
    const int index = content.size();
    content.replace(content.indexOf("moov"), 4, "hoov");
    if (step >= Buried) {
        content.replace(kSlot, 16, finished(hasVideo).mid(kSlot, 16));
    }
    if (step == Indexing) {
        content += finished(hasVideo).mid(index, indexBytes);
    }
    return content;
}

// The last sample of each track is written without a fragment that names it.
void tst_KdTakeRepair::checkRepaired(bool hasVideo, int mayMiss)
{
    const TakeMaker::Contents& wanted = hasVideo ? m_videoContents : m_audioContents;
    const TakeMaker::Contents repaired = TakeMaker::read(file());
    QCOMPARE(repaired.complaints, QString());
    QCOMPARE(repaired.streams, hasVideo ? 2 : 1);
    QVERIFY(repaired.packets.size() >= wanted.packets.size() - mayMiss);
    QStringList missing = wanted.packets;
    for (const QString& packet : repaired.packets) {
        QVERIFY2(missing.removeOne(packet), qPrintable(packet));
    }
    QCOMPARE(missing, wanted.packets.mid(wanted.packets.size() - missing.size()));
}

void tst_KdTakeRepair::fragmentsBecomeTheFileThatACleanEndMakes_data()
{
    QTest::addColumn<bool>("hasVideo");
    QTest::newRow("sound") << false;
    QTest::newRow("sound and picture") << true;
}

void tst_KdTakeRepair::fragmentsBecomeTheFileThatACleanEndMakes()
{
    QFETCH(bool, hasVideo);
    const QByteArray killed = fragmented(hasVideo);
    QVERIFY(!killed.isEmpty());
    TestFiles::write(file(), killed);
    const RepairResult result = KdTakeRepair::run(file());
    QVERIFY2(result.outcome == Outcome::Repaired, qPrintable(result.message));
    QVERIFY(qAbs(result.durationMs - (hasVideo ? 30000 : 6000)) < 100);
    checkRepaired(hasVideo, 2);
}

void tst_KdTakeRepair::everyStepOfTheFinalisingIsMadeGood_data()
{
    QTest::addColumn<bool>("hasVideo");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("indexBytes");
    for (const bool hasVideo : {false, true}) {
        const char* const kind = hasVideo ? "sound and picture" : "sound";
        const int index = finished(hasVideo).size() - fragmented(hasVideo).size();
        QTest::addRow("%s, header renamed", kind) << hasVideo << int(Renamed) << 0;
        QTest::addRow("%s, header buried", kind) << hasVideo << int(Buried) << 0;
        for (const int bytes : {1, 8, index / 2, index - 1}) {
            QTest::addRow("%s, %d bytes of the index", kind, bytes)
                << hasVideo << int(Indexing) << bytes;
        }
    }
}

void tst_KdTakeRepair::everyStepOfTheFinalisingIsMadeGood()
{
    QFETCH(bool, hasVideo);
    QFETCH(int, step);
    QFETCH(int, indexBytes);
    TestFiles::write(file(), stoppedAt(FinaliseStep(step), indexBytes, hasVideo));
    const RepairResult result = KdTakeRepair::run(file());
    QVERIFY2(result.outcome == Outcome::Repaired, qPrintable(result.message));
    checkRepaired(hasVideo, hasVideo ? 2 : 0);
}

void tst_KdTakeRepair::cutAnywhereKeepsEveryCompleteFragment_data()
{
    fragmentsBecomeTheFileThatACleanEndMakes_data();
}

void tst_KdTakeRepair::cutAnywhereKeepsEveryCompleteFragment()
{
    QFETCH(bool, hasVideo);
    QByteArray killed = fragmented(hasVideo);
    // The first fragments hold every kind of place there is.
    killed.truncate(qMin(killed.size(), 100 * 1024));
    const QVector<KdMp4Box> boxes = boxesOf(killed);
    int complete = 0;
    for (const KdMp4Box& box : boxes) {
        for (const qint64 inBox :
             {qint64(1), qint64(7), qint64(8), qint64(9), qint64(20), box.size / 2, box.size - 1}) {
            TestFiles::write(file(), killed.left(int(box.offset + qMin(inBox, box.size - 1))));
            const RepairResult result = KdTakeRepair::run(file());
            const QString where =
                QStringLiteral("%1 bytes: %2").arg(box.offset + inBox).arg(result.message);
            if (complete == 0) {
                QVERIFY2(result.outcome == Outcome::NothingRecoverable, qPrintable(where));
            } else {
                QVERIFY2(result.outcome == Outcome::Repaired, qPrintable(where));
                QCOMPARE(framesIn(file()), complete);
            }
        }
        TestFiles::write(file(), killed.left(int(box.end())));
        if (KdTakeRepair::run(file()).outcome == Outcome::Repaired) {
            const bool isHeader = box.type == kdFourCc("moov") || box.type == kdFourCc("moof");
            const int frames = framesIn(file());
            QVERIFY2(isHeader ? frames > complete : frames == complete,
                     qPrintable(QString::number(box.offset)));
            complete = frames;
        }
    }
    QVERIFY(complete > 0);
}

void tst_KdTakeRepair::zerosAfterAPowerCutAreLeftOut()
{
    const QByteArray killed = fragmented(false);
    TestFiles::write(file(), killed);
    QCOMPARE(KdTakeRepair::run(file()).outcome, Outcome::Repaired);
    const int frames = framesIn(file());
    TestFiles::write(file(), killed + QByteArray(100000, '\0'));
    QCOMPARE(KdTakeRepair::run(file()).outcome, Outcome::Repaired);
    QCOMPARE(framesIn(file()), frames);
}

void tst_KdTakeRepair::interruptedRepairIsDoneAgain_data()
{
    QTest::addColumn<QByteArray>("killed");
    QTest::addColumn<int>("written");
    for (const int part : {1, 8, 1000, -1}) {
        QTest::addRow("fragments, %d", part) << fragmented(false) << part;
        QTest::addRow("renamed, %d", part) << stoppedAt(Renamed, 0, false) << part;
        QTest::addRow("buried, %d", part) << stoppedAt(Indexing, 900, false) << part;
    }
}

void tst_KdTakeRepair::interruptedRepairIsDoneAgain()
{
    QFETCH(QByteArray, killed);
    QFETCH(int, written);
    TestFiles::write(file(), killed);
    QCOMPARE(KdTakeRepair::run(file()).outcome, Outcome::Repaired);
    const QByteArray repaired = TestFiles::read(file());
    // The 16 bytes are written at last: with the old ones, it is an interrupted repair.
    const int index = repaired.lastIndexOf("moov") - 4;
    QByteArray interrupted = repaired.left(written < 0 ? repaired.size() : index + written);
    interrupted.replace(kSlot, 16, killed.mid(kSlot, 16));
    TestFiles::write(file(), interrupted);
    const RepairResult again = KdTakeRepair::run(file());
    QVERIFY2(again.outcome == Outcome::Repaired, qPrintable(again.message));
    QCOMPARE(TestFiles::read(file()), repaired);
}

void tst_KdTakeRepair::finishedFileStaysAsItIs()
{
    TestFiles::write(file(), finished(true));
    const RepairResult result = KdTakeRepair::run(file());
    QCOMPARE(result.outcome, Outcome::Repaired);
    QVERIFY(qAbs(result.durationMs - 30000) < 100);
    QCOMPARE(TestFiles::read(file()), finished(true));
}

void tst_KdTakeRepair::fileBeyondFourGigabytesIsRepaired()
{
    constexpr qint64 kLarge = Q_INT64_C(5) * 1024 * 1024 * 1024;
    TestFiles::write(file(), fragmented(false));
    QFile take(file());
    QVERIFY(take.open(QIODevice::ReadWrite));
    // What follows the last fragment is one that never got its header.
    QVERIFY(take.resize(kLarge));
    QVERIFY(take.seek(fragmented(false).size()));
    QCOMPARE(take.write(KdMp4Boxes::serialize(kdFourCc("free"), QByteArray()) +
                        QByteArray("\0\0\0\0mdat", 8)),
             qint64(16));
    take.close();
    const RepairResult result = KdTakeRepair::run(file());
    QVERIFY2(result.outcome == Outcome::Repaired, qPrintable(result.message));
    QVERIFY(QFileInfo(file()).size() > kLarge);
    checkRepaired(false, 1);
}

void tst_KdTakeRepair::cancelledRepairChangesNothing_data()
{
    QTest::addColumn<QByteArray>("killed");
    QTest::addColumn<int>("from");
    for (const int from : {0, 30, 50}) {
        QTest::addRow("fragments, %d %%", from) << fragmented(true) << from;
        QTest::addRow("buried, %d %%", from) << stoppedAt(Buried, 0, true) << from;
    }
}

void tst_KdTakeRepair::cancelledRepairChangesNothing()
{
    QFETCH(QByteArray, killed);
    QFETCH(int, from);
    TestFiles::write(file(), killed);
    const RepairResult result =
        KdTakeRepair::run(file(), [from](int percent) { return percent < from; });
    QVERIFY2(result.outcome == Outcome::Cancelled, qPrintable(result.message));
    QCOMPARE(TestFiles::read(file()), killed);
}

void tst_KdTakeRepair::progressRuns()
{
    TestFiles::write(file(), fragmented(true));
    QVector<int> seen;
    KdTakeRepair::run(file(), [&seen](int percent) {
        seen.append(percent);
        return true;
    });
    QVERIFY(seen.size() > 10);
    QVERIFY(std::is_sorted(seen.cbegin(), seen.cend()));
    QCOMPARE(seen.last(), 100);
}

void tst_KdTakeRepair::fullDiskKeepsWhatIsThere()
{
    const QByteArray killed = fragmented(false);
    TestFiles::write(file(), killed);
    RepairResult result;
    {
        const FileFaults::FileSizeLimit limit(rlim_t(killed.size()) + 100);
        result = KdTakeRepair::run(file());
    }
    QCOMPARE(result.outcome, Outcome::Failed);
    QCOMPARE(result.reason, RepairResult::Reason::NoSpace);
    QCOMPARE(result.message,
             QStringLiteral("There is not enough space on the disk to complete %1.").arg(file()));
    QCOMPARE(TestFiles::read(file()), killed);
    QCOMPARE(KdTakeRepair::run(file()).outcome, Outcome::Repaired);
}

void tst_KdTakeRepair::fullDiskInTheFinalisingLeavesAReadableFile()
{
    const QByteArray killed = stoppedAt(Indexing, 1000, false);
    TestFiles::write(file(), killed);
    {
        const FileFaults::FileSizeLimit limit(rlim_t(killed.size()));
        QCOMPARE(KdTakeRepair::run(file()).outcome, Outcome::Failed);
    }
    QCOMPARE(TestFiles::read(file()), fragmented(false));
    QCOMPARE(TakeMaker::read(file()).complaints, QString());
    QCOMPARE(KdTakeRepair::run(file()).outcome, Outcome::Repaired);
}

void tst_KdTakeRepair::unusableFilesAreReported_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("This is no recording at all.");
    QTest::newRow("zeros") << QByteArray(5000, '\0');
    QTest::newRow("head only") << fragmented(false).left(kFirstMedia);
    QTest::newRow("nothing but media") << fragmented(false).left(3000);
    QTest::newRow("headers without media")
        << KdMp4Boxes::serialize(kdFourCc("ftyp"), "mp42") +
               KdMp4Boxes::serialize(kdFourCc("moov"), QByteArray());
}

void tst_KdTakeRepair::unusableFilesAreReported()
{
    QFETCH(QByteArray, content);
    TestFiles::write(file(), content);
    const RepairResult result = KdTakeRepair::run(file());
    QCOMPARE(result.outcome, Outcome::NothingRecoverable);
    QVERIFY(!result.message.isEmpty());
    QCOMPARE(TestFiles::read(file()), content);
}

void tst_KdTakeRepair::unwritableFileIsAFailure()
{
    const RepairResult missing = KdTakeRepair::run(temporaryPath(QStringLiteral("missing.mp4")));
    QCOMPARE(missing.outcome, Outcome::Failed);
    QCOMPARE(missing.reason, RepairResult::Reason::CannotOpen);
    QVERIFY(!QFileInfo::exists(temporaryPath(QStringLiteral("missing.mp4"))));
    const QByteArray killed = fragmented(false);
    TestFiles::write(file(), killed);
    QVERIFY(QFile::setPermissions(file(), QFile::ReadOwner | QFile::ReadOther));
    {
        const FileFaults::WithoutPrivileges nobody;
        QCOMPARE(KdTakeRepair::run(file()).outcome, Outcome::Failed);
    }
    QCOMPARE(TestFiles::read(file()), killed);
}

void tst_KdTakeRepair::damageAnywhereNeverCrashes()
{
    QRandomGenerator random(20261120);
    QElapsedTimer timer;
    timer.start();
    for (int round = 0; round < 200; ++round) {
        QByteArray content = round % 2 ? stoppedAt(Indexing, 500, false) : fragmented(false);
        content.truncate(60000);
        const int header = content.indexOf(round % 2 ? "hoov" : "moov");
        for (int i = 0; i < 4; ++i) {
            // In the header, where every byte means something, or anywhere.
            const int position = random.bounded(2) == 0 ? header + int(random.bounded(1500))
                                                        : int(random.bounded(content.size()));
            content[position] = char(random.bounded(4) == 0 ? 0xff : int(random.bounded(256)));
        }
        TestFiles::write(file(), content);
        const RepairResult result = KdTakeRepair::run(file());
        QVERIFY(result.outcome != Outcome::Cancelled);
        if (result.outcome == Outcome::Repaired) {
            QVERIFY2(framesIn(file()) > 0, qPrintable(QString::number(round)));
        }
    }
    QVERIFY2(timer.elapsed() < 60000, qPrintable(QString::number(timer.elapsed())));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeRepair>(argc, argv);
}

#include "tst_KdTakeRepair.moc"
