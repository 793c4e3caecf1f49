#include "KdMp4MovieWriter.h"

#include "KdMp4Boxes.h"
#include "KdMp4Bytes.h"

#include <limits>

namespace {

constexpr quint32 kMost32 = std::numeric_limits<quint32>::max();

struct Chunk
{
    qint64 offset = 0;
    quint32 samples = 0;
};

QVector<Chunk> chunksOf(const QVector<KdMp4Sample>& samples)
{
    QVector<Chunk> chunks;
    qint64 end = -1;
    for (const KdMp4Sample& sample : samples) {
        if (sample.offset != end) {
            chunks.append({sample.offset, 0});
        }
        ++chunks.last().samples;
        end = sample.offset + sample.size;
    }
    return chunks;
}

QByteArray fullBox(quint32 type, quint32 versionAndFlags, quint32 count, const QByteArray& entries)
{
    KdMp4ByteWriter head;
    head.u32(versionAndFlags).u32(count);
    return KdMp4Boxes::serialize(type, head.bytes() + entries);
}

// Pairs of how often and what, as stts and ctts have them.
template <typename Value>
QByteArray runLengthBox(quint32 type, quint32 versionAndFlags, const QVector<KdMp4Sample>& samples,
                        Value valueOf)
{
    KdMp4ByteWriter entries;
    quint32 count = 0;
    for (int i = 0; i < samples.size();) {
        const quint32 value = valueOf(samples[i]);
        const int begin = i;
        while (i < samples.size() && valueOf(samples[i]) == value) {
            ++i;
        }
        entries.u32(quint32(i - begin)).u32(value);
        ++count;
    }
    return fullBox(type, versionAndFlags, count, entries.bytes());
}

QByteArray compositionBox(const QVector<KdMp4Sample>& samples)
{
    bool isNeeded = false;
    bool isSigned = false;
    for (const KdMp4Sample& sample : samples) {
        isNeeded = isNeeded || sample.compositionOffset != 0;
        isSigned = isSigned || sample.compositionOffset < 0;
    }
    const quint32 version = isSigned ? 0x01000000 : 0;
    return isNeeded ? runLengthBox(kdFourCc("ctts"), version, samples,
                                   [](const KdMp4Sample& sample) {
                                       return quint32(sample.compositionOffset);
                                   })
                    : QByteArray();
}

// Left out where every sample can be begun with.
QByteArray syncBox(const QVector<KdMp4Sample>& samples)
{
    KdMp4ByteWriter entries;
    quint32 count = 0;
    for (int i = 0; i < samples.size(); ++i) {
        if (samples[i].isSync) {
            entries.u32(quint32(i) + 1);
            ++count;
        }
    }
    return count == quint32(samples.size()) ? QByteArray()
                                            : fullBox(kdFourCc("stss"), 0, count, entries.bytes());
}

QByteArray sizeBox(const QVector<KdMp4Sample>& samples)
{
    KdMp4ByteWriter entries;
    for (const KdMp4Sample& sample : samples) {
        entries.u32(sample.size);
    }
    KdMp4ByteWriter common;
    common.u32(quint32(samples.size()));
    return fullBox(kdFourCc("stsz"), 0, 0, common.bytes() + entries.bytes());
}

QByteArray chunkLengthBox(const QVector<Chunk>& chunks)
{
    KdMp4ByteWriter entries;
    quint32 count = 0;
    quint32 last = 0;
    for (int i = 0; i < chunks.size(); ++i) {
        if (chunks[i].samples != last) {
            last = chunks[i].samples;
            entries.u32(quint32(i) + 1).u32(last).u32(1);
            ++count;
        }
    }
    return fullBox(kdFourCc("stsc"), 0, count, entries.bytes());
}

QByteArray chunkOffsetBox(const QVector<Chunk>& chunks)
{
    bool isWide = false;
    for (const Chunk& chunk : chunks) {
        isWide = isWide || chunk.offset > qint64(kMost32);
    }
    KdMp4ByteWriter entries;
    for (const Chunk& chunk : chunks) {
        isWide ? entries.u64(quint64(chunk.offset)) : entries.u32(quint32(chunk.offset));
    }
    return fullBox(isWide ? kdFourCc("co64") : kdFourCc("stco"), 0, quint32(chunks.size()),
                   entries.bytes());
}

QByteArray sampleTable(const QByteArray& old, const KdMp4Track& track)
{
    const QVector<Chunk> chunks = chunksOf(track.samples);
    return KdMp4Boxes::serialize(kdFourCc("stsd"), KdMp4Boxes::find(old, kdFourCc("stsd"))) +
           runLengthBox(kdFourCc("stts"), 0, track.samples,
                        [](const KdMp4Sample& sample) { return sample.duration; }) +
           compositionBox(track.samples) + syncBox(track.samples) + chunkLengthBox(chunks) +
           sizeBox(track.samples) + chunkOffsetBox(chunks);
}

// Puts value where bytes have a number of 32 bit, or of 64 in the boxes of version 1.
void patchDuration(QByteArray* bytes, int offset, int wideOffset, quint64 value)
{
    const bool isWide = !bytes->isEmpty() && bytes->at(0) == 1;
    KdMp4ByteWriter number;
    isWide ? number.u64(value) : number.u32(quint32(qMin<quint64>(value, kMost32)));
    const int position = isWide ? wideOffset : offset;
    if (bytes->size() >= position + number.bytes().size()) {
        bytes->replace(position, number.bytes().size(), number.bytes());
    }
}

// Rounded up, so that a movie does not end before its last sample does.
quint64 inUnits(quint64 duration, quint32 from, quint32 to)
{
    return from == 0 ? 0 : duration / from * to + (duration % from * to + from - 1) / from;
}

quint32 movieTimescale(const QByteArray& header)
{
    const QByteArray content = KdMp4Boxes::find(header, kdFourCc("mvhd"));
    KdMp4ByteReader reader(content);
    const quint32 version = reader.u8();
    reader.skip(3 + (version == 1 ? 16 : 8));
    return reader.u32();
}

// An edit list: an optional wait first, then the track itself, perhaps without its beginning.
struct EditList
{
    QByteArray content;
    quint64 before = 0;    ///< the wait, in the movie's units
    quint64 beginning = 0; ///< what is left out, in the track's units
    int lastEntry = -1;

    explicit EditList(const QByteArray& bytes) : content(bytes)
    {
        KdMp4ByteReader reader(content);
        const bool isWide = reader.u8() == 1;
        reader.skip(3);
        const int count = int(qMin<quint32>(reader.u32(), 1000));
        for (int i = 0; i < count && reader.isGood(); ++i) {
            lastEntry = content.size() - reader.left();
            const quint64 length = isWide ? reader.u64() : reader.u32();
            const qint64 start = isWide ? qint64(reader.u64()) : qint32(reader.u32());
            reader.skip(4);
            before += i + 1 < count ? length : 0;
            beginning = quint64(qMax<qint64>(start, 0));
        }
    }

    void setLength(quint64 length)
    {
        if (lastEntry >= 0) {
            patchDuration(&content, lastEntry, lastEntry, length);
        }
    }
};

/** Rebuilds one track, box by box, as far down as something changes. */
class TrackWriter
{
public:
    TrackWriter(const KdMp4Track& track, quint32 movieScale, const QByteArray& content)
        : m_track(track)
        , m_edits(KdMp4Boxes::find(KdMp4Boxes::find(content, kdFourCc("edts")), kdFourCc("elst")))
    {
        const quint64 shown = track.duration - qMin(track.duration, m_edits.beginning);
        const quint64 length = inUnits(shown, track.timescale, movieScale);
        m_length = m_edits.before + length;
        m_edits.setLength(length);
    }

    QByteArray rebuilt(const QByteArray& content) const
    {
        QByteArray result;
        const QVector<KdMp4Element> elements = KdMp4Boxes::parse(content);
        for (const KdMp4Element& element : elements) {
            result += KdMp4Boxes::serialize(element.type, changed(element));
        }
        return result;
    }

    quint64 length() const { return m_length; }

private:
    QByteArray changed(const KdMp4Element& element) const
    {
        QByteArray content = element.content;
        switch (element.type) {
        case kdFourCc("tkhd"):
            patchDuration(&content, 20, 28, m_length);
            return content;
        case kdFourCc("mdhd"):
            patchDuration(&content, 16, 24, m_track.duration);
            return content;
        case kdFourCc("edts"):
            return m_edits.lastEntry < 0 ? content
                                         : KdMp4Boxes::serialize(kdFourCc("elst"), m_edits.content);
        case kdFourCc("stbl"):
            return sampleTable(content, m_track);
        case kdFourCc("mdia"):
        case kdFourCc("minf"):
            return rebuilt(content);
        default:
            return content;
        }
    }

    const KdMp4Track& m_track;
    EditList m_edits;
    quint64 m_length = 0; ///< of the whole, in the movie's units
};

quint32 idOfTrack(const QByteArray& content)
{
    const QByteArray header = KdMp4Boxes::find(content, kdFourCc("tkhd"));
    KdMp4ByteReader reader(header);
    const quint32 version = reader.u8();
    reader.skip(3 + (version == 1 ? 16 : 8));
    return reader.u32();
}

} // namespace

QByteArray KdMp4MovieWriter::write(const KdMp4Movie& movie)
{
    const quint32 scale = movieTimescale(movie.header);
    quint64 longest = 0;
    QByteArray tracks;
    QByteArray others;
    QByteArray movieHeader;
    const QVector<KdMp4Element> elements = KdMp4Boxes::parse(movie.header);
    for (const KdMp4Element& element : elements) {
        if (element.type == kdFourCc("mvhd")) {
            movieHeader = element.content;
        } else if (element.type == kdFourCc("trak")) {
            for (const KdMp4Track& track : movie.tracks) {
                if (track.id == idOfTrack(element.content)) {
                    const TrackWriter writer(track, scale, element.content);
                    tracks += KdMp4Boxes::serialize(element.type, writer.rebuilt(element.content));
                    longest = qMax(longest, writer.length());
                }
            }
        } else if (element.type != kdFourCc("mvex")) {
            others += KdMp4Boxes::serialize(element.type, element.content);
        }
    }
    patchDuration(&movieHeader, 16, 24, longest);
    return KdMp4Boxes::serialize(
        kdFourCc("moov"), KdMp4Boxes::serialize(kdFourCc("mvhd"), movieHeader) + tracks + others);
}
