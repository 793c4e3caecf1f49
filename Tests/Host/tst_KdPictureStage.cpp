#include "PersonPicture.h"

#include <KdVBLModel/KdPictureStage.h>
#include <Support/KdTestCase.h>
#include <Support/Patience.h>

#include <QTemporaryDir>

#include <gst/gst.h>

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>

using namespace KdVBLMODEL;

namespace {

constexpr QSize kSize(640, 360);

/** A stage with a camera that sees one picture, and a preview that shows what comes of it. */
class Rig
{
public:
    explicit Rig(const QImage& picture)
        : m_picture(
              gst_buffer_new_memdup(picture.constBits(), static_cast<gsize>(picture.sizeInBytes())))
    {
        setFormat();
    }

    void setFormat()
    {
        const KdGstCapsPtr caps(gst_caps_from_string(
            "video/x-raw, format=BGRx, width=640, height=360, framerate=30/1"));
        m_stage.setFormat(caps.get());
    }

    /** @return what is shown of the camera's picture. */
    QImage show(_KdCaptureRecordBackgroundMode mode)
    {
        KdPictureStage::Wanted wanted;
        wanted.background = mode;
        wanted.isShown = true;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_shown = QImage();
        }
        m_stage.process(m_picture.get(), 0, wanted);
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait_for(lock, std::chrono::milliseconds(KdTest::patience(10000)),
                           [this] { return !m_shown.isNull(); });
        return m_shown;
    }

    /** Lets a picture come that nobody wants. */
    void ignore(_KdCaptureRecordBackgroundMode mode)
    {
        KdPictureStage::Wanted wanted;
        wanted.background = mode;
        m_stage.process(m_picture.get(), 0, wanted);
    }

    bool findsPerson()
    {
        return QTest::qWaitFor([this] { return PersonPicture::showsPerson(show(fcbmRemove)); },
                               KdTest::patience(15000));
    }

private:
    void note(KdFramePump::Frame& frame)
    {
        const QImage image(frame.pixels.data(), frame.size.width(), frame.size.height(),
                           frame.stride(), QImage::Format_ARGB32);
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_shown = image.copy();
        m_changed.notify_all();
    }

    const KdGstBufferPtr m_picture;
    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_changed;
    QImage m_shown;

    KdFramePump m_frames{[this](KdFramePump::Frame& frame) { note(frame); }};
    KdPictureStage m_stage{m_frames};
};

bool isEmpty(const QImage& picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != 0) {
                return false;
            }
        }
    }
    return !picture.isNull();
}

} // namespace

class tst_KdPictureStage : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void treatmentThatGoesOnKeepsThePerson();
    void treatmentThatBeginsAgainHidesAllAtFirst_data();
    void treatmentThatBeginsAgainHidesAllAtFirst();

private:
    QImage m_person;
};

void tst_KdPictureStage::initTestCase()
{
    gst_init(nullptr, nullptr);
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("person.png"));
    QVERIFY(PersonPicture::write(file, kSize));
    m_person = QImage(file).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(m_person.size(), kSize);
}

void tst_KdPictureStage::treatmentThatGoesOnKeepsThePerson()
{
    Rig rig(m_person);
    QVERIFY(isEmpty(rig.show(fcbmRemove)));
    QVERIFY(rig.findsPerson());
    QVERIFY(PersonPicture::showsPerson(rig.show(fcbmBlur)));
    QVERIFY(PersonPicture::showsPerson(rig.show(fcbmRemove)));
    QVERIFY(PersonPicture::isAlone(rig.show(fcbmRemove)));
}

void tst_KdPictureStage::treatmentThatBeginsAgainHidesAllAtFirst_data()
{
    QTest::addColumn<QString>("between");
    QTest::newRow("after pictures as they are") << QStringLiteral("plain");
    QTest::newRow("after pictures that nobody saw") << QStringLiteral("ignored");
    QTest::newRow("after the camera was opened anew") << QStringLiteral("opened");
}

void tst_KdPictureStage::treatmentThatBeginsAgainHidesAllAtFirst()
{
    QFETCH(QString, between);
    Rig rig(m_person);
    QVERIFY(rig.findsPerson());
    if (between == QLatin1String("plain")) {
        QVERIFY(!PersonPicture::isAlone(rig.show(fcbmNone)));
    } else if (between == QLatin1String("ignored")) {
        rig.ignore(fcbmRemove);
    } else {
        rig.setFormat();
    }
    QVERIFY(isEmpty(rig.show(fcbmRemove)));
    QVERIFY(rig.findsPerson());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPictureStage>(argc, argv);
}

#include "tst_KdPictureStage.moc"
