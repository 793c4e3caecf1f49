#include <KdVBLModel/KdAudioEngine.h>

#include <KdVBLModel/KdMonotonicTime.h>

#include <KdCore/KdBaseLog.h>

#include <QFile>

using namespace KdVBLMODEL;
using namespace std::chrono_literals;

namespace {

/** A device that was opened for this take may need some time; one that runs needs 10 ms. */
constexpr auto kFirstSoundPatience = 150ms;

/** Who makes a recorder, to show it in a dialog, is done when nothing was set for this long. */
constexpr auto kRest = 100ms;

KdBaseLog::Source here(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdAudioEngine", function, line};
}

} // namespace

// The former take, if one runs, takes nothing more from the moment the new one is open: an input
// that runs already loses nothing between them. It ends even if there is no new one.
bool KdAudioEngine::beginTake()
{
    const Settings wanted = settings();
    const std::shared_ptr<KdAudioTake> take = openTake(wanted);
    const RunningTake former = exchangeTake({take, wanted, false});
    if (former.take) {
        former.take->finish();
    }
    return take != nullptr;
}

bool KdAudioEngine::connectInput()
{
    const RunningTake now = running();
    if (!now.take || !openCapture(now.settings) || !hearsInput(*now.take)) {
        return false;
    }
    KdBaseLog::write(KdBaseLog::Info, here("KdAudioEngine::connectInput"), "Recording %s from %s.",
                     qUtf8Printable(now.take->path()), qUtf8Printable(now.settings.device.name));
    return true;
}

/** The caller was told that nothing began. */
bool KdAudioEngine::undoStart()
{
    const std::shared_ptr<KdAudioTake> begun = exchangeTake({}).take;
    if (begun && begun->finish()) {
        QFile::remove(begun->path());
    }
    updateCapture();
    return true;
}

std::shared_ptr<KdAudioTake> KdAudioEngine::openTake(const Settings& wanted) const
{
    if (wanted.device.isNull()) {
        KdBaseLog::write(KdBaseLog::Error, here("KdAudioEngine::openTake"),
                         "There is nothing to record: no audio input is chosen.");
        return nullptr;
    }
    auto take = std::make_shared<KdAudioTake>();
    const bool isOpen = take->open(wanted.outputFile, wanted.format, wanted.intervalMs,
                                   isLastFile(wanted.outputFile));
    return isOpen ? take : nullptr;
}

bool KdAudioEngine::isLastFile(const QString& path) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !path.isEmpty() && path == m_lastFile;
}

KdAudioEngine::RunningTake KdAudioEngine::exchangeTake(const RunningTake& next)
{
    RunningTake former;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        former = m_running;
        m_running = next;
        m_status = next.take ? fcsRecording : fcsNoStart;
        m_callbacks.dropTime();
        if (former.take && former.take->hasSound()) {
            m_lastFile = former.take->path();
        }
    }
    if (former.take) {
        former.take->close();
    }
    return former;
}

bool KdAudioEngine::hearsInput(KdAudioTake& take) const
{
    return take.waitForSound(kFirstSoundPatience) || !m_input.hasFailed();
}

/** The file is finished at once; the recorder keeps the status until it is told to stop. */
void KdAudioEngine::concludeTake(const std::shared_ptr<KdAudioTake>& take, _KdCaptureStatus status)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_running.take == take) { // it may have been stopped meanwhile
            m_running.isOver = true;
            m_status = status;
        }
    }
    take->finish();
}

bool KdAudioEngine::openCapture(const Settings& wanted)
{
    const bool isOpen = m_input.open(wanted.device, wanted.format.volume, wanted.intervalMs);
    m_worker.setTicking(isOpen);
    if (!isOpen) {
        m_callbacks.postLevel(0);
    }
    return isOpen;
}

void KdAudioEngine::closeCapture()
{
    if (m_input.close()) {
        m_worker.setTicking(false);
        m_callbacks.postLevel(0);
    }
}

/** Between takes the chosen input runs for its level meter, if there is one. */
void KdAudioEngine::updateCapture()
{
    if (!m_isSettled) {
        settle();
        return;
    }
    const RunningTake now = running();
    if (now.take && !now.isOver) {
        return;
    }
    const Settings wanted = settings();
    const bool isWatched = m_callbacks.isOn(KdCallbackPump::LevelSwitch);
    if (isWatched && KdDeviceRegistry::instance().has(wanted.device)) {
        openCapture(wanted);
    } else {
        closeCapture();
    }
}

// A new recorder's first input: opening it takes several programs' time, the sound server's among
// them, while the dialog that the recorder was made for is about to be painted.
void KdAudioEngine::settle()
{
    if (const std::shared_ptr<KdAudioEngine> self = weak_from_this().lock()) {
        const auto open = [self] {
            self->m_isSettled = true;
            self->updateCapture();
        };
        m_worker.postAtRest(open, kRest);
    }
}

void KdAudioEngine::captureFailed(int captureNumber)
{
    if (m_input.isNumber(captureNumber)) {
        loseInput();
    }
}

void KdAudioEngine::loseInput()
{
    const RunningTake now = running();
    if (now.take && !now.isOver) {
        now.take->close();
        m_callbacks.postDevice(fcdAudioInputRemoved, m_listed.indexOf(now.settings.device));
        concludeTake(now.take, status());
    }
    closeCapture();
}

void KdAudioEngine::deviceCame(const KdCaptureDevice& device)
{
    if (device.kind == kdtMicrophone) {
        m_callbacks.postDevice(fcdAudioInputAdded, m_listed.indexOf(device));
        updateCapture();
    }
}

void KdAudioEngine::deviceWent(const KdCaptureDevice& device)
{
    if (device.kind != kdtMicrophone) {
        return;
    }
    const RunningTake now = running();
    if (now.take && !now.isOver && now.settings.device.isSameAs(device)) {
        loseInput();
        return;
    }
    if (m_input.isOpen(device)) {
        closeCapture();
    }
    // In a take a removal means the take's own input: another one's is a change of the list.
    m_callbacks.postDevice(now.take ? fcdAudioInputAdded : fcdAudioInputRemoved,
                           m_listed.indexOf(device));
}

void KdAudioEngine::check()
{
    if (m_input.isStalled()) {
        loseInput();
    }
    const RunningTake now = running();
    if (now.take && !now.isOver && now.take->mustEnd()) {
        concludeTake(now.take, fcsEnded);
    }
}

void KdAudioEngine::onSamples(GstBuffer* buffer, const KdCaptureDevice& from)
{
    const RunningTake now = running();
    if (!now.take || !now.settings.device.isSameAs(from)) {
        return; // of no take, or of one that waits for another input
    }
    const std::optional<qint64> due = now.take->feed(buffer, kdMonotonicNs());
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (due && m_running.take == now.take) {
        m_callbacks.postTime(*due);
    }
}
