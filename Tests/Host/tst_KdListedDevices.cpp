#include <KdVBLModel/KdDeviceRegistry.h>
#include <KdVBLModel/KdListedDevices.h>

#include <Support/KdTestCase.h>
#include <Support/VirtualMicrophone.h>

#include <atomic>

using namespace KdVBLMODEL;

namespace {

constexpr std::chrono::milliseconds kAtOnce{0};
constexpr std::chrono::milliseconds kLong{10000};

/** Tells a list that the machine's is complete, as a recorder does. */
class Completer : public IKdDeviceListener
{
public:
    explicit Completer(KdListedDevices* list) : m_list(*list)
    {
        KdDeviceRegistry::instance().addListener(this);
    }
    ~Completer() { KdDeviceRegistry::instance().removeListener(this); }

    bool isSomebodyTold() const { return m_isTold; }

    void onDeviceAdded(const KdCaptureDevice&) override {}
    void onDeviceRemoved(const KdCaptureDevice&) override {}
    void onDevicesListed(_KdDevType) override { m_isTold = m_list.complete(); }

private:
    KdListedDevices& m_list;
    std::atomic<bool> m_isTold{false};
};

} // namespace

class tst_KdListedDevices : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // The first: a process has one first list.
    void whoAsksBeforeTheFirstListIsToldOfIt();
    void whoHasPatienceWaitsForTheList();
    void anIndexMeansAPlaceInTheListHandedOutLast();

private:
    VirtualMicrophone m_microphone;
};

void tst_KdListedDevices::whoAsksBeforeTheFirstListIsToldOfIt()
{
    QVERIFY(m_microphone.plug());
    KdListedDevices list(kdtMicrophone, kAtOnce);
    const Completer completer(&list);
    // Whichever is faster: the answer is complete, or its completion is told.
    if (list.list().isEmpty()) {
        QTRY_VERIFY(completer.isSomebodyTold());
    }
    QCOMPARE(list.list().size(), 1);
    QVERIFY(!list.complete());
}

void tst_KdListedDevices::whoHasPatienceWaitsForTheList()
{
    KdListedDevices list(kdtWebcam, kLong);
    list.list();
    QVERIFY(KdDeviceRegistry::instance().waitUntilListed(kdtWebcam, kAtOnce));
    QVERIFY(!list.complete());
}

void tst_KdListedDevices::anIndexMeansAPlaceInTheListHandedOutLast()
{
    KdListedDevices list(kdtMicrophone, kLong);
    QVERIFY(list.at(0).isNull());
    QCOMPARE(list.list().size(), 1);
    const KdCaptureDevice device = list.at(0);
    QCOMPARE(device.name, m_microphone.description());
    QCOMPARE(list.indexOf(device), 0);
    QVERIFY(list.at(1).isNull());
    QVERIFY(list.at(-1).isNull());
    QVERIFY(m_microphone.unplug());
    QTRY_VERIFY(!KdDeviceRegistry::instance().has(device));
    QCOMPARE(list.indexOf(device), 0);
    QCOMPARE(list.list().size(), 0);
    QCOMPARE(list.indexOf(device), -1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdListedDevices>(argc, argv);
}

#include "tst_KdListedDevices.moc"
