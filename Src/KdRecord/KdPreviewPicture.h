#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QtGlobal>

/** How frames are to be shown: the surface and the options. A value. */
struct KdPreviewLook
{
    QSize area;         ///< of the surface in device-independent pixels; empty: nothing is shown
    double ratio = 1.0; ///< device pixels for each of them
    bool isRound = false;
    bool isFlipped = false;

    bool operator==(const KdPreviewLook& other) const
    {
        return area == other.area && qFuzzyCompare(ratio, other.ratio) &&
               isRound == other.isRound && isFlipped == other.isFlipped;
    }
};

/** A frame that somebody else owns: width x height pixels of Format_ARGB32, without padding and of
 * any alignment. */
struct KdPreviewFrame
{
    const uchar* bits = nullptr;
    int width = 0;
    int height = 0;

    /** @return whether there are pixels, and no more of them than an image can hold. */
    bool isValid() const { return bits && byteCount() > 0; }
    /** @return 0 for a size that no frame has. */
    qint64 byteCount() const;
};

/**
 * A frame as it appears on the surface, one pixel for each of the screen: scaled, mirrored, cut
 * round and laid over black, so that painting it is one copy. Knows no widget and no lock; any
 * thread.
 */
struct KdPreviewPicture
{
    QImage image; ///< opaque, device pixel ratio 1
    QPoint place; ///< of its corner on the surface, in device pixels
    KdPreviewLook look;
    quint64 serial = 0; ///< of the frame it shows

    /** @return where a frame belongs on a surface: in the middle, as large as fits, at least one
     * pixel wide and high. */
    static QRect fitted(const QSize& frame, const QSize& area);

    /** Shows a valid frame; the memory of the former image is used again where its size fits. */
    void draw(const KdPreviewFrame& frame, const KdPreviewLook& newLook);
};
