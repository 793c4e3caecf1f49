#pragma once

#include <KdVBLModel/KdCaptureDevice.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QVector>

#include <mutex>

/**
 * What a recorder's indices mean: positions in the list of one kind that it handed out last,
 * whatever was plugged in since. All operations may be called on any thread.
 */
class KDVBLMODEL_EXPORT KdListedDevices
{
public:
    explicit KdListedDevices(KdVBLMODEL::_KdDevType kind);

    /** @return the devices that are there now, which the indices mean from now on. Waits shortly
     * for the machine's first list. */
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
    mutable std::mutex m_mutex; ///< guards what follows
    QVector<KdCaptureDevice> m_devices;
    bool m_isIncomplete = false;
};
