#include "WebcamHelperFixture.h"

#include <QEventLoop>
#include <QPointer>
#include <QSignalSpy>
#include <QThread>

#include <chrono>
#include <condition_variable>
#include <future>
#include <limits>
#include <mutex>
#include <thread>
#include <vector>

using namespace KdVBLMODEL;

namespace {

/** Receives frames on engine threads, as the panel does. */
class Frames
{
public:
    explicit Frames(KdWebcamRecorderHelper& helper)
    {
        QObject::connect(
            &helper, &KdWebcamRecorderHelper::sigWebCamFrameChanged, &helper,
            [this](int width, int height, uint8_t* bits) { take(width, height, bits); },
            Qt::DirectConnection);
    }

    /** A copy of the frame taken last; null when there was none. */
    QImage last() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_last;
    }
    std::thread::id thread() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_thread;
    }
    int count() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_count;
    }
    /** @return whether another frame came within ten seconds. The thread's events wait. */
    bool waitForNext()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const int before = m_count;
        return m_came.wait_for(lock, std::chrono::seconds(10),
                               [this, before] { return m_count > before; });
    }

private:
    void take(int width, int height, const uint8_t* bits)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_last = QImage(bits, width, height, QImage::Format_ARGB32).copy();
            m_thread = std::this_thread::get_id();
            ++m_count;
        }
        m_came.notify_all();
    }

    mutable std::mutex m_mutex;
    QImage m_last;
    std::thread::id m_thread;
    std::condition_variable m_came;
    int m_count = 0;
};

QImage picture(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(qRgba(10, 20, 30, 40));
    image.setPixel(0, 0, qRgba(255, 0, 0, 255));
    image.setPixel(width - 1, height - 1, qRgba(0, 255, 0, 0));
    return image;
}

void handFrame(KdWebcamRecorderHelper& helper, QImage& image, const QString& id)
{
    QMetaObject::invokeMethod(&helper, "slotFrameChangedCallback", Qt::DirectConnection,
                              Q_ARG(int, image.width()), Q_ARG(int, image.height()),
                              Q_ARG(void*, image.bits()), Q_ARG(QString, id));
}

} // namespace

/** What comes from the engine's threads. */
class tst_KdWebcamRecorderHelperThreads : public WebcamHelperFixture
{
    Q_OBJECT

private Q_SLOTS:
    void emitsAFrameOnTheEngineThreadWhileThePixelsAreValid();
    void dropsAFrameOfAnEarlierPreview();
    void emitsFramesWhileThePreviewIsStartedAnew();
    void deliversTimeVolumeAndDevicesOnItsOwnThread();
    void deliversOnTheThreadThatOwnsIt();
    void deliversEveryValueUnchanged();
    void deliversADeviceEventOfStopAfterStop();
    void dropsWhatWasQueuedWhenItDies();
    void nothingFollowsUninit();
    void canBeDestroyedWithFramesInFlight_data();
    void canBeDestroyedWithFramesInFlight();
};

void tst_KdWebcamRecorderHelperThreads::emitsAFrameOnTheEngineThreadWhileThePixelsAreValid()
{
    ReadyHelper helper;
    const Frames frames(helper);
    helper.slotSetCurrentWebCamDevice(0);
    for (const QSize& size : {QSize(16, 9), QSize(641, 479), QSize(1, 1)}) {
        m_engine->deliverFrame(picture(size.width(), size.height()));
        QCOMPARE(frames.last(), picture(size.width(), size.height()));
    }
    QCOMPARE(frames.count(), 3);
    QVERIFY(frames.thread() != std::this_thread::get_id());
}

void tst_KdWebcamRecorderHelperThreads::dropsAFrameOfAnEarlierPreview()
{
    ReadyHelper helper;
    const Frames frames(helper);
    helper.order(KdWebcamOrder::StartPreview);
    const QString earlier = helper.previewId();
    QImage image = picture(16, 9);
    handFrame(helper, image, earlier);
    QCOMPARE(frames.count(), 1);
    helper.order(KdWebcamOrder::StartPreview);
    handFrame(helper, image, earlier);
    QCOMPARE(frames.count(), 1);
    handFrame(helper, image, helper.previewId());
    QCOMPARE(frames.count(), 2);
}

void tst_KdWebcamRecorderHelperThreads::emitsFramesWhileThePreviewIsStartedAnew()
{
    ReadyHelper helper;
    Frames frames(helper);
    m_engine->startFlood(4);
    QVERIFY(frames.waitForNext());
    for (int run = 0; run < 300; ++run) {
        helper.order(KdWebcamOrder::StartPreview);
    }
    QVERIFY(frames.waitForNext());
    m_engine->stopFlood();
}

void tst_KdWebcamRecorderHelperThreads::deliversTimeVolumeAndDevicesOnItsOwnThread()
{
    ReadyHelper helper;
    QList<QThread*> threads;
    const auto note = [&threads] { threads.append(QThread::currentThread()); };
    connect(&helper, &KdWebcamRecorderHelper::sigRecordedTime, note);
    connect(&helper, &KdWebcamRecorderHelper::sigRecorderVolume, note);
    connect(&helper, &KdWebcamRecorderHelper::sigRecorderResponeType, note);
    m_engine->deliverTime(1);
    m_engine->deliverVolume(1);
    m_engine->deliverDevice(fcdWebcamOccupied, 0);
    QVERIFY(threads.isEmpty());
    QTRY_COMPARE(threads.size(), 3);
    QCOMPARE(threads, QList<QThread*>({thread(), thread(), thread()}));
}

void tst_KdWebcamRecorderHelperThreads::deliversOnTheThreadThatOwnsIt()
{
    // Plain threads and promises: ThreadSanitizer sees what they order, unlike Qt's own.
    std::promise<void> isReady;
    std::promise<std::thread::id> deliveredOn;
    std::thread owner([&] {
        QEventLoop loop;
        ReadyHelper helper;
        connect(&helper, &KdWebcamRecorderHelper::sigRecordedTime, &loop, [&] {
            deliveredOn.set_value(std::this_thread::get_id());
            loop.quit();
        });
        isReady.set_value();
        loop.exec();
    });
    isReady.get_future().wait();
    m_engine->deliverTime(1);
    const std::thread::id expected = owner.get_id();
    owner.join();
    QVERIFY(deliveredOn.get_future().get() == expected);
}

void tst_KdWebcamRecorderHelperThreads::deliversEveryValueUnchanged()
{
    ReadyHelper helper;
    const QSignalSpy times(&helper, &KdWebcamRecorderHelper::sigRecordedTime);
    const QSignalSpy volumes(&helper, &KdWebcamRecorderHelper::sigRecorderVolume);
    const qint64 largest = std::numeric_limits<qint64>::max();
    m_engine->deliverTime(0);
    m_engine->deliverTime(largest);
    for (const int volume : {0, 100, -1, 1000}) {
        m_engine->deliverVolume(volume);
    }
    m_engine->deliverDevice(fcdWebcamRemoved, 7);
    QCoreApplication::processEvents();
    QCOMPARE(helper.takeResponses(), QVector<int>{5});
    QCOMPARE(times.at(1).first().toLongLong(), largest);
    QCOMPARE(volumes.size(), 4);
    QCOMPARE(volumes.at(2).first().toInt(), -1);
    QCOMPARE(messages(KdBaseLog::Info),
             QStringList(QStringLiteral("onCaptureDeviceCallback: devStatus: 2, deviceIdx: 7")));
}

void tst_KdWebcamRecorderHelperThreads::deliversADeviceEventOfStopAfterStop()
{
    ReadyHelper helper;
    helper.slotSetCurrentWebCamDevice(0);
    helper.order(KdWebcamOrder::StartTake);
    helper.takeResponses();
    m_engine->during("stop", [this] {
        m_engine->script().webcams.clear();
        m_engine->deliverDevice(fcdWebcamRemoved, 0);
    });
    helper.order(KdWebcamOrder::StopTake);
    QVERIFY(helper.takeResponses().isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(helper.takeResponses(), QVector<int>{5}); // the take is over by then
}

void tst_KdWebcamRecorderHelperThreads::dropsWhatWasQueuedWhenItDies()
{
    auto helper = std::make_unique<ReadyHelper>();
    int delivered = 0;
    connect(helper.get(), &KdWebcamRecorderHelper::sigRecordedTime, [&delivered] { ++delivered; });
    m_engine->deliverTime(1);
    helper.reset();
    QCoreApplication::processEvents();
    QCOMPARE(delivered, 0);
}

void tst_KdWebcamRecorderHelperThreads::nothingFollowsUninit()
{
    ReadyHelper helper;
    Frames frames(helper);
    const QSignalSpy times(&helper, &KdWebcamRecorderHelper::sigRecordedTime);
    m_engine->startFlood(4);
    QVERIFY(frames.waitForNext());
    helper.order(KdWebcamOrder::Uninit);
    QCoreApplication::processEvents();
    const int framesBefore = frames.count();
    const int timesBefore = times.size();
    m_engine->stopFlood();
    QCoreApplication::processEvents();
    QCOMPARE(frames.count(), framesBefore);
    QCOMPARE(times.size(), timesBefore);
}

void tst_KdWebcamRecorderHelperThreads::canBeDestroyedWithFramesInFlight_data()
{
    QTest::addColumn<bool>("isReleased");
    QTest::newRow("after it released its recorder") << true;
    QTest::newRow("with its recorder left to the engine") << false;
}

void tst_KdWebcamRecorderHelperThreads::canBeDestroyedWithFramesInFlight()
{
    QFETCH(bool, isReleased);
    constexpr int rounds = 40;
    m_keptRecorders = isReleased ? 0 : rounds;
    m_engine->startFlood(6);
    for (int round = 0; round < rounds; ++round) {
        auto helper = std::make_unique<KdWebcamRecorderHelper>(nullptr);
        const auto frames = std::make_unique<Frames>(*helper);
        helper->slotWebcamRecorderOrderType(KdWebcamOrder::Init);
        helper->slotSetCurrentWebCamDevice(0);
        if (round % 2 == 0) {
            helper->slotWebcamRecorderOrderType(KdWebcamOrder::StartTake);
        }
        QVERIFY(frames->waitForNext());
        if (isReleased) {
            helper->slotWebcamRecorderOrderType(KdWebcamOrder::Uninit);
        }
        helper.reset();
    }
    m_engine->stopFlood();
    QCoreApplication::processEvents();
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecorderHelperThreads>(argc, argv);
}

#include "tst_KdWebcamRecorderHelperThreads.moc"
