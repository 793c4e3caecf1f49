#include <KdVBLModel/KdPictureFeed.h>

#include <KdVBLModel/KdClipWriter.h>

#include <algorithm>

namespace {

constexpr qint64 kMostSilentNs = 500000000;
/** Left free before the present, for a picture that is only late. */
constexpr qint64 kRoomNs = 250000000;

} // namespace

KdPictureFeed::KdPictureFeed(KdClipWriter& writer, KdFrameRate rate)
    : m_writer(writer), m_grid(rate.numerator, rate.denominator)
{
}

void KdPictureFeed::show(KdGstBufferPtr picture, qint64 takenNs)
{
    showAt(std::move(picture), m_grid.place(takenNs));
}

void KdPictureFeed::bridge(qint64 untilNs)
{
    const qint64 lateNs = std::max(kMostSilentNs, 2 * m_grid.frameNs());
    if (m_waiting && untilNs - m_waitingNs > lateNs) {
        // The same memory under another time stamp.
        showAt(KdGstBufferPtr(gst_buffer_copy(m_waiting.get())), m_grid.place(untilNs - kRoomNs));
    }
}

void KdPictureFeed::showAt(KdGstBufferPtr picture, qint64 ns)
{
    pushWaiting(ns);
    m_waiting = std::move(picture);
    m_waitingNs = ns;
}

void KdPictureFeed::pushWaiting(qint64 endNs)
{
    if (m_waiting) {
        m_writer.pushPicture(std::move(m_waiting), m_waitingNs, endNs - m_waitingNs);
    }
}

qint64 KdPictureFeed::endNs() const
{
    return m_waiting ? m_waitingNs + m_grid.frameNs() : 0;
}

void KdPictureFeed::finish(qint64 endNs)
{
    pushWaiting(std::max(endNs, m_waitingNs + m_grid.frameNs() / 4));
}
