#pragma once

#include <QImage>
#include <QPointF>
#include <QRectF>

/** How far two pictures of the same frame are apart, in grey levels of the channel that differs
 * most. */
struct PictureDifference
{
    double mean = 0;
    int largest = 0;

    /** What is compared. */
    struct Area
    {
        QRectF picture;      ///< where the frame lies, in pixels of both images
        double enlarged = 1; ///< pixels of the image for each of the frame
        bool isRound = false;

        /** Where pictures may differ: within 1.5 pixels around the circle or, on a fractional
         * scale, the picture's edge; in an enlarged picture within two of the frame, whose mask
         * knows no finer steps. */
        bool isOnRim(const QPointF& place) const;
    };

    /** Leaves out the rim. */
    static PictureDifference between(const QImage& one, const QImage& other, const Area& area);
};
