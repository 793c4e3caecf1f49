#include "ScriptedWebcamRecorder.h"

using namespace KdVBLMODEL;

ScriptedWebcamRecorder::ScriptedWebcamRecorder(ScriptedEngineState& engine)
    : ScriptedRecorder(engine, true)
{
}

bool ScriptedWebcamRecorder::start()
{
    enter("start");
    return beginTake(kdtWebcam);
}

bool ScriptedWebcamRecorder::pause()
{
    enter("pause");
    return succeeds("pause") && (pauseTake() || !isStrict());
}

bool ScriptedWebcamRecorder::resume()
{
    enter("resume");
    return succeeds("resume") && (resumeTake() || !isStrict());
}

bool ScriptedWebcamRecorder::stop()
{
    enter("stop");
    endTake();
    return succeeds("stop");
}

bool ScriptedWebcamRecorder::setResolution(QSize resolution)
{
    enter("setResolution", resolution);
    if (!succeeds("setResolution") || (isStrict() && !offered().contains(resolution))) {
        return false;
    }
    setPictureSize(resolution);
    return true;
}

bool ScriptedWebcamRecorder::setVideoFormat(const KdVideoFormat* format)
{
    enter("setVideoFormat", format ? *format : KdVideoFormat());
    return succeeds("setVideoFormat") && (!isStrict() || isOffered(format));
}

bool ScriptedWebcamRecorder::setAudioFormat(const KdAudioFormat* format)
{
    enter("setAudioFormat", format ? *format : KdAudioFormat());
    return succeeds("setAudioFormat") && (!isStrict() || format);
}

QList<QSize> ScriptedWebcamRecorder::offered() const
{
    const EngineScript& script = m_engine.script;
    return script.resolutionsOf.value(selected(kdtWebcam).id, script.resolutions);
}

bool ScriptedWebcamRecorder::isOffered(const KdVideoFormat* format) const
{
    return format && format->fourcc == kFourCcH264 &&
           m_engine.script.frameRates.contains(format->frameRate);
}

void ScriptedWebcamRecorder::getResolutions(QList<QSize>* resolutions)
{
    enter("getResolutions");
    if (resolutions) {
        *resolutions = offered();
    }
}

void ScriptedWebcamRecorder::getFrameRates(QList<double>* frameRates)
{
    enter("getFrameRates");
    if (frameRates) {
        *frameRates = m_engine.script.frameRates;
    }
}

void ScriptedWebcamRecorder::setCallbackSwitch1(bool on)
{
    enter("setCallbackSwitch1", on);
    setSwitch(1, on);
}

void ScriptedWebcamRecorder::setCallbackSwitch2(bool on)
{
    enter("setCallbackSwitch2", on);
    setSwitch(2, on);
}

void ScriptedWebcamRecorder::setCallbackSwitch3(bool on)
{
    enter("setCallbackSwitch3", on);
    setSwitch(3, on);
}

void ScriptedWebcamRecorder::setRecordAudio(bool on)
{
    enter("setRecordAudio", on);
}

void ScriptedWebcamRecorder::setInterval(int msec)
{
    enter("setInterval", msec);
}

bool ScriptedWebcamRecorder::getDevices(_KdDevType type, QList<_KdCaptureDevInf>* devices)
{
    enter("getDevices", type);
    if (!devices) {
        return false;
    }
    devices->clear();
    if (!succeeds("getDevices") || (type != kdtWebcam && type != kdtMicrophone)) {
        return false;
    }
    listDevices(type, devices);
    return true;
}

bool ScriptedWebcamRecorder::setDevice(_KdDevType type, int index)
{
    enter("setDevice", type, index);
    if (!succeeds("setDevice") || !isListed(type, index)) {
        return false;
    }
    select(type, index);
    return true;
}

void ScriptedWebcamRecorder::setOutputFile(const QString& path)
{
    enter("setOutputFile", path);
    setPath(path);
}

QString ScriptedWebcamRecorder::getOutputFile()
{
    enter("getOutputFile");
    return path();
}

void ScriptedWebcamRecorder::reserved19()
{
    enter("reserved19");
}

bool ScriptedWebcamRecorder::startPreview()
{
    enter("startPreview");
    if (!succeeds("startPreview")) {
        return false;
    }
    setPreviewing(true);
    return true;
}

bool ScriptedWebcamRecorder::stopPreview()
{
    enter("stopPreview");
    setPreviewing(false);
    return succeeds("stopPreview");
}

_KdCaptureStatus ScriptedWebcamRecorder::curStatus()
{
    enter("curStatus");
    return scriptedStatus();
}

void ScriptedWebcamRecorder::addEventObserver(IKdRecorderEventObserver* observer)
{
    enter("addEventObserver", observer);
    m_observers.add(observer);
}

void ScriptedWebcamRecorder::removeEventObserver(IKdRecorderEventObserver* observer)
{
    enter("removeEventObserver", observer);
    m_observers.remove(observer);
    if (observerCount() == 0) {
        setPreviewing(false);
        endTake();
    }
}

void ScriptedWebcamRecorder::release()
{
    enter("release");
    setPreviewing(false);
    markReleased();
}

bool ScriptedWebcamRecorder::setRecordDisplayShape(_KdCaptureRecordShape shape)
{
    enter("setRecordDisplayShape", shape);
    const bool isKnown = shape == fcrsCircle || shape == fcrsSquare;
    if (!succeeds("setRecordDisplayShape") || (isStrict() && !isKnown)) {
        return false;
    }
    m_shape = shape;
    return true;
}

_KdCaptureRecordShape ScriptedWebcamRecorder::getRecordDisplayShape()
{
    enter("getRecordDisplayShape");
    return m_shape;
}

void ScriptedWebcamRecorder::setBackgroundMode(_KdCaptureRecordBackgroundMode mode)
{
    enter("setBackgroundMode", mode);
    const bool isKnown = mode == fcbmRemove || mode == fcbmBlur;
    m_background = isStrict() && !isKnown ? fcbmNone : mode;
}

_KdCaptureRecordBackgroundMode ScriptedWebcamRecorder::getBackgroundMode()
{
    enter("getBackgroundMode");
    return m_background;
}

void ScriptedWebcamRecorder::reserved30()
{
    enter("reserved30");
}

void ScriptedWebcamRecorder::reserved31()
{
    enter("reserved31");
}

bool ScriptedWebcamRecorder::setOnlyWebcam(bool on)
{
    enter("setOnlyWebcam", on);
    return succeeds("setOnlyWebcam");
}

void ScriptedWebcamRecorder::setRecordFlip(bool on)
{
    enter("setRecordFlip", on);
    m_isFlipped = on;
}

bool ScriptedWebcamRecorder::getRecordFlip()
{
    enter("getRecordFlip");
    return m_isFlipped;
}
