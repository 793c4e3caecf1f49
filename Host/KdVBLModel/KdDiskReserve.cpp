#include <KdVBLModel/KdDiskReserve.h>

#include <QFileInfo>
#include <QStorageInfo>

namespace {

constexpr qint64 kFramesPerPacket = 1024;
constexpr qint64 kIndexBytesPerPacket = 16;
constexpr qint64 kIndexBytesPerPicture = 24;
constexpr qint64 kSpareBytes = 64LL * 1024;
/** Of what is captured before the next look at the disk, and of what is still being encoded. */
constexpr qint64 kSecondsUnderWay = 2;

} // namespace

qint64 KdDiskReserve::bytesToFinish(qint64 recordedMs, int samplerate, int bitrate)
{
    const qint64 packets = recordedMs * samplerate / 1000 / kFramesPerPacket;
    return kSpareBytes + packets * kIndexBytesPerPacket + kSecondsUnderWay * bitrate / 8;
}

qint64 KdDiskReserve::bytesToFinishClip(qint64 recordedMs, qint64 pictures, int samplerate,
                                        int bitrate)
{
    return bytesToFinish(recordedMs, samplerate, bitrate) + pictures * kIndexBytesPerPicture;
}

qint64 KdDiskReserve::freeBytesAt(const QString& filePath)
{
    const QStorageInfo storage(QFileInfo(filePath).absolutePath());
    return storage.isValid() ? storage.bytesAvailable() : -1;
}
