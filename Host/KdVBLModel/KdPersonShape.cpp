#include <KdVBLModel/KdPersonShape.h>

#include <algorithm>
#include <array>

namespace {

/** In units of the face's width, below its middle. */
struct Slice
{
    float below;
    float halfWidth; ///< of the person there
    float softness;  ///< how far people differ from that
};

constexpr float kSteepness = 1.5F;

constexpr std::array<Slice, 12> kSlices = {{{-1.15F, -0.15F, 0.16F},
                                            {-0.98F, 0.22F, 0.16F},
                                            {-0.75F, 0.50F, 0.16F},
                                            {-0.35F, 0.62F, 0.16F},
                                            {0.10F, 0.62F, 0.14F},
                                            {0.45F, 0.52F, 0.16F},
                                            {0.62F, 0.65F, 0.25F},
                                            {0.80F, 0.95F, 0.35F},
                                            {1.00F, 1.20F, 0.40F},
                                            {1.30F, 1.40F, 0.40F},
                                            {1.80F, 1.60F, 0.45F},
                                            {4.00F, 1.90F, 0.60F}}};

Slice sliceAt(float below)
{
    if (below <= kSlices.front().below) {
        return {below, kSlices.front().halfWidth - (kSlices.front().below - below), 0.16F};
    }
    const auto next = std::find_if(kSlices.begin(), kSlices.end(),
                                   [below](const Slice& slice) { return slice.below > below; });
    if (next == kSlices.end()) {
        return kSlices.back();
    }
    const Slice& last = *(next - 1);
    const float part = (below - last.below) / (next->below - last.below);
    return {below, last.halfWidth + part * (next->halfWidth - last.halfWidth),
            last.softness + part * (next->softness - last.softness)};
}

} // namespace

cv::Mat KdPersonShape::evidence(cv::Size size, const cv::Rect2f& face)
{
    cv::Mat result(size, CV_32F);
    const float middleX = face.x + face.width / 2.0F;
    const float middleY = face.y + face.height / 2.0F;
    for (int y = 0; y < size.height; ++y) {
        const Slice slice = sliceAt((static_cast<float>(y) + 0.5F - middleY) / face.width);
        auto* const row = result.ptr<float>(y);
        for (int x = 0; x < size.width; ++x) {
            const float aside = std::abs(static_cast<float>(x) + 0.5F - middleX) / face.width;
            row[x] = std::clamp(kSteepness * (slice.halfWidth - aside) / slice.softness, -kCertain,
                                kCertain);
        }
    }
    return result;
}
