#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QString>

/** One capture device of this machine, however many sound systems offer it. */
struct KdCaptureDevice
{
    KdVBLMODEL::_KdDevType kind = KdVBLMODEL::kdtNone;
    QString id;   ///< the same after the device was unplugged and plugged again
    QString name; ///< for people: one line, never empty, told apart from equal ones

    /** The name may differ: a device that was away may have another one when it comes back. */
    bool isSameAs(const KdCaptureDevice& other) const
    {
        return kind == other.kind && id == other.id;
    }
    bool isNull() const { return kind == KdVBLMODEL::kdtNone; }
};
