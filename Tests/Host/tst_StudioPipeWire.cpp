#include "Support/KdTestCase.h"

#include <Studio/StudioPipeWire.h>

class tst_StudioPipeWire : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void microphonesAreTold_data();
    void microphonesAreTold();
    void camerasAreTold_data();
    void camerasAreTold();
    void nodesAreFoundByTheirWholeName();
};

namespace {

QByteArray object(const char* type, const char* mediaClass, const char* name)
{
    return QByteArray("{\"type\": \"PipeWire:Interface:") + type +
           "\", \"info\": {\"props\": {\"media.class\": \"" + mediaClass + "\", \"node.name\": \"" +
           name + "\"}}}";
}

} // namespace

void tst_StudioPipeWire::microphonesAreTold_data()
{
    QTest::addColumn<QByteArray>("dump");
    QTest::addColumn<bool>("there");
    const auto row = [](const char* name, const QByteArray& dump, bool there) {
        QTest::newRow(name) << dump << there;
    };
    row("real", "[" + object("Node", "Audio/Source", "alsa_input") + "]", true);
    row("virtual", "[" + object("Node", "Audio/Source/Virtual", "usb") + "]", true);
    row("only an output", "[" + object("Node", "Audio/Sink", "alsa_output") + "]", false);
    row("only a program that records", "[" + object("Node", "Stream/Input/Audio", "app") + "]",
        false);
    row("only a webcam", "[" + object("Node", "Video/Source", "cam") + "]", false);
    row("a device without a node", "[" + object("Device", "Audio/Source", "card") + "]", false);
    row("behind other things",
        "[{}, 3, {\"info\": null}, " + object("Node", "Audio/Source", "m") + "]", true);
    row("nothing", "[]", false);
    row("no answer", "", false);
    row("cut off", "[" + object("Node", "Audio/Source", "m"), false);
}

void tst_StudioPipeWire::microphonesAreTold()
{
    QFETCH(QByteArray, dump);
    QFETCH(bool, there);
    QCOMPARE(StudioPipeWire::hasMicrophone(dump), there);
}

void tst_StudioPipeWire::camerasAreTold_data()
{
    QTest::addColumn<QByteArray>("dump");
    QTest::addColumn<bool>("there");
    QTest::newRow("camera") << QByteArray("[" + object("Node", "Video/Source", "cam") + "]")
                            << true;
    QTest::newRow("only a microphone")
        << QByteArray("[" + object("Node", "Audio/Source", "mic") + "]") << false;
    QTest::newRow("only a program that shows")
        << QByteArray("[" + object("Node", "Stream/Input/Video", "app") + "]") << false;
    QTest::newRow("no answer") << QByteArray() << false;
}

void tst_StudioPipeWire::camerasAreTold()
{
    QFETCH(QByteArray, dump);
    QFETCH(bool, there);
    QCOMPARE(StudioPipeWire::hasCamera(dump), there);
}

void tst_StudioPipeWire::nodesAreFoundByTheirWholeName()
{
    const QByteArray dump = "[" + object("Node", "Audio/Source", "usb_mic") + "]";
    QVERIFY(StudioPipeWire::hasNode(dump, QStringLiteral("usb_mic")));
    QVERIFY(!StudioPipeWire::hasNode(dump, QStringLiteral("usb")));
    QVERIFY(!StudioPipeWire::hasNode(QByteArray(), QStringLiteral("usb_mic")));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioPipeWire>(argc, argv);
}

#include "tst_StudioPipeWire.moc"
