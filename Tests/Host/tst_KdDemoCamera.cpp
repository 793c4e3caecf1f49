#include "Support/KdTestCase.h"

#include <Studio/KdDemoCamera.h>
#include <Studio/StudioPictureCheck.h>

#include <memory>

class tst_KdDemoCamera : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cameraIsThereMovesAndGoesAgain();
    void missingToolsAreNamed();
    void cameraThatIsNotThereIsSaid();
};

void tst_KdDemoCamera::cameraIsThereMovesAndGoesAgain()
{
    const bool before = KdDemoCamera::isCameraThere();
    auto camera = std::make_unique<KdDemoCamera>();
    QCOMPARE(camera->start(), QString());
    QVERIFY(KdDemoCamera::isCameraThere());
    QCOMPARE(StudioPictureCheck::look(KdDemoCamera::nodeName(), 5000), QString());
    camera.reset();
    QTRY_COMPARE(KdDemoCamera::isCameraThere(), before);
}

void tst_KdDemoCamera::missingToolsAreNamed()
{
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    const QString error = KdDemoCamera().start();
    qputenv("PATH", before);
    QVERIFY2(error.contains(QStringLiteral("pw-dump")), qPrintable(error));
}

void tst_KdDemoCamera::cameraThatIsNotThereIsSaid()
{
    QCOMPARE(StudioPictureCheck::look(QStringLiteral("no_such_camera"), 1500),
             QStringLiteral("It is not there."));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDemoCamera>(argc, argv);
}

#include "tst_KdDemoCamera.moc"
