#pragma once

#include "KdPreviewPicture.h"

#include <memory>
#include <mutex>

/**
 * Keeps the latest frame of a preview and makes it ready to be painted.
 *
 * put() is called on the thread that the frames come from, everything else on the one that paints.
 * The frame lock guards the frame, its size, whether frames are painted, and the pictures on their
 * way. Whoever brings a frame never waits for it: the frame is dropped when the lock is taken. The
 * lock is held for the copy of a frame and otherwise for a few assignments; frames are scaled
 * outside of it, on the thread that brings them, and by the painter only when the look has changed
 * since.
 *
 * The caller sees to it that no put() runs while the store is destroyed.
 */
class KdPreviewStore
{
public:
    KdPreviewStore() = default;

    /**
     * Copies a frame. The buffer is kept from frame to frame while their size stays the same.
     * @return false when it was dropped: the lock was taken, the frame is not valid, or there is no
     * memory for it, which leaves no frame at all.
     */
    bool put(const KdPreviewFrame& frame);

    void setRendering(bool on);
    bool isRendering() const;
    /** Frees frame and pictures. */
    void clear();
    /** Frames that come are not scaled until picture() is asked again. */
    void rest();

    /**
     * @return the latest frame in that look, valid until the next call of a function that is not
     * const; null when frames are not rendered or there is none, in which case the buffers are
     * freed.
     */
    const KdPreviewPicture* picture(const KdPreviewLook& look);

    /** Bytes held by the frame buffer. */
    qint64 bufferSize() const;

    /** The frame lock. While somebody else holds it, frames are dropped and painting waits. */
    std::mutex& lock() const { return m_lock; }

private:
    Q_DISABLE_COPY(KdPreviewStore)

    struct Buffer
    {
        std::unique_ptr<uchar[]> bytes;
        int width = 0;
        int height = 0;

        KdPreviewFrame frame() const { return {bytes.get(), width, height}; }
        bool keep(const KdPreviewFrame& frame);
    };

    /** What the bringer of a frame takes along to draw without the lock. */
    struct Draft
    {
        KdPreviewLook look;
        KdPreviewPicture picture;
    };

    bool begin(Draft* draft);
    bool end(const KdPreviewFrame& frame, Draft* draft);
    bool takeReadyPicture(const KdPreviewLook& look);
    void drawKeptFrame(const KdPreviewLook& look);
    void free();

    // Not a QMutex, which a race detector does not see.
    mutable std::mutex m_lock; ///< guards what follows, save m_shown
    Buffer m_buffer;
    quint64 m_serial = 0;
    bool m_isRendering = false;
    KdPreviewLook m_look;     ///< in which frames are made ready
    KdPreviewPicture m_ready; ///< not painted yet, when its serial is not 0
    KdPreviewPicture m_spare; ///< memory for the next one
    KdPreviewPicture m_shown; ///< the painter's own
};
