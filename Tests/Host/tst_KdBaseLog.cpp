#include <KdCore/KdBaseLog.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QFile>
#include <QSemaphore>
#include <QThread>

#include <atomic>
#include <future>
#include <unistd.h>

namespace {

KdLogRecord makeRecord(const QString& message, int level = KdBaseLog::Info)
{
    KdLogRecord made;
    made.level = level;
    made.file = "Src/KdRecord/Something";
    made.line = 12;
    made.function = "Something::happen";
    made.time = QDateTime(QDate(2024, 2, 29), QTime(13, 14, 15, 16));
    made.threadId = 4711;
    made.message = message;
    return made;
}

/** What is written to the process's standard error while the object lives. */
class StandardError
{
public:
    explicit StandardError(const QString& path) : m_path(path), m_saved(dup(STDERR_FILENO))
    {
        m_file.setFileName(path);
        if (m_file.open(QIODevice::WriteOnly)) {
            dup2(m_file.handle(), STDERR_FILENO);
        }
    }
    ~StandardError() { restore(); }

    QByteArray restore()
    {
        if (m_saved >= 0) {
            dup2(m_saved, STDERR_FILENO);
            close(m_saved);
            m_saved = -1;
        }
        return TestFiles::read(m_path);
    }

private:
    Q_DISABLE_COPY(StandardError)
    QString m_path;
    QFile m_file;
    int m_saved;
};

} // namespace

class tst_KdBaseLog : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void levelsAreTheAgreedNumbers();
    void recordsBelowTheLevelAreDropped_data();
    void recordsBelowTheLevelAreDropped();
    void writeFormatsLikePrintfAndNamesItsSource();
    void writeBelowTheLevelReachesNobody();
    void consoleIsStandardErrorWithTimeLevelThreadFunctionAndMessage();
    void fileGetsEveryRecordOnOneLine();
    void unopenableFileLeavesTheFormerOne();
    void fullDiskDoesNotStopTheProgram();
    void removingTheObserverWaitsForItsRunningCall();
    void noCallComesAfterTheObserverIsGone();
    void observerMayLogAndReplaceItself();
    void observerRunsOnTheThreadThatLogs();
};

void tst_KdBaseLog::levelsAreTheAgreedNumbers()
{
    QCOMPARE(static_cast<int>(KdBaseLog::Info), 4);
    QCOMPARE(static_cast<int>(KdBaseLog::Warning), 8);
    QCOMPARE(static_cast<int>(KdBaseLog::Error), 16);
    QVERIFY(KdBaseLog::defaultLogger());
    QCOMPARE(KdBaseLog::defaultLogger(), KdBaseLog::defaultLogger());
}

void tst_KdBaseLog::recordsBelowTheLevelAreDropped_data()
{
    QTest::addColumn<int>("threshold");
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("isWanted");
    QTest::newRow("debug under info") << 4 << 2 << false;
    QTest::newRow("info under info") << 4 << 4 << true;
    QTest::newRow("error under info") << 4 << 16 << true;
    QTest::newRow("warning under error") << 16 << 8 << false;
    QTest::newRow("trace under trace") << 1 << 1 << true;
}

void tst_KdBaseLog::recordsBelowTheLevelAreDropped()
{
    QFETCH(int, threshold);
    QFETCH(int, level);
    KdLogger logger;
    logger.setLevel(threshold);
    QTEST(logger.should_log_(level), "isWanted");
}

void tst_KdBaseLog::writeFormatsLikePrintfAndNamesItsSource()
{
    KdLogRecord seen;
    KdBaseLog::defaultLogger()->setObserver([&seen](const KdLogRecord& logged) { seen = logged; });
    const QDateTime before = QDateTime::currentDateTime();
    const int line = __LINE__ + 1;
    KdBaseLog::write(KdBaseLog::Info, {"Src/KdRecord/KdX", "KdX::stop"}, "%d %s %.2f%%", 7,
                     "Mikrófon", 1.5);
    KdBaseLog::defaultLogger()->setObserver(nullptr);

    QCOMPARE(seen.message, QStringLiteral("7 Mikrófon 1.50%"));
    QCOMPARE(seen.level, 4);
    QCOMPARE(seen.file, QByteArray("Src/KdRecord/KdX"));
    QCOMPARE(seen.function, QByteArray("KdX::stop"));
    QCOMPARE(seen.line, line);
    QVERIFY(seen.time >= before && seen.time <= QDateTime::currentDateTime());
    QVERIFY(seen.threadId != 0);
}

void tst_KdBaseLog::writeBelowTheLevelReachesNobody()
{
    KdBaseLog::write(KdBaseLog::Debug, {"f", "quiet"}, "not wanted");
    KdBaseLog::write(KdBaseLog::Info, {"f", "loud"}, "wanted");
    QCOMPARE(logLines(), QStringList(QStringLiteral("loud: wanted")));
}

void tst_KdBaseLog::consoleIsStandardErrorWithTimeLevelThreadFunctionAndMessage()
{
    StandardError console(temporaryPath(QStringLiteral("stderr")));
    KdLogger().log_(makeRecord(QStringLiteral("the message"), KdBaseLog::Warning));
    QCOMPARE(QString::fromUtf8(console.restore()),
             QStringLiteral(
                 "2024-02-29 13:14:15.016 warning [4711] Something::happen:12 the message\n"));
}

void tst_KdBaseLog::fileGetsEveryRecordOnOneLine()
{
    const QString path = temporaryPath(QStringLiteral("log.txt"));
    KdLogger logger;
    QVERIFY(logger.setLogFile(path));
    logger.log_(makeRecord(QStringLiteral("first")));
    logger.log_(
        makeRecord(QStringLiteral("Mic\r\n2024-02-29 13:14:15.016 error [1] fake:1 麦克风")));
    const QList<QByteArray> lines = TestFiles::read(path).split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(0).endsWith("info [4711] Something::happen:12 first"));
    QVERIFY(lines.at(1).contains("Mic\\r\\n2024"));
    QVERIFY(lines.at(1).endsWith("fake:1 麦克风"));
}

void tst_KdBaseLog::unopenableFileLeavesTheFormerOne()
{
    const QString path = temporaryPath(QStringLiteral("log.txt"));
    TestFiles::write(temporaryPath(QStringLiteral("file")), "x");
    KdLogger logger;
    QVERIFY(logger.setLogFile(path));
    QVERIFY(!logger.setLogFile(temporaryPath(QStringLiteral("file/log.txt"))));
    QVERIFY(!logger.setLogFile(documentDir()));
    logger.log_(makeRecord(QStringLiteral("still here")));
    QVERIFY(TestFiles::read(path).contains("still here"));
}

void tst_KdBaseLog::fullDiskDoesNotStopTheProgram()
{
    KdLogger logger;
    QStringList seen;
    logger.setObserver([&seen](const KdLogRecord& logged) { seen.append(logged.message); });
    QVERIFY(logger.setLogFile(QStringLiteral("/dev/full")));
    logger.log_(makeRecord(QStringLiteral("lost on disk")));
    QCOMPARE(seen, QStringList(QStringLiteral("lost on disk")));
}

void tst_KdBaseLog::removingTheObserverWaitsForItsRunningCall()
{
    KdLogger logger;
    std::promise<void> entered;
    std::promise<void> mayLeave;
    std::atomic<bool> hasLeft{false};
    logger.setObserver([&](const KdLogRecord&) {
        entered.set_value();
        mayLeave.get_future().wait();
        hasLeft = true;
    });
    auto logging =
        std::async(std::launch::async, [&] { logger.log_(makeRecord(QStringLiteral("x"))); });
    entered.get_future().wait();
    auto removing = std::async(std::launch::async, [&] {
        logger.setObserver(nullptr);
        return hasLeft.load();
    });
    QCOMPARE(removing.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    mayLeave.set_value();
    QVERIFY2(removing.get(), "setObserver() returned while the former observer was running");
    logging.get();
}

void tst_KdBaseLog::noCallComesAfterTheObserverIsGone()
{
    KdLogger logger;
    std::atomic<bool> isDone{false};
    auto logging = std::async(std::launch::async, [&] {
        while (!isDone) {
            logger.log_(makeRecord(QStringLiteral("x")));
        }
    });
    for (int i = 0; i < 20; ++i) {
        QSemaphore calls;
        logger.setObserver([&calls](const KdLogRecord&) { calls.release(); });
        QVERIFY(calls.tryAcquire(1, 5000));
        logger.setObserver(nullptr);
        const int atRemoval = calls.available();
        logger.log_(makeRecord(QStringLiteral("after")));
        QCOMPARE(calls.available(), atRemoval);
    }
    isDone = true;
    logging.get();
}

void tst_KdBaseLog::observerMayLogAndReplaceItself()
{
    KdLogger logger;
    QStringList first;
    QStringList second;
    logger.setObserver([&](const KdLogRecord& logged) {
        first.append(logged.message);
        logger.log_(makeRecord(QStringLiteral("from within")));
        logger.setObserver([&second](const KdLogRecord& next) { second.append(next.message); });
    });
    logger.log_(makeRecord(QStringLiteral("one")));
    logger.log_(makeRecord(QStringLiteral("two")));
    QCOMPARE(first, QStringList(QStringLiteral("one")));
    QCOMPARE(second, QStringList(QStringLiteral("two")));
}

void tst_KdBaseLog::observerRunsOnTheThreadThatLogs()
{
    KdLogger logger;
    std::atomic<Qt::HANDLE> seen{nullptr};
    logger.setObserver([&seen](const KdLogRecord&) { seen = QThread::currentThreadId(); });
    const Qt::HANDLE worker = std::async(std::launch::async, [&logger] {
                                  logger.log_(makeRecord(QStringLiteral("x")));
                                  return QThread::currentThreadId();
                              }).get();
    QCOMPARE(seen.load(), worker);
    QVERIFY(seen.load() != QThread::currentThreadId());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdBaseLog>(argc, argv);
}

#include "tst_KdBaseLog.moc"
