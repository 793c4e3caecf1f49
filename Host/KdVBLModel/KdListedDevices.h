#pragma once

#include <KdVBLModel/KdCaptureDevice.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QVector>

#include <chrono>
#include <mutex>

/**
 * What a recorder's indices mean: positions in the list of one kind that it handed out last,
 * whatever was plugged in since. All operations may be called on any thread.
 */
class KDVBLMODEL_EXPORT KdListedDevices
{
public:
    /** @param patience how long list() waits for the machine's first list */
    KdListedDevices(KdVBLMODEL::_KdDevType kind, std::chrono::milliseconds patience);

    /** @return the devices that are there now, which the indices mean from now on; none when the
     * machine's first list does not come in time. */
    QVector<KdCaptureDevice> list();

    /** @return a null device for an index that means none. */
    KdCaptureDevice at(int index) const;
    /** @return -1 when the device was not listed. */
    int indexOf(const KdCaptureDevice& device) const;

    /** To be called when the machine's first list is complete. @return whether list() had been
     * asked before that, so that somebody has to be told. */
    bool complete();

private:
    const KdVBLMODEL::_KdDevType m_kind;
    const std::chrono::milliseconds m_patience;
    mutable std::mutex m_mutex; ///< guards what follows
    QVector<KdCaptureDevice> m_devices;
    bool m_isIncomplete = false;
};
