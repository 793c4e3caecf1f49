#include "KdMp4MovieReader.h"

#include "KdMp4Boxes.h"
#include "KdMp4Bytes.h"

namespace {

constexpr int kVersionAndFlags = 4;

struct TableEntry
{
    quint32 count = 0;
    quint32 value = 0;
};

// A table of pairs, such as stts; no longer than its box.
QVector<TableEntry> pairs(const QByteArray& content)
{
    KdMp4ByteReader reader(content);
    reader.skip(kVersionAndFlags);
    const quint32 count = reader.u32();
    QVector<TableEntry> entries;
    for (quint32 i = 0; i < count && reader.left() >= 8; ++i) {
        const quint32 repeats = reader.u32();
        entries.append({repeats, reader.u32()});
    }
    return entries;
}

// stsz, with at most as many entries as bytes are there to hold the samples.
QVector<quint32> sizesOf(const QByteArray& content, qint64 available)
{
    KdMp4ByteReader reader(content);
    reader.skip(kVersionAndFlags);
    const quint32 common = reader.u32();
    const quint32 count = reader.u32();
    QVector<quint32> sizes;
    if (common > 0) {
        const qint64 most = qMin<qint64>(kMp4MostSamples, available / common);
        return QVector<quint32>(int(qMin<qint64>(count, most)), common);
    }
    for (quint32 i = 0; i < count && reader.left() >= 4 && sizes.size() < kMp4MostSamples; ++i) {
        sizes.append(reader.u32());
    }
    return sizes;
}

QVector<qint64> chunkOffsetsOf(const QByteArray& table)
{
    const bool isWide = !KdMp4Boxes::find(table, kdFourCc("co64")).isNull();
    const QByteArray content =
        KdMp4Boxes::find(table, isWide ? kdFourCc("co64") : kdFourCc("stco"));
    KdMp4ByteReader reader(content);
    reader.skip(kVersionAndFlags);
    const quint32 count = reader.u32();
    QVector<qint64> offsets;
    for (quint32 i = 0; i < count && reader.left() >= (isWide ? 8 : 4); ++i) {
        offsets.append(isWide ? qint64(reader.u64()) : qint64(reader.u32()));
    }
    return offsets;
}

// How many samples each chunk holds: stsc names the first chunk of each run of equal ones.
QVector<quint32> chunkLengthsOf(const QByteArray& content, int chunks)
{
    KdMp4ByteReader reader(content);
    reader.skip(kVersionAndFlags);
    quint32 entries = reader.u32();
    QVector<quint32> lengths(chunks, 0);
    int chunk = 0;
    quint32 length = 0;
    for (; entries > 0 && reader.left() >= 12; --entries) {
        const qint64 first = qint64(reader.u32()) - 1;
        for (; chunk < qMin<qint64>(first, chunks); ++chunk) {
            lengths[chunk] = length;
        }
        length = reader.u32();
        reader.skip(4);
    }
    for (; chunk < chunks; ++chunk) {
        lengths[chunk] = length;
    }
    return lengths;
}

bool isWithin(qint64 offset, quint32 size, qint64 available)
{
    return size > 0 && offset >= 0 && offset <= available - qint64(size);
}

QVector<KdMp4Sample> placedSamples(const QByteArray& table, qint64 available)
{
    const QVector<quint32> sizes = sizesOf(KdMp4Boxes::find(table, kdFourCc("stsz")), available);
    const QVector<qint64> chunks = chunkOffsetsOf(table);
    const QVector<quint32> lengths =
        chunkLengthsOf(KdMp4Boxes::find(table, kdFourCc("stsc")), chunks.size());
    QVector<KdMp4Sample> samples;
    for (int chunk = 0; chunk < chunks.size(); ++chunk) {
        qint64 offset = chunks[chunk];
        for (quint32 i = 0; i < lengths[chunk] && samples.size() < sizes.size(); ++i) {
            KdMp4Sample sample;
            sample.offset = offset;
            sample.size = sizes[samples.size()];
            if (!isWithin(offset, sample.size, available)) {
                return samples;
            }
            samples.append(sample);
            offset += sample.size;
        }
    }
    return samples;
}

// Calls set(sample, value) for as many samples as each entry says.
template <typename Setter>
void spread(const QVector<TableEntry>& entries, QVector<KdMp4Sample>* samples, Setter set)
{
    int next = 0;
    for (const TableEntry& entry : entries) {
        for (quint32 i = 0; i < entry.count && next < samples->size(); ++i) {
            set((*samples)[next++], entry.value);
        }
    }
}

void markSyncSamples(const QByteArray& content, QVector<KdMp4Sample>* samples)
{
    if (content.isNull()) {
        return;
    }
    for (KdMp4Sample& sample : *samples) {
        sample.isSync = false;
    }
    KdMp4ByteReader reader(content);
    reader.skip(kVersionAndFlags);
    quint32 entries = reader.u32();
    for (; entries > 0 && reader.left() >= 4; --entries) {
        const quint32 number = reader.u32();
        if (number >= 1 && number <= quint32(samples->size())) {
            (*samples)[int(number) - 1].isSync = true;
        }
    }
}

quint32 timescaleOf(const QByteArray& mediaHeader)
{
    KdMp4ByteReader reader(mediaHeader);
    const quint32 version = reader.u8();
    reader.skip(3 + (version == 1 ? 16 : 8));
    return reader.u32();
}

quint32 idOf(const QByteArray& trackHeader)
{
    KdMp4ByteReader reader(trackHeader);
    const quint32 version = reader.u8();
    reader.skip(3 + (version == 1 ? 16 : 8));
    return reader.u32();
}

KdMp4Track readTrack(const QByteArray& content, qint64 available)
{
    const QByteArray media = KdMp4Boxes::find(content, kdFourCc("mdia"));
    const QByteArray table =
        KdMp4Boxes::find(KdMp4Boxes::find(media, kdFourCc("minf")), kdFourCc("stbl"));
    KdMp4Track track;
    track.id = idOf(KdMp4Boxes::find(content, kdFourCc("tkhd")));
    track.timescale = timescaleOf(KdMp4Boxes::find(media, kdFourCc("mdhd")));
    track.samples = placedSamples(table, available);
    spread(pairs(KdMp4Boxes::find(table, kdFourCc("stts"))), &track.samples,
           [&track](KdMp4Sample& sample, quint32 value) {
               sample.duration = value;
               track.duration += value;
           });
    spread(pairs(KdMp4Boxes::find(table, kdFourCc("ctts"))), &track.samples,
           [](KdMp4Sample& sample, quint32 value) { sample.compositionOffset = qint32(value); });
    markSyncSamples(KdMp4Boxes::find(table, kdFourCc("stss")), &track.samples);
    return track;
}

void readDefaults(const QByteArray& content, KdMp4Movie* movie)
{
    KdMp4ByteReader reader(content);
    reader.skip(kVersionAndFlags);
    const quint32 id = reader.u32();
    reader.skip(4);
    KdMp4Defaults defaults;
    defaults.duration = reader.u32();
    defaults.size = reader.u32();
    defaults.flags = reader.u32();
    for (KdMp4Track& track : movie->tracks) {
        if (track.id == id) {
            track.defaults = defaults;
        }
    }
}

} // namespace

KdMp4Movie KdMp4MovieReader::read(const QByteArray& header, qint64 available)
{
    KdMp4Movie movie;
    movie.header = header;
    const QVector<KdMp4Element> elements = KdMp4Boxes::parse(header);
    for (const KdMp4Element& element : elements) {
        if (element.type != kdFourCc("trak")) {
            continue;
        }
        const KdMp4Track track = readTrack(element.content, available);
        if (track.id != 0 && track.timescale != 0) {
            movie.tracks.append(track);
        }
    }
    const QByteArray extension = KdMp4Boxes::find(header, kdFourCc("mvex"));
    movie.isFragmented = !extension.isNull();
    const QVector<KdMp4Element> defaults = KdMp4Boxes::parse(extension);
    for (const KdMp4Element& element : defaults) {
        if (element.type == kdFourCc("trex")) {
            readDefaults(element.content, &movie);
        }
    }
    return movie;
}
