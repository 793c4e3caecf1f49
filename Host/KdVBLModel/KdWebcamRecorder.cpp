#include <KdVBLModel/KdWebcamRecorder.h>

#include <KdVBLModel/KdCaptureDeviceInfo.h>

#include <KdCore/KdBaseLog.h>

#include <set>

using namespace KdVBLMODEL;

namespace {

constexpr std::chrono::milliseconds kShutDownPatience{2000 * KD_BUILD_SLOWDOWN};
/** Within what an operation may take. */
constexpr std::chrono::milliseconds kRestPatience{250 * KD_BUILD_SLOWDOWN};

bool isCaptured(_KdDevType type)
{
    return type == kdtWebcam || type == kdtMicrophone;
}

/** Those that nobody observes. Their makers may have left them behind: kept in reach they are no
 * leak. */
std::set<const KdWebcamRecorder*>& resting()
{
    static auto* const all = new std::set<const KdWebcamRecorder*>;
    return *all;
}

} // namespace

IKdWebcamRecorder* KdVBLMODEL::createWebcamRecorder()
{
    return new KdWebcamRecorder;
}

KdWebcamRecorder::KdWebcamRecorder()
{
    engine(); // begins to list devices
}

KdWebcamRecorder::~KdWebcamRecorder()
{
    resting().erase(this);
    if (m_engine && !m_engine->shutDown(kShutDownPatience)) {
        KdBaseLog::write(KdBaseLog::Error,
                         {"Host/KdVBLModel/KdWebcamRecorder", "KdWebcamRecorder::release"},
                         "A server does not let go of its device; it is left behind.");
    }
}

KdWebcamEngine& KdWebcamRecorder::engine()
{
    if (!m_engine) {
        resting().erase(this);
        m_engine = KdWebcamEngine::create(m_legacy);
        for (const auto kind : {KdCallbackPump::DeviceSwitch, KdCallbackPump::TimeSwitch,
                                KdCallbackPump::LevelSwitch}) {
            m_engine->setSwitch(kind, m_switches[kind]);
        }
    }
    return *m_engine;
}

void KdWebcamRecorder::rest()
{
    if (!m_engine->callbacks().hasObservers() && m_engine->status() == fcsNoStart) {
        m_legacy = m_engine->legacy();
        m_engine->shutDown(kRestPatience);
        m_engine.reset();
        resting().insert(this);
    }
}

void KdWebcamRecorder::setSwitch(KdCallbackPump::Switch kind, bool on)
{
    m_switches[kind] = on;
    engine().setSwitch(kind, on);
}

void KdWebcamRecorder::release()
{
    delete this;
}

bool KdWebcamRecorder::start()
{
    return engine().start();
}

bool KdWebcamRecorder::pause()
{
    return engine().pause();
}

bool KdWebcamRecorder::resume()
{
    return engine().resume();
}

bool KdWebcamRecorder::stop()
{
    return engine().stop();
}

bool KdWebcamRecorder::setResolution(QSize resolution)
{
    return engine().setResolution(resolution);
}

bool KdWebcamRecorder::setVideoFormat(const KdVideoFormat* format)
{
    const bool isKnown = format && format->fourcc == kFourCcH264;
    return isKnown && engine().setFrameRate(format->frameRate);
}

bool KdWebcamRecorder::setAudioFormat(const KdAudioFormat* format)
{
    if (format) {
        engine().setSoundFormat(*format);
    }
    return format != nullptr;
}

void KdWebcamRecorder::getResolutions(QList<QSize>* resolutions)
{
    if (resolutions) {
        *resolutions = engine().resolutions();
    }
}

void KdWebcamRecorder::getFrameRates(QList<double>* frameRates)
{
    if (frameRates) {
        *frameRates = engine().frameRates();
    }
}

void KdWebcamRecorder::setCallbackSwitch1(bool on)
{
    setSwitch(KdCallbackPump::DeviceSwitch, on);
}

void KdWebcamRecorder::setCallbackSwitch2(bool on)
{
    setSwitch(KdCallbackPump::TimeSwitch, on);
}

void KdWebcamRecorder::setCallbackSwitch3(bool on)
{
    setSwitch(KdCallbackPump::LevelSwitch, on);
}

void KdWebcamRecorder::setRecordAudio(bool on)
{
    engine().setRecordAudio(on);
}

void KdWebcamRecorder::setInterval(int msec)
{
    engine().setInterval(msec);
}

bool KdWebcamRecorder::getDevices(_KdDevType type, QList<_KdCaptureDevInf>* devices)
{
    if (!devices) {
        return false;
    }
    devices->clear();
    if (isCaptured(type)) {
        *devices = kdInfosOf(engine().listDevices(type));
    }
    return isCaptured(type);
}

bool KdWebcamRecorder::setDevice(_KdDevType type, int index)
{
    return isCaptured(type) && engine().setDevice(type, index);
}

void KdWebcamRecorder::setOutputFile(const QString& path)
{
    engine().setOutputFile(path);
}

QString KdWebcamRecorder::getOutputFile()
{
    return engine().outputFile();
}

bool KdWebcamRecorder::startPreview()
{
    return engine().startPreview();
}

bool KdWebcamRecorder::stopPreview()
{
    return engine().stopPreview();
}

_KdCaptureStatus KdWebcamRecorder::curStatus()
{
    return engine().status();
}

void KdWebcamRecorder::addEventObserver(IKdRecorderEventObserver* observer)
{
    engine().callbacks().addObserver(observer);
}

void KdWebcamRecorder::removeEventObserver(IKdRecorderEventObserver* observer)
{
    if (m_engine) {
        m_engine->callbacks().removeObserver(observer);
        rest();
    }
}

bool KdWebcamRecorder::setRecordDisplayShape(_KdCaptureRecordShape shape)
{
    const bool isKnown = shape == fcrsCircle || shape == fcrsSquare;
    if (isKnown) {
        engine().setShape(shape);
    }
    return isKnown;
}

_KdCaptureRecordShape KdWebcamRecorder::getRecordDisplayShape()
{
    return engine().shape();
}

void KdWebcamRecorder::setBackgroundMode(_KdCaptureRecordBackgroundMode mode)
{
    const bool isKnown = mode == fcbmRemove || mode == fcbmBlur;
    if (isKnown && !KdBackgroundEffect::isAvailable()) {
        KdBaseLog::write(
            KdBaseLog::Warning,
            {"Host/KdVBLModel/KdWebcamRecorder", "KdWebcamRecorder::setBackgroundMode"},
            "Background mode %d is ignored: this installation cannot treat backgrounds.", mode);
        return;
    }
    engine().setBackground(isKnown ? mode : fcbmNone);
}

_KdCaptureRecordBackgroundMode KdWebcamRecorder::getBackgroundMode()
{
    return engine().background();
}

bool KdWebcamRecorder::setOnlyWebcam(bool on)
{
    Q_UNUSED(on) // there is nothing else that this recorder could take
    return true;
}

void KdWebcamRecorder::setRecordFlip(bool on)
{
    engine().setFlip(on);
}

bool KdWebcamRecorder::getRecordFlip()
{
    return engine().isFlipped();
}
