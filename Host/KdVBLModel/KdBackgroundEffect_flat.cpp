#include <KdVBLModel/KdBackgroundEffect.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

std::uint32_t overBlack(std::uint32_t pixel)
{
    const std::uint32_t alpha = pixel >> 24U;
    if (alpha == 255U) {
        return pixel;
    }
    std::uint32_t result = 0xff000000U;
    for (unsigned shift = 0; shift < 24U; shift += 8U) {
        result |= (((pixel >> shift & 0xffU) * alpha + 127U) / 255U) << shift;
    }
    return result;
}

} // namespace

void KdBackgroundEffect::layOverBlack(uchar* argb, int width, int height, int stride)
{
    if (!argb || width <= 0 || height <= 0 || stride / 4 < width) {
        return;
    }
    for (int y = 0; y < height; ++y) {
        uchar* const row = argb + static_cast<std::ptrdiff_t>(y) * stride;
        for (std::ptrdiff_t x = 0; x < width; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, row + 4 * x, sizeof pixel);
            pixel = overBlack(pixel);
            std::memcpy(row + 4 * x, &pixel, sizeof pixel);
        }
    }
}
