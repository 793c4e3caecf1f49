#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QList>
#include <QString>
#include <QVector>

/** A line in a list of devices. */
struct StudioDeviceRow
{
    enum State
    {
        Listed,
        Current,
        Lost ///< the current device, which is listed no more
    };

    QString name; ///< on one line
    State state = Listed;
};

/** What a list of devices shows. Functions of values, on any thread. */
namespace StudioDeviceRows {

using Devices = QList<KdVBLMODEL::_KdCaptureDevInf>;

/** @return the devices in their order, and after them the current one when it is lost */
QVector<StudioDeviceRow> of(const Devices& devices, const KdVBLMODEL::_KdCaptureDevInf& current);

/** @return the first device that is in one list and not in the other; the empty record for none */
KdVBLMODEL::_KdCaptureDevInf firstMissing(const Devices& from, const Devices& in);

} // namespace StudioDeviceRows
