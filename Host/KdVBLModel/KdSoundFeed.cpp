#include <KdVBLModel/KdSoundFeed.h>

#include <KdVBLModel/KdAudioChain.h>
#include <KdVBLModel/KdClipWriter.h>

#include <algorithm>

namespace {

constexpr int kRate = KdAudioChain::kSamplerate;
constexpr int kFrame = KdAudioChain::kBytesPerFrame;
/** A picture may come so much later than the sound that was captured with it. */
constexpr qint64 kMostHeld = kRate;
constexpr qint64 kNsPerSecond = 1000000000;

} // namespace

std::unique_ptr<KdSoundFeed> KdSoundFeed::create(KdClipWriter& writer, KdTakeTimeline& timeline)
{
    const KdGstCapsPtr from(KdAudioChain::createCaps());
    std::unique_ptr<KdAudioConverter> converter =
        KdAudioConverter::create(from.get(), writer.soundCaps());
    return std::unique_ptr<KdSoundFeed>(
        converter ? new KdSoundFeed(writer, timeline, std::move(converter)) : nullptr);
}

KdSoundFeed::KdSoundFeed(KdClipWriter& writer, KdTakeTimeline& timeline,
                         std::unique_ptr<KdAudioConverter> converter)
    : m_writer(writer)
    , m_timeline(timeline)
    , m_converter(std::move(converter))
    , m_skipped(qint64(writer.soundDelay()) * kRate / writer.samplerate())
{
}

void KdSoundFeed::feed(const guint8* data, qint64 frames, qint64 nowNs)
{
    if (m_timeline.isSurplus(frames, nowNs)) {
        return;
    }
    fill(m_timeline.missingBefore(frames, nowNs), nowNs - m_timeline.durationNs(frames));
    append(data, frames, m_timeline.soundArrived(frames, nowNs));
}

void KdSoundFeed::fillUntil(qint64 ns)
{
    if (m_timeline.soundReceived() == 0) {
        // Nothing ever came: a moment of silence that begins then, for others to follow it.
        constexpr qint64 kMoment = kRate / 100;
        fill(kMoment, ns + m_timeline.durationNs(kMoment));
    } else {
        fill(m_timeline.missingUntil(ns), ns);
    }
}

void KdSoundFeed::fill(qint64 frames, qint64 nowNs)
{
    for (qint64 left = frames; left > 0;) {
        const qint64 count = std::min<qint64>(left, kRate);
        left -= count;
        const QByteArray silence(static_cast<int>(count) * kFrame, '\0');
        append(reinterpret_cast<const guint8*>(silence.constData()), count,
               m_timeline.silenceArrived(count, nowNs - m_timeline.durationNs(left)));
    }
}

void KdSoundFeed::append(const guint8* data, qint64 frames, qint64 begin)
{
    if (m_timeline.hasBegun()) {
        write(data, begin, frames);
    } else {
        hold(data, frames);
    }
}

void KdSoundFeed::hold(const guint8* data, qint64 frames)
{
    m_held.append(reinterpret_cast<const char*>(data), static_cast<int>(frames) * kFrame);
    const qint64 surplus = m_held.size() / kFrame - kMostHeld;
    // Not with every block, as all the rest has to move.
    if (surplus > kMostHeld) {
        m_held.remove(0, static_cast<int>(surplus) * kFrame);
        m_heldBegin += surplus;
    }
}

void KdSoundFeed::begin()
{
    write(reinterpret_cast<const guint8*>(m_held.constData()), m_heldBegin, m_held.size() / kFrame);
    m_held = QByteArray();
}

// The encoder begins with silence of its own, which players play: the sound that belongs there is
// left out, so that all that follows is heard when it should be.
void KdSoundFeed::write(const guint8* data, qint64 begin, qint64 frames)
{
    for (const KdPauseClock::Span& span : m_timeline.recorded(begin, begin + frames)) {
        const qint64 skip = std::max<qint64>(0, m_skipped - span.filePosition);
        const qint64 from = span.begin + skip;
        if (from < span.end) {
            push(data + (from - begin) * kFrame, span.end - from);
        }
        m_end = span.filePosition + span.end - span.begin;
    }
}

void KdSoundFeed::push(const guint8* data, qint64 frames)
{
    if (KdGstBufferPtr sound = m_converter->convert(data, frames)) {
        m_writer.pushSound(std::move(sound));
    }
}

qint64 KdSoundFeed::endNs() const
{
    return m_timeline.durationNs(m_end);
}

qint64 KdSoundFeed::writtenNs() const
{
    const qint64 frames = m_writer.soundFrames() + m_writer.soundDelay();
    const int rate = m_writer.samplerate();
    return frames / rate * kNsPerSecond + frames % rate * kNsPerSecond / rate;
}

qint64 KdSoundFeed::finish(qint64 endNs)
{
    if (KdGstBufferPtr rest = m_converter->drain()) {
        m_writer.pushSound(std::move(rest));
    }
    const qint64 missingNs = endNs - writtenNs();
    if (missingNs > 0) {
        m_writer.pushSilence(missingNs * m_writer.samplerate() / kNsPerSecond);
    }
    return std::max(endNs, writtenNs());
}
