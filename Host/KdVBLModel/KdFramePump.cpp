#include <KdVBLModel/KdFramePump.h>

namespace {
/** One that waits, one that is shown, one that is drawn. */
constexpr std::size_t kSpareFrames = 3;
} // namespace

KdFramePump::KdFramePump(Show show) : m_show(std::move(show)) {}

KdFramePump::~KdFramePump()
{
    drop();
}

KdFramePump::Frame KdFramePump::create(QSize size)
{
    Frame frame;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_spare.empty()) {
            frame = std::move(m_spare.back());
            m_spare.pop_back();
        }
    }
    frame.size = size;
    frame.pixels.resize(static_cast<std::size_t>(4) * static_cast<std::size_t>(size.width()) *
                        static_cast<std::size_t>(size.height()));
    return frame;
}

void KdFramePump::post(Frame frame)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_waiting) {
        keep(std::move(*m_waiting));
    }
    m_waiting = std::move(frame);
    if (!m_isScheduled) {
        m_isScheduled = true;
        m_thread.post([this] { deliver(); });
    }
}

void KdFramePump::drop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_waiting.reset();
}

void KdFramePump::deliver()
{
    std::optional<Frame> frame;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        frame.swap(m_waiting);
        m_isScheduled = false;
    }
    if (!frame) {
        return;
    }
    m_show(*frame);
    const std::lock_guard<std::mutex> lock(m_mutex);
    keep(std::move(*frame));
}

/** With the lock held. */
void KdFramePump::keep(Frame frame)
{
    if (m_spare.size() < kSpareFrames) {
        m_spare.push_back(std::move(frame));
    }
}
