#include "Support/KdTestCase.h"

#include <KdRecord/KdDeviceChoice.h>

class tst_KdDeviceChoice : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void rowFollowsTheRememberedTextBeforeTheStoredName_data();
    void rowFollowsTheRememberedTextBeforeTheStoredName();
};

void tst_KdDeviceChoice::rowFollowsTheRememberedTextBeforeTheStoredName_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("remembered");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("row");
    const QString a = QStringLiteral("A");
    const QString b = QStringLiteral("B");
    const QString c = QStringLiteral("C");
    QTest::newRow("nothing known") << QStringList{a, b} << QString() << QString() << 0;
    QTest::newRow("stored") << QStringList{a, b} << QString() << b << 1;
    QTest::newRow("remembered before stored") << QStringList{a, b, c} << b << c << 1;
    QTest::newRow("remembered is gone: stored is not asked") << QStringList{a, c} << b << c << 0;
    QTest::newRow("last of equal names, remembered") << QStringList{b, a, b} << b << QString() << 2;
    QTest::newRow("last of equal names, stored") << QStringList{b, a, b} << QString() << b << 2;
    QTest::newRow("upper and lower case differ")
        << QStringList{a, QStringLiteral("b")} << b << QString() << 0;
    QTest::newRow("a device without a name is no match for nothing")
        << QStringList{a, QString()} << QString() << QString() << 0;
    QTest::newRow("no devices") << QStringList() << a << b << 0;
}

void tst_KdDeviceChoice::rowFollowsTheRememberedTextBeforeTheStoredName()
{
    QFETCH(QStringList, names);
    QFETCH(QString, remembered);
    QFETCH(QString, stored);
    QFETCH(int, row);
    QCOMPARE(KdDeviceChoice::rowToSelect(names, remembered, stored), row);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDeviceChoice>(argc, argv);
}

#include "tst_KdDeviceChoice.moc"
