#include "KdDefaultResolution.h"

#include <algorithm>

namespace {

/** As a 32-bit number, which the area of an absurd size wraps around in instead of overflowing. */
qint32 area(QSize size)
{
    return static_cast<qint32>(static_cast<quint32>(size.width()) *
                               static_cast<quint32>(size.height()));
}

} // namespace

QSize GetDefaultResoluction(const QList<QSize>& list)
{
    QSize held(640, 480);
    for (const QSize& size : list) {
        if (area(size) > area(held)) {
            held = size;
        }
    }
    if (list.isEmpty() || list.contains(held)) {
        return held;
    }
    return list.at(std::max(list.size() / 2 - 1, 0));
}
