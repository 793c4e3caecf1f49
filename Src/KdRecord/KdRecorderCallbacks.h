#pragma once

#include <KdCore/KdBaseLog.h>

class QObject;

/**
 * What both adapters do with the engine's callbacks. The posting functions are called on engine
 * threads, touch nothing of the adapter and return at once; its slot of that name, which they call
 * by name, runs on the adapter's own thread.
 */
namespace KdRecorderCallbacks {

/** To slotTimeCallback(qint64). */
void postTime(QObject* adapter, long long msec);
/** To slotVolumeCallback(int). */
void postVolume(QObject* adapter, int volume);
/** Logs under source, then to slotCaptureDeviceCallback(int, int). */
void postDevice(QObject* adapter, const KdBaseLog::Source& source, int devStatus, int deviceIdx);

/** All callback switches of a recorder of either kind, in the order that the contract names. */
template <typename Recorder>
void switchAll(Recorder& recorder, bool on)
{
    recorder.setCallbackSwitch3(on);
    recorder.setCallbackSwitch2(on);
    recorder.setCallbackSwitch1(on);
}

} // namespace KdRecorderCallbacks
