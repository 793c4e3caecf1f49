#include "DeviceConnectorRig.h"

#include <Support/KdTestCase.h>

#include <QEventLoop>
#include <QTimer>

#include <memory>
#include <stdexcept>

using namespace KdVBLMODEL;
using namespace DeviceConnectorTest;

namespace {

const char* const kNoRefreshHook =
    "checkRefreshDeviceListFunction: You must registerRefreshDeviceList firstly$";
const char* const kNoSwitchHook =
    "checkSwitchDeviceFunction: You must registerSwitchDevice firstly$";

} // namespace

/** Hooks that are missing, throw, call back, or destroy the connector. */
class tst_KdRecordDeviceConnectorHooks : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aHookCanBeReplacedAndTakenAway();
    void aMissingRefreshHookIsTold();
    void aMissingSwitchHookIsTold();
    void whatTheRefreshHookThrowsGoesNoFurther_data();
    void whatTheRefreshHookThrowsGoesNoFurther();
    void whatTheSwitchHookThrowsGoesNoFurther();
    void aRemovalThatCannotBeLookedUpIsNoLoss();
    void aRefreshHookThatRefreshesIsRefused();
    void aRemovalDuringARefreshIsLookedUpAfterIt_data();
    void aRemovalDuringARefreshIsLookedUpAfterIt();
    void aRefreshHookThatRemovesEachTimeComesToAnEnd();
    void aRefreshHookMayReplaceItself();
    void aSwitchHookMayRefresh();
    void aSwitchHookThatSwitchesIsRefused();
    void aSwitchBySomethingOfTheListSurvivesARefresh();
    void aRefreshHookMayDestroyTheConnector_data();
    void aRefreshHookMayDestroyTheConnector();
    void aSwitchHookMayDestroyTheConnector_data();
    void aSwitchHookMayDestroyTheConnector();
    void aReceiverMayDestroyTheConnector();
    void hooksGoWithTheConnector();
};

void tst_KdRecordDeviceConnectorHooks::aHookCanBeReplacedAndTakenAway()
{
    Rig rig;
    rig.connector->registerRefreshDeviceList([](_KdDevType) { return Devices{device("Other")}; });
    rig.connector->refreshDeviceList();
    QCOMPARE(namesOf(rig.connector->allDevices()), QStringList(QStringLiteral("Other")));
    QVERIFY(rig.askedTypes.isEmpty());
    rig.connector->registerRefreshDeviceList(nullptr);
    expectLog(QLatin1String(kNoRefreshHook));
    rig.connector->refreshDeviceList();
    QCOMPARE(rig.refreshed.size(), 1);
}

void tst_KdRecordDeviceConnectorHooks::aMissingRefreshHookIsTold()
{
    KdRecordDeviceConnector connector(kdtWebcam);
    const QSignalSpy refreshed(&connector, &KdRecordDeviceConnector::sigDeviceListRefreshed);
    expectLog(QLatin1String(kNoRefreshHook));
    connector.refreshDeviceList();
    connector.processDeviceStatusChangeEvent(fcdWebcamRemoved, 0);
    QVERIFY(refreshed.isEmpty());
    QVERIFY(connector.allDevices().isEmpty());
    QCOMPARE(logRecords().size(), 2);
    QCOMPARE(logRecords().first().level, int(KdBaseLog::Error));
    QCOMPARE(logRecords().first().function,
             QByteArray("KdRecordDeviceConnectorPrivate::checkRefreshDeviceListFunction"));
}

void tst_KdRecordDeviceConnectorHooks::aMissingSwitchHookIsTold()
{
    KdRecordDeviceConnector connector(kdtWebcam);
    connector.registerRefreshDeviceList([](_KdDevType) { return Devices{device("A")}; });
    connector.refreshDeviceList();
    expectLog(QLatin1String(kNoSwitchHook));
    QVERIFY(!connector.switchDevice(0));
    QCOMPARE(connector.currentDevice().devType, 0);
    QCOMPARE(logRecords().first().function,
             QByteArray("KdRecordDeviceConnectorPrivate::checkSwitchDeviceFunction"));
}

void tst_KdRecordDeviceConnectorHooks::whatTheRefreshHookThrowsGoesNoFurther_data()
{
    QTest::addColumn<bool>("isStandard");
    QTest::newRow("a standard exception") << true;
    QTest::newRow("anything else") << false;
}

void tst_KdRecordDeviceConnectorHooks::whatTheRefreshHookThrowsGoesNoFurther()
{
    QFETCH(bool, isStandard);
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    rig.connector->registerRefreshDeviceList([isStandard](_KdDevType) -> Devices {
        if (isStandard) {
            throw std::runtime_error("planted %s");
        }
        throw 7;
    });
    expectLog(isStandard ? QStringLiteral("threw an exception: planted %s$")
                         : QStringLiteral("threw an exception of an unknown type$"));
    rig.connector->refreshDeviceList();
    QCOMPARE(rig.refreshed.size(), 1);
    QCOMPARE(namesOf(rig.connector->allDevices()), QStringList(QStringLiteral("A")));
    rig.connector->registerRefreshDeviceList([](_KdDevType) { return Devices(); });
    rig.connector->refreshDeviceList();
    QCOMPARE(rig.refreshed.size(), 2);
}

void tst_KdRecordDeviceConnectorHooks::whatTheSwitchHookThrowsGoesNoFurther()
{
    Rig rig;
    rig.plugged = {device("A"), device("B", 1)};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.connector->registerSwitchDevice(
        [](const _KdCaptureDevInf&) -> bool { throw std::runtime_error("planted"); });
    expectLog(QStringLiteral("threw an exception: planted$"));
    QVERIFY(!rig.connector->switchDevice(1));
    QCOMPARE(rig.connector->currentDevice().name, QStringLiteral("A"));
    rig.connector->registerSwitchDevice([](const _KdCaptureDevInf&) { return true; });
    QVERIFY(rig.connector->switchDevice(1));
}

void tst_KdRecordDeviceConnectorHooks::aRemovalThatCannotBeLookedUpIsNoLoss()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.connector->registerRefreshDeviceList(
        [](_KdDevType) -> Devices { throw std::runtime_error("planted"); });
    expectLog(QStringLiteral("threw an exception: planted$"));
    rig.event(fcdWebcamRemoved);
    QVERIFY(rig.lost.isEmpty());
    QCOMPARE(rig.connector->allDevices().size(), 1);
}

void tst_KdRecordDeviceConnectorHooks::aRefreshHookThatRefreshesIsRefused()
{
    Rig rig;
    int runs = 0;
    rig.connector->registerRefreshDeviceList([&rig, &runs](_KdDevType) {
        ++runs;
        rig.connector->refreshDeviceList();
        rig.event(fcdWebcamListChanged);
        return Devices{device("A")};
    });
    expectLog(QStringLiteral("cannot be refreshed by its own refresh hook$"));
    rig.connector->refreshDeviceList();
    QCOMPARE(runs, 1);
    QCOMPARE(rig.refreshed.size(), 1);
    QVERIFY(rig.lost.isEmpty());
    QCOMPARE(rig.connector->allDevices().size(), 1);
}

void tst_KdRecordDeviceConnectorHooks::aRemovalDuringARefreshIsLookedUpAfterIt_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isListedBefore");
    QTest::newRow("refresh, device listed yet") << int(fcdWebcamListChanged) << true;
    QTest::newRow("refresh, device gone") << int(fcdWebcamListChanged) << false;
    QTest::newRow("removal, device listed yet") << int(fcdWebcamRemoved) << true;
    QTest::newRow("removal, device gone") << int(fcdWebcamRemoved) << false;
}

void tst_KdRecordDeviceConnectorHooks::aRemovalDuringARefreshIsLookedUpAfterIt()
{
    QFETCH(int, status);
    QFETCH(bool, isListedBefore);
    Rig rig;
    rig.plugged = {device("A"), device("B", 1)};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(1));
    int runs = 0;
    rig.connector->registerRefreshDeviceList([&](_KdDevType) {
        const Devices before = rig.plugged;
        if (++runs == 1) {
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&rig, &loop] {
                rig.plugged.removeLast();
                rig.event(fcdWebcamRemoved, 1);
                loop.quit();
            });
            loop.exec();
        }
        return isListedBefore ? before : rig.plugged;
    });
    rig.event(status);
    QCOMPARE(runs, 2);
    QCOMPARE(namesOf(rig.connector->allDevices()), QStringList(QStringLiteral("A")));
    QCOMPARE(rig.lost.size(), 1);
    QCOMPARE(rig.lost.first().first().value<_KdCaptureDevInf>().name, QStringLiteral("B"));
    QCOMPARE(rig.connector->currentDevice().name, QStringLiteral("B"));
    rig.connector->refreshDeviceList();
    QCOMPARE(runs, 3);
    QCOMPARE(rig.lost.size(), 1);
}

void tst_KdRecordDeviceConnectorHooks::aRefreshHookThatRemovesEachTimeComesToAnEnd()
{
    Rig rig;
    int runs = 0;
    rig.connector->registerRefreshDeviceList([&rig, &runs](_KdDevType) {
        ++runs;
        rig.event(fcdWebcamRemoved);
        return Devices{device("A")};
    });
    rig.connector->refreshDeviceList();
    QCOMPARE(runs, 2);
    QVERIFY(rig.lost.isEmpty());
    QCOMPARE(rig.connector->allDevices().size(), 1);
}

void tst_KdRecordDeviceConnectorHooks::aRefreshHookMayReplaceItself()
{
    Rig rig;
    rig.connector->registerRefreshDeviceList([&rig, kept = device("A")](_KdDevType) {
        rig.connector->registerRefreshDeviceList(nullptr);
        return Devices{kept}; // still there
    });
    rig.connector->refreshDeviceList();
    QCOMPARE(namesOf(rig.connector->allDevices()), QStringList(QStringLiteral("A")));
}

void tst_KdRecordDeviceConnectorHooks::aSwitchHookMayRefresh()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    rig.connector->registerSwitchDevice([&rig](const _KdCaptureDevInf&) {
        rig.plugged.append(device("B", 1));
        rig.connector->refreshDeviceList();
        return true;
    });
    QVERIFY(rig.connector->switchDevice(0));
    QCOMPARE(rig.connector->currentDevice().name, QStringLiteral("A"));
    QCOMPARE(rig.connector->allDevices().size(), 2);
}

void tst_KdRecordDeviceConnectorHooks::aSwitchHookThatSwitchesIsRefused()
{
    Rig rig;
    rig.plugged = {device("A"), device("B", 1)};
    rig.connector->refreshDeviceList();
    bool inner = true;
    rig.connector->registerSwitchDevice([&](const _KdCaptureDevInf&) {
        inner = rig.connector->switchDevice(1);
        return true;
    });
    expectLog(QStringLiteral("cannot be switched by its own switch hook$"));
    QVERIFY(rig.connector->switchDevice(0));
    QVERIFY(!inner);
    QCOMPARE(rig.connector->currentDevice().name, QStringLiteral("A"));
}

void tst_KdRecordDeviceConnectorHooks::aSwitchBySomethingOfTheListSurvivesARefresh()
{
    Rig rig;
    rig.plugged = {device("A"), device("B", 1)};
    rig.connector->refreshDeviceList();
    rig.connector->registerSwitchDevice([&rig](const _KdCaptureDevInf&) {
        rig.plugged.clear();
        rig.connector->refreshDeviceList();
        return true;
    });
    auto& ofTheList = const_cast<_KdCaptureDevInf&>(rig.connector->allDevices().at(1));
    QVERIFY(rig.connector->switchDevice(ofTheList));
    QCOMPARE(text(rig.connector->currentDevice()), QStringLiteral("2 1 B B-id"));
}

void tst_KdRecordDeviceConnectorHooks::aRefreshHookMayDestroyTheConnector_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("throws");
    QTest::newRow("in a refresh") << int(fcdWebcamListChanged) << false;
    QTest::newRow("in a removal") << int(fcdWebcamRemoved) << false;
    QTest::newRow("in a removal, throwing") << int(fcdWebcamRemoved) << true;
}

void tst_KdRecordDeviceConnectorHooks::aRefreshHookMayDestroyTheConnector()
{
    QFETCH(int, status);
    QFETCH(bool, throws);
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.connector->registerRefreshDeviceList([&rig, throws](_KdDevType) -> Devices {
        delete rig.connector;
        if (throws) {
            throw std::runtime_error("planted");
        }
        return {};
    });
    if (throws) {
        expectLog(QStringLiteral("threw an exception: planted$"));
    }
    rig.event(status);
    QVERIFY(!rig.connector);
    QCOMPARE(rig.refreshed.size(), 1);
    QVERIFY(rig.lost.isEmpty());
}

void tst_KdRecordDeviceConnectorHooks::aSwitchHookMayDestroyTheConnector_data()
{
    QTest::addColumn<bool>("isAccepted");
    QTest::newRow("accepted") << true;
    QTest::newRow("refused") << false;
}

void tst_KdRecordDeviceConnectorHooks::aSwitchHookMayDestroyTheConnector()
{
    QFETCH(bool, isAccepted);
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    rig.connector->registerSwitchDevice([&rig, isAccepted](const _KdCaptureDevInf&) {
        delete rig.connector;
        return isAccepted;
    });
    QCOMPARE(rig.connector->switchDevice(0), isAccepted);
    QVERIFY(!rig.connector);
}

void tst_KdRecordDeviceConnectorHooks::aReceiverMayDestroyTheConnector()
{
    Rig rig;
    rig.plugged = {device("A")};
    rig.connector->refreshDeviceList();
    QVERIFY(rig.connector->switchDevice(0));
    rig.plugged.clear();
    connect(rig.connector, &KdRecordDeviceConnector::sigDeviceListRefreshed, this,
            [&rig] { delete rig.connector; });
    rig.event(fcdWebcamRemoved);
    QVERIFY(!rig.connector);
    QVERIFY(rig.lost.isEmpty());
}

void tst_KdRecordDeviceConnectorHooks::hooksGoWithTheConnector()
{
    const auto held = std::make_shared<int>(0);
    {
        KdRecordDeviceConnector connector(kdtWebcam);
        connector.registerRefreshDeviceList([held](_KdDevType) { return Devices(); });
        connector.registerSwitchDevice([held](const _KdCaptureDevInf&) { return false; });
        QCOMPARE(held.use_count(), 3L);
    }
    QCOMPARE(held.use_count(), 1L);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdRecordDeviceConnectorHooks>(argc, argv);
}

#include "tst_KdRecordDeviceConnectorHooks.moc"
