#include <KdVBLModel/KdWebcamEngine.h>

#include <KdVBLModel/KdMonotonicTime.h>

#include <KdCore/KdBaseLog.h>

#include <QFile>

#include <algorithm>

using namespace KdVBLMODEL;
using namespace std::chrono_literals;

namespace {

/** A camera that was opened for this take may need some time; one that runs needs one picture. */
constexpr auto kFirstPicturePatience = 150ms;

/** Who sets one thing after the other is done when nothing comes for this long. */
constexpr auto kRest = 20ms;
constexpr auto kLongestUnrest = 200ms;

/** A device that is gone leaves the list within this time. */
constexpr qint64 kLeavingNs = 1000000000;

KdBaseLog::Source here(const char* function, int line = __builtin_LINE())
{
    return {"Host/KdVBLModel/KdWebcamEngine", function, line};
}

std::optional<KdCameraMode> modeOf(const KdCaptureDevice& camera, QSize size, double frameRate)
{
    const KdGstCapsPtr caps(KdDeviceRegistry::instance().createCaps(camera));
    return KdCameraFormats(caps.get()).mode(size, frameRate);
}

bool isListed(const KdCaptureDevice& device)
{
    return KdDeviceRegistry::instance().has(device);
}

} // namespace

bool KdWebcamEngine::beginTake()
{
    if (const auto former = exchangeTake({}).take) {
        former->finish();
    }
    const Settings wanted = settings();
    const std::shared_ptr<KdWebcamTake> take = openTake(wanted);
    exchangeTake({take, wanted, false});
    return take != nullptr;
}

bool KdWebcamEngine::connectDevices()
{
    const RunningTake now = running();
    const Settings& wanted = now.settings;
    if (!now.take) {
        return false;
    }
    const bool hasCamera = openCamera(wanted) && (now.take->waitForPicture(kFirstPicturePatience) ||
                                                  !m_camera.hasFailed());
    if (!hasCamera) {
        loseCamera();
    }
    if (!hasCamera || (wanted.hasSound && !openMicrophone(wanted))) {
        return false;
    }
    KdBaseLog::write(KdBaseLog::Info, here("KdWebcamEngine::connectDevices"),
                     "Recording %s from %s%s%s.", qUtf8Printable(now.take->path()),
                     qUtf8Printable(wanted.camera.name), wanted.hasSound ? " and " : "",
                     wanted.hasSound ? qUtf8Printable(wanted.microphone.name) : "");
    return true;
}

/** The caller was told that nothing began. */
bool KdWebcamEngine::undoStart()
{
    const std::shared_ptr<KdWebcamTake> begun = exchangeTake({}).take;
    if (begun && begun->finish()) {
        QFile::remove(begun->path());
    }
    update();
    return true;
}

/** The caller was told that it began, and then it did not come to that. */
void KdWebcamEngine::abandonTake()
{
    const RunningTake now = running();
    if (now.runs()) {
        now.take->close();
        concludeTake(now.take, fcsEnded);
    }
}

std::shared_ptr<KdWebcamTake> KdWebcamEngine::openTake(const Settings& wanted) const
{
    const auto mode = modeOf(wanted.camera, wanted.size, wanted.frameRate);
    if (!mode || (wanted.hasSound && !isListed(wanted.microphone))) {
        KdBaseLog::write(KdBaseLog::Error, here("KdWebcamEngine::openTake"),
                         "There is nothing to record: no %s is there.",
                         mode ? "chosen audio input" : "chosen camera");
        return nullptr;
    }
    KdWebcamTakeFormat format;
    format.size = mode->size;
    format.frameRate = mode->frameRate();
    format.colorimetry = QLatin1String(KdPictureConverter::kI420Colours);
    format.hasSound = wanted.hasSound;
    format.sound = wanted.sound;
    format.isFlipped = wanted.isFlipped;
    format.shape = wanted.shape;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        format.takeAgain = wanted.outputFile == m_lastFile;
    }
    auto take = std::make_shared<KdWebcamTake>();
    return take->open(wanted.outputFile, format, wanted.intervalMs) ? take : nullptr;
}

KdWebcamEngine::RunningTake KdWebcamEngine::exchangeTake(const RunningTake& next)
{
    RunningTake former;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        former = m_running;
        m_running = next;
        m_status = next.take ? fcsRecording : fcsNoStart;
        m_callbacks.dropTime();
        if (former.take && former.take->hasPicture()) {
            m_lastFile = former.take->path();
        }
    }
    if (former.take) {
        former.take->close();
    }
    return former;
}

/** The file is finished at once; the recorder keeps the status until it is told to stop. */
void KdWebcamEngine::concludeTake(const std::shared_ptr<KdWebcamTake>& take,
                                  _KdCaptureStatus status)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_running.take == take) { // unless it was stopped meanwhile
            m_running.isOver = true;
            m_status = status;
        }
    }
    take->finish();
}

/** Between takes the devices run for the preview and its level meter, if there is one. */
void KdWebcamEngine::update()
{
    if (running().runs()) {
        return;
    }
    const Settings wanted = settings();
    if (!isPreviewing()) {
        closeCamera();
        closeMicrophone();
        return;
    }
    const auto mode = modeOf(wanted.camera, wanted.size, wanted.frameRate);
    if (!mode || !m_camera.isOpen(wanted.camera, *mode)) {
        settle();
    }
    const Settings settled = settings();
    if (!isPreviewing() || !isListed(settled.camera)) {
        closeCamera();
    } else {
        openCamera(settled);
    }
    const bool isHeard = m_callbacks.isOn(KdCallbackPump::LevelSwitch);
    if (!isPreviewing() || !isHeard || !isListed(settled.microphone)) {
        closeMicrophone();
    } else {
        openMicrophone(settled);
    }
}

// Device, size, rate and preview are set one after the other, and again: each of them alone would
// mean to open the camera anew.
void KdWebcamEngine::settle()
{
    const auto end = std::chrono::steady_clock::now() + kLongestUnrest;
    std::unique_lock<std::mutex> lock(m_mutex);
    int seen = m_changes;
    while (std::chrono::steady_clock::now() < end &&
           m_changed.wait_for(lock, kRest, [&] { return m_changes != seen; })) {
        seen = m_changes;
    }
}

bool KdWebcamEngine::openCamera(const Settings& wanted)
{
    const auto mode = modeOf(wanted.camera, wanted.size, wanted.frameRate);
    if (!mode) {
        return false;
    }
    if (!m_formerCamera.isSameAs(wanted.camera)) {
        m_camera.close();
        m_stage.reset();
        m_formerCamera = wanted.camera;
    }
    m_camera.open(wanted.camera, *mode);
    updateTicking();
    return true;
}

void KdWebcamEngine::closeCamera()
{
    m_camera.close();
    updateTicking();
}

bool KdWebcamEngine::openMicrophone(const Settings& wanted)
{
    const bool isOpen =
        m_microphone.open(wanted.microphone, wanted.sound.volume, wanted.intervalMs);
    updateTicking();
    return isOpen;
}

void KdWebcamEngine::closeMicrophone()
{
    if (m_microphone.close()) {
        m_callbacks.postLevel(0);
        updateTicking();
    }
}

void KdWebcamEngine::updateTicking()
{
    m_worker.setTicking(m_camera.isOpen() || m_microphone.isOpen() || !m_losses.empty() ||
                        running().runs());
}

void KdWebcamEngine::cameraFailed(int number)
{
    if (m_camera.isNumber(number)) {
        loseCamera();
    }
}

void KdWebcamEngine::microphoneFailed(int number)
{
    if (m_microphone.isNumber(number)) {
        loseMicrophone();
    }
}

/** A camera that never gave a picture, and is there, is another program's. */
void KdWebcamEngine::loseCamera()
{
    const KdCaptureDevice device = m_formerCamera;
    const bool isOccupied = !m_camera.hasPicture() && isListed(device);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isPreviewing = false;
    }
    if (isOccupied) {
        m_callbacks.postDevice(fcdWebcamOccupied, m_cameras.indexOf(device));
        endTakeOf(device, fcsEnded);
    } else {
        loseDevice(device);
    }
    closeCamera();
    closeMicrophone();
}

void KdWebcamEngine::loseMicrophone()
{
    loseDevice(m_microphone.device());
    closeMicrophone();
}

// The file first: a server that hangs may not let go of its devices. That a device is gone is told
// when it has left the list: whoever is told looks there.
void KdWebcamEngine::loseDevice(const KdCaptureDevice& device)
{
    endTakeOf(device, status());
    if (isListed(device)) {
        m_losses.push_back({device, kdMonotonicNs()});
    }
    updateTicking();
}

void KdWebcamEngine::endTakeOf(const KdCaptureDevice& device, _KdCaptureStatus status)
{
    const RunningTake now = running();
    if (now.runs() && now.uses(device)) {
        now.take->close();
        concludeTake(now.take, status);
    }
}

void KdWebcamEngine::deviceCame(const KdCaptureDevice& device)
{
    const bool isCamera = device.kind == kdtWebcam;
    m_callbacks.postDevice(isCamera ? fcdWebcamListChanged : fcdAudioInputAdded,
                           (isCamera ? m_cameras : m_microphones).indexOf(device));
    update();
}

void KdWebcamEngine::deviceWent(const KdCaptureDevice& device)
{
    m_losses.erase(
        std::remove_if(m_losses.begin(), m_losses.end(),
                       [&device](const Loss& loss) { return loss.device.isSameAs(device); }),
        m_losses.end());
    tellRemoval(device);
    if (m_camera.isOpen(device)) {
        loseCamera();
    } else if (m_microphone.isOpen(device)) {
        loseMicrophone();
    } else {
        endTakeOf(device, status());
    }
}

void KdWebcamEngine::tellRemoval(const KdCaptureDevice& device)
{
    const bool isCamera = device.kind == kdtWebcam;
    m_callbacks.postDevice(isCamera ? fcdWebcamRemoved : fcdAudioInputRemoved,
                           (isCamera ? m_cameras : m_microphones).indexOf(device));
}

void KdWebcamEngine::check()
{
    if (m_camera.isOpen() && m_camera.isStalled()) {
        loseCamera();
    }
    if (m_microphone.isOpen() && m_microphone.isStalled()) {
        loseMicrophone();
    }
    const RunningTake now = running();
    if (now.runs() && now.take->mustEnd()) {
        concludeTake(now.take, fcsEnded);
    }
    reportLosses();
}

/** Of devices that are listed all the same. */
void KdWebcamEngine::reportLosses()
{
    const qint64 now = kdMonotonicNs();
    const auto isDue = [now](const Loss& loss) { return now - loss.sinceNs > kLeavingNs; };
    for (const Loss& loss : m_losses) {
        if (isDue(loss)) {
            tellRemoval(loss.device);
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_status = m_running.isOver ? fcsEnded : m_status;
        }
    }
    m_losses.erase(std::remove_if(m_losses.begin(), m_losses.end(), isDue), m_losses.end());
    updateTicking();
}
