#include <Support/KdTestCase.h>

#include <KdRecord/KdAudioDeviceBoxes.h>
#include <KdWidgets/KdComboBox.h>

#include <QSignalSpy>

using namespace KdVBLMODEL;

namespace {

QList<_KdCaptureDevInf> microphones(const QStringList& names)
{
    QList<_KdCaptureDevInf> devices;
    for (const QString& name : names) {
        devices.append({kdtMicrophone, devices.size(), name, QString()});
    }
    return devices;
}

QStringList rows(const QComboBox& box)
{
    QStringList texts;
    for (int row = 0; row < box.count(); ++row) {
        texts.append(box.itemText(row));
    }
    return texts;
}

QStringList list(std::initializer_list<const char*> names)
{
    QStringList texts;
    for (const char* name : names) {
        texts.append(QString::fromUtf8(name));
    }
    return texts;
}

} // namespace

class tst_KdAudioDeviceBoxes : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void devicesAreListedInOrder();
    void fillingEmitsNothing();
    void storedNameIsSelectedAtFirst();
    void selectionSurvivesRefilling();
    void lastOfEqualNamesIsSelected();
    void goneSelectionFallsBackToTheFirst();
    void withoutDeviceBothSaySo();
    void storedNameCountsAgainAfterNoDevice();
    void inputIsNamedWhenTheFirstDeviceIsAMicrophone();
    void anyNameIsShownAsItIs_data();
    void anyNameIsShownAsItIs();
    void emptyStateSaysWhatToDo();
    void listCanBeClosed();

private:
    std::unique_ptr<KdComboBox> m_device;
    std::unique_ptr<KdComboBox> m_input;
    std::unique_ptr<KdAudioDeviceBoxes> m_boxes;
};

void tst_KdAudioDeviceBoxes::init()
{
    KdTestCase::init();
    m_device = std::make_unique<KdComboBox>();
    m_input = std::make_unique<KdComboBox>();
    m_boxes = std::make_unique<KdAudioDeviceBoxes>(m_device.get(), m_input.get());
}

void tst_KdAudioDeviceBoxes::cleanup()
{
    m_boxes.reset();
    m_device.reset();
    m_input.reset();
    KdTestCase::cleanup();
}

void tst_KdAudioDeviceBoxes::devicesAreListedInOrder()
{
    QCOMPARE(m_boxes->fill(microphones(list({"B", "A", "C"})), QString()), 0);
    QCOMPARE(rows(*m_device), list({"B", "A", "C"}));
    QCOMPARE(m_boxes->currentName(), QStringLiteral("B"));
    QVERIFY(m_boxes->hasDevice());
}

void tst_KdAudioDeviceBoxes::fillingEmitsNothing()
{
    const QSignalSpy device(m_device.get(), qOverload<int>(&QComboBox::currentIndexChanged));
    const QSignalSpy input(m_input.get(), qOverload<int>(&QComboBox::currentIndexChanged));
    m_boxes->fill(microphones(list({"A", "B"})), QStringLiteral("B"));
    m_boxes->fill({}, QString());
    QCOMPARE(device.count() + input.count(), 0);
    QVERIFY(!m_device->signalsBlocked());
}

void tst_KdAudioDeviceBoxes::storedNameIsSelectedAtFirst()
{
    QCOMPARE(m_boxes->fill(microphones(list({"A", "B"})), QStringLiteral("B")), 1);
}

void tst_KdAudioDeviceBoxes::selectionSurvivesRefilling()
{
    m_boxes->fill(microphones(list({"A", "B"})), QString());
    m_device->setCurrentIndex(1);
    QCOMPARE(m_boxes->fill(microphones(list({"New", "A", "B"})), QStringLiteral("A")), 2);
}

void tst_KdAudioDeviceBoxes::lastOfEqualNamesIsSelected()
{
    QCOMPARE(m_boxes->fill(microphones(list({"A", "B", "A"})), QStringLiteral("A")), 2);
}

void tst_KdAudioDeviceBoxes::goneSelectionFallsBackToTheFirst()
{
    m_boxes->fill(microphones(list({"A", "B"})), QStringLiteral("B"));
    QCOMPARE(m_boxes->fill(microphones(list({"C", "A"})), QStringLiteral("A")), 0);
}

void tst_KdAudioDeviceBoxes::withoutDeviceBothSaySo()
{
    QCOMPARE(m_boxes->fill({}, QStringLiteral("B")), -1);
    QCOMPARE(rows(*m_device), list({"No Device"}));
    QCOMPARE(rows(*m_input), list({"No Device"}));
    QVERIFY(m_device->isRowHidden(0));
    QVERIFY(!m_boxes->hasDevice());

    m_boxes->fill(microphones(list({"A"})), QString());
    QVERIFY(!m_device->isRowHidden(0));
    QVERIFY(m_boxes->hasDevice());
}

void tst_KdAudioDeviceBoxes::storedNameCountsAgainAfterNoDevice()
{
    m_boxes->fill({}, QStringLiteral("B"));
    QCOMPARE(m_boxes->fill(microphones(list({"A", "B"})), QStringLiteral("B")), 1);
}

void tst_KdAudioDeviceBoxes::inputIsNamedWhenTheFirstDeviceIsAMicrophone()
{
    QList<_KdCaptureDevInf> devices = microphones(list({"A", "B"}));
    m_boxes->fill(devices, QString());
    QCOMPARE(rows(*m_input), list({"Input Audio"}));
    devices[0].devType = kdtSpeaker;
    m_boxes->fill(devices, QString());
    QCOMPARE(rows(*m_input), QStringList());
}

void tst_KdAudioDeviceBoxes::anyNameIsShownAsItIs_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("long") << QString(5000, QLatin1Char('m'));
    QTest::newRow("right to left") << QStringLiteral("ميكروفون");
    QTest::newRow("place marker") << QStringLiteral("Mic %1");
    QTest::newRow("markup") << QStringLiteral("<b>Mic</b>");
    QTest::newRow("line breaks") << QStringLiteral("Mic\n1");
    QTest::newRow("named like the empty state") << QStringLiteral("No Device");
}

void tst_KdAudioDeviceBoxes::anyNameIsShownAsItIs()
{
    QFETCH(QString, name);
    m_boxes->fill(microphones({QStringLiteral("A"), name}), QString());
    m_device->setCurrentIndex(1);
    QCOMPARE(m_boxes->currentName(), name);
    QVERIFY(m_boxes->hasDevice());
    m_boxes->retranslate();
    // As a tool tip that reads no markup in it.
    QVERIFY(!m_device->toolTip().contains(QStringLiteral("<b>")));
}

void tst_KdAudioDeviceBoxes::emptyStateSaysWhatToDo()
{
    m_boxes->fill({}, QString());
    QCOMPARE(m_device->toolTip(), QStringLiteral("Connect a microphone and press Refresh Device"));
    m_boxes->fill(microphones(list({"A"})), QString());
    QVERIFY(m_device->toolTip().contains(QLatin1Char('A')));
}

void tst_KdAudioDeviceBoxes::listCanBeClosed()
{
    m_boxes->fill(microphones(list({"A", "B"})), QString());
    m_device->show();
    QVERIFY(!m_boxes->isListOpen());
    m_device->showPopup();
    QVERIFY(m_boxes->isListOpen());
    m_boxes->closeList();
    QVERIFY(!m_boxes->isListOpen());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioDeviceBoxes>(argc, argv);
}

#include "tst_KdAudioDeviceBoxes.moc"
