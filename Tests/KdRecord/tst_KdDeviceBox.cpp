#include <KdRecord/KdDeviceBox.h>
#include <KdWidgets/KdComboBox.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QSignalSpy>

using namespace KdVBLMODEL;

class tst_KdDeviceBox : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void devicesAreListedInOrderWithoutASignal();
    void withoutDeviceTheOnlyRowSaysSo();
    void deviceOfTheSameNameIsADevice();
    void choiceIsSilent();
    void emptyStateIsTranslated();
};

void tst_KdDeviceBox::devicesAreListedInOrderWithoutASignal()
{
    KdComboBox list;
    KdDeviceBox devices(&list);
    QVERIFY(!devices.hasDevice());
    QCOMPARE(devices.currentRow(), -1);
    QSignalSpy changed(&list, qOverload<int>(&QComboBox::currentIndexChanged));
    const QStringList names = KdDeviceBox::names({{kdtWebcam, 0, QStringLiteral("A"), QString()},
                                                  {kdtWebcam, 1, QStringLiteral("B"), QString()}});
    devices.fill(names, 1);
    QCOMPARE(list.count(), 2);
    QVERIFY(devices.hasDevice());
    QCOMPARE(devices.currentRow(), 1);
    QCOMPARE(devices.currentName(), QStringLiteral("B"));
    QCOMPARE(devices.currentText(), QStringLiteral("B"));
    QCOMPARE(changed.count(), 0);
}

void tst_KdDeviceBox::withoutDeviceTheOnlyRowSaysSo()
{
    KdComboBox list;
    KdDeviceBox devices(&list);
    devices.fill({QStringLiteral("A")}, 0);
    devices.fill({}, 0);
    QCOMPARE(list.count(), 1);
    QVERIFY(list.isRowHidden(0));
    QVERIFY(!devices.hasDevice());
    QCOMPARE(devices.currentRow(), -1);
    QCOMPARE(devices.currentText(), QStringLiteral("No Device"));
    QCOMPARE(devices.currentName(), QString());
    devices.fill({QStringLiteral("A")}, 0);
    QVERIFY(!list.isRowHidden(0));
    QVERIFY(devices.hasDevice());
}

void tst_KdDeviceBox::deviceOfTheSameNameIsADevice()
{
    KdComboBox list;
    KdDeviceBox devices(&list);
    devices.fill({QStringLiteral("No Device")}, 0);
    QVERIFY(devices.hasDevice());
    devices.fill({QString()}, 0);
    QVERIFY(devices.hasDevice());
    QCOMPARE(devices.currentRow(), 0);
}

void tst_KdDeviceBox::choiceIsSilent()
{
    KdComboBox list;
    KdDeviceBox devices(&list);
    devices.fill({QStringLiteral("A"), QStringLiteral("B")}, 0);
    QSignalSpy changed(&list, qOverload<int>(&QComboBox::currentIndexChanged));
    QVERIFY(!devices.choose(0));
    QVERIFY(!devices.choose(-1));
    QVERIFY(devices.choose(1));
    QCOMPARE(devices.currentName(), QStringLiteral("B"));
    QCOMPARE(changed.count(), 0);
}

void tst_KdDeviceBox::emptyStateIsTranslated()
{
    KdComboBox list;
    KdDeviceBox devices(&list);
    devices.fill({}, 0);
    const WidgetLooks::Brackets brackets;
    devices.retranslate();
    QCOMPARE(devices.currentText(), QStringLiteral("[No Device]"));
    devices.fill({QStringLiteral("A")}, 0);
    devices.retranslate();
    QCOMPARE(devices.currentText(), QStringLiteral("A"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDeviceBox>(argc, argv);
}

#include "tst_KdDeviceBox.moc"
