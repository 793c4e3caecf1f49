#pragma once

#include <KdVBLModel/KdSerialThread.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QSize>

#include <functional>
#include <mutex>
#include <vector>

/**
 * Shows preview frames on a thread of its own: whoever makes frames never waits for whoever looks
 * at them. Only the latest frame waits; one that comes while another is looked at takes the place
 * of the one before it. Operations may be called on any thread.
 */
class KDVBLMODEL_EXPORT KdFramePump
{
public:
    /** ARGB32 without padding. */
    struct Frame
    {
        QSize size;
        std::vector<uchar> pixels;

        int stride() const { return 4 * size.width(); }
    };

    using Show = std::function<void(Frame&)>;

    /** @param show called for the frames, one after the other */
    explicit KdFramePump(Show show);
    /** Waits for the call that runs; none starts afterwards. */
    ~KdFramePump();

    /** @return a frame to draw on, its content undefined; memory is used again and again. */
    Frame create(QSize size);
    void post(Frame frame);
    /** Forgets the frame that waits. */
    void drop();

private:
    void deliver();
    void keep(Frame frame);

    const Show m_show;
    std::mutex m_mutex; ///< guards what follows; never held during a call
    std::optional<Frame> m_waiting;
    std::vector<Frame> m_spare;
    bool m_isScheduled = false;
    KdSerialThread m_thread;
};
