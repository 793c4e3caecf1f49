#include "TakeMaker.h"

#include <KdVBLModel/KdProcessIdentity.h>
#include <KdVBLModel/KdTakeFile.h>
#include <KdVBLModel/KdTakeRecovery.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <gst/gst.h>

#include <future>

using Outcome = RepairResult::Outcome;

class tst_KdTakeRecovery : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void killedTakesComeBack_data();
    void killedTakesComeBack();
    void runningTakesAreLeftAlone();
    void takesAreFoundOldestFirst();
    void junkIsNoTake();
    void wholeTakeOnlyLosesItsJournal();
    void emptyClaimIsCleanedUp_data();
    void emptyClaimIsCleanedUp();
    void fileWithoutIndexIsKeptWhenItIsLarge_data();
    void fileWithoutIndexIsKeptWhenItIsLarge();
    void predecessorComesBackWhenTheNewTakeHadNotBegun();
    void predecessorGoesWhenTheNewTakeHadBegun();
    void discardRemovesTheTakeAndItsJournal();
    void discardBringsThePredecessorBack();
    void takeThatIsNoLongerUnfinishedIsNotTouched();
    void takeUnderRepairIsNotRepairedTwice();
    void cancelledRepairLeavesTheTakeToBeFoundAgain();
    void namesOfAllKindsAreRepaired_data();
    void namesOfAllKindsAreRepaired();

private:
    QString folder() const { return temporaryPath(QStringLiteral("takes")); }
    QString inFolder(const QString& name) const { return QDir(folder()).filePath(name); }
    UnfinishedTake leaveTake(const QString& name, const QByteArray& content,
                             const QDateTime& started = QDateTime::currentDateTimeUtc(),
                             const QString& kind = QStringLiteral("audio"));
    QStringList leftOvers() const
    {
        return QDir(folder()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QByteArray m_finished;
    QByteArray m_killed;
};

void tst_KdTakeRecovery::initTestCase()
{
    gst_init(nullptr, nullptr);
    QTemporaryDir made;
    TakeMaker::Take take;
    take.path = made.filePath(QStringLiteral("made.m4a"));
    take.seconds = 3;
    QCOMPARE(TakeMaker::write(take), QString());
    m_finished = m_killed = TestFiles::read(take.path);
    QVERIFY(TakeMaker::unfinalise(&m_killed));
}

// A take as a crash leaves it: the file, and a journal of a process that is no more.
UnfinishedTake tst_KdTakeRecovery::leaveTake(const QString& name, const QByteArray& content,
                                             const QDateTime& started, const QString& kind)
{
    QJsonObject json;
    json[QStringLiteral("kind")] = kind;
    json[QStringLiteral("file")] = name;
    json[QStringLiteral("started")] = started.toString(Qt::ISODateWithMs);
    json[QStringLiteral("processId")] = QString::number(KdProcessIdentity::current().id);
    json[QStringLiteral("processStarted")] = QStringLiteral("long ago");
    json[QStringLiteral("processScope")] = KdProcessIdentity::scope();
    if (!content.isNull()) {
        TestFiles::write(inFolder(name), content);
    }
    const QString journal = KdTakeJournal::pathFor(inFolder(name));
    TestFiles::write(journal, QJsonDocument(json).toJson());
    UnfinishedTake take;
    take.journalPath = journal;
    KdTakeJournal::read(journal, &take.record);
    return take;
}

void tst_KdTakeRecovery::killedTakesComeBack_data()
{
    QTest::addColumn<bool>("hasVideo");
    QTest::addColumn<int>("killAt");
    QRandomGenerator random(20261120);
    for (int i = 0; i < 12; ++i) {
        const int killAt = int(random.bounded(200, 2600));
        QTest::addRow("%s, at %d ms", i % 2 ? "sound and picture" : "sound", killAt)
            << bool(i % 2) << killAt;
    }
}

void tst_KdTakeRecovery::killedTakesComeBack()
{
    QFETCH(bool, hasVideo);
    QFETCH(int, killAt);
    constexpr qint64 kMostLost = 1000;
    QVERIFY(QDir().mkpath(folder()));
    const QString path = inFolder(QStringLiteral("REC_1.m4a"));
    QProcess child;
    child.start(QStringLiteral(KD_TAKE_CHILD),
                {QStringLiteral("write"),
                 hasVideo ? QStringLiteral("video") : QStringLiteral("audio"), path});
    qint64 captured = 0;
    while (captured < killAt) {
        QVERIFY2(child.waitForReadyRead(20000), child.readAllStandardError().constData());
        while (child.canReadLine()) {
            captured = child.readLine().trimmed().toLongLong();
        }
    }
    QCOMPARE(KdTakeRecovery::find(folder()).size(), 0);
    child.kill();
    QVERIFY(child.waitForFinished());
    while (child.canReadLine()) {
        captured = child.readLine().trimmed().toLongLong();
    }

    const QVector<UnfinishedTake> found = KdTakeRecovery::find(folder());
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first().record.takePath, path);
    QCOMPARE(found.first().record.kind == KdTakeRecord::Kind::Webcam, hasVideo);
    allowLog(
        QStringLiteral("KdTakeRecovery::repair: .*(half second|Nothing had been recorded yet)"));
    const RepairResult result = KdTakeRecovery::repair(found.first());
    if (result.outcome == Outcome::NothingRecoverable) {
        QVERIFY2(captured < kMostLost, qPrintable(QString::number(captured)));
        QCOMPARE(leftOvers(), QStringList());
        return;
    }
    QVERIFY2(result.outcome == Outcome::Repaired, qPrintable(result.message));
    QCOMPARE(leftOvers(), QStringList({QStringLiteral("REC_1.m4a")}));
    const TakeMaker::Contents contents = TakeMaker::read(path);
    QCOMPARE(contents.complaints, QString());
    QVERIFY2(captured - contents.audioMs <= kMostLost, qPrintable(QString::number(captured)));
    QVERIFY(!hasVideo || captured - contents.videoMs <= kMostLost);
    QVERIFY(qAbs(result.durationMs - qMax(contents.audioMs, contents.videoMs)) < 50);
}

void tst_KdTakeRecovery::runningTakesAreLeftAlone()
{
    TestFiles::write(inFolder(QStringLiteral("1.m4a")), m_killed);
    KdTakeRecord record;
    record.takePath = inFolder(QStringLiteral("1.m4a"));
    KdTakeJournal journal;
    QVERIFY(journal.begin(record, nullptr));
    QVERIFY(KdTakeRecovery::find(folder()).isEmpty());
    UnfinishedTake take;
    take.record = record;
    take.journalPath = journal.path();
    QCOMPARE(KdTakeRecovery::repair(take).outcome, Outcome::Failed);
    QVERIFY(!KdTakeRecovery::discard(take));
    QCOMPARE(TestFiles::read(record.takePath), m_killed);
    QVERIFY(QFileInfo::exists(journal.path()));
}

void tst_KdTakeRecovery::takesAreFoundOldestFirst()
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    leaveTake(QStringLiteral("a.m4a"), m_killed, now);
    leaveTake(QStringLiteral("b.m4a"), m_killed, now.addDays(-1));
    leaveTake(QStringLiteral("c.m4a"), m_killed.left(100), now.addSecs(-1));
    const QVector<UnfinishedTake> found = KdTakeRecovery::find(folder());
    QCOMPARE(found.size(), 3);
    QCOMPARE(QFileInfo(found[0].record.takePath).fileName(), QStringLiteral("b.m4a"));
    QCOMPARE(QFileInfo(found[1].record.takePath).fileName(), QStringLiteral("c.m4a"));
    QCOMPARE(found[0].bytes, qint64(m_killed.size()));
    QCOMPARE(found[1].bytes, qint64(100));
}

void tst_KdTakeRecovery::junkIsNoTake()
{
    TestFiles::write(inFolder(QStringLiteral(".x.kdtake")), "no journal");
    TestFiles::write(inFolder(QStringLiteral("REC_1.m4a")), m_finished);
    QVERIFY(QDir(folder()).mkdir(QStringLiteral(".y.kdtake")));
    QVERIFY(KdTakeRecovery::find(folder()).isEmpty());
    QVERIFY(KdTakeRecovery::find(temporaryPath(QStringLiteral("missing"))).isEmpty());
    QVERIFY(KdTakeRecovery::find(QString()).isEmpty());
}

void tst_KdTakeRecovery::wholeTakeOnlyLosesItsJournal()
{
    const UnfinishedTake take = leaveTake(QStringLiteral("1.m4a"), m_finished);
    QCOMPARE(KdTakeRecovery::repair(take).outcome, Outcome::Repaired);
    QCOMPARE(leftOvers(), QStringList({QStringLiteral("1.m4a")}));
    QCOMPARE(TestFiles::read(take.record.takePath), m_finished);
}

void tst_KdTakeRecovery::emptyClaimIsCleanedUp_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no file") << QByteArray();
    QTest::newRow("empty file") << QByteArray("");
    QTest::newRow("less than a fragment") << m_killed.left(1000);
}

void tst_KdTakeRecovery::emptyClaimIsCleanedUp()
{
    QFETCH(QByteArray, content);
    expectLog(QStringLiteral("KdTakeRecovery::repair: .*"));
    const UnfinishedTake take = leaveTake(QStringLiteral("1.m4a"), content);
    QCOMPARE(KdTakeRecovery::find(folder()).size(), 1);
    QCOMPARE(KdTakeRecovery::repair(take).outcome, Outcome::NothingRecoverable);
    QCOMPARE(leftOvers(), QStringList());
}

void tst_KdTakeRecovery::fileWithoutIndexIsKeptWhenItIsLarge_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("kilobytes");
    QTest::addColumn<bool>("isKept");
    QTest::newRow("seconds of sound") << QStringLiteral("audio") << 100 << false;
    QTest::newRow("a minute of sound") << QStringLiteral("audio") << 1024 << true;
    QTest::newRow("the beginning of a clip") << QStringLiteral("webcam") << 1024 << false;
    QTest::newRow("a clip") << QStringLiteral("webcam") << 9 * 1024 << true;
}

void tst_KdTakeRecovery::fileWithoutIndexIsKeptWhenItIsLarge()
{
    QFETCH(QString, kind);
    QFETCH(int, kilobytes);
    QFETCH(bool, isKept);
    expectLog(isKept ? QStringLiteral("damaged beyond repair")
                     : QStringLiteral("before its first half second"));
    const QByteArray content(kilobytes * 1024, 'x');
    const UnfinishedTake take =
        leaveTake(QStringLiteral("1.m4a"), content, QDateTime::currentDateTimeUtc(), kind);
    const RepairResult result = KdTakeRecovery::repair(take);
    QCOMPARE(result.outcome, isKept ? Outcome::Failed : Outcome::NothingRecoverable);
    QCOMPARE(result.reason, isKept ? RepairResult::Reason::Damaged : RepairResult::Reason::None);
    QCOMPARE(TestFiles::read(take.record.takePath), isKept ? content : QByteArray());
    QCOMPARE(KdTakeRecovery::find(folder()).size(), isKept ? 1 : 0);
}

void tst_KdTakeRecovery::predecessorComesBackWhenTheNewTakeHadNotBegun()
{
    for (const QByteArray& content : {QByteArray(), QByteArray(""), m_killed.left(1000)}) {
        expectLog(QStringLiteral("KdTakeRecovery::repair: .*"));
        const UnfinishedTake take = leaveTake(QStringLiteral("1.mp4"), content);
        TestFiles::write(KdTakeFile::previousPath(take.record.takePath), "old take");
        QCOMPARE(KdTakeRecovery::repair(take).outcome, Outcome::NothingRecoverable);
        QCOMPARE(leftOvers(), QStringList({QStringLiteral("1.mp4")}));
        QCOMPARE(TestFiles::read(take.record.takePath), QByteArray("old take"));
    }
}

void tst_KdTakeRecovery::predecessorGoesWhenTheNewTakeHadBegun()
{
    const UnfinishedTake take = leaveTake(QStringLiteral("1.mp4"), m_killed);
    TestFiles::write(KdTakeFile::previousPath(take.record.takePath), "old take");
    QCOMPARE(KdTakeRecovery::repair(take).outcome, Outcome::Repaired);
    QCOMPARE(leftOvers(), QStringList({QStringLiteral("1.mp4")}));
    QVERIFY(TakeMaker::read(take.record.takePath).audioFrames > 100);
}

void tst_KdTakeRecovery::discardRemovesTheTakeAndItsJournal()
{
    const UnfinishedTake take = leaveTake(QStringLiteral("1.m4a"), m_killed);
    QVERIFY(KdTakeRecovery::discard(take));
    QCOMPARE(leftOvers(), QStringList());
    QVERIFY(!KdTakeRecovery::discard(take));
}

void tst_KdTakeRecovery::discardBringsThePredecessorBack()
{
    const UnfinishedTake take = leaveTake(QStringLiteral("1.mp4"), m_killed);
    TestFiles::write(KdTakeFile::previousPath(take.record.takePath), "old take");
    QVERIFY(KdTakeRecovery::discard(take));
    QCOMPARE(leftOvers(), QStringList({QStringLiteral("1.mp4")}));
    QCOMPARE(TestFiles::read(take.record.takePath), QByteArray("old take"));
}

void tst_KdTakeRecovery::takeThatIsNoLongerUnfinishedIsNotTouched()
{
    const UnfinishedTake take = leaveTake(QStringLiteral("1.m4a"), m_killed);
    QVERIFY(QFile::remove(take.journalPath));
    const RepairResult result = KdTakeRecovery::repair(take);
    QCOMPARE(result.outcome, Outcome::Failed);
    QCOMPARE(result.reason, RepairResult::Reason::Settled);
    QCOMPARE(TestFiles::read(take.record.takePath), m_killed);
    QCOMPARE(KdTakeRecovery::repair(UnfinishedTake()).outcome, Outcome::Failed);
    QVERIFY(!KdTakeRecovery::discard(UnfinishedTake()));
}

void tst_KdTakeRecovery::takeUnderRepairIsNotRepairedTwice()
{
    const UnfinishedTake take = leaveTake(QStringLiteral("1.m4a"), m_killed);
    std::promise<void> isHalfWay;
    std::promise<void> mayGoOn;
    bool hasWaited = false;
    std::future<RepairResult> first = std::async(std::launch::async, [&] {
        return KdTakeRecovery::repair(take, [&](int /*percent*/) {
            if (!hasWaited) {
                hasWaited = true;
                isHalfWay.set_value();
                mayGoOn.get_future().wait();
            }
            return true;
        });
    });
    isHalfWay.get_future().wait();
    const RepairResult second = KdTakeRecovery::repair(take);
    mayGoOn.set_value();
    QCOMPARE(second.outcome, Outcome::Failed);
    QCOMPARE(second.reason, RepairResult::Reason::Busy);
    QCOMPARE(first.get().outcome, Outcome::Repaired);
    QCOMPARE(leftOvers(), QStringList({QStringLiteral("1.m4a")}));
}

void tst_KdTakeRecovery::cancelledRepairLeavesTheTakeToBeFoundAgain()
{
    expectLog(QStringLiteral("The repair was cancelled"));
    const UnfinishedTake take = leaveTake(QStringLiteral("1.m4a"), m_killed);
    QCOMPARE(KdTakeRecovery::repair(take, [](int) { return false; }).outcome, Outcome::Cancelled);
    QCOMPARE(KdTakeRecovery::find(folder()).size(), 1);
    QCOMPARE(KdTakeRecovery::repair(take).outcome, Outcome::Repaired);
}

void tst_KdTakeRecovery::namesOfAllKindsAreRepaired_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks and quotes") << QStringLiteral("my \"take\" ! %1.m4a");
    QTest::newRow("other letters") << QStringLiteral("\u5F55\u97F3 \u0639.m4a");
    QTest::newRow("longest") << QString(251, QLatin1Char('n')) + QStringLiteral(".m4a");
}

void tst_KdTakeRecovery::namesOfAllKindsAreRepaired()
{
    QFETCH(QString, name);
    leaveTake(name, m_killed);
    const QVector<UnfinishedTake> found = KdTakeRecovery::find(folder());
    QCOMPARE(found.size(), 1);
    QCOMPARE(KdTakeRecovery::repair(found.first()).outcome, Outcome::Repaired);
    QCOMPARE(leftOvers(), QStringList({name}));
    QCOMPARE(TakeMaker::read(inFolder(name)).complaints, QString());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeRecovery>(argc, argv);
}

#include "tst_KdTakeRecovery.moc"
