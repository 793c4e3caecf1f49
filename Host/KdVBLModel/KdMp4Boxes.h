#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QByteArray>
#include <QVector>

class QIODevice;

/** One box of an MP4 file, as far as the file really holds it. */
struct KdMp4Box
{
    quint32 type = 0;         ///< four characters, the first in the highest byte
    qint64 offset = 0;        ///< of its header, from the file's start
    qint64 headerSize = 8;    ///< 8 or 16
    qint64 size = 0;          ///< with its header; cut at the end of what contains it
    bool isTruncated = false; ///< it claims more than there is
    bool isOpenEnded = false; ///< it claims all that follows

    qint64 end() const { return offset + size; }
    qint64 contentOffset() const { return offset + headerSize; }
    qint64 contentSize() const { return size - headerSize; }
};

/** A box in memory: its type and what it holds. */
struct KdMp4Element
{
    quint32 type = 0;
    QByteArray content;
};

/** @return the code of four characters, as in kdFourCc("moov"). */
constexpr quint32 kdFourCc(const char (&name)[5])
{
    return (quint32(quint8(name[0])) << 24) | (quint32(quint8(name[1])) << 16) |
           (quint32(quint8(name[2])) << 8) | quint32(quint8(name[3]));
}

/**
 * Reads the box structure of a file that may be damaged in any way. Every call ends after a bounded
 * number of reads, whatever the file says of itself. Reentrant.
 */
class KDVBLMODEL_EXPORT KdMp4Boxes
{
public:
    /**
     * The boxes in [from, to), in order, up to the first that makes no sense: smaller than its
     * header, or with a type that is no text. to -1: the device's end. The device is the caller's,
     * open and random-access.
     */
    static QVector<KdMp4Box> between(QIODevice* device, qint64 from, qint64 to = -1);

    /** @return what the box holds; empty when it is longer than limit or cannot be read whole. */
    static QByteArray content(QIODevice* device, const KdMp4Box& box, qint64 limit);

    /** The boxes in a piece of memory, up to the first that makes no sense or is cut off. */
    static QVector<KdMp4Element> parse(const QByteArray& bytes);
    /** @return the content of the first box of that type in bytes; null when there is none. */
    static QByteArray find(const QByteArray& bytes, quint32 type);
    /** @return the box, header and all. content is shorter than 4 GiB. */
    static QByteArray serialize(quint32 type, const QByteArray& content);
};
