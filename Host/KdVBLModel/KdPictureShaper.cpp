#include <KdVBLModel/KdPictureShaper.h>

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr uint8_t kNoColour = 128;
constexpr int kWhole = 256;

void copyMirrored(const uint8_t* from, uint8_t* to, int count)
{
    int done = 0;
    for (; done + 8 <= count; done += 8) {
        quint64 eight;
        std::memcpy(&eight, from + count - done - 8, sizeof eight);
        eight = qbswap(eight);
        std::memcpy(to + done, &eight, sizeof eight);
    }
    for (; done < count; ++done) {
        to[done] = from[count - 1 - done];
    }
}

void copyLine(const uint8_t* from, uint8_t* to, int count, bool isFlipped)
{
    if (isFlipped) {
        copyMirrored(from, to, count);
    } else {
        std::memcpy(to, from, static_cast<size_t>(count));
    }
}

uint8_t mixed(uint8_t value, uint8_t black, int share)
{
    return static_cast<uint8_t>(black + (value - black) * share / kWhole);
}

} // namespace

KdPictureShaper::KdPictureShaper(QSize size, uint8_t blackLuma)
    : m_size(size), m_blackLuma(blackLuma), m_luma(circleIn(size)), m_chroma(circleIn(size / 2))
{
}

KdPictureShaper::Plane KdPictureShaper::circleIn(QSize size)
{
    Plane plane{size.width(), size.height(), {}, {}};
    plane.rows.reserve(static_cast<size_t>(size.height()));
    for (int y = 0; y < size.height(); ++y) {
        plane.rows.push_back(rowOf(&plane, y));
    }
    return plane;
}

// A pixel of the rim is inside as far as its middle is from where the circle ends.
KdPictureShaper::Row KdPictureShaper::rowOf(Plane* plane, int y)
{
    const double radius = std::min(plane->width, plane->height) / 2.0;
    const double dy = y + 0.5 - plane->height / 2.0;
    const int half = (plane->width + 1) / 2;
    Row row{half, half, static_cast<int>(plane->shares.size())};
    for (int x = 0; x < half; ++x) {
        const double dx = x + 0.5 - plane->width / 2.0;
        const double share = std::clamp(radius - std::hypot(dx, dy) + 0.5, 0.0, 1.0);
        const int rounded = static_cast<int>(std::lround(share * kWhole));
        if (rounded == 0) {
            continue;
        }
        row.rim = std::min(row.rim, x);
        if (rounded == kWhole) {
            row.inside = x;
            break;
        }
        plane->shares.push_back(static_cast<uint16_t>(rounded));
    }
    return row;
}

void KdPictureShaper::shape(const KdPicturePlanes<const uint8_t>& from,
                            const KdPicturePlanes<uint8_t>& to, bool isFlipped,
                            KdVBLMODEL::_KdCaptureRecordShape shape) const
{
    for (size_t i = 0; i < from.data.size(); ++i) {
        const Plane& plane = i == 0 ? m_luma : m_chroma;
        const uint8_t black = i == 0 ? m_blackLuma : kNoColour;
        for (int y = 0; y < plane.height; ++y) {
            const uint8_t* const source = from.data[i] + static_cast<ptrdiff_t>(y) * from.stride[i];
            uint8_t* const target = to.data[i] + static_cast<ptrdiff_t>(y) * to.stride[i];
            if (shape == KdVBLMODEL::fcrsCircle) {
                shapeCircle(plane, source, target, y, black, isFlipped);
            } else {
                copyLine(source, target, plane.width, isFlipped);
            }
        }
    }
}

void KdPictureShaper::shapeCircle(const Plane& plane, const uint8_t* from, uint8_t* to, int y,
                                  uint8_t black, bool isFlipped)
{
    const Row& row = plane.rows[static_cast<size_t>(y)];
    const int last = plane.width - 1;
    std::memset(to, black, static_cast<size_t>(row.rim));
    std::memset(to + plane.width - row.rim, black, static_cast<size_t>(row.rim));
    copyLine(from + row.rim, to + row.rim, std::max(0, plane.width - 2 * row.rim), isFlipped);
    for (int x = row.rim; x < row.inside; ++x) {
        const int share = plane.shares[static_cast<size_t>(row.shares + x - row.rim)];
        to[x] = mixed(to[x], black, share);
        if (x != last - x) {
            to[last - x] = mixed(to[last - x], black, share);
        }
    }
}
