#include "CameraFixture.h"
#include "PersonPicture.h"

#include <Support/ClipProbe.h>
#include <Support/Patience.h>

#include <QPainter>

#include <cmath>

using namespace KdVBLMODEL;

namespace {

constexpr QSize kSize(640, 480);

/** Brightness as a file has it. */
int lumaOf(QRgb pixel)
{
    return 16 + (66 * qRed(pixel) + 129 * qGreen(pixel) + 25 * qBlue(pixel)) / 256;
}

int lumaAt(const QByteArray& picture, int x, int y)
{
    return static_cast<uchar>(picture.at(y * kSize.width() + x));
}

QImage overBlack(const QImage& frame)
{
    QImage picture(frame.size(), QImage::Format_RGB32);
    picture.fill(Qt::black);
    QPainter(&picture).drawImage(0, 0, frame);
    return picture;
}

/** How far apart what was shown and what was recorded are in brightness, on average. */
double difference(const QImage& shown, const QByteArray& recorded)
{
    const QImage picture = overBlack(shown);
    double sum = 0.0;
    for (int y = 0; y < kSize.height(); ++y) {
        for (int x = 0; x < kSize.width(); ++x) {
            sum += std::abs(lumaOf(picture.pixel(x, y)) - lumaAt(recorded, x, y));
        }
    }
    return sum / (kSize.width() * kSize.height());
}

/** How much neighbours differ at the left of the picture, where the room is. */
double sharpness(const QImage& frame)
{
    const int width = frame.width() / 5;
    double sum = 0.0;
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < width; ++x) {
            sum += std::abs(qGreen(frame.pixel(x + 1, y)) - qGreen(frame.pixel(x, y)));
        }
    }
    return sum / (width * frame.height());
}

} // namespace

/** A person before a background that is blurred or removed. */
class tst_KdWebcamRecorderBackground : public CameraFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void theBackgroundIsTreatedInPreviewAndFile_data();
    void theBackgroundIsTreatedInPreviewAndFile();
};

void tst_KdWebcamRecorderBackground::init()
{
    CameraFixture::init();
    const QString person = temporaryPath(QStringLiteral("person.png"));
    QVERIFY(PersonPicture::write(person, kSize));
    m_camera = std::make_unique<VirtualCamera>(
        QStringLiteral("person_cam"), QStringLiteral("Person"),
        QStringList{QStringLiteral("YUY2:640x480@30"), QStringLiteral("picture=") + person});
    QVERIFY(m_camera->plug());
}

void tst_KdWebcamRecorderBackground::theBackgroundIsTreatedInPreviewAndFile_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("remove") << int(fcbmRemove);
    QTest::newRow("blur") << int(fcbmBlur);
}

void tst_KdWebcamRecorderBackground::theBackgroundIsTreatedInPreviewAndFile()
{
    QFETCH(int, mode);
    WebcamFixture recorder;
    QVERIFY(recorder.open(m_camera->description(), kSize));
    QCOMPARE(recorder->getBackgroundMode(), fcbmNone);
    const QImage plain = recorder.events().lastFrame();
    QVERIFY2(PersonPicture::showsPerson(plain), qPrintable(PersonPicture::describe(plain)));
    recorder->setBackgroundMode(_KdCaptureRecordBackgroundMode(mode));
    QCOMPARE(int(recorder->getBackgroundMode()), mode);
    const auto isTreated = [&](const QImage& frame) {
        return PersonPicture::showsPerson(frame) &&
               (mode == fcbmRemove
                    ? PersonPicture::isAlone(frame) && frame.pixelColor(5, 5).alpha() == 0
                    : sharpness(frame) < 0.5 * sharpness(plain));
    };
    QTRY_VERIFY_WITH_TIMEOUT(isTreated(recorder.events().lastFrame()), KdTest::patience(15000));
    QVERIFY(recorder.record(takePath()));
    QVERIFY(recorder.waitForTime(1500));
    QVERIFY(recorder->stop());
    QVERIFY(recorder.showsFrame(kSize));
    const QImage shown = recorder.events().lastFrame();
    QVERIFY2(isTreated(shown), qPrintable(PersonPicture::describe(shown)));
    // A busy machine lets the camera leave out every other picture.
    const QByteArray recorded = ClipProbe::picture(takePath(), 10);
    QVERIFY(recorded.size() >= kSize.width() * kSize.height());
    const double apart = difference(shown, recorded);
    QVERIFY2(apart < 4.0, qPrintable(QString::number(apart)));

    recorder->setBackgroundMode(_KdCaptureRecordBackgroundMode(7));
    QCOMPARE(recorder->getBackgroundMode(), fcbmNone);
    QVERIFY(recorder.showsFrame(kSize));
    QVERIFY(recorder.showsFrame(kSize));
    QCOMPARE(recorder.events().lastFrame().pixelColor(5, 5), plain.pixelColor(5, 5));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderBackground>(argc, argv);
}

#include "tst_KdWebcamRecorderBackground.moc"
