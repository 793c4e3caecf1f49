#pragma once

#include <QtGlobal>

#include <vector>

/** The arithmetic of scaling: one row of a picture from two rows of a frame. Any thread. */
namespace KdPreviewScaler {

constexpr quint32 kWhole = 256; ///< parts of a pixel

/** The two neighbouring pixels, of a row or a column, between which a place of the picture lies. */
struct Neighbours
{
    int first = 0;    ///< of a frame of one pixel also the second
    quint32 part = 0; ///< of the second, 0 to kWhole
};

/** Two rows of a frame, pixels of Format_ARGB32 of any alignment. */
struct Rows
{
    const uchar* upper = nullptr;
    const uchar* lower = nullptr;
    quint32 part = 0; ///< of the lower, 0 to kWhole
    int width = 0;
};

/** @return the pixel at one place, over black. */
quint32 mixed(const Rows& rows, const Neighbours& columns);

/**
 * Fills a stretch of a row with mixed() pixels. Where the processor can and all pixels that count
 * are opaque it takes several channels at a time, to the same result.
 * @param isOpaque whether the frame's pixels have been opaque so far; set to false when one is not,
 *        and then not tried again
 */
void fill(quint32* out, const Rows& rows, const std::vector<Neighbours>& columns, int begin,
          int end, bool* isOpaque);

} // namespace KdPreviewScaler
