#include <KdVBLModel/KdAudioEngine.h>

#include <KdVBLModel/KdLevelScale.h>
#include <KdVBLModel/KdMonotonicTime.h>

#include <KdCore/KdBaseLog.h>

using namespace KdVBLMODEL;
using namespace std::chrono_literals;

namespace {

// What the contract allows an operation to take, less a little for the way there and back.
constexpr auto kStartPatience = 250ms * KD_BUILD_SLOWDOWN;
constexpr auto kUndoPatience = 40ms;
constexpr auto kStopPatience = 1950ms;
constexpr auto kShutDownPatience = 2000ms;
constexpr auto kCheckInterval = 250ms;
/** The dialog that a recorder is made for is painted before the first devices are looked for. */
constexpr auto kHeadStart = 100ms;

constexpr int kShortestIntervalMs = 10;
constexpr int kUsualIntervalMs = 50;

KdBaseLog::Source source(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdAudioEngine", function, line};
}

} // namespace

std::shared_ptr<KdAudioEngine> KdAudioEngine::create()
{
    std::shared_ptr<KdAudioEngine> engine(new KdAudioEngine);
    KdDeviceRegistry::instance().addListener(engine.get());
    KdDeviceRegistry::instance().start(kdtMicrophone, kHeadStart);
    return engine;
}

KdAudioEngine::KdAudioEngine()
    : m_input(
          {[this](GstBuffer* buffer, const KdCaptureDevice& from) { onSamples(buffer, from); },
           [this](double decibel) { m_callbacks.postLevel(KdLevelScale::fromDecibel(decibel)); },
           [this](int number) {
               post([number](KdAudioEngine& engine) { engine.captureFailed(number); });
           }})
    , m_worker([this] { check(); }, kCheckInterval)
{
}

KdAudioEngine::~KdAudioEngine() = default;

void KdAudioEngine::shutDown()
{
    KdDeviceRegistry::instance().removeListener(this);
    m_callbacks.setSwitch(KdCallbackPump::LevelSwitch, false); // no input is opened after the take
    stop();
    m_callbacks.removeAllObservers();
    post([](KdAudioEngine& engine) { engine.closeCapture(); });
    if (!m_worker.finish(kShutDownPatience)) {
        KdBaseLog::write(KdBaseLog::Error, source("KdAudioEngine::shutDown"),
                         "The sound server does not let go of its audio input; it is left behind.");
    }
}

// A file that is not there in time means no take. An input that is not there in time is still
// waited for: the take begins with its first sound, and the time tells so.
bool KdAudioEngine::start()
{
    const auto self = shared_from_this();
    const qint64 deadlineNs = kdMonotonicNs() + std::chrono::nanoseconds(kStartPatience).count();
    const std::optional<bool> isOpen = m_worker.call<bool>(
        [self] { return self->beginTake(); }, kStartPatience, [self](bool) { self->undoStart(); });
    if (!isOpen) {
        KdBaseLog::write(KdBaseLog::Error, source("KdAudioEngine::start"),
                         "The recording did not start in time; the sound server or the disk is "
                         "too slow.");
    }
    if (!isOpen.value_or(false)) {
        return false;
    }
    const std::chrono::nanoseconds left(qMax<qint64>(0, deadlineNs - kdMonotonicNs()));
    const std::optional<bool> hasInput =
        m_worker.call<bool>([self] { return self->connectInput(); },
                            std::chrono::duration_cast<std::chrono::milliseconds>(left),
                            [self](bool isConnected) {
                                if (!isConnected) {
                                    self->loseInput();
                                }
                            });
    if (hasInput.value_or(true)) {
        return true;
    }
    m_worker.call<bool>([self] { return self->undoStart(); }, kUndoPatience);
    return false;
}

bool KdAudioEngine::stop()
{
    const std::shared_ptr<KdAudioTake> take = exchangeTake({}).take;
    if (!take) {
        return true;
    }
    post([take](KdAudioEngine& engine) {
        take->finish();
        engine.updateCapture();
    });
    // For the take, not for the worker: a sound server that hangs may hold that one.
    const std::optional<bool> isKept = take->waitForOutcome(kStopPatience);
    if (!isKept) {
        KdBaseLog::write(KdBaseLog::Error, source("KdAudioEngine::stop"),
                         "The recording %s did not end in time; the disk is too slow.",
                         qUtf8Printable(take->path()));
    }
    return isKept.value_or(false);
}

void KdAudioEngine::pause()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_status == fcsRecording) {
        m_running.take->pause(kdMonotonicNs());
        m_status = fcsPaused;
    }
}

void KdAudioEngine::resume()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_status == fcsPaused) {
        m_running.take->resume(kdMonotonicNs());
        m_status = fcsRecording;
    }
}

_KdCaptureStatus KdAudioEngine::status() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_status;
}

QVector<KdCaptureDevice> KdAudioEngine::listDevices()
{
    return m_listed.list();
}

void KdAudioEngine::setDevice(int index)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_settings.device = m_listed.at(index);
    }
    post([](KdAudioEngine& engine) { engine.updateCapture(); });
}

void KdAudioEngine::setFormat(const KdAudioFormat& format)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_settings.format = format;
    }
    post([](KdAudioEngine& engine) { engine.updateCapture(); });
}

void KdAudioEngine::setInterval(int msec)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_settings.intervalMs = msec > 0 ? qMax(msec, kShortestIntervalMs) : kUsualIntervalMs;
    }
    post([](KdAudioEngine& engine) { engine.updateCapture(); });
}

void KdAudioEngine::setOutputFile(const QString& path)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_settings.outputFile = path;
}

QString KdAudioEngine::outputFile() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_running.take) {
        return m_running.take->path();
    }
    return m_lastFile.isEmpty() ? m_settings.outputFile : m_lastFile;
}

void KdAudioEngine::setSwitch(KdCallbackPump::Switch kind, bool on)
{
    m_callbacks.setSwitch(kind, on);
    post([](KdAudioEngine& engine) { engine.updateCapture(); });
}

void KdAudioEngine::onDeviceAdded(const KdCaptureDevice& device)
{
    post([device](KdAudioEngine& engine) { engine.deviceCame(device); });
}

void KdAudioEngine::onDeviceRemoved(const KdCaptureDevice& device)
{
    post([device](KdAudioEngine& engine) { engine.deviceWent(device); });
}

void KdAudioEngine::onDevicesListed(_KdDevType kind)
{
    if (kind == kdtMicrophone && m_listed.complete()) {
        m_callbacks.postDevice(fcdAudioInputAdded, -1);
    }
}

KdAudioEngine::Settings KdAudioEngine::settings() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_settings;
}

KdAudioEngine::RunningTake KdAudioEngine::running() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_running;
}

void KdAudioEngine::post(std::function<void(KdAudioEngine&)> task)
{
    // Nobody left to share it with means that the engine is being destroyed.
    if (const std::shared_ptr<KdAudioEngine> self = weak_from_this().lock()) {
        m_worker.post([self, task = std::move(task)] { task(*self); });
    }
}
