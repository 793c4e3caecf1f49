#include "KdTestCase.h"
#include "ScriptedEngine.h"

#include <QFile>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace KdVBLMODEL;

namespace {

class CountingObserver : public IKdRecorderEventObserver
{
public:
    void onCaptureDeviceCallback(int devStatus, int deviceIdx) override
    {
        device = devStatus * 100 + deviceIdx;
        ++devices;
        thread = std::this_thread::get_id();
    }
    void onTimeCallback(long long msec) override
    {
        time = msec;
        ++times;
    }
    void onVolumeCallback(int newVolume) override
    {
        volume = newVolume;
        ++volumes;
    }
    void onFrameChangedCallback(int width, int height, uint8_t* pARGB32Bits) override
    {
        frameSize = QSize(width, height);
        firstPixel = *reinterpret_cast<uint32_t*>(pARGB32Bits);
        ++frames;
    }

    std::atomic<int> devices{0}, times{0}, volumes{0}, frames{0};
    std::atomic<int> device{0}, volume{0};
    std::atomic<qint64> time{0};
    std::thread::id thread;
    QSize frameSize;
    uint32_t firstPixel = 0;
};

/** Stays in a callback until it is let go. */
class HeldObserver : public IKdRecorderEventObserver
{
public:
    void onTimeCallback(long long) override
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_isInside = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_isLetGo; });
        hasLeft = true;
    }
    void waitUntilInside()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_changed.wait(lock, [this] { return m_isInside; });
    }
    void letGo()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isLetGo = true;
        m_changed.notify_all();
    }

    std::atomic<bool> hasLeft{false};

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isInside = false;
    bool m_isLetGo = false;
};

/** Takes itself off the recorder from inside its first callback. */
class SelfRemovingObserver : public IKdRecorderEventObserver
{
public:
    explicit SelfRemovingObserver(IKdAudioRecorder* recorder) : m_recorder(recorder) {}
    void onTimeCallback(long long) override
    {
        ++calls;
        m_recorder->removeEventObserver(this);
    }

    std::atomic<int> calls{0};

private:
    IKdAudioRecorder* m_recorder;
};

void switchOn(IKdAudioRecorder* recorder)
{
    recorder->setCallbackSwitch1(true);
    recorder->setCallbackSwitch2(true);
    recorder->setCallbackSwitch3(true);
}

void selectFirst(IKdAudioRecorder* recorder)
{
    QList<_KdCaptureDevInf> devices;
    recorder->getDevices(&devices);
    recorder->setDevice(0);
}

} // namespace

class tst_ScriptedEngine : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void recordsEveryCallInOrderWithItsArguments()
    {
        ScriptedEngine engine;
        QObject owner;
        IKdAudioRecorder* audio = createAudioRecorder(&owner);
        QCOMPARE(engine.owner(), &owner);
        audio->setDevice(3);
        audio->setOutputFile(QStringLiteral("/a b/%1.m4a"));
        audio->setInterval(20);
        audio->setCallbackSwitch2(true);
        KdAudioFormat format;
        format.bitrate = 64000;
        audio->setAudioFormat(&format);
        audio->curStatus();
        audio->release();
        IKdWebcamRecorder* webcam = createWebcamRecorder();
        webcam->setDevice(kdtMicrophone, 0);
        webcam->setResolution(QSize(640, 480));
        webcam->release();

        const QStringList expected{
            QStringLiteral("setDevice(3)"),
            QStringLiteral("setOutputFile(/a b/%1.m4a)"),
            QStringLiteral("setInterval(20)"),
            QStringLiteral("setCallbackSwitch2(true)"),
            QStringLiteral("setAudioFormat(mode=1 fourcc=AAC  bitrate=64000 channels=2 bits=16 "
                           "rate=44100 volume=-1)"),
            QStringLiteral("release()"),
            QStringLiteral("setDevice(8, 0)"),
            QStringLiteral("setResolution(640x480)"),
            QStringLiteral("release()"),
        };
        QCOMPARE(engine.commands(), expected);
        QCOMPARE(engine.calls().size(), expected.size() + 1);
        QCOMPARE(engine.count("curStatus"), 1);
        QCOMPARE(engine.lastCall("setAudioFormat").argument<KdAudioFormat>(0).bitrate, 64000);
        QCOMPARE(engine.lastCall("setDevice").argument<_KdDevType>(0), kdtMicrophone);
        QCOMPARE(engine.lastCall("setDevice").recorder, 2);
        QVERIFY_EXCEPTION_THROWN(engine.lastCall("pause"), std::out_of_range);
    }

    void countsRecordersThatLive()
    {
        ScriptedEngine engine;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        IKdWebcamRecorder* webcam = createWebcamRecorder();
        QCOMPARE(engine.alive(), 2);
        audio->release();
        webcam->release();
        QCOMPARE(engine.created(), 2);
        QCOMPARE(engine.alive(), 0);
    }

    void warnsOfACallAfterRelease()
    {
        ScriptedEngine engine;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        audio->release();
        expectLog(QStringLiteral("called after release\\(\\): pause\\(\\)"));
        audio->pause();
    }

    void behavesWellWithoutAScript()
    {
        ScriptedEngine engine;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        QList<_KdCaptureDevInf> devices;
        audio->getDevices(&devices);
        QCOMPARE(devices.size(), 1);
        QCOMPARE(devices.at(0).devType, qint32(kdtMicrophone));
        audio->setDevice(0);
        audio->setOutputFile(QStringLiteral("one"));
        QCOMPARE(audio->getOutputFile(), QStringLiteral("one"));

        audio->pause();
        QCOMPARE(audio->curStatus(), fcsNoStart);
        QVERIFY(audio->start());
        QCOMPARE(audio->curStatus(), fcsRecording);
        audio->pause();
        QCOMPARE(audio->curStatus(), fcsPaused);
        audio->resume();
        QCOMPARE(audio->curStatus(), fcsRecording);
        audio->setOutputFile(QStringLiteral("two"));
        QCOMPARE(audio->getOutputFile(), QStringLiteral("one"));
        QVERIFY(audio->stop());
        QCOMPARE(audio->curStatus(), fcsNoStart);
        QCOMPARE(engine.selectedDevice(kdtMicrophone).id, devices.at(0).id);
        audio->release();
    }

    void refusesADeviceThatItDidNotList()
    {
        ScriptedEngine engine;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        audio->setDevice(0);
        QVERIFY(!audio->start());
        selectFirst(audio);
        QVERIFY(audio->start());
        audio->release();

        IKdWebcamRecorder* webcam = createWebcamRecorder();
        QList<_KdCaptureDevInf> devices;
        QVERIFY(webcam->getDevices(kdtWebcam, &devices));
        QVERIFY(!webcam->setDevice(kdtWebcam, 1));
        QVERIFY(!webcam->setDevice(kdtMicrophone, 0));
        QVERIFY(webcam->setDevice(kdtWebcam, 0));
        webcam->release();
    }

    void answersFromTheScript()
    {
        ScriptedEngine engine;
        engine.script().microphones.clear();
        engine.script().microphones
            << _KdCaptureDevInf{8, 0, QStringLiteral("A"), QStringLiteral("a")}
            << _KdCaptureDevInf{8, 1, QStringLiteral("B"), QStringLiteral("b")};
        engine.script().status = [](int status) { return status + 4; };
        engine.script().outputFile = [](const QString& path) { return path + QLatin1Char('!'); };
        engine.fail("start");
        engine.fail("stop");
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        QList<_KdCaptureDevInf> devices;
        audio->getDevices(&devices);
        QCOMPARE(devices.size(), 2);
        audio->setDevice(1);
        audio->setOutputFile(QStringLiteral("x"));
        QVERIFY(!audio->start());
        QCOMPARE(int(audio->curStatus()), 4);
        engine.succeed("start");
        QVERIFY(audio->start());
        QCOMPARE(int(audio->curStatus()), 5);
        QVERIFY(!audio->stop());
        QCOMPARE(engine.status(), fcsNoStart);
        QCOMPARE(audio->getOutputFile(), QStringLiteral("x!"));
        audio->release();
    }

    void startLeavesAFileOnlyWhenTheScriptHasOne()
    {
        ScriptedEngine engine;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        selectFirst(audio);
        const QString path = temporaryPath(QStringLiteral("take.m4a"));
        audio->setOutputFile(path);
        QVERIFY(audio->start());
        QVERIFY(!QFile::exists(path));
        engine.script().take = "sound";
        QVERIFY(audio->start());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("sound"));
        audio->setOutputFile(temporaryPath(QStringLiteral("missing/take.m4a")));
        QVERIFY(!audio->start());
        audio->release();
    }

    void runsTheTestsActionInsideTheOperation()
    {
        ScriptedEngine engine;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        selectFirst(audio);
        CountingObserver observer;
        audio->addEventObserver(&observer);
        switchOn(audio);
        _KdCaptureStatus during = fcsNoStart;
        engine.during("stop", [&] {
            during = engine.status();
            engine.deliverDevice(4, 0);
        });
        QVERIFY(audio->start());
        QVERIFY(audio->stop());
        QCOMPARE(during, fcsRecording);
        QCOMPARE(observer.device, 400);
        audio->removeEventObserver(&observer);
        audio->release();
    }

    void callsObserversOnAThreadOfItsOwn()
    {
        ScriptedEngine engine;
        CountingObserver observer;
        IKdWebcamRecorder* webcam = createWebcamRecorder();
        webcam->addEventObserver(&observer);
        webcam->setCallbackSwitch1(true);
        webcam->setCallbackSwitch2(true);
        webcam->setCallbackSwitch3(true);
        engine.deliverDevice(5, 1);
        engine.deliverTime(Q_INT64_C(5000000000));
        engine.deliverVolume(70);
        QImage picture(4, 2, QImage::Format_RGB32);
        picture.fill(QColor(1, 2, 3));
        engine.deliverFrame(picture);

        QCOMPARE(observer.device, 501);
        QCOMPARE(observer.time, Q_INT64_C(5000000000));
        QCOMPARE(observer.volume, 70);
        QCOMPARE(observer.frameSize, QSize(4, 2));
        QCOMPARE(observer.firstPixel, 0xff010203U);
        QVERIFY(observer.thread != std::this_thread::get_id());
        webcam->release();
    }

    void audioRecorderDeliversNoFrames()
    {
        ScriptedEngine engine;
        CountingObserver observer;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        audio->addEventObserver(&observer);
        switchOn(audio);
        engine.deliverFrame(QImage(2, 2, QImage::Format_ARGB32));
        QCOMPARE(observer.frames, 0);
        audio->release();
    }

    void obeysTheCallbackSwitches_data()
    {
        QTest::addColumn<int>("device");
        QTest::addColumn<int>("time");
        QTest::addColumn<int>("volume");
        QTest::newRow("all off") << 0 << 0 << 0;
        QTest::newRow("device") << 1 << 0 << 0;
        QTest::newRow("time") << 0 << 1 << 0;
        QTest::newRow("volume") << 0 << 0 << 1;
    }

    void obeysTheCallbackSwitches()
    {
        QFETCH(int, device);
        QFETCH(int, time);
        QFETCH(int, volume);
        ScriptedEngine engine;
        CountingObserver observer;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        audio->addEventObserver(&observer);
        audio->setCallbackSwitch1(device > 0);
        audio->setCallbackSwitch2(time > 0);
        audio->setCallbackSwitch3(volume > 0);
        engine.deliverDevice(3, 0);
        engine.deliverTime(1);
        engine.deliverVolume(1);
        QCOMPARE(observer.devices, device);
        QCOMPARE(observer.times, time);
        QCOMPARE(observer.volumes, volume);
        audio->release();
    }

    void removingAnObserverWaitsForItsRunningCallback()
    {
        ScriptedEngine engine;
        HeldObserver observer;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        audio->addEventObserver(&observer);
        switchOn(audio);
        std::thread delivery([&engine] { engine.deliverTime(1); });
        observer.waitUntilInside();

        std::atomic<bool> isRemoved{false};
        bool hadLeft = false;
        std::thread removal([&] {
            audio->removeEventObserver(&observer);
            hadLeft = observer.hasLeft;
            isRemoved = true;
        });
        // The removal is under way once the recorder has no observer; it cannot be over.
        QTRY_COMPARE(engine.observerCount(), 0);
        QVERIFY(!isRemoved);
        observer.letGo();
        removal.join();
        delivery.join();
        QVERIFY(hadLeft);
        audio->release();
    }

    void noCallbackStartsAfterRemovalUnderConcurrentDelivery()
    {
        ScriptedEngine engine;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        switchOn(audio);
        engine.startFlood(4);
        for (int round = 0; round < 60; ++round) {
            // On the heap, so that a late call is a use after free that the sanitizers see.
            auto observer = std::make_unique<CountingObserver>();
            audio->addEventObserver(observer.get());
            QTRY_VERIFY(observer->times > 0 && observer->volumes > 0);
            audio->removeEventObserver(observer.get());
            const int times = observer->times;
            const int volumes = observer->volumes;
            std::this_thread::yield();
            QCOMPARE(observer->times, times);
            QCOMPARE(observer->volumes, volumes);
        }
        engine.stopFlood();
        QVERIFY(engine.floodCount() >= 120);
        audio->release();
    }

    void anObserverMayRemoveItselfInsideItsCallback()
    {
        ScriptedEngine engine;
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        SelfRemovingObserver observer(audio);
        audio->addEventObserver(&observer);
        switchOn(audio);
        engine.deliverTime(1);
        engine.deliverTime(2);
        QCOMPARE(observer.calls, 1);
        audio->release();
    }

    void releaseIsABarrierToo()
    {
        ScriptedEngine engine;
        auto observer = std::make_unique<CountingObserver>();
        IKdAudioRecorder* audio = createAudioRecorder(nullptr);
        audio->addEventObserver(observer.get());
        switchOn(audio);
        engine.startFlood(2);
        QTRY_VERIFY(observer->times > 0);
        audio->release();
        observer.reset();
        engine.stopFlood();
        QCOMPARE(engine.alive(), 0);
    }

    void webcamRecorderKeepsItsEffects()
    {
        ScriptedEngine engine;
        IKdWebcamRecorder* webcam = createWebcamRecorder();
        QVERIFY(webcam->setRecordDisplayShape(fcrsCircle));
        QCOMPARE(webcam->getRecordDisplayShape(), fcrsCircle);
        engine.fail("setRecordDisplayShape");
        QVERIFY(!webcam->setRecordDisplayShape(fcrsSquare));
        QCOMPARE(webcam->getRecordDisplayShape(), fcrsCircle);
        webcam->setBackgroundMode(fcbmBlur);
        QCOMPARE(webcam->getBackgroundMode(), fcbmBlur);
        webcam->setRecordFlip(true);
        QVERIFY(webcam->getRecordFlip());
        QVERIFY(webcam->startPreview());
        QVERIFY(engine.isPreviewing());
        engine.fail("startPreview");
        QVERIFY(webcam->stopPreview());
        QVERIFY(!webcam->startPreview());
        QVERIFY(!engine.isPreviewing());
        webcam->release();
    }

    void webcamListsFormatsOfTheSelectedWebcam()
    {
        ScriptedEngine engine;
        engine.script().webcams.append({2, 1, QStringLiteral("Other"), QStringLiteral("other-id")});
        engine.script().resolutionsOf[QStringLiteral("other-id")] = {QSize(320, 240)};
        IKdWebcamRecorder* webcam = createWebcamRecorder();
        QList<_KdCaptureDevInf> devices;
        QVERIFY(webcam->getDevices(kdtWebcam, &devices));
        QList<QSize> resolutions;
        QVERIFY(webcam->setDevice(kdtWebcam, 0));
        webcam->getResolutions(&resolutions);
        QCOMPARE(resolutions, engine.script().resolutions);
        QVERIFY(webcam->setDevice(kdtWebcam, 1));
        webcam->getResolutions(&resolutions);
        QCOMPARE(resolutions, QList<QSize>{QSize(320, 240)});
        QList<double> rates;
        webcam->getFrameRates(&rates);
        QCOMPARE(rates, engine.script().frameRates);
        engine.fail("getDevices");
        QVERIFY(!webcam->getDevices(kdtWebcam, &devices));
        QVERIFY(devices.isEmpty());
        webcam->release();
    }

    void aRecorderThatOutlivesItsEngineStillAnswers()
    {
        IKdAudioRecorder* audio = nullptr;
        {
            ScriptedEngine engine;
            audio = createAudioRecorder(nullptr);
        }
        ScriptedEngine next;
        QCOMPARE(audio->curStatus(), fcsNoStart);
        audio->release();
        QCOMPARE(next.created(), 0);
        QVERIFY(next.calls().isEmpty());
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_ScriptedEngine>(argc, argv);
}

#include "tst_ScriptedEngine.moc"
