#include "KdMp4Boxes.h"

#include "KdMp4Bytes.h"

#include <QIODevice>

namespace {

// More than a take of many days has; a file of nothing but empty boxes must not keep us.
constexpr int kMostBoxes = 4 * 1000 * 1000;
constexpr int kShortHeader = 8;
constexpr int kLongHeader = 16;

bool isText(quint32 type)
{
    for (int shift = 0; shift < 32; shift += 8) {
        const quint32 character = (type >> shift) & 0xff;
        if (character < 0x20 || character == 0x7f) {
            return false;
        }
    }
    return true;
}

// The header at the start of bytes, whose box may reach as far as available; size 0 when it makes
// no sense.
KdMp4Box headerIn(const QByteArray& bytes, qint64 available)
{
    KdMp4ByteReader reader(bytes);
    KdMp4Box box;
    quint64 claimed = reader.u32();
    box.type = reader.u32();
    if (claimed == 1) {
        claimed = reader.u64();
        box.headerSize = kLongHeader;
    } else if (claimed == 0) {
        claimed = quint64(available);
        box.isOpenEnded = true;
    }
    if (!reader.isGood() || !isText(box.type) || claimed < quint64(box.headerSize)) {
        return KdMp4Box();
    }
    box.isTruncated = claimed > quint64(available);
    box.size = box.isTruncated ? available : qint64(claimed);
    return box;
}

} // namespace

QVector<KdMp4Box> KdMp4Boxes::between(QIODevice* device, qint64 from, qint64 to)
{
    QVector<KdMp4Box> boxes;
    const qint64 end = to < 0 ? device->size() : qMin(to, device->size());
    qint64 position = qMax<qint64>(from, 0);
    while (end - position >= kShortHeader && boxes.size() < kMostBoxes) {
        if (!device->seek(position)) {
            break;
        }
        KdMp4Box box =
            headerIn(device->read(qMin<qint64>(kLongHeader, end - position)), end - position);
        if (box.size == 0) {
            break;
        }
        box.offset = position;
        boxes.append(box);
        position = box.end();
    }
    return boxes;
}

QByteArray KdMp4Boxes::content(QIODevice* device, const KdMp4Box& box, qint64 limit)
{
    if (box.isTruncated || box.contentSize() > limit || !device->seek(box.contentOffset())) {
        return QByteArray();
    }
    const QByteArray bytes = device->read(box.contentSize());
    return bytes.size() == box.contentSize() ? bytes : QByteArray();
}

QVector<KdMp4Element> KdMp4Boxes::parse(const QByteArray& bytes)
{
    QVector<KdMp4Element> elements;
    int position = 0;
    while (bytes.size() - position >= kShortHeader) {
        const KdMp4Box box = headerIn(bytes.mid(position, kLongHeader), bytes.size() - position);
        if (box.size == 0 || box.isTruncated) {
            break;
        }
        elements.append(
            {box.type, bytes.mid(position + int(box.headerSize), int(box.contentSize()))});
        position += int(box.size);
    }
    return elements;
}

QByteArray KdMp4Boxes::find(const QByteArray& bytes, quint32 type)
{
    const QVector<KdMp4Element> elements = parse(bytes);
    for (const KdMp4Element& element : elements) {
        if (element.type == type) {
            return element.content;
        }
    }
    return QByteArray();
}

QByteArray KdMp4Boxes::serialize(quint32 type, const QByteArray& content)
{
    KdMp4ByteWriter header;
    header.u32(quint32(content.size() + kShortHeader)).u32(type);
    return header.bytes() + content;
}
