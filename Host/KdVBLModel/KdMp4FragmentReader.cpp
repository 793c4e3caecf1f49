#include "KdMp4Boxes.h"
#include "KdMp4Bytes.h"
#include "KdMp4MovieReader.h"

#include <algorithm>

namespace {

enum FragmentFlag : quint32
{
    BaseOffset = 0x1,
    DescriptionIndex = 0x2,
    DefaultDuration = 0x8,
    DefaultSize = 0x10,
    DefaultFlags = 0x20
};

enum RunFlag : quint32
{
    DataOffset = 0x1,
    FirstFlags = 0x4,
    Durations = 0x100,
    Sizes = 0x200,
    Flags = 0x400,
    CompositionOffsets = 0x800
};

constexpr quint32 kIsNoSyncSample = 0x10000;

/** Samples that lie one behind the other. */
struct Run
{
    int track = -1;
    qint64 offset = 0;
    bool isTimed = false; ///< the first of its track in the fragment, which says when it begins
    quint64 time = 0;
    QVector<KdMp4Sample> samples; ///< size 0: not said
};

struct TrackFragment
{
    int track = -1;
    qint64 base = 0;
    KdMp4Defaults defaults;
    bool isTimed = false;
    quint64 time = 0;
};

int trackOfId(const KdMp4Movie& movie, quint32 id)
{
    for (int i = 0; i < movie.tracks.size(); ++i) {
        if (movie.tracks[i].id == id) {
            return i;
        }
    }
    return -1;
}

TrackFragment readHeader(const QByteArray& content, const KdMp4Movie& movie, qint64 fragmentOffset)
{
    KdMp4ByteReader reader(content);
    reader.skip(1);
    const quint32 flags = reader.u24();
    TrackFragment fragment;
    fragment.track = trackOfId(movie, reader.u32());
    fragment.base = flags & BaseOffset ? qint64(reader.u64()) : fragmentOffset;
    reader.skip(flags & DescriptionIndex ? 4 : 0);
    if (fragment.track >= 0) {
        fragment.defaults = movie.tracks[fragment.track].defaults;
    }
    if (flags & DefaultDuration) {
        fragment.defaults.duration = reader.u32();
    }
    if (flags & DefaultSize) {
        fragment.defaults.size = reader.u32();
    }
    if (flags & DefaultFlags) {
        fragment.defaults.flags = reader.u32();
    }
    if (!reader.isGood() || fragment.base < 0) {
        fragment.track = -1;
    }
    return fragment;
}

void readTime(const QByteArray& content, TrackFragment* fragment)
{
    KdMp4ByteReader reader(content);
    const quint32 version = reader.u8();
    reader.skip(3);
    fragment->time = version == 1 ? reader.u64() : reader.u32();
    fragment->isTimed = reader.isGood();
}

KdMp4Sample readSample(KdMp4ByteReader* reader, quint32 flags, const KdMp4Defaults& defaults)
{
    KdMp4Sample sample;
    sample.duration = flags & Durations ? reader->u32() : defaults.duration;
    sample.size = flags & Sizes ? reader->u32() : defaults.size;
    const quint32 sampleFlags = flags & Flags ? reader->u32() : defaults.flags;
    sample.compositionOffset = flags & CompositionOffsets ? qint32(reader->u32()) : 0;
    sample.isSync = !(sampleFlags & kIsNoSyncSample);
    return sample;
}

// A run whose sizes are not said is of use only when it is a single sample: its end can be found.
bool isUsable(const KdMp4Sample& sample, qint64 offset, quint32 count, qint64 available)
{
    return sample.size == 0 ? count == 1 : offset >= 0 && offset <= available - qint64(sample.size);
}

/** @param follows where the run begins when it does not say so itself. */
Run readRun(const QByteArray& content, const TrackFragment& fragment, qint64 follows,
            qint64 available)
{
    KdMp4ByteReader reader(content);
    reader.skip(1);
    const quint32 flags = reader.u24();
    const quint32 count = reader.u32();
    Run run;
    run.track = fragment.track;
    run.offset = flags & DataOffset ? fragment.base + qint32(reader.u32()) : follows;
    const bool hasFirstFlags = flags & FirstFlags;
    const quint32 firstFlags = hasFirstFlags ? reader.u32() : 0;
    qint64 offset = run.offset;
    for (quint32 i = 0; i < qMin<quint32>(count, kMp4MostSamples); ++i) {
        const KdMp4Sample sample = readSample(&reader, flags, fragment.defaults);
        if (!reader.isGood() || !isUsable(sample, offset, count, available)) {
            break;
        }
        run.samples.append(sample);
        offset += sample.size;
    }
    if (hasFirstFlags && !run.samples.isEmpty()) {
        run.samples.first().isSync = !(firstFlags & kIsNoSyncSample);
    }
    return run;
}

qint64 endOf(const Run& run)
{
    qint64 end = run.offset;
    for (const KdMp4Sample& sample : run.samples) {
        end += sample.size;
    }
    return end;
}

QVector<Run> readTrackFragment(const QByteArray& content, const KdMp4Movie& movie, qint64 offset,
                               qint64 available)
{
    TrackFragment fragment = readHeader(KdMp4Boxes::find(content, kdFourCc("tfhd")), movie, offset);
    QVector<Run> runs;
    if (fragment.track < 0) {
        return runs;
    }
    readTime(KdMp4Boxes::find(content, kdFourCc("tfdt")), &fragment);
    const QVector<KdMp4Element> elements = KdMp4Boxes::parse(content);
    for (const KdMp4Element& element : elements) {
        if (element.type == kdFourCc("trun")) {
            runs.append(readRun(element.content, fragment,
                                runs.isEmpty() ? fragment.base : endOf(runs.last()), available));
        }
    }
    if (!runs.isEmpty()) {
        runs.first().isTimed = fragment.isTimed;
        runs.first().time = fragment.time;
    }
    return runs;
}

// A lone sample whose size was left out reaches to where the next run, or the fragment's own
// header, begins.
void completeSizes(QVector<Run>* runs, qint64 fragmentOffset)
{
    QVector<qint64> starts;
    for (const Run& run : qAsConst(*runs)) {
        starts.append(run.offset);
    }
    std::sort(starts.begin(), starts.end());
    for (Run& run : *runs) {
        if (run.samples.isEmpty() || run.samples.first().size != 0) {
            continue;
        }
        const auto next = std::upper_bound(starts.cbegin(), starts.cend(), run.offset);
        const qint64 end = next == starts.cend() ? fragmentOffset : *next;
        const bool isSensible = end > run.offset && end - run.offset < (qint64(1) << 31);
        run.samples.first().size = isSensible ? quint32(end - run.offset) : 0;
    }
}

// A fragment tells when its first sample begins: the one before lasts until then.
void closeGap(KdMp4Track* track, quint64 time)
{
    if (track->samples.isEmpty()) {
        return;
    }
    KdMp4Sample& last = track->samples.last();
    const quint64 begin = track->duration - last.duration;
    if (time > begin && time - begin < 0xffffffffU) {
        last.duration = quint32(time - begin);
        track->duration = time;
    }
}

void take(const Run& run, KdMp4Track* track, qint64 available)
{
    if (run.isTimed) {
        closeGap(track, run.time);
    }
    qint64 offset = run.offset;
    for (KdMp4Sample sample : run.samples) {
        if (sample.size == 0 || offset < 0 || offset > available - qint64(sample.size) ||
            track->samples.size() >= kMp4MostSamples) {
            return;
        }
        sample.offset = offset;
        offset += sample.size;
        // Where the muxer leaves out a size, it leaves out the length too; the next fragment
        // corrects it.
        if (sample.duration == 0 && !track->samples.isEmpty()) {
            sample.duration = track->samples.last().duration;
        }
        track->samples.append(sample);
        track->duration += sample.duration;
    }
}

} // namespace

void KdMp4FragmentReader::append(KdMp4Movie* movie, const QByteArray& content, qint64 offset,
                                 qint64 available)
{
    QVector<Run> runs;
    const QVector<KdMp4Element> elements = KdMp4Boxes::parse(content);
    for (const KdMp4Element& element : elements) {
        if (element.type == kdFourCc("traf")) {
            runs += readTrackFragment(element.content, *movie, offset, available);
        }
    }
    completeSizes(&runs, offset);
    for (const Run& run : qAsConst(runs)) {
        take(run, &movie->tracks[run.track], available);
    }
}
