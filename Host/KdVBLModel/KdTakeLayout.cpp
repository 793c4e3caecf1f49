#include "KdTakeLayout.h"

#include "KdMp4Bytes.h"

#include <QIODevice>

#include <limits>

namespace {

constexpr quint32 kMoov = kdFourCc("moov");
// What the muxer calls the header of the fragmented file once an ordinary one is to follow.
constexpr quint32 kHoov = kdFourCc("hoov");
constexpr quint32 kMdat = kdFourCc("mdat");
constexpr qint64 kMostHeader = Q_INT64_C(256) * 1024 * 1024;

bool isFragmentedHeader(QIODevice* file, const KdMp4Box& box)
{
    return !KdMp4Boxes::find(KdMp4Boxes::content(file, box, kMostHeader), kdFourCc("mvex"))
                .isNull();
}

// The place behind "ftyp" where the muxer keeps an empty box and the head of its first media data.
qint64 slotIn(const QVector<KdMp4Box>& boxes)
{
    if (boxes.size() < 2 || boxes[0].type != kdFourCc("ftyp")) {
        return -1;
    }
    const bool isFree = boxes[1].type == kdFourCc("free") && boxes[1].size == 8 &&
                        boxes.size() > 2 && boxes[2].type == kMdat && boxes[2].headerSize == 8;
    const bool isLong = boxes[1].type == kMdat && boxes[1].headerSize == 16;
    return isFree || isLong ? boxes[1].offset : -1;
}

bool isHeaderAt(QIODevice* file, qint64 offset, KdMp4Box* header)
{
    const QVector<KdMp4Box> boxes = KdMp4Boxes::between(file, offset, file->size());
    if (boxes.isEmpty() || boxes.first().type != kHoov || boxes.first().isTruncated ||
        !isFragmentedHeader(file, boxes.first())) {
        return false;
    }
    *header = boxes.first();
    return true;
}

// The renamed header within the media data that swallowed it.
bool findBuried(QIODevice* file, qint64 from, qint64 to, KdMp4Box* header)
{
    constexpr qint64 kPiece = Q_INT64_C(1024) * 1024;
    const QByteArray name("hoov");
    for (qint64 position = from; position < to; position += kPiece) {
        if (!file->seek(position)) {
            return false;
        }
        // Pieces overlap, for a name that lies across their border.
        const QByteArray piece = file->read(qMin(kPiece + name.size() - 1, to - position));
        for (int found = piece.indexOf(name); found >= 0; found = piece.indexOf(name, found + 1)) {
            if (position + found >= from + 4 && isHeaderAt(file, position + found - 4, header)) {
                return true;
            }
        }
    }
    return false;
}

// Fragments end where the file does, or where an index begins that an earlier attempt has left, be
// it less than the head of one.
qint64 endOfFragments(QIODevice* file, qint64 from)
{
    constexpr qint64 kHead = 8;
    qint64 end = from;
    const QVector<KdMp4Box> boxes = KdMp4Boxes::between(file, from);
    for (const KdMp4Box& box : boxes) {
        if (box.type == kMoov) {
            return box.offset;
        }
        end = box.end();
    }
    return file->size() - end < kHead ? end : file->size();
}

KdTakeLayout withVisibleHeader(QIODevice* file, const KdMp4Box& box, qint64 slot)
{
    KdTakeLayout layout;
    layout.slot = slot;
    layout.header = box;
    if (box.type == kMoov && !isFragmentedHeader(file, box)) {
        layout.state = KdTakeLayout::State::Whole;
        return layout;
    }
    layout.state =
        box.type == kHoov ? KdTakeLayout::State::Hidden : KdTakeLayout::State::Fragmented;
    layout.mediaEnd = endOfFragments(file, box.end());
    return layout;
}

} // namespace

KdTakeLayout KdTakeLayout::of(QIODevice* file)
{
    const QVector<KdMp4Box> boxes = KdMp4Boxes::between(file, 0);
    KdTakeLayout layout;
    layout.slot = slotIn(boxes);
    for (const KdMp4Box& box : boxes) {
        if ((box.type == kMoov || box.type == kHoov) && !box.isTruncated) {
            return withVisibleHeader(file, box, layout.slot);
        }
    }
    const int media = layout.slot < 0 ? -1 : (boxes[1].type == kMdat ? 1 : 2);
    if (media >= 0 && !boxes[media].isOpenEnded &&
        findBuried(file, boxes[media].contentOffset(), boxes[media].end(), &layout.header)) {
        layout.state = State::Hidden;
        layout.mediaEnd = boxes[media].end();
    }
    return layout;
}

QByteArray KdTakeLayout::mediaHeader(qint64 slot, qint64 end)
{
    KdMp4ByteWriter bytes;
    const qint64 shortSize = end - slot - 8;
    if (shortSize <= qint64(std::numeric_limits<quint32>::max())) {
        bytes.u32(8).u32(kdFourCc("free")).u32(quint32(shortSize)).u32(kMdat);
    } else {
        bytes.u32(1).u32(kMdat).u64(quint64(end - slot));
    }
    return bytes.bytes();
}
