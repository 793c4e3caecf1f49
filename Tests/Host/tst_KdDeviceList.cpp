#include <KdVBLModel/KdDeviceList.h>

#include <Support/KdTestCase.h>

using namespace KdVBLMODEL;

namespace {

KdDeviceOffer microphone(const char* id, const char* name, int preference = 1,
                         bool isDefault = false)
{
    KdDeviceOffer offer;
    offer.kind = kdtMicrophone;
    offer.id = QLatin1String(id);
    offer.name = QLatin1String(name);
    offer.preference = preference;
    offer.isDefault = isDefault;
    return offer;
}

QStringList names(const KdDeviceList& list, _KdDevType kind = kdtMicrophone)
{
    QStringList names;
    const QVector<KdCaptureDevice> devices = list.devices(kind);
    for (const KdCaptureDevice& device : devices) {
        names.append(device.name);
    }
    return names;
}

QStringList text(const QVector<KdDeviceList::Change>& changes)
{
    QStringList lines;
    for (const KdDeviceList::Change& change : changes) {
        lines.append((change.isAdded ? QLatin1Char('+') : QLatin1Char('-')) + change.device.id);
    }
    return lines;
}

// Only their addresses count.
const char kOffers[6] = {};
const KdDeviceList::Handle kA = kOffers;
const KdDeviceList::Handle kB = kOffers + 1;
const KdDeviceList::Handle kC = kOffers + 2;

} // namespace

class tst_KdDeviceList : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void aDeviceOfferedTwiceIsListedOnce();
    void aDeviceStaysUntilItsLastOfferEnds();
    void anOfferAnnouncedTwiceCountsOnce();
    void anUnknownOfferThatEndsChangesNothing();
    void thePreferredOfferIsOpened();
    void kindsAreListedApart();
    void theDefaultComesFirstAndOthersInTheOrderTheyCame();
    void equalNamesAreToldApart();
    void aNameStaysWhenItsEqualGoes();
    void aNameStaysWhenAnotherDeviceIsTheDefault();
    void aNameStaysWhenTheListIsMadeAnew();
    void aNameStaysWhenTheSystemThatGaveItGoes();
    void aNameThatLooksNumberedIsNotGivenTwice();
    void anUpdatedOfferKeepsItsPlace();
    void aReplacedOfferKeepsItsPlace();
    void theWayFromOneListToAnotherNamesWhatWentAndCame();
};

void tst_KdDeviceList::aDeviceOfferedTwiceIsListedOnce()
{
    KdDeviceList list;
    const auto added = list.add(kA, microphone("usb_mic", "USB Microphone"));
    QVERIFY(added);
    QCOMPARE(added->id, QStringLiteral("usb_mic"));
    QCOMPARE(added->name, QStringLiteral("USB Microphone"));
    QCOMPARE(int(added->kind), int(kdtMicrophone));
    QVERIFY(!list.add(kB, microphone("usb_mic", "USB Microphone")));
    QCOMPARE(names(list), QStringList({QStringLiteral("USB Microphone")}));
}

void tst_KdDeviceList::aDeviceStaysUntilItsLastOfferEnds()
{
    KdDeviceList list;
    list.add(kA, microphone("usb_mic", "USB Microphone"));
    list.add(kB, microphone("usb_mic", "USB Microphone"));
    QVERIFY(!list.remove(kA));
    QCOMPARE(names(list).size(), 1);
    const auto removed = list.remove(kB);
    QVERIFY(removed);
    QCOMPARE(removed->id, QStringLiteral("usb_mic"));
    QVERIFY(names(list).isEmpty());
    QVERIFY(list.handles().isEmpty());
}

void tst_KdDeviceList::anOfferAnnouncedTwiceCountsOnce()
{
    KdDeviceList list;
    list.add(kA, microphone("usb_mic", "USB Microphone"));
    QVERIFY(!list.add(kA, microphone("usb_mic", "USB Microphone")));
    QCOMPARE(list.handles().size(), 1);
    QVERIFY(list.remove(kA));
}

void tst_KdDeviceList::anUnknownOfferThatEndsChangesNothing()
{
    KdDeviceList list;
    list.add(kA, microphone("usb_mic", "USB Microphone"));
    QVERIFY(!list.remove(kB));
    QCOMPARE(names(list).size(), 1);
}

void tst_KdDeviceList::thePreferredOfferIsOpened()
{
    KdDeviceList list;
    QCOMPARE(list.bestOffer(kdtMicrophone, QStringLiteral("usb_mic")), nullptr);
    list.add(kA, microphone("usb_mic", "USB Microphone", 1));
    QCOMPARE(list.bestOffer(kdtMicrophone, QStringLiteral("usb_mic")), kA);
    list.add(kB, microphone("usb_mic", "USB Microphone", 3));
    list.add(kC, microphone("usb_mic", "USB Microphone", 2));
    QCOMPARE(list.bestOffer(kdtMicrophone, QStringLiteral("usb_mic")), kB);
    list.remove(kB);
    QCOMPARE(list.bestOffer(kdtMicrophone, QStringLiteral("usb_mic")), kC);
    QCOMPARE(list.bestOffer(kdtWebcam, QStringLiteral("usb_mic")), nullptr);
}

void tst_KdDeviceList::kindsAreListedApart()
{
    KdDeviceList list;
    list.add(kA, microphone("one_thing", "Camera's microphone"));
    KdDeviceOffer camera = microphone("one_thing", "Camera");
    camera.kind = kdtWebcam;
    QVERIFY(list.add(kB, camera));
    QCOMPARE(names(list), QStringList({QStringLiteral("Camera's microphone")}));
    QCOMPARE(names(list, kdtWebcam), QStringList({QStringLiteral("Camera")}));
}

void tst_KdDeviceList::theDefaultComesFirstAndOthersInTheOrderTheyCame()
{
    KdDeviceList list;
    list.add(kA, microphone("a", "A"));
    list.add(kB, microphone("b", "B"));
    list.add(kC, microphone("c", "C", 1, true));
    QCOMPARE(names(list),
             QStringList({QStringLiteral("C"), QStringLiteral("A"), QStringLiteral("B")}));
}

void tst_KdDeviceList::equalNamesAreToldApart()
{
    KdDeviceList list;
    list.add(kA, microphone("a", "Mic"));
    list.add(kB, microphone("b", "Mic"));
    list.add(kC, microphone("c", "Mic"));
    QCOMPARE(names(list), QStringList({QStringLiteral("Mic"), QStringLiteral("Mic (2)"),
                                       QStringLiteral("Mic (3)")}));
}

void tst_KdDeviceList::aNameStaysWhenItsEqualGoes()
{
    KdDeviceList list;
    list.add(kA, microphone("a", "Mic"));
    QCOMPARE(list.add(kB, microphone("b", "Mic"))->name, QStringLiteral("Mic (2)"));
    QCOMPARE(list.remove(kA)->name, QStringLiteral("Mic"));
    QCOMPARE(names(list), QStringList({QStringLiteral("Mic (2)")}));
    QCOMPARE(list.add(kC, microphone("c", "Mic"))->name, QStringLiteral("Mic"));
    QCOMPARE(names(list), QStringList({QStringLiteral("Mic (2)"), QStringLiteral("Mic")}));
    QCOMPARE(list.remove(kB)->name, QStringLiteral("Mic (2)"));
}

void tst_KdDeviceList::aNameStaysWhenAnotherDeviceIsTheDefault()
{
    KdDeviceList list;
    list.add(kA, microphone("a", "Mic", 1, true));
    list.add(kB, microphone("b", "Mic"));
    QVERIFY(list.replace(kA, kC, microphone("a", "Mic")));
    QVERIFY(!list.add(kB, microphone("b", "Mic", 1, true)));
    QCOMPARE(names(list), QStringList({QStringLiteral("Mic (2)"), QStringLiteral("Mic")}));
    QCOMPARE(list.devices(kdtMicrophone).first().id, QStringLiteral("b"));
}

void tst_KdDeviceList::aNameStaysWhenTheListIsMadeAnew()
{
    KdDeviceList former;
    former.add(kA, microphone("a", "Mic"));
    former.add(kB, microphone("b", "Mic"));
    KdDeviceList list;
    list.add(kA, microphone("new", "Mic"));
    list.add(kB, microphone("b", "Mic"));
    list.add(kC, microphone("a", "Mic"));
    list.keepNames(former);
    QCOMPARE(names(list), QStringList({QStringLiteral("Mic (3)"), QStringLiteral("Mic (2)"),
                                       QStringLiteral("Mic")}));
}

void tst_KdDeviceList::aNameStaysWhenTheSystemThatGaveItGoes()
{
    KdDeviceList list;
    list.add(kA, microphone("a", "Mic"));
    list.add(kB, microphone("a", "Mic, as another system calls it"));
    QVERIFY(!list.remove(kA));
    QCOMPARE(names(list), QStringList({QStringLiteral("Mic")}));
}

void tst_KdDeviceList::aNameThatLooksNumberedIsNotGivenTwice()
{
    KdDeviceList list;
    list.add(kA, microphone("a", "Mic (2)"));
    list.add(kB, microphone("b", "Mic"));
    list.add(kC, microphone("c", "Mic"));
    QCOMPARE(names(list), QStringList({QStringLiteral("Mic (2)"), QStringLiteral("Mic"),
                                       QStringLiteral("Mic (3)")}));
}

void tst_KdDeviceList::anUpdatedOfferKeepsItsPlace()
{
    KdDeviceList list;
    list.add(kA, microphone("a", "A"));
    list.add(kB, microphone("b", "B"));
    list.add(kA, microphone("a", "A, renamed"));
    QCOMPARE(names(list), QStringList({QStringLiteral("A, renamed"), QStringLiteral("B")}));
}

void tst_KdDeviceList::aReplacedOfferKeepsItsPlace()
{
    KdDeviceList list;
    list.add(kA, microphone("a", "A"));
    list.add(kB, microphone("b", "B"));
    QVERIFY(list.replace(kA, kC, microphone("a", "A")));
    QCOMPARE(names(list), QStringList({QStringLiteral("A"), QStringLiteral("B")}));
    QVERIFY(!list.holds(kA));
    QVERIFY(list.holds(kC));
    QVERIFY(!list.replace(kA, kC, microphone("a", "A")));
}

void tst_KdDeviceList::theWayFromOneListToAnotherNamesWhatWentAndCame()
{
    KdDeviceList from;
    from.add(kA, microphone("stays", "Stays"));
    from.add(kB, microphone("goes", "Goes"));
    KdDeviceList to;
    to.add(kC, microphone("comes", "Comes"));
    to.add(kB, microphone("stays", "Stays, under another handle"));
    QCOMPARE(text(KdDeviceList::changes(from, to)),
             QStringList({QStringLiteral("-goes"), QStringLiteral("+comes")}));
    QVERIFY(KdDeviceList::changes(from, from).isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDeviceList>(argc, argv);
}

#include "tst_KdDeviceList.moc"
