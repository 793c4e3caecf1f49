#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QSize>

#include <array>
#include <cstdint>
#include <vector>

/** The three planes of a picture in I420: brightness, and the two of colour at half the size. */
template <typename Byte>
struct KdPicturePlanes
{
    std::array<Byte*, 3> data;
    std::array<int, 3> stride; ///< bytes from one line to the next
};

/**
 * Gives a recorded picture the look that it has in the preview: mirrored, and cut out as a circle.
 * Outside of the circle, which is centred and as wide as the picture's shorter side, it is black;
 * its rim is smooth.
 *
 * A pure function of its arguments; any thread.
 */
class KDVBLMODEL_EXPORT KdPictureShaper
{
public:
    /**
     * @param size even in both directions, not empty
     * @param blackLuma the brightness of black: 16, or 0 in pictures of full range
     */
    KdPictureShaper(QSize size, uint8_t blackLuma);

    QSize size() const { return m_size; }

    /** @param from, to of size(), which do not overlap. */
    void shape(const KdPicturePlanes<const uint8_t>& from, const KdPicturePlanes<uint8_t>& to,
               bool isFlipped, KdVBLMODEL::_KdCaptureRecordShape shape) const;

private:
    /** What of one line lies within the circle. It is the same from the left as from the right. */
    struct Row
    {
        int rim;    ///< where the rim begins; the middle for a line that misses the circle
        int inside; ///< where the rim ends
        int shares; ///< in m_shares: of the rim's pixels, how much of each is inside, to 256
    };

    /** A plane of one size: the brightness, or a colour. */
    struct Plane
    {
        int width;
        int height;
        std::vector<Row> rows;
        std::vector<uint16_t> shares;
    };

    static Plane circleIn(QSize size);
    static Row rowOf(Plane* plane, int y);
    static void shapeCircle(const Plane& plane, const uint8_t* from, uint8_t* to, int y,
                            uint8_t black, bool isFlipped);

    QSize m_size;
    uint8_t m_blackLuma;
    Plane m_luma;
    Plane m_chroma;
};
