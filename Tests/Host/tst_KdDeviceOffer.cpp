#include <KdVBLModel/KdDeviceOffer.h>

#include <Support/KdTestCase.h>

using namespace KdVBLMODEL;

namespace {

KdDeviceFacts pulseMicrophone()
{
    return {QStringLiteral("GstPulseDevice"),
            QStringLiteral("Audio/Source"),
            QStringLiteral("USB Microphone"),
            {{QStringLiteral("node.name"), QStringLiteral("usb_mic")},
             {QStringLiteral("object.id"), QStringLiteral("42")},
             {QStringLiteral("object.serial"), QStringLiteral("43")}}};
}

} // namespace

class tst_KdDeviceOffer : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theClassTellsTheKind_data();
    void theClassTellsTheKind();
    void theMonitorOfAnOutputIsNoMicrophone_data();
    void theMonitorOfAnOutputIsNoMicrophone();
    void theIdIsWhatStaysTheSameAfterReplugging_data();
    void theIdIsWhatStaysTheSameAfterReplugging();
    void theNameIsOnePlainLine_data();
    void theNameIsOnePlainLine();
    void whatHasNeitherNameNorIdIsNotOffered();
    void theSourceThatNoticesItsLossIsPreferred();
    void theSystemsDefaultIsKnown();
};

void tst_KdDeviceOffer::theClassTellsTheKind_data()
{
    QTest::addColumn<QString>("deviceClass");
    QTest::addColumn<int>("kind");

    QTest::newRow("microphone") << QStringLiteral("Audio/Source") << int(kdtMicrophone);
    QTest::newRow("virtual microphone")
        << QStringLiteral("Audio/Source/Virtual") << int(kdtMicrophone);
    QTest::newRow("order reversed") << QStringLiteral("Source/Audio") << int(kdtMicrophone);
    QTest::newRow("webcam") << QStringLiteral("Video/Source") << int(kdtWebcam);
    QTest::newRow("camera source") << QStringLiteral("Video/CameraSource") << int(kdtWebcam);
    QTest::newRow("output") << QStringLiteral("Audio/Sink") << int(kdtNone);
    QTest::newRow("nothing") << QString() << int(kdtNone);
    QTest::newRow("a word that contains one") << QStringLiteral("Audio/Resource") << int(kdtNone);
}

void tst_KdDeviceOffer::theClassTellsTheKind()
{
    QFETCH(QString, deviceClass);
    KdDeviceFacts facts = pulseMicrophone();
    facts.deviceClass = deviceClass;
    const auto offer = kdOfferFrom(facts);
    QTEST(int(offer ? offer->kind : kdtNone), "kind");
}

void tst_KdDeviceOffer::theMonitorOfAnOutputIsNoMicrophone_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");

    QTest::newRow("PulseAudio") << QStringLiteral("device.class") << QStringLiteral("monitor");
    QTest::newRow("PipeWire") << QStringLiteral("media.class") << QStringLiteral("Audio/Sink");
    QTest::newRow("Windows") << QStringLiteral("wasapi2.device.loopback") << QStringLiteral("true");
}

void tst_KdDeviceOffer::theMonitorOfAnOutputIsNoMicrophone()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    KdDeviceFacts facts = pulseMicrophone();
    facts.properties.insert(key, value);
    QVERIFY(!kdOfferFrom(facts));
}

void tst_KdDeviceOffer::theIdIsWhatStaysTheSameAfterReplugging_data()
{
    using Properties = QHash<QString, QString>;
    QTest::addColumn<QString>("deviceClass");
    QTest::addColumn<QHash<QString, QString>>("properties");
    QTest::addColumn<QString>("id");

    const QString audio = QStringLiteral("Audio/Source");
    const QString video = QStringLiteral("Video/Source");
    QTest::newRow("node name before serials")
        << audio
        << Properties{{QStringLiteral("object.serial"), QStringLiteral("255")},
                      {QStringLiteral("node.name"), QStringLiteral("usb_mic")},
                      {QStringLiteral("device.path"), QStringLiteral("/dev/snd")}}
        << QStringLiteral("usb_mic");
    QTest::newRow("PulseAudio's own name")
        << audio << Properties{{QStringLiteral("internal-name"), QStringLiteral("alsa_input.usb")}}
        << QStringLiteral("alsa_input.usb");
    QTest::newRow("Windows end point")
        << audio << Properties{{QStringLiteral("device.id"), QStringLiteral("{0.0.1}.{abc}")}}
        << QStringLiteral("{0.0.1}.{abc}");
    QTest::newRow("nothing but the name")
        << audio << Properties() << QStringLiteral("USB Microphone");
    QTest::newRow("camera by its path")
        << video
        << Properties{{QStringLiteral("node.name"), QStringLiteral("v4l2_input.usb")},
                      {QStringLiteral("api.v4l2.path"), QStringLiteral("/dev/video0")}}
        << QStringLiteral("/dev/video0");
    QTest::newRow("camera without a path")
        << video << Properties{{QStringLiteral("node.name"), QStringLiteral("HDWebcam")}}
        << QStringLiteral("HDWebcam");
}

void tst_KdDeviceOffer::theIdIsWhatStaysTheSameAfterReplugging()
{
    QFETCH(QString, deviceClass);
    using Properties = QHash<QString, QString>;
    QFETCH(Properties, properties);
    const auto offer = kdOfferFrom({QStringLiteral("GstPulseDevice"), deviceClass,
                                    QStringLiteral("USB Microphone"), properties});
    QVERIFY(offer);
    QTEST(offer->id, "id");
}

void tst_KdDeviceOffer::theNameIsOnePlainLine_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("name");

    QTest::newRow("plain") << QStringLiteral("USB Microphone") << QStringLiteral("USB Microphone");
    QTest::newRow("line breaks") << QStringLiteral("Two\nlines\r\n\tand a tab ")
                                 << QStringLiteral("Two lines and a tab");
    QTest::newRow("markup and placeholders stay as they are")
        << QStringLiteral("<b>%1</b> \"x\"") << QStringLiteral("<b>%1</b> \"x\"");
    QTest::newRow("right to left") << QStringLiteral("מיקרופון") << QStringLiteral("מיקרופון");
    QTest::newRow("empty") << QString() << QStringLiteral("usb_mic");
    QTest::newRow("blank") << QStringLiteral(" \n ") << QStringLiteral("usb_mic");
    QTest::newRow("very long") << QString(4096, QLatin1Char('m'))
                               << QString(4096, QLatin1Char('m'));
}

void tst_KdDeviceOffer::theNameIsOnePlainLine()
{
    QFETCH(QString, given);
    KdDeviceFacts facts = pulseMicrophone();
    facts.displayName = given;
    const auto offer = kdOfferFrom(facts);
    QVERIFY(offer);
    QTEST(offer->name, "name");
    QCOMPARE(offer->id, QStringLiteral("usb_mic"));
}

void tst_KdDeviceOffer::whatHasNeitherNameNorIdIsNotOffered()
{
    QVERIFY(!kdOfferFrom(
        {QStringLiteral("GstPulseDevice"), QStringLiteral("Audio/Source"), QString(), {}}));
}

void tst_KdDeviceOffer::theSourceThatNoticesItsLossIsPreferred()
{
    KdDeviceFacts facts = pulseMicrophone();
    const int pulse = kdOfferFrom(facts)->preference;
    facts.provider = QStringLiteral("GstPipeWireDevice");
    const int pipewire = kdOfferFrom(facts)->preference;
    facts.provider = QStringLiteral("GstWasapi2Device");
    const int other = kdOfferFrom(facts)->preference;
    QVERIFY(pulse > other);
    QVERIFY(other > pipewire);
}

void tst_KdDeviceOffer::theSystemsDefaultIsKnown()
{
    KdDeviceFacts facts = pulseMicrophone();
    QVERIFY(!kdOfferFrom(facts)->isDefault);
    facts.properties.insert(QStringLiteral("is-default"), QStringLiteral("true"));
    QVERIFY(kdOfferFrom(facts)->isDefault);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDeviceOffer>(argc, argv);
}

#include "tst_KdDeviceOffer.moc"
