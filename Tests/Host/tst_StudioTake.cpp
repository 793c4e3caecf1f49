#include "Support/KdTestCase.h"

#include <Studio/StudioTake.h>

class tst_StudioTake : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void reportBecomesATake();
    void reportsThatSayLittle_data();
    void reportsThatSayLittle();
    void lengths_data();
    void lengths();
};

void tst_StudioTake::reportBecomesATake()
{
    const QString info =
        QStringLiteral("{\"device_name\": \"Mic <b>1</b> %1\", \"file_duration\": 10}");
    const StudioTake take =
        takeFromReport(QStringLiteral("/takes//REC_1.m4a"), info, QStringLiteral("{\n}\n"));
    QCOMPARE(take.path, QStringLiteral("/takes/REC_1.m4a"));
    QCOMPARE(take.name(), QStringLiteral("REC_1"));
    QCOMPARE(take.deviceName, QStringLiteral("Mic <b>1</b> %1"));
    QCOMPARE(take.durationMs, 10000);
    QCOMPARE(take.fileInfo, info);
    QCOMPARE(take.fileExportInfo, QStringLiteral("{\n}\n"));
    QVERIFY(take.state == StudioTake::State::Checking);
    QVERIFY(qAbs(take.recorded.secsTo(QDateTime::currentDateTimeUtc())) < 60);
}

void tst_StudioTake::reportsThatSayLittle_data()
{
    QTest::addColumn<QString>("info");
    QTest::newRow("nothing") << QString();
    QTest::newRow("no JSON") << QStringLiteral("{");
    QTest::newRow("a list") << QStringLiteral("[1]");
    QTest::newRow("wrong types") << QStringLiteral(
        "{\"device_name\": 3, \"file_duration\": \"x\"}");
    QTest::newRow("negative length") << QStringLiteral("{\"file_duration\": -7}");
}

void tst_StudioTake::reportsThatSayLittle()
{
    QFETCH(QString, info);
    const StudioTake take = takeFromReport(QStringLiteral("/a.m4a"), info, QString());
    QCOMPARE(take.deviceName, QString());
    QCOMPARE(take.durationMs, 0);
    QCOMPARE(take.fileInfo, info);
}

void tst_StudioTake::lengths_data()
{
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << QStringLiteral("0:00");
    QTest::newRow("negative") << qint64(-5000) << QStringLiteral("0:00");
    QTest::newRow("rounded down") << qint64(7999) << QStringLiteral("0:07");
    QTest::newRow("minutes") << qint64(754000) << QStringLiteral("12:34");
    QTest::newRow("hours") << qint64(3723000) << QStringLiteral("1:02:03");
    QTest::newRow("days") << qint64(100 * 3600000) << QStringLiteral("100:00:00");
}

void tst_StudioTake::lengths()
{
    QFETCH(qint64, ms);
    QFETCH(QString, text);
    QCOMPARE(formatTakeLength(ms), text);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTake>(argc, argv);
}

#include "tst_StudioTake.moc"
