#pragma once

#include <KdVBLModel/KdGstNames.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QSize>

#include <memory>

/**
 * Brings a camera's raw pictures to what a preview shows and to what a take records. Not
 * thread-safe.
 *
 * Colours that a camera does not describe count as BT.601 in studio range, which is what the
 * standard for USB cameras says, at any size; what a take gets is always that.
 */
class KDVBLMODEL_EXPORT KdPictureConverter
{
public:
    /** As GStreamer names the colours of every I420 picture that comes out here. */
    static constexpr const char* kI420Colours = "bt601";

    KdPictureConverter();
    ~KdPictureConverter();

    /** @param caps of the pictures that come from now on @return false when they are no raw
     * pictures; then nothing is converted. */
    bool setFormat(const GstCaps* caps);

    /** Empty before setFormat(). */
    QSize size() const;

    /**
     * @param argb size() pixels in the order of QImage::Format_ARGB32, opaque afterwards
     * @param stride bytes from one line to the next, at least 4 * width
     * @return false when the picture cannot be read or is smaller than its format says.
     */
    bool toArgb(GstBuffer* picture, uchar* argb, int stride);

    /** Whether toI420() works: without a detour the colours would not be right. */
    bool givesI420() const;

    /** @param i420 made by createI420() for size() @return as toArgb() */
    bool toI420(GstBuffer* picture, GstBuffer* i420);

    /** @return a picture to write to, laid out as GStreamer does. The caller's. */
    static GstBuffer* createI420(QSize size);

    /** @param isOpaque whether alpha is 255 everywhere; else the picture is laid over black. */
    static bool argbToI420(const uchar* argb, int stride, bool isOpaque, QSize size,
                           GstBuffer* i420);

private:
    KdPictureConverter(const KdPictureConverter&) = delete;
    KdPictureConverter& operator=(const KdPictureConverter&) = delete;

    class Private;
    std::unique_ptr<Private> d;
};
