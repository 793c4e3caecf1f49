#pragma once

#include <QVector>
#include <QtGlobal>

class QIODevice;

/** One box of an MP4 file, as far as the file really holds it. */
struct KdMp4Box
{
    quint32 type = 0;         ///< four characters, the first in the highest byte
    qint64 offset = 0;        ///< of its header, from the file's start
    qint64 headerSize = 8;    ///< 8 or 16
    qint64 size = 0;          ///< with its header; cut at the end of what contains it
    bool isTruncated = false; ///< it claims more than there is

    qint64 end() const { return offset + size; }
    qint64 contentOffset() const { return offset + headerSize; }
};

/** @return the code of four characters, as in fourCc("moov"). */
constexpr quint32 kdFourCc(const char (&name)[5])
{
    return (quint32(quint8(name[0])) << 24) | (quint32(quint8(name[1])) << 16) |
           (quint32(quint8(name[2])) << 8) | quint32(quint8(name[3]));
}

/**
 * Reads the box structure of a file that may be damaged in any way. Every call ends after a bounded
 * number of reads, whatever the file says of itself. The device is the caller's, open and
 * random-access. Reentrant.
 */
class KdMp4Boxes
{
public:
    /** The boxes in [from, to), in order, up to the first that makes no sense. to -1: the device's
     * end. */
    static QVector<KdMp4Box> between(QIODevice* device, qint64 from, qint64 to = -1);
    static QVector<KdMp4Box> topLevel(QIODevice* device) { return between(device, 0); }
    static QVector<KdMp4Box> children(QIODevice* device, const KdMp4Box& parent);
};
