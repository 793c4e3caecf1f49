#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

/**
 * How much of a disk a take leaves free. The index of an MP4 file is written last and grows with
 * the take: a take that goes on to the last byte has no room left for it.
 */
namespace KdDiskReserve {

/** @return the bytes that finishing the take needs, with some to spare. Pure. */
KDVBLMODEL_EXPORT qint64 bytesToFinish(qint64 recordedMs, int samplerate, int bitrate);

/** @return the same for a take with pictures. @param pictures so many are in it @param bitrate of
 * sound and picture together @param samplerate 0 for no sound */
KDVBLMODEL_EXPORT qint64 bytesToFinishClip(qint64 recordedMs, qint64 pictures, int samplerate,
                                           int bitrate);

/** @return the free bytes where the file is, or -1 when the disk does not tell. Blocks shortly. */
KDVBLMODEL_EXPORT qint64 freeBytesAt(const QString& filePath);

} // namespace KdDiskReserve
