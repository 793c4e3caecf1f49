#include "ScriptedAudioRecorder.h"

using namespace KdVBLMODEL;

ScriptedAudioRecorder::ScriptedAudioRecorder(ScriptedEngineState& engine)
    : ScriptedRecorder(engine, false)
{
}

bool ScriptedAudioRecorder::start()
{
    enter("start");
    return beginTake(kdtMicrophone);
}

void ScriptedAudioRecorder::pause()
{
    enter("pause");
    pauseTake();
}

void ScriptedAudioRecorder::resume()
{
    enter("resume");
    resumeTake();
}

bool ScriptedAudioRecorder::stop()
{
    enter("stop");
    endTake();
    return succeeds("stop");
}

void ScriptedAudioRecorder::setAudioFormat(const KdAudioFormat* format)
{
    enter("setAudioFormat", format ? *format : KdAudioFormat());
}

void ScriptedAudioRecorder::reserved6()
{
    enter("reserved6");
}

void ScriptedAudioRecorder::setCallbackSwitch1(bool on)
{
    enter("setCallbackSwitch1", on);
    setSwitch(1, on);
}

void ScriptedAudioRecorder::setCallbackSwitch2(bool on)
{
    enter("setCallbackSwitch2", on);
    setSwitch(2, on);
}

void ScriptedAudioRecorder::setCallbackSwitch3(bool on)
{
    enter("setCallbackSwitch3", on);
    setSwitch(3, on);
}

void ScriptedAudioRecorder::setInterval(int msec)
{
    enter("setInterval", msec);
}

void ScriptedAudioRecorder::getDevices(QList<_KdCaptureDevInf>* devices)
{
    enter("getDevices");
    listDevices(kdtMicrophone, devices);
}

void ScriptedAudioRecorder::setDevice(int index)
{
    enter("setDevice", index);
    select(kdtMicrophone, index);
}

void ScriptedAudioRecorder::setOutputFile(const QString& path)
{
    enter("setOutputFile", path);
    setPath(path);
}

QString ScriptedAudioRecorder::getOutputFile()
{
    enter("getOutputFile");
    return path();
}

_KdCaptureStatus ScriptedAudioRecorder::curStatus()
{
    enter("curStatus");
    return scriptedStatus();
}

void ScriptedAudioRecorder::addEventObserver(IKdRecorderEventObserver* observer)
{
    enter("addEventObserver", observer);
    m_observers.add(observer);
}

void ScriptedAudioRecorder::removeEventObserver(IKdRecorderEventObserver* observer)
{
    enter("removeEventObserver", observer);
    m_observers.remove(observer);
}

void ScriptedAudioRecorder::release()
{
    enter("release");
    markReleased();
}
