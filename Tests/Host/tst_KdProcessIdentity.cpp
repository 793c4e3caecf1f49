#include <KdVBLModel/KdProcessIdentity.h>
#include <Support/KdTestCase.h>

#include <QCoreApplication>
#include <QProcess>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

class tst_KdProcessIdentity : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void thisProcessRuns();
    void anotherProcessIsToldFromOneThatHadItsId();
    void endedProcessDoesNotRun();
    void killedProcessThatNobodyAskedForDoesNotRun();
    void nonsenseDoesNotRun();
    void scopeIsStable();
};

void tst_KdProcessIdentity::thisProcessRuns()
{
    const KdProcessIdentity self = KdProcessIdentity::current();
    QCOMPARE(self.id, QCoreApplication::applicationPid());
    QVERIFY(!self.started.isEmpty());
    QVERIFY(self.isRunning());
}

void tst_KdProcessIdentity::anotherProcessIsToldFromOneThatHadItsId()
{
    KdProcessIdentity former = KdProcessIdentity::current();
    former.started += QLatin1Char('1');
    QVERIFY(!former.isRunning());
}

void tst_KdProcessIdentity::endedProcessDoesNotRun()
{
    QProcess child;
    child.start(QStringLiteral("cat"), QStringList());
    QVERIFY(child.waitForStarted());
    const KdProcessIdentity identity = KdProcessIdentity::ofId(child.processId());
    QVERIFY(identity.isRunning());
    child.closeWriteChannel();
    QVERIFY(child.waitForFinished());
    QVERIFY(!identity.isRunning());
}

void tst_KdProcessIdentity::killedProcessThatNobodyAskedForDoesNotRun()
{
    const pid_t child = ::fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        ::pause();
        ::_exit(0);
    }
    const KdProcessIdentity identity = KdProcessIdentity::ofId(child);
    QVERIFY(identity.isRunning());
    QCOMPARE(::kill(child, SIGKILL), 0);
    QTRY_VERIFY(!identity.isRunning());
    QCOMPARE(::waitpid(child, nullptr, 0), child);
}

void tst_KdProcessIdentity::nonsenseDoesNotRun()
{
    QVERIFY(!KdProcessIdentity().isRunning());
    QVERIFY(KdProcessIdentity::ofId(-1).started.isEmpty());
    QVERIFY(!KdProcessIdentity::ofId(Q_INT64_C(0x7fffffffffff)).isRunning());
}

void tst_KdProcessIdentity::scopeIsStable()
{
    QVERIFY(!KdProcessIdentity::scope().isEmpty());
    QCOMPARE(KdProcessIdentity::scope(), KdProcessIdentity::scope());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdProcessIdentity>(argc, argv);
}

#include "tst_KdProcessIdentity.moc"
