#include <KdVBLModel/KdMatte.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr int kRadius = 3;        ///< how far, in pixels of the mask, its border can move
constexpr float kSimilar = 4e-4F; ///< variance, colours 0 to 1, below which there is no edge
constexpr float kSharpness = 1.7F;

cv::Mat mean(const cv::Mat& values)
{
    cv::Mat result;
    cv::boxFilter(values, result, -1, {2 * kRadius + 1, 2 * kRadius + 1}, {-1, -1}, true,
                  cv::BORDER_REFLECT);
    return result;
}

float sharpened(float share)
{
    return std::clamp((share - 0.5F) * kSharpness + 0.5F, 0.0F, 1.0F);
}

/** The factors that turn the colours around a pixel into the shares around it, as well as can be.
 */
cv::Vec4f solve(const cv::Vec3f& colour, const cv::Vec6f& squares, float share,
                const cv::Vec3f& products)
{
    const cv::Vec3f covariance = products - share * colour;
    const float bb = squares[0] - colour[0] * colour[0] + kSimilar;
    const float bg = squares[1] - colour[0] * colour[1];
    const float br = squares[2] - colour[0] * colour[2];
    const float gg = squares[3] - colour[1] * colour[1] + kSimilar;
    const float gr = squares[4] - colour[1] * colour[2];
    const float rr = squares[5] - colour[2] * colour[2] + kSimilar;
    const cv::Matx33f inverse(gg * rr - gr * gr, gr * br - bg * rr, bg * gr - gg * br,
                              gr * br - bg * rr, bb * rr - br * br, bg * br - bb * gr,
                              bg * gr - gg * br, bg * br - bb * gr, bb * gg - bg * bg);
    const float determinant = bb * inverse(0, 0) + bg * inverse(1, 0) + br * inverse(2, 0);
    const cv::Vec3f f = inverse * covariance * (1.0F / std::max(determinant, 1e-12F));
    return {f[0], f[1], f[2], share - f.dot(colour)};
}

cv::Mat squaresOf(const cv::Mat& colours)
{
    cv::Mat result(colours.size(), CV_32FC(6));
    for (int y = 0; y < colours.rows; ++y) {
        for (int x = 0; x < colours.cols; ++x) {
            const auto& c = colours.at<cv::Vec3f>(y, x);
            result.at<cv::Vec6f>(y, x) = {c[0] * c[0], c[0] * c[1], c[0] * c[2],
                                          c[1] * c[1], c[1] * c[2], c[2] * c[2]};
        }
    }
    return result;
}

struct Between
{
    int first;
    int second;
    float part; ///< of the second
};

/** The two cells whose middles are around a place, along one axis. */
Between cellsAround(float place, int cells)
{
    const int first = std::clamp(cvFloor(place - 0.5F), 0, cells - 1);
    const float part = place - 0.5F - static_cast<float>(first);
    return {first, std::min(first + 1, cells - 1), std::clamp(part, 0.0F, 1.0F)};
}

cv::Vec4f mixed(const cv::Vec4f& a, const cv::Vec4f& b, float part)
{
    return a * (1.0F - part) + b * part;
}

uchar shareOf(const uchar* pixel, const cv::Vec4f& factors)
{
    const float share =
        (static_cast<float>(pixel[0]) * factors[0] + static_cast<float>(pixel[1]) * factors[1] +
         static_cast<float>(pixel[2]) * factors[2]) /
            255.0F +
        factors[3];
    return cv::saturate_cast<uchar>(sharpened(share) * 255.0F);
}

/** Where a cell begins, in pixels of the full frame. */
int startOf(int cell, int cells, int pixels)
{
    return static_cast<int>(static_cast<std::int64_t>(cell) * pixels / cells);
}

} // namespace

KdMatte::KdMatte(const cv::Mat& small, const cv::Mat& mask)
{
    cv::Mat colours;
    small.convertTo(colours, CV_32FC3, 1 / 255.0);
    fit(colours, mask);
    estimate(colours);
}

void KdMatte::fit(const cv::Mat& colours, const cv::Mat& mask)
{
    cv::Mat weighted(mask.size(), CV_32FC3);
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            weighted.at<cv::Vec3f>(y, x) = colours.at<cv::Vec3f>(y, x) * mask.at<float>(y, x);
        }
    }
    const cv::Mat colourMeans = mean(colours);
    const cv::Mat squareMeans = mean(squaresOf(colours));
    const cv::Mat shareMeans = mean(mask);
    const cv::Mat productMeans = mean(weighted);
    cv::Mat factors(mask.size(), CV_32FC4);
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            factors.at<cv::Vec4f>(y, x) =
                solve(colourMeans.at<cv::Vec3f>(y, x), squareMeans.at<cv::Vec6f>(y, x),
                      shareMeans.at<float>(y, x), productMeans.at<cv::Vec3f>(y, x));
        }
    }
    m_factors = mean(factors);
}

void KdMatte::estimate(const cv::Mat& colours)
{
    m_small = cv::Mat(colours.size(), CV_32F);
    for (int y = 0; y < colours.rows; ++y) {
        for (int x = 0; x < colours.cols; ++x) {
            const auto& f = m_factors.at<cv::Vec4f>(y, x);
            const auto& c = colours.at<cv::Vec3f>(y, x);
            m_small.at<float>(y, x) = sharpened(c[0] * f[0] + c[1] * f[1] + c[2] * f[2] + f[3]);
        }
    }
    cv::Mat least;
    cv::Mat most;
    cv::erode(m_small, least, {});
    cv::dilate(m_small, most, {});
    m_regions = cv::Mat(m_small.size(), CV_8U, cv::Scalar(Rim));
    m_regions.setTo(Background, most < 0.02F);
    m_regions.setTo(Person, least > 0.98F);
}

void KdMatte::row(const uchar* pixels, int y, cv::Size frame, uchar* shares) const
{
    const int cells = m_regions.cols;
    const float scaleX = static_cast<float>(cells) / static_cast<float>(frame.width);
    const float scaleY = static_cast<float>(m_regions.rows) / static_cast<float>(frame.height);
    const float placeY = (static_cast<float>(y) + 0.5F) * scaleY;
    const uchar* const regions =
        m_regions.ptr<uchar>(std::min(cvFloor(placeY), m_regions.rows - 1));
    const Between rows = cellsAround(placeY, m_factors.rows);
    const auto* const above = m_factors.ptr<cv::Vec4f>(rows.first);
    const auto* const below = m_factors.ptr<cv::Vec4f>(rows.second);
    for (int cell = 0; cell < cells; ++cell) {
        const int start = startOf(cell, cells, frame.width);
        const int end = startOf(cell + 1, cells, frame.width);
        if (regions[cell] != Rim) {
            std::fill(shares + start, shares + end, regions[cell] == Person ? 255 : 0);
            continue;
        }
        const auto factorsOf = [&](int column) {
            const int inside = std::clamp(column, 0, cells - 1);
            return mixed(above[inside], below[inside], rows.part);
        };
        const cv::Vec4f left = factorsOf(cell - 1);
        const cv::Vec4f middle = factorsOf(cell);
        const cv::Vec4f right = factorsOf(cell + 1);
        for (std::ptrdiff_t x = start; x < end; ++x) {
            const float off =
                (static_cast<float>(x) + 0.5F) * scaleX - static_cast<float>(cell) - 0.5F;
            const cv::Vec4f factors =
                off < 0.0F ? mixed(middle, left, -off) : mixed(middle, right, off);
            shares[x] = shareOf(pixels + 4 * x, factors);
        }
    }
}
