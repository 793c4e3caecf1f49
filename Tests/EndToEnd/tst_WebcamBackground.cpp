#include "ClipPicture.h"
#include "WebcamStage.h"

#include <Host/PersonPicture.h>
#include <Support/KdTestCase.h>

#include <QDir>

namespace {

/** How many columns the change from red to green takes. */
int changeWidth(const QImage& picture)
{
    const int row = picture.height() / 2;
    int width = 0;
    for (int x = picture.width() / 6; x < picture.width() / 2; ++x) {
        const QColor color = picture.pixelColor(x, row);
        width += !ClipPicture::isRed(color) && !ClipPicture::isGreen(color) ? 1 : 0;
    }
    return width;
}

} // namespace

/** Backgrounds that are blurred or removed, as they are seen and as they are recorded. */
class tst_WebcamBackground : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void backgroundIsBlurredInPreviewAndFileAlike();
    void backgroundIsRemovedInPreviewAndFileAlike();

private:
    QString folder() const { return temporaryPath(QStringLiteral("clips")); }
};

void tst_WebcamBackground::backgroundIsBlurredInPreviewAndFileAlike()
{
    WebcamStage stage(folder());
    QVERIFY(stage.camera().plug());
    QVERIFY(stage.open());
    QTRY_VERIFY(ClipPicture::isRed(stage.shownPicture().pixelColor(60, 100)));
    const int sharp = changeWidth(stage.shownPicture());
    stage.pressOption("KRecorder_Blurred_RoundBtn");
    QTRY_VERIFY_WITH_TIMEOUT(changeWidth(stage.shownPicture()) >= sharp + 6, 15000);
    const QString path = stage.recordClip(1500);
    QVERIFY(!path.isEmpty());
    const QImage recorded = ClipPicture::at(path, 0.8);
    QVERIFY2(changeWidth(recorded) >= sharp + 6,
             qPrintable(QString::number(changeWidth(recorded))));
    const double apart = ClipPicture::difference(stage.shownPicture(), recorded);
    QVERIFY2(apart < 8.0, qPrintable(QString::number(apart)));
    QCOMPARE(stage.lastReport().fileInfo.value(QLatin1String("camera_record_backgroud")).toString(),
             QStringLiteral("blur"));
}

void tst_WebcamBackground::backgroundIsRemovedInPreviewAndFileAlike()
{
    const QString person = temporaryPath(QStringLiteral("person.png"));
    QVERIFY(PersonPicture::write(person, QSize(640, 360)));
    WebcamStage stage(folder());
    VirtualCamera camera(QStringLiteral("person_cam"), QStringLiteral("Person"),
                         {QStringLiteral("YUY2:640x360@30"), QStringLiteral("picture=") + person});
    QVERIFY(camera.plug());
    QVERIFY(stage.open());
    QTRY_VERIFY2(PersonPicture::showsPerson(stage.shownPicture()),
                 qPrintable(PersonPicture::describe(stage.shownPicture())));
    QVERIFY(!PersonPicture::isAlone(stage.shownPicture()));
    stage.pressOption("KRecorder_Removal_RoundBtn");
    const auto isDone = [](const QImage& picture) {
        return PersonPicture::isAlone(picture) && PersonPicture::showsPerson(picture);
    };
    DialogDriver::waitUntil([&] { return isDone(stage.shownPicture()); },
                            QStringLiteral("the person alone"), 15000);
    const QString path = stage.recordClip(1500);
    QVERIFY(!path.isEmpty());
    const QImage recorded = ClipPicture::at(path, 0.8);
    QVERIFY2(isDone(recorded), qPrintable(PersonPicture::describe(recorded)));
    const double apart = ClipPicture::difference(stage.shownPicture(), recorded);
    QVERIFY2(apart < 6.0, qPrintable(QString::number(apart)));
    QCOMPARE(stage.lastReport().fileInfo.value(QLatin1String("camera_record_backgroud")).toString(),
             QStringLiteral("remove"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_WebcamBackground>(argc, argv);
}

#include "tst_WebcamBackground.moc"
