#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QList>
#include <QObject>

/**
 * The engine's devices as KdRecordDeviceConnector wants them: lists, switches, and events brought
 * to the GUI thread. Behind it stands a recorder of its own that never records, so that it is
 * independent of the dialogs. GUI thread.
 */
class StudioDeviceSource : public QObject, public KdVBLMODEL::IKdRecorderEventObserver
{
    Q_OBJECT

public:
    explicit StudioDeviceSource(QObject* parent = nullptr);
    ~StudioDeviceSource() override;

    /** Empty when the engine has no recorder, or fails. @param type webcams or microphones */
    QList<KdVBLMODEL::_KdCaptureDevInf> devices(KdVBLMODEL::_KdDevType type);
    /** @param device of the list handed out last @return whether the engine took it */
    bool select(const KdVBLMODEL::_KdCaptureDevInf& device);

Q_SIGNALS:
    /** What the engine told, for processDeviceStatusChangeEvent(). */
    void deviceStatusChanged(int status, int deviceIndex);

protected:
    void onCaptureDeviceCallback(int devStatus, int deviceIdx) override;

private:
    void switchCallbacks(bool on);

    KdVBLMODEL::IKdWebcamRecorder* m_pRecorder; ///< null without one
};
