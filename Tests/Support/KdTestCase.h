#pragma once

#include <KdCore/KdBaseLog.h>

#include <QApplication>
#include <QObject>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QVector>

#include <memory>
#include <mutex>

/**
 * Base of every test class. Each test function gets an empty document folder of its own, and fails
 * when
 * - a warning or error is logged, by Qt or by KdBaseLog, that it did not announce,
 * - an announced one does not come,
 * - a top-level widget is left behind.
 * A subclass with init() or cleanup() of its own calls these from there.
 */
class KdTestCase : public QObject
{
    Q_OBJECT

public:
    KdTestCase();
    ~KdTestCase() override;

    /** A warning or error that matches is fine in this test function, and must come. */
    void expectLog(const QString& pattern);
    /** A warning or error that matches is fine in this test function. */
    void allowLog(const QString& pattern);
    /** Messages of all levels since the test function began, KdBaseLog's as "function: message". */
    QStringList logLines() const;
    /** What went to KdBaseLog since the test function began, with levels and sources. */
    QVector<KdLogRecord> logRecords() const;
    /** The document folder of this test function. */
    QString documentDir() const;
    /** A path in a folder that goes with this test function. */
    QString temporaryPath(const QString& name) const;

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    struct Expectation
    {
        QRegularExpression pattern;
        bool required;
        bool seen;
    };

    static void handleQtMessage(QtMsgType type, const QMessageLogContext& context,
                                const QString& message);
    void keep(const KdLogRecord& logged);
    void record(const QString& line, bool isProblem);
    QStringList missingLines() const;

    static KdTestCase* s_current;
    static QtMessageHandler s_previousHandler;

    mutable std::mutex m_mutex; ///< not QMutex, which a race detector does not see
    QStringList m_lines;
    QVector<KdLogRecord> m_records;
    QStringList m_unexpected;
    QVector<Expectation> m_expectations;
    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace KdTest {

/** What main() of every test does. */
template <typename TestClass>
int run(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    TestClass test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace KdTest
