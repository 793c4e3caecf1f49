#include "Support/KdTestCase.h"
#include "Support/WindowAnswers.h"

#include <Studio/StudioRecovery.h>
#include <Studio/StudioRecoveryBar.h>

#include <QProgressBar>
#include <QPushButton>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThread>

#include <atomic>
#include <memory>

/** Recovery whose work the test decides about. */
class RecoveryBench
{
public:
    explicit RecoveryBench(int takes)
    {
        for (int i = 0; i < takes; ++i) {
            UnfinishedTake take;
            take.record.takePath = QStringLiteral("/takes/REC_%1.m4a").arg(i);
            take.record.started = QDateTime::currentDateTimeUtc();
            unfinished.append(take);
        }
    }

    StudioRecoveryServices services()
    {
        StudioRecoveryServices services;
        services.find = [this](const QString&) {
            foundElsewhere = QThread::currentThread() != qApp->thread();
            return unfinished;
        };
        services.repair = [this](const UnfinishedTake&, const KdTakeRecovery::Progress& progress) {
            progress(40);
            gate.acquire();
            RepairResult cancelled;
            cancelled.outcome = RepairResult::Outcome::Cancelled;
            return progress(80) ? result : cancelled;
        };
        services.discard = [this](const UnfinishedTake&) { return discardWorks.load(); };
        return services;
    }

    QVector<UnfinishedTake> unfinished;
    RepairResult result;
    QSemaphore gate;
    std::atomic<bool> discardWorks{true};
    std::atomic<bool> foundElsewhere{false};
};

class tst_StudioRecoveryBar : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nothingFoundShowsNothing();
    void foundTakeIsOfferedWithoutBlocking();
    void repairRunsAsideAndHandsTheTakeOver();
    void severalTakesAreOfferedOneAfterAnother();
    void severalFoldersAreLookedThrough();
    void nothingRecoverableIsSaid();
    void failedRepairKeepsTheOffer();
    void everyReasonIsSaid();
    void discardAsksFirst();
    void discardThatFailsKeepsTheOffer();
    void laterHidesTheOffer();
    void goingDuringARepairCancelsIt();

private:
    static QPushButton* button(const StudioRecoveryBar& bar, const char* name)
    {
        return bar.findChild<QPushButton*>(QString::fromLatin1(name));
    }
    static void press(const StudioRecoveryBar& bar, const char* name)
    {
        QTest::mouseClick(button(bar, name), Qt::LeftButton);
    }
};

void tst_StudioRecoveryBar::nothingFoundShowsNothing()
{
    RecoveryBench bench(0);
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    QSignalSpy found(&recovery, &StudioRecovery::found);
    recovery.find({QStringLiteral("/takes")});
    QTRY_COMPARE(found.count(), 1);
    QVERIFY(bar.isHidden());
    QVERIFY(bench.foundElsewhere);
}

void tst_StudioRecoveryBar::foundTakeIsOfferedWithoutBlocking()
{
    RecoveryBench bench(1);
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    recovery.find({QStringLiteral("/takes")});
    QTRY_VERIFY(bar.isVisible());
    QCOMPARE(bar.heading(), QStringLiteral("An unfinished recording was found"));
    QVERIFY2(bar.sentence().contains(QStringLiteral("REC_0.m4a")), qPrintable(bar.sentence()));
    QVERIFY(!bar.isModal());
}

void tst_StudioRecoveryBar::repairRunsAsideAndHandsTheTakeOver()
{
    RecoveryBench bench(1);
    bench.result.outcome = RepairResult::Outcome::Repaired;
    bench.result.durationMs = 4200;
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    QSignalSpy recovered(&bar, &StudioRecoveryBar::recovered);
    recovery.find({QStringLiteral("/takes")});
    QTRY_VERIFY(bar.isVisible());
    press(bar, "Studio_RecoveryRepair");
    QTRY_COMPARE(bar.findChild<QProgressBar*>()->value(), 40);
    QVERIFY(!button(bar, "Studio_RecoveryRepair")->isEnabled());
    QVERIFY(!button(bar, "Studio_RecoveryDiscard")->isEnabled());
    bench.gate.release();
    QTRY_COMPARE(recovered.count(), 1);
    QCOMPARE(recovered.at(0).at(0).toString(), QStringLiteral("/takes/REC_0.m4a"));
    QCOMPARE(recovered.at(0).at(1).toLongLong(), 4200);
    QVERIFY(bar.isHidden());
}

void tst_StudioRecoveryBar::severalTakesAreOfferedOneAfterAnother()
{
    RecoveryBench bench(3);
    bench.result.outcome = RepairResult::Outcome::Repaired;
    bench.gate.release(3);
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    QSignalSpy recovered(&bar, &StudioRecoveryBar::recovered);
    recovery.find({QStringLiteral("/takes")});
    QTRY_COMPARE(bar.heading(), QStringLiteral("3 unfinished recordings were found"));
    press(bar, "Studio_RecoveryRepair");
    QTRY_COMPARE(recovered.count(), 1);
    QVERIFY(bar.sentence().contains(QStringLiteral("REC_1.m4a")));
    press(bar, "Studio_RecoveryRepair");
    QTRY_COMPARE(recovered.count(), 2);
    QCOMPARE(bar.heading(), QStringLiteral("An unfinished recording was found"));
    press(bar, "Studio_RecoveryRepair");
    QTRY_VERIFY(bar.isHidden());
}

void tst_StudioRecoveryBar::severalFoldersAreLookedThrough()
{
    StudioRecoveryServices services;
    services.find = [](const QString& folder) {
        UnfinishedTake take;
        take.record.takePath = folder + QStringLiteral("/take");
        return QVector<UnfinishedTake>{take};
    };
    StudioRecovery recovery(nullptr, services);
    QSignalSpy found(&recovery, &StudioRecovery::found);
    recovery.find({QStringLiteral("/voice"), QStringLiteral("/clips")});
    QTRY_COMPARE(found.count(), 1);
    const auto takes = found.at(0).at(0).value<QVector<UnfinishedTake>>();
    QCOMPARE(takes.size(), 2);
    QCOMPARE(takes.at(1).record.takePath, QStringLiteral("/clips/take"));
}

void tst_StudioRecoveryBar::nothingRecoverableIsSaid()
{
    RecoveryBench bench(1);
    bench.result.outcome = RepairResult::Outcome::NothingRecoverable;
    bench.gate.release();
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    QSignalSpy recovered(&bar, &StudioRecoveryBar::recovered);
    QSignalSpy messages(&bar, &StudioRecoveryBar::message);
    recovery.find({QStringLiteral("/takes")});
    QTRY_VERIFY(bar.isVisible());
    press(bar, "Studio_RecoveryRepair");
    QTRY_VERIFY(bar.isHidden());
    QVERIFY(recovered.isEmpty());
    QCOMPARE(messages.count(), 1);
}

void tst_StudioRecoveryBar::failedRepairKeepsTheOffer()
{
    RecoveryBench bench(1);
    bench.result.outcome = RepairResult::Outcome::Failed;
    bench.result.reason = RepairResult::Reason::NoSpace;
    bench.gate.release();
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    recovery.find({QStringLiteral("/takes")});
    QTRY_VERIFY(bar.isVisible());
    press(bar, "Studio_RecoveryRepair");
    QTRY_VERIFY(bar.sentence().contains(QStringLiteral("not enough space on the disk")));
    QVERIFY(bar.isVisible());
    QVERIFY(button(bar, "Studio_RecoveryRepair")->isEnabled());
}

void tst_StudioRecoveryBar::everyReasonIsSaid()
{
    using Reason = RepairResult::Reason;
    RecoveryBench bench(1);
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    Q_EMIT recovery.found(bench.unfinished);
    RepairResult failed;
    failed.message = QStringLiteral("For the log alone.");
    QSet<QString> said;
    for (int reason = int(Reason::None); reason <= int(Reason::CannotRemove); ++reason) {
        failed.reason = static_cast<Reason>(reason);
        Q_EMIT recovery.repaired(bench.unfinished.first(), failed);
        QVERIFY(!bar.sentence().contains(failed.message));
        said.insert(bar.sentence());
    }
    QCOMPARE(said.size(), int(Reason::CannotRemove) + 1);
}

void tst_StudioRecoveryBar::discardAsksFirst()
{
    RecoveryBench bench(1);
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    QSignalSpy discarded(&recovery, &StudioRecovery::discarded);
    recovery.find({QStringLiteral("/takes")});
    QTRY_VERIFY(bar.isVisible());
    // A popover goes when its window gains or loses the focus, as a new window does.
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    WindowAnswers answers;
    answers.answerPopover(false);
    press(bar, "Studio_RecoveryDiscard");
    QTRY_COMPARE(answers.pending(), 0);
    QVERIFY(bar.isVisible());
    QVERIFY(discarded.isEmpty());
    answers.answerPopover(true);
    press(bar, "Studio_RecoveryDiscard");
    QTRY_COMPARE(discarded.count(), 1);
    QTRY_VERIFY(bar.isHidden());
}

void tst_StudioRecoveryBar::discardThatFailsKeepsTheOffer()
{
    RecoveryBench bench(1);
    bench.discardWorks = false;
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    recovery.find({QStringLiteral("/takes")});
    QTRY_VERIFY(bar.isVisible());
    // A popover goes when its window gains or loses the focus, as a new window does.
    QVERIFY(QTest::qWaitForWindowActive(&bar));
    WindowAnswers answers;
    answers.answerPopover(true);
    press(bar, "Studio_RecoveryDiscard");
    QTRY_VERIFY(bar.sentence().contains(QStringLiteral("could not be deleted")));
    QVERIFY(bar.isVisible());
}

void tst_StudioRecoveryBar::laterHidesTheOffer()
{
    RecoveryBench bench(2);
    StudioRecovery recovery(nullptr, bench.services());
    StudioRecoveryBar bar(&recovery);
    QSignalSpy messages(&bar, &StudioRecoveryBar::message);
    recovery.find({QStringLiteral("/takes")});
    QTRY_VERIFY(bar.isVisible());
    press(bar, "Studio_RecoveryLater");
    QVERIFY(bar.isHidden());
    QCOMPARE(messages.count(), 1);
}

void tst_StudioRecoveryBar::goingDuringARepairCancelsIt()
{
    RecoveryBench bench(1);
    auto recovery = std::make_unique<StudioRecovery>(nullptr, bench.services());
    QSignalSpy progress(recovery.get(), &StudioRecovery::progress);
    QSignalSpy repaired(recovery.get(), &StudioRecovery::repaired);
    recovery->repair(bench.unfinished.first());
    QTRY_VERIFY(!progress.isEmpty());
    bench.gate.release();
    recovery.reset();
    QCoreApplication::processEvents();
    QVERIFY(repaired.isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioRecoveryBar>(argc, argv);
}

#include "tst_StudioRecoveryBar.moc"
