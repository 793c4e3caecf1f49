#include "Support/KdTestCase.h"

#include <Studio/StudioQuitSignals.h>

#include <QSignalSpy>

#include <csignal>

class tst_StudioQuitSignals : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void requestToEndBecomesASignal_data();
    void requestToEndBecomesASignal();
};

void tst_StudioQuitSignals::requestToEndBecomesASignal_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("Ctrl+C") << SIGINT;
    QTest::newRow("end of the session") << SIGTERM;
    QTest::newRow("terminal closed") << SIGHUP;
}

void tst_StudioQuitSignals::requestToEndBecomesASignal()
{
    QFETCH(int, number);
    StudioQuitSignals quit;
    QSignalSpy requested(&quit, &StudioQuitSignals::quitRequested);
    QCOMPARE(std::raise(number), 0);
    QTRY_COMPARE(requested.count(), 1);
    QCOMPARE(requested.at(0).at(0).toInt(), number);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioQuitSignals>(argc, argv);
}

#include "tst_StudioQuitSignals.moc"
