#include "PictureDifference.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

int channelDifference(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b))});
}

} // namespace

bool PictureDifference::Area::isOnRim(const QPointF& place) const
{
    const double rim = enlarged > 1 ? std::max(2 * enlarged, 1.5) : 1.5;
    if (!isRound) {
        return !picture.adjusted(rim, rim, -rim, -rim).contains(place) &&
               picture.adjusted(-rim, -rim, rim, rim).contains(place);
    }
    const QPointF off = place - picture.center();
    const double radius = std::min(picture.width(), picture.height()) / 2;
    return std::abs(std::hypot(off.x(), off.y()) - radius) <= rim;
}

PictureDifference PictureDifference::between(const QImage& one, const QImage& other,
                                             const Area& area)
{
    double sum = 0;
    int count = 0;
    PictureDifference result;
    for (int y = 0; y < one.height(); ++y) {
        const auto* const rowOfOne = reinterpret_cast<const QRgb*>(one.constScanLine(y));
        const auto* const rowOfOther = reinterpret_cast<const QRgb*>(other.constScanLine(y));
        for (int x = 0; x < one.width(); ++x) {
            if (area.isOnRim(QPointF(x + 0.5, y + 0.5))) {
                continue;
            }
            const int off = channelDifference(rowOfOne[x], rowOfOther[x]);
            sum += off;
            result.largest = std::max(result.largest, off);
            ++count;
        }
    }
    result.mean = count > 0 ? sum / count : 0;
    return result;
}
