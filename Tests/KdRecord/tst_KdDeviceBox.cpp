#include <KdRecord/KdDeviceBox.h>
#include <KdWidgets/KdComboBox.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QSignalSpy>

using namespace KdVBLMODEL;

namespace {

_KdCaptureDevInf device(const char* name, const char* id)
{
    return {kdtMicrophone, 0, QString::fromLatin1(name), QString::fromLatin1(id)};
}

} // namespace

class tst_KdDeviceBox : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void devicesAreListedInOrderWithoutASignal();
    void withoutDeviceTheOnlyRowSaysSo();
    void deviceOfTheSameNameIsADevice();
    void choiceIsSilent();
    void deviceIsFoundByItsIdAndItsName();
    void devicesThatNothingTellsApartKeepTheirPlaces();
    void formerDeviceIsChosenAgain();
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

void tst_KdDeviceBox::deviceIsFoundByItsIdAndItsName()
{
    KdComboBox list;
    KdDeviceBox devices(&list);
    devices.fillWith({device("A", "1"), device("A", "2"), device("B", "2")}, 0);
    QCOMPARE(list.count(), 3);
    QCOMPARE(devices.rowOf(device("A", "2")), 1);
    QCOMPARE(devices.rowOf(device("B", "2")), 2);
    QCOMPARE(devices.rowOf(device("B", "1")), -1);
    const QList<_KdCaptureDevInf> present{device("B", "2"), device("A", "1")};
    QCOMPARE(devices.indexIn(present, 0), 1);
    QCOMPARE(devices.indexIn(present, 1), -1);
    QCOMPARE(devices.indexIn(present, 2), 0);
    QCOMPARE(devices.indexIn(present, 3), -1);
    QCOMPARE(devices.indexIn(present, -1), -1);
    devices.fill({QStringLiteral("A")}, 0);
    QCOMPARE(devices.rowOf(device("A", "1")), -1);
    QCOMPARE(devices.indexIn(present, 0), -1);
}

void tst_KdDeviceBox::devicesThatNothingTellsApartKeepTheirPlaces()
{
    KdComboBox list;
    KdDeviceBox devices(&list);
    const QList<_KdCaptureDevInf> twins{device("A", ""), device("A", "")};
    devices.fillWith(twins, 1);
    QCOMPARE(devices.rowOf(device("A", "")), 1);
    QCOMPARE(devices.indexIn(twins, 1), 1);
}

void tst_KdDeviceBox::formerDeviceIsChosenAgain()
{
    KdComboBox list;
    KdDeviceBox devices(&list);
    devices.fillWith({device("A", "1"), device("A", "2")}, 0);
    QSignalSpy changed(&list, qOverload<int>(&QComboBox::currentIndexChanged));
    QVERIFY(devices.chooseAgain(device("A", "2"), QStringLiteral("A")));
    QCOMPARE(devices.currentRow(), 1);
    QVERIFY(!devices.chooseAgain(device("A", "2"), QStringLiteral("A")));
    // One that has another id by now is told by its text.
    QVERIFY(devices.chooseAgain(device("A", "3"), QStringLiteral("A")));
    QCOMPARE(devices.currentRow(), 0);
    QVERIFY(!devices.chooseAgain(device("B", "3"), QStringLiteral("B")));
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
