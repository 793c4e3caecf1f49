#include <KdVBLModel/KdBackgroundPaint.h>

#include <opencv2/core/hal/intrin.hpp>
#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

constexpr double kBlur = 0.028; ///< of the picture's width: nothing can be read or recognised

/** @return 0 for the back, 1 for the front, and between. */
cv::v_float32x4 mixed(const cv::v_float32x4& back, const cv::v_float32x4& front, float share)
{
    return back + (front - back) * cv::v_setall_f32(share);
}

cv::v_float32x4 loadPixel(const uchar* pixel)
{
    return cv::v_cvt_f32(cv::v_reinterpret_as_s32(cv::v_load_expand_q(pixel)));
}

void storePixel(uchar* pixel, const cv::v_float32x4& colour)
{
    const cv::v_int32x4 rounded = cv::v_round(colour);
    const cv::v_int16x8 halves = cv::v_pack(rounded, rounded);
    const cv::v_uint8x16 bytes = cv::v_pack_u(halves, halves);
    const int packed = cv::v_reinterpret_as_s32(bytes).get0();
    std::memcpy(pixel, &packed, 4);
}

/** @return CV_32FC4, of the small frame's size; the last channel says nothing. */
cv::Mat blurredBackground(const cv::Mat& small, const cv::Mat& shares)
{
    cv::Mat weighted(small.size(), CV_32FC4);
    for (int y = 0; y < small.rows; ++y) {
        for (int x = 0; x < small.cols; ++x) {
            const auto& c = small.at<cv::Vec3b>(y, x);
            // Nothing but person far around: better its colours than none.
            const float weight = std::max(1.0F - shares.at<float>(y, x), 1e-4F);
            weighted.at<cv::Vec4f>(y, x) = cv::Vec4f(c[0], c[1], c[2], 1.0F) * weight;
        }
    }
    cv::GaussianBlur(weighted, weighted, {}, kBlur * small.cols, 0.0, cv::BORDER_REFLECT);
    for (int y = 0; y < weighted.rows; ++y) {
        for (int x = 0; x < weighted.cols; ++x) {
            auto& colour = weighted.at<cv::Vec4f>(y, x);
            colour *= 1.0F / colour[3];
        }
    }
    return weighted;
}

/** A small picture, looked at in the size of the frame: enlarged row by row, and only where asked.
 */
class Enlarged
{
public:
    /** @param picture CV_32FC4, 0 to 255. */
    Enlarged(const cv::Mat& picture, cv::Size frame)
        : m_picture(picture)
        , m_scaleY(static_cast<float>(picture.rows) / static_cast<float>(frame.height))
        , m_row(static_cast<std::size_t>(picture.cols) + 1)
    {
        const float scale = static_cast<float>(picture.cols) / static_cast<float>(frame.width);
        for (int x = 0; x < frame.width; ++x) {
            const float place = std::max((static_cast<float>(x) + 0.5F) * scale - 0.5F, 0.0F);
            const int cell = std::min(cvFloor(place), picture.cols - 1);
            m_cells.push_back({static_cast<std::size_t>(cell), place - static_cast<float>(cell)});
        }
    }

    void goTo(int y)
    {
        const float place = std::max((static_cast<float>(y) + 0.5F) * m_scaleY - 0.5F, 0.0F);
        const int above = std::min(cvFloor(place), m_picture.rows - 1);
        const int below = std::min(above + 1, m_picture.rows - 1);
        const float part = place - static_cast<float>(above);
        const auto* const first = m_picture.ptr<cv::Vec4f>(above);
        const auto* const second = m_picture.ptr<cv::Vec4f>(below);
        for (std::size_t x = 0; x + 1 < m_row.size(); ++x) {
            m_row[x] = first[x] + (second[x] - first[x]) * part;
        }
        m_row.back() = m_row[m_row.size() - 2];
    }

    cv::v_float32x4 at(std::size_t x) const
    {
        const Cell& cell = m_cells[x];
        return mixed(cv::v_load(m_row[cell.first].val), cv::v_load(m_row[cell.first + 1].val),
                     cell.part);
    }

private:
    struct Cell
    {
        std::size_t first;
        float part; ///< of the next one
    };

    const cv::Mat& m_picture;
    float m_scaleY;
    std::vector<Cell> m_cells;
    std::vector<cv::Vec4f> m_row;
};

} // namespace

void KdBackgroundPaint::remove(cv::Mat& frame, const KdMatte& matte)
{
    std::vector<uchar> shares(static_cast<std::size_t>(frame.cols));
    for (int y = 0; y < frame.rows; ++y) {
        uchar* const pixels = frame.ptr<uchar>(y);
        matte.row(pixels, y, frame.size(), shares.data());
        for (std::size_t x = 0; x < shares.size(); ++x) {
            uchar* const pixel = pixels + 4 * x;
            if (shares[x] == 0) {
                std::memset(pixel, 0, 4);
            } else {
                pixel[3] = shares[x];
            }
        }
    }
}

void KdBackgroundPaint::blur(cv::Mat& frame, const cv::Mat& small, const KdMatte& matte)
{
    const cv::Mat blurred = blurredBackground(small, matte.small());
    Enlarged background(blurred, frame.size());
    std::vector<uchar> shares(static_cast<std::size_t>(frame.cols));
    for (int y = 0; y < frame.rows; ++y) {
        uchar* const pixels = frame.ptr<uchar>(y);
        background.goTo(y);
        matte.row(pixels, y, frame.size(), shares.data());
        for (std::size_t x = 0; x < shares.size(); ++x) {
            uchar* const pixel = pixels + 4 * x;
            if (shares[x] == 0) {
                storePixel(pixel, background.at(x));
            } else if (shares[x] < 255) {
                const float share = static_cast<float>(shares[x]) / 255.0F;
                storePixel(pixel, mixed(background.at(x), loadPixel(pixel), share));
            }
            pixel[3] = 255;
        }
    }
}
