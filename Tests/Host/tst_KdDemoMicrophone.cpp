#include "Support/KdTestCase.h"

#include <Studio/KdDemoMicrophone.h>
#include <Studio/StudioSoundCheck.h>

#include <memory>

class tst_KdDemoMicrophone : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void microphoneIsThereSpeaksAndGoesAgain();
    void missingToolsAreNamed();
    void silentDeviceIsNotTakenForAnAudibleOne();
    void deviceThatIsNotThereIsSaid();
};

void tst_KdDemoMicrophone::microphoneIsThereSpeaksAndGoesAgain()
{
    QVERIFY(!KdDemoMicrophone::isMicrophoneThere());
    auto microphone = std::make_unique<KdDemoMicrophone>();
    QCOMPARE(microphone->start(), QString());
    QVERIFY(KdDemoMicrophone::isMicrophoneThere());
    QCOMPARE(StudioSoundCheck::listen(KdDemoMicrophone::nodeName(), 5000), QString());
    microphone.reset();
    QTRY_VERIFY(!KdDemoMicrophone::isMicrophoneThere());
}

void tst_KdDemoMicrophone::missingToolsAreNamed()
{
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    const QString error = KdDemoMicrophone().start();
    qputenv("PATH", before);
    QVERIFY2(error.contains(QStringLiteral("pw-cli")), qPrintable(error));
}

void tst_KdDemoMicrophone::silentDeviceIsNotTakenForAnAudibleOne()
{
    // The session's own output is there from the start, and nobody plays on it.
    const QString error = StudioSoundCheck::listen(QStringLiteral("auto_null.monitor"), 1500);
    QVERIFY2(!error.isEmpty(), "Heard something in silence");
}

void tst_KdDemoMicrophone::deviceThatIsNotThereIsSaid()
{
    QVERIFY(!StudioSoundCheck::listen(QStringLiteral("no_such_device"), 3000).isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDemoMicrophone>(argc, argv);
}

#include "tst_KdDemoMicrophone.moc"
