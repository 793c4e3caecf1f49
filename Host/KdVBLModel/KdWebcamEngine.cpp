#include <KdVBLModel/KdWebcamEngine.h>

#include <KdVBLModel/KdLevelScale.h>
#include <KdVBLModel/KdMonotonicTime.h>

#include <KdCore/KdBaseLog.h>

#include <algorithm>
#include <cmath>

using namespace KdVBLMODEL;
using namespace std::chrono_literals;

namespace {

// What the contract allows an operation to take, less a little for the way there and back.
constexpr auto kStartPatience = 250ms * KD_BUILD_SLOWDOWN;
constexpr auto kUndoPatience = 40ms;
constexpr auto kStopPatience = 1950ms * KD_BUILD_SLOWDOWN;
constexpr auto kCheckInterval = 250ms;

constexpr int kShortestIntervalMs = 10;
constexpr int kUsualIntervalMs = 50;
constexpr double kUsualFrameRate = 30.0;
/** A panel shows rates with two digits, so a wish for 30 may mean 29.97. */
constexpr double kSameFrameRate = 0.5;

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdWebcamEngine", function, line};
}

KdCameraFormats formatsOf(const KdCaptureDevice& camera)
{
    const KdGstCapsPtr caps(KdDeviceRegistry::instance().createCaps(camera));
    return KdCameraFormats(caps.get());
}

double firstRate(const KdCameraFormats& formats, QSize size)
{
    const QList<double> rates = formats.frameRates(size);
    return rates.isEmpty() ? kUsualFrameRate : rates.first();
}

bool hasRate(const KdCameraFormats& formats, QSize size, double wanted)
{
    const QList<double> rates = formats.frameRates(size);
    return std::any_of(rates.begin(), rates.end(),
                       [wanted](double rate) { return std::abs(rate - wanted) < kSameFrameRate; });
}

} // namespace

std::shared_ptr<KdWebcamEngine> KdWebcamEngine::create(const Legacy& former)
{
    std::shared_ptr<KdWebcamEngine> engine(new KdWebcamEngine(former));
    KdDeviceRegistry::instance().addListener(engine.get());
    KdDeviceRegistry::instance().start(kdtWebcam);
    KdDeviceRegistry::instance().start(kdtMicrophone);
    return engine;
}

KdWebcamEngine::KdWebcamEngine(const Legacy& former)
    : m_frames([this](KdFramePump::Frame& frame) { show(frame); })
    , m_stage(m_frames)
    , m_settings(former.settings)
    , m_lastFile(former.lastFile)
    , m_camera({[this](const GstCaps* caps) { m_stage.setFormat(caps); },
                [this](GstBuffer* picture, qint64 captureNs, const KdCaptureDevice& from) {
                    onPicture(picture, captureNs, from);
                },
                [this](int number) {
                    post([number](KdWebcamEngine& engine) { engine.cameraFailed(number); });
                }})
    , m_microphone(
          {[this](GstBuffer* sound, const KdCaptureDevice& from) { onSound(sound, from); },
           [this](double decibel) { m_callbacks.postLevel(KdLevelScale::fromDecibel(decibel)); },
           [this](int number) {
               post([number](KdWebcamEngine& engine) { engine.microphoneFailed(number); });
           }})
    , m_worker([this] { check(); }, kCheckInterval)
{
}

KdWebcamEngine::~KdWebcamEngine() = default;

bool KdWebcamEngine::shutDown(std::chrono::milliseconds patience)
{
    KdDeviceRegistry::instance().removeListener(this);
    setPreviewing(false);
    stop();
    m_callbacks.removeAllObservers();
    post([](KdWebcamEngine& engine) {
        engine.closeCamera();
        engine.closeMicrophone();
    });
    return m_worker.finish(patience);
}

// A file that is not there in time means no take. A camera that is not there in time is still
// waited for: the take begins with its first picture, and the time tells so.
bool KdWebcamEngine::start()
{
    const auto self = shared_from_this();
    const qint64 deadlineNs = kdMonotonicNs() + std::chrono::nanoseconds(kStartPatience).count();
    const std::optional<bool> isOpen = m_worker.call<bool>(
        [self] { return self->beginTake(); }, kStartPatience, [self](bool) { self->undoStart(); });
    if (!isOpen) {
        KdBaseLog::write(KdBaseLog::Error, source("KdWebcamEngine::start"),
                         "The recording did not start in time; a device or the disk is too slow.");
    }
    if (!isOpen.value_or(false)) {
        return false;
    }
    const std::chrono::nanoseconds left(qMax<qint64>(0, deadlineNs - kdMonotonicNs()));
    const std::optional<bool> hasDevices =
        m_worker.call<bool>([self] { return self->connectDevices(); },
                            std::chrono::duration_cast<std::chrono::milliseconds>(left),
                            [self](bool isConnected) {
                                if (!isConnected) {
                                    self->abandonTake();
                                }
                            });
    if (hasDevices.value_or(true)) {
        return true;
    }
    m_worker.call<bool>([self] { return self->undoStart(); }, kUndoPatience);
    return false;
}

bool KdWebcamEngine::stop()
{
    const std::shared_ptr<KdWebcamTake> take = exchangeTake({}).take;
    if (!take) {
        return true;
    }
    post([take](KdWebcamEngine& engine) {
        take->finish();
        engine.update();
    });
    // For the take, not for the worker: a server that hangs may hold that one.
    const std::optional<bool> isKept = take->waitForOutcome(kStopPatience);
    if (!isKept) {
        KdBaseLog::write(KdBaseLog::Error, source("KdWebcamEngine::stop"),
                         "The recording %s did not end in time; the disk is too slow.",
                         qUtf8Printable(take->path()));
    }
    return isKept.value_or(false);
}

bool KdWebcamEngine::pause()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_status != fcsRecording) {
        return false;
    }
    m_running.take->pause(kdMonotonicNs());
    m_status = fcsPaused;
    return true;
}

bool KdWebcamEngine::resume()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_status != fcsPaused) {
        return false;
    }
    m_running.take->resume(kdMonotonicNs());
    m_status = fcsRecording;
    return true;
}

_KdCaptureStatus KdWebcamEngine::status() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_status;
}

bool KdWebcamEngine::startPreview()
{
    if (!KdDeviceRegistry::instance().has(settings().camera)) {
        return false;
    }
    setPreviewing(true);
    return true;
}

bool KdWebcamEngine::stopPreview()
{
    setPreviewing(false);
    m_frames.drop();
    return true;
}

QVector<KdCaptureDevice> KdWebcamEngine::listDevices(_KdDevType kind)
{
    return (kind == kdtWebcam ? m_cameras : m_microphones).list();
}

bool KdWebcamEngine::setDevice(_KdDevType kind, int index)
{
    const KdCaptureDevice device = (kind == kdtWebcam ? m_cameras : m_microphones).at(index);
    if (!KdDeviceRegistry::instance().has(device)) {
        return false;
    }
    if (kind != kdtWebcam) {
        change([&device](Settings& settings) { settings.microphone = device; });
        return true;
    }
    const KdCameraFormats formats = formatsOf(device);
    change([&](Settings& settings) {
        settings.camera = device;
        if (!formats.resolutions().contains(settings.size)) {
            settings.size = formats.resolutions().value(0);
        }
        if (!hasRate(formats, settings.size, settings.frameRate)) {
            settings.frameRate = firstRate(formats, settings.size);
        }
    });
    return true;
}

QList<QSize> KdWebcamEngine::resolutions() const
{
    return formatsOf(settings().camera).resolutions();
}

QList<double> KdWebcamEngine::frameRates() const
{
    const Settings now = settings();
    return formatsOf(now.camera).frameRates(now.size);
}

bool KdWebcamEngine::setResolution(QSize resolution)
{
    const KdCameraFormats formats = formatsOf(settings().camera);
    if (!formats.resolutions().contains(resolution)) {
        return false;
    }
    change([&](Settings& settings) {
        settings.size = resolution;
        if (!hasRate(formats, resolution, settings.frameRate)) {
            settings.frameRate = firstRate(formats, resolution);
        }
    });
    return true;
}

bool KdWebcamEngine::setFrameRate(double frameRate)
{
    const Settings now = settings();
    if (!hasRate(formatsOf(now.camera), now.size, frameRate)) {
        return false;
    }
    change([frameRate](Settings& settings) { settings.frameRate = frameRate; });
    return true;
}

void KdWebcamEngine::setSoundFormat(const KdAudioFormat& format)
{
    change([&format](Settings& settings) { settings.sound = format; });
}

void KdWebcamEngine::setRecordAudio(bool on)
{
    change([on](Settings& settings) { settings.hasSound = on; });
}

void KdWebcamEngine::setInterval(int msec)
{
    const int interval = msec > 0 ? qMax(msec, kShortestIntervalMs) : kUsualIntervalMs;
    change([interval](Settings& settings) { settings.intervalMs = interval; });
}

void KdWebcamEngine::setOutputFile(const QString& path)
{
    change([&path](Settings& settings) { settings.outputFile = path; });
}

QString KdWebcamEngine::outputFile() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_running.take) {
        return m_running.take->path();
    }
    return m_lastFile.isEmpty() ? m_settings.outputFile : m_lastFile;
}

void KdWebcamEngine::setShape(_KdCaptureRecordShape shape)
{
    change([shape](Settings& settings) { settings.shape = shape; });
    if (const auto take = running().take) {
        take->setShape(shape);
    }
}

void KdWebcamEngine::setFlip(bool on)
{
    change([on](Settings& settings) { settings.isFlipped = on; });
    if (const auto take = running().take) {
        take->setFlip(on);
    }
}

void KdWebcamEngine::setBackground(KdBackgroundEffect::Mode mode)
{
    change([mode](Settings& settings) { settings.background = mode; });
}

void KdWebcamEngine::setSwitch(KdCallbackPump::Switch kind, bool on)
{
    m_callbacks.setSwitch(kind, on);
    post([](KdWebcamEngine& engine) { engine.update(); });
}

void KdWebcamEngine::onDeviceAdded(const KdCaptureDevice& device)
{
    post([device](KdWebcamEngine& engine) { engine.deviceCame(device); });
}

void KdWebcamEngine::onDeviceRemoved(const KdCaptureDevice& device)
{
    post([device](KdWebcamEngine& engine) { engine.deviceWent(device); });
}

void KdWebcamEngine::onDevicesListed(_KdDevType kind)
{
    if ((kind == kdtWebcam ? m_cameras : m_microphones).complete()) {
        m_callbacks.postDevice(kind == kdtWebcam ? fcdWebcamListChanged : fcdAudioInputAdded, -1);
    }
}

KdWebcamEngine::Legacy KdWebcamEngine::legacy() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return {m_settings, m_lastFile};
}

KdWebcamEngine::Settings KdWebcamEngine::settings() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_settings;
}

KdWebcamEngine::RunningTake KdWebcamEngine::running() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_running;
}

bool KdWebcamEngine::isPreviewing() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isPreviewing;
}

void KdWebcamEngine::setPreviewing(bool on)
{
    change([this, on](Settings&) { m_isPreviewing = on; });
}

void KdWebcamEngine::change(const std::function<void(Settings&)>& change)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        change(m_settings);
        ++m_changes;
        m_changed.notify_all();
    }
    post([](KdWebcamEngine& engine) { engine.update(); });
}

void KdWebcamEngine::post(std::function<void(KdWebcamEngine&)> task)
{
    // Nobody left to share it with means that the engine is being destroyed.
    if (const std::shared_ptr<KdWebcamEngine> self = weak_from_this().lock()) {
        m_worker.post([self, task = std::move(task)] { task(*self); });
    }
}

void KdWebcamEngine::onPicture(GstBuffer* picture, qint64 captureNs, const KdCaptureDevice& from)
{
    KdPictureStage::Wanted wanted;
    RunningTake now;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        now = m_running;
        wanted.background = m_settings.background;
        wanted.isShown = m_isPreviewing && m_callbacks.isOn(KdCallbackPump::LevelSwitch);
    }
    if (now.runs() && now.settings.camera.isSameAs(from)) {
        wanted.take = now.take;
    }
    tellTime(now, m_stage.process(picture, captureNs, wanted));
}

void KdWebcamEngine::onSound(GstBuffer* sound, const KdCaptureDevice& from)
{
    const RunningTake now = running();
    if (now.runs() && now.settings.hasSound && now.settings.microphone.isSameAs(from)) {
        tellTime(now, now.take->feedSound(sound, kdMonotonicNs()));
    }
}

void KdWebcamEngine::tellTime(const RunningTake& of, std::optional<qint64> due)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (due && m_running.take == of.take) {
        m_callbacks.postTime(*due);
    }
}

void KdWebcamEngine::show(KdFramePump::Frame& frame)
{
    if (isPreviewing()) {
        m_callbacks.showFrame(frame.size.width(), frame.size.height(), frame.pixels.data());
    }
}
