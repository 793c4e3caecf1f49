#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <chrono>
#include <memory>

/**
 * Blurs or removes what is behind the person in a webcam picture.
 *
 * Where the person is, a thread of its own finds out, from the frames that come by and as often as
 * it has time for; apply() puts the newest answer into the frame at hand and waits for nobody. The
 * thread exists from the first frame that has a treatment until this object goes.
 *
 * Privacy comes first: until the first answer, and after a change of size, all of the picture
 * counts as background.
 *
 * Operations may be called on any thread; calls of apply() do not overlap.
 */
class KDVBLMODEL_EXPORT KdBackgroundEffect
{
public:
    using Mode = KdVBLMODEL::_KdCaptureRecordBackgroundMode;

    /**
     * @return whether this build and this machine have what it takes: the library for it, and the
     * description of a face that is read from a file. The answer stays the same. Any thread.
     */
    static bool isAvailable();

    KdBackgroundEffect();
    /** Waits for the thread, which may be within a computation: up to about 50 ms. */
    ~KdBackgroundEffect();

    /**
     * Treats a frame in place.
     * @param mode none leaves every byte alone and costs nothing. Blur leaves a sharp person before
     * a blurred background. Remove makes the background transparent: alpha, not premultiplied, is
     * 255 on the person, 0 (with black under it) on the background, and between on the rim. An
     * unknown mode counts as none, as does every mode where isAvailable() is false.
     * @param argb 32 bits a pixel: blue, green, red and alpha, which is taken as 255.
     * @param width, height in pixels; nothing is done when one is not positive.
     * @param stride bytes from one row to the next, at least 4 * width, else nothing is done; what
     * lies between the end of a row and the next is left alone.
     */
    void apply(Mode mode, uchar* argb, int width, int height, int stride);

    /** Forgets the scene, as for another camera. */
    void reset();

    /**
     * Waits until the worker knows where the person is in the last frame that it took.
     * @return false when that takes longer.
     */
    bool waitForMask(std::chrono::milliseconds patience) const;

    /** Lays a frame with removed background over black: alpha becomes 255. Sizes as in apply(). */
    static void layOverBlack(uchar* argb, int width, int height, int stride);

private:
    KdBackgroundEffect(const KdBackgroundEffect&) = delete;
    KdBackgroundEffect& operator=(const KdBackgroundEffect&) = delete;

    class Private;
    std::unique_ptr<Private> m_p;
};
