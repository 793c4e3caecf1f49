#include "DeviceConnectorRig.h"

#include <Support/KdTestCase.h>

#include <QMetaMethod>

#include <limits>

using namespace KdVBLMODEL;
using namespace DeviceConnectorTest;

/** The list of devices, the current one, and what events do to both. */
class tst_KdRecordDeviceConnector : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void declaresItsSignalsInOrder();
    void hasNoDeviceAtFirst();
    void namesTheTypes_data();
    void namesTheTypes();

    void refreshingListsTheDevicesOfItsType();
    void refreshingTellsEvenWhenNothingChanged();
    void refreshingFindsTheCurrentDeviceByItsIdAlone();
    void refreshingKeepsACurrentDeviceThatIsNotListed();
    void refreshingTakesTheFirstOfTwoWithTheCurrentId();

    void switchesByPosition();
    void aPositionOutsideTheListIsRefusedUnheard_data();
    void aPositionOutsideTheListIsRefusedUnheard();
    void switchesToAListedDevice();
    void aDeviceIsTheSameByTypeAndId_data();
    void aDeviceIsTheSameByTypeAndId();
    void aDeviceThatIsNotListedIsRefused();
    void aRefusedSwitchLeavesEverything();
    void aSwitchEmitsNothing();

    void reactsToEventsOfItsTypeAlone_data();
    void reactsToEventsOfItsTypeAlone();
    void tellsThatTheCurrentDeviceIsLostAndKeepsIt();
    void tellsOfALossOnce();
    void anotherDevicesRemovalIsNoLoss();
    void aDeviceThatComesBackIsUpToDateAgain();
    void anotherTypeUnderTheSameIdIsALossAndTheCurrentDevice();
    void withoutACurrentDeviceNothingIsLost();
};

void tst_KdRecordDeviceConnector::declaresItsSignalsInOrder()
{
    const QMetaObject& meta = KdRecordDeviceConnector::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    const QStringList expected{
        QStringLiteral("sigDeviceListRefreshed()"), QStringLiteral("sigDeviceOccupied()"),
        QStringLiteral("sigCurrentDeviceLost(KdVBLMODEL::KdCaptureDevInfo)"),
        QStringLiteral("sigCurrentDeviceSwitched(KdVBLMODEL::KdCaptureDevInfo)")};
    QCOMPARE(methods, expected);
}

void tst_KdRecordDeviceConnector::hasNoDeviceAtFirst()
{
    const KdRecordDeviceConnector connector(kdtMicrophone);
    QVERIFY(!connector.parent());
    QCOMPARE(connector.deviceType(), kdtMicrophone);
    QVERIFY(connector.allDevices().isEmpty());
    QCOMPARE(text(connector.currentDevice()), QStringLiteral("0 -1  "));
}

void tst_KdRecordDeviceConnector::namesTheTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::newRow("desktop") << 1 << QStringLiteral("Desktop");
    QTest::newRow("webcam") << 2 << QStringLiteral("Webcam");
    QTest::newRow("game") << 3 << QStringLiteral("Game");
    QTest::newRow("cursor") << 4 << QStringLiteral("Cursor");
    QTest::newRow("keyboard") << 5 << QStringLiteral("Keyboard");
    QTest::newRow("speaker") << 7 << QStringLiteral("Speaker");
    QTest::newRow("microphone") << 8 << QStringLiteral("Microphone");
    for (const int unknown : {0, 6, 9, -1, std::numeric_limits<int>::max()}) {
        QTest::addRow("unknown: %d", unknown) << unknown << QStringLiteral("Unknow");
    }
}

void tst_KdRecordDeviceConnector::namesTheTypes()
{
    QFETCH(int, type);
    QFETCH(QString, name);
    QCOMPARE(KdRecordDeviceConnector::deviceTypeName(static_cast<_KdDevType>(type)), name);
}

void tst_KdRecordDeviceConnector::refreshingListsTheDevicesOfItsType()
{
    Rig rig(kdtMicrophone);
    rig.plugged = {device("B", 1, kdtMicrophone), device("A", 0, kdtMicrophone)};
    rig.connector->refreshDeviceList();
    QCOMPARE(rig.askedTypes, QList<int>{8});
    QCOMPARE(namesOf(rig.connector->allDevices()),
             QStringList({QStringLiteral("B"), QStringLiteral("A")}));
    QCOMPARE(rig.refreshed.size(), 1);
    QCOMPARE(rig.connector->currentDevice().devType, 0);
}

void tst_KdRecordDeviceConnector::refreshingTellsEvenWhenNothingChanged()
{
    Rig rig;
    rig.connector->refreshDeviceList();
    rig.connector->refreshDeviceList();
    QCOMPARE(rig.refreshed.size(), 2);
}

void tst_KdRecordDeviceConnector::refreshingFindsTheCurrentDeviceByItsIdAlone()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.plugged = {device("New", 0),
                   {kdtGame, 1, QStringLiteral("Renamed"), QStringLiteral("A-id")}};
    rig.connector->refreshDeviceList();
    QCOMPARE(text(rig.connector->currentDevice()), QStringLiteral("3 1 Renamed A-id"));
}

void tst_KdRecordDeviceConnector::refreshingKeepsACurrentDeviceThatIsNotListed()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.plugged = {{kdtWebcam, 0, QStringLiteral("A"), QStringLiteral("other-id")}};
    rig.connector->refreshDeviceList();
    QCOMPARE(text(rig.connector->currentDevice()), QStringLiteral("2 0 A A-id"));
    QVERIFY(rig.lost.isEmpty());
}

void tst_KdRecordDeviceConnector::refreshingTakesTheFirstOfTwoWithTheCurrentId()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.plugged = {{kdtWebcam, 5, QStringLiteral("first"), QStringLiteral("A-id")},
                   {kdtWebcam, 6, QStringLiteral("second"), QStringLiteral("A-id")}};
    rig.connector->refreshDeviceList();
    QCOMPARE(rig.connector->currentDevice().index, 5);
}

void tst_KdRecordDeviceConnector::switchesByPosition()
{
    Rig rig;
    rig.plugged = {device("A", 4), device("B", 7)};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(1));
    QCOMPARE(text(rig.connector->currentDevice()), QStringLiteral("2 7 B B-id"));
    QCOMPARE(namesOf(rig.switchedTo), QStringList(QStringLiteral("B")));
}

void tst_KdRecordDeviceConnector::aPositionOutsideTheListIsRefusedUnheard_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("below the first") << -1;
    QTest::newRow("after the last") << 2;
    QTest::newRow("largest") << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
}

void tst_KdRecordDeviceConnector::aPositionOutsideTheListIsRefusedUnheard()
{
    QFETCH(int, index);
    Rig rig;
    rig.plugged = {device("A"), device("B", 1)};
    rig.connector->refreshDeviceList();
    QVERIFY(!rig.connector->switchDevice(index));
    QVERIFY(rig.switchedTo.isEmpty());
    QCOMPARE(rig.connector->currentDevice().devType, 0);
}

void tst_KdRecordDeviceConnector::switchesToAListedDevice()
{
    Rig rig;
    rig.plugged = {device("A"), device("B", 1)};
    rig.connector->refreshDeviceList();
    _KdCaptureDevInf chosen = device("B", 1);
    QVERIFY(rig.connector->switchDevice(chosen));
    QCOMPARE(rig.connector->currentDevice().name, QStringLiteral("B"));
}

void tst_KdRecordDeviceConnector::aDeviceIsTheSameByTypeAndId_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("isSame");
    QTest::newRow("type and id") << int(kdtWebcam) << QStringLiteral("A-id") << true;
    QTest::newRow("another type") << int(kdtGame) << QStringLiteral("A-id") << false;
    QTest::newRow("another id") << int(kdtWebcam) << QStringLiteral("a-id") << false;
    QTest::newRow("no id") << int(kdtWebcam) << QString() << false;
}

/** Neither name nor index tells devices apart; what the caller gave becomes current. */
void tst_KdRecordDeviceConnector::aDeviceIsTheSameByTypeAndId()
{
    QFETCH(int, type);
    QFETCH(QString, id);
    QFETCH(bool, isSame);
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    _KdCaptureDevInf chosen{type, 99, QStringLiteral("Another Name"), id};
    if (!isSame) {
        expectLog(QStringLiteral("record device not exists\\(Another Name\\)$"));
    }
    QCOMPARE(rig.connector->switchDevice(chosen), isSame);
    QCOMPARE(rig.switchedTo.size(), isSame ? 1 : 0);
    QCOMPARE(rig.connector->currentDevice().index, isSame ? 99 : -1);
}

void tst_KdRecordDeviceConnector::aDeviceThatIsNotListedIsRefused()
{
    Rig rig;
    _KdCaptureDevInf unknown = device("100 %s %d");
    expectLog(QStringLiteral("record device not exists"));
    QVERIFY(!rig.connector->switchDevice(unknown));
    QVERIFY(rig.switchedTo.isEmpty());
    const KdLogRecord record = logRecords().last();
    QCOMPARE(record.level, int(KdBaseLog::Error));
    QCOMPARE(record.file, QByteArray("Src/KdRecord/KdRecordDeviceConnector"));
    QCOMPARE(record.function, QByteArray("KdRecordDeviceConnectorPrivate::switchDevice"));
    QCOMPARE(record.message,
             QStringLiteral("Switch device error: record device not exists(100 %s %d)"));
}

void tst_KdRecordDeviceConnector::aRefusedSwitchLeavesEverything()
{
    Rig rig;
    rig.plugged = {device("A"), device("B", 1)};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.acceptsSwitch = false;
    QVERIFY(!rig.connector->switchDevice(1));
    QCOMPARE(rig.connector->currentDevice().name, QStringLiteral("A"));
    QCOMPARE(rig.connector->allDevices().size(), 2);
    QVERIFY(logLines().isEmpty());
}

void tst_KdRecordDeviceConnector::aSwitchEmitsNothing()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    rig.refreshed.clear();
    QVERIFY(rig.connector->switchDevice(0));
    QVERIFY(rig.switched.isEmpty());
    QVERIFY(rig.refreshed.isEmpty());
    QVERIFY(rig.lost.isEmpty());
}

void tst_KdRecordDeviceConnector::reactsToEventsOfItsTypeAlone_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("refreshes");
    QTest::addColumn<int>("losses");
    QTest::addColumn<int>("occupations");
    for (int type = 0; type <= 9; ++type) {
        const bool isWebcam = type == 2;
        const bool isAudio = type == 7 || type == 8;
        for (int status = -1; status <= 6; ++status) {
            const bool lists = (isWebcam && (status == 1 || status == 2)) ||
                               (isAudio && (status == 3 || status == 4));
            const bool loses = (isWebcam && status == 2) || (isAudio && status == 4);
            QTest::addRow("type %d, status %d", type, status)
                << type << status << (lists ? 1 : 0) << (loses ? 1 : 0)
                << (isWebcam && status == 5 ? 1 : 0);
        }
    }
}

/** The current device is gone, whatever the event says. */
void tst_KdRecordDeviceConnector::reactsToEventsOfItsTypeAlone()
{
    QFETCH(int, type);
    QFETCH(int, status);
    QFETCH(int, refreshes);
    QFETCH(int, losses);
    QFETCH(int, occupations);
    Rig rig(static_cast<_KdDevType>(type));
    rig.plugged = {device("A", 0, static_cast<_KdDevType>(type))};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.plugged.clear();
    rig.refreshed.clear();
    rig.event(status);
    QCOMPARE(rig.refreshed.size(), refreshes);
    QCOMPARE(rig.lost.size(), losses);
    QCOMPARE(rig.occupied.size(), occupations);
}

void tst_KdRecordDeviceConnector::tellsThatTheCurrentDeviceIsLostAndKeepsIt()
{
    Rig rig;
    rig.plugged = {device("A", 0), device("B", 1)};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(1));
    rig.plugged = {device("A", 0)};
    rig.event(fcdWebcamRemoved, -7);
    QCOMPARE(rig.lost.size(), 1);
    QCOMPARE(text(rig.lost.first().first().value<KdCaptureDevInfo>()),
             QStringLiteral("2 1 B B-id"));
    QCOMPARE(text(rig.connector->currentDevice()), QStringLiteral("2 1 B B-id"));
    QCOMPARE(namesOf(rig.connector->allDevices()), QStringList(QStringLiteral("A")));
}

void tst_KdRecordDeviceConnector::tellsOfALossOnce()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.plugged.clear();
    rig.event(fcdWebcamRemoved);
    rig.event(fcdWebcamRemoved);
    QCOMPARE(rig.lost.size(), 1);
    QCOMPARE(rig.refreshed.size(), 3);
}

void tst_KdRecordDeviceConnector::anotherDevicesRemovalIsNoLoss()
{
    Rig rig;
    rig.plugged = {device("A", 0), device("B", 1)};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(1));
    rig.plugged = {device("B", 0)};
    rig.event(fcdWebcamRemoved);
    QVERIFY(rig.lost.isEmpty());
    QCOMPARE(rig.refreshed.size(), 2);
    QCOMPARE(text(rig.connector->currentDevice()), QStringLiteral("2 0 B B-id"));
}

void tst_KdRecordDeviceConnector::aDeviceThatComesBackIsUpToDateAgain()
{
    Rig rig;
    rig.plugged = {device("A", 0)};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.plugged.clear();
    rig.event(fcdWebcamRemoved);
    rig.plugged = {device("New", 0), device("A", 1)};
    rig.event(fcdWebcamListChanged);
    QCOMPARE(text(rig.connector->currentDevice()), QStringLiteral("2 1 A A-id"));
}

/** Identity is type and id, but the refresh goes by the id alone. */
void tst_KdRecordDeviceConnector::anotherTypeUnderTheSameIdIsALossAndTheCurrentDevice()
{
    Rig rig;
    rig.plugged = {device("A", 0)};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.plugged = {device("A", 3, kdtGame)};
    rig.event(fcdWebcamRemoved);
    QCOMPARE(rig.lost.size(), 1);
    QCOMPARE(text(rig.lost.first().first().value<KdCaptureDevInfo>()),
             QStringLiteral("2 0 A A-id"));
    QCOMPARE(text(rig.connector->currentDevice()), QStringLiteral("3 3 A A-id"));
}

void tst_KdRecordDeviceConnector::withoutACurrentDeviceNothingIsLost()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    rig.plugged.clear();
    rig.event(fcdWebcamRemoved);
    QVERIFY(rig.lost.isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdRecordDeviceConnector>(argc, argv);
}

#include "tst_KdRecordDeviceConnector.moc"
