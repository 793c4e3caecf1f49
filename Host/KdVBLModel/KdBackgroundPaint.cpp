#include <KdVBLModel/KdBackgroundPaint.h>

#include <opencv2/imgproc.hpp>

#include <cstdint>
#include <cstring>
#include <vector>

namespace {

constexpr double kBlur = 0.028; ///< of the picture's width: nothing can be read or recognised

uchar mixed(uchar back, uchar front, int share)
{
    const int value = back * (255 - share) + front * share;
    return static_cast<uchar>((value + 127) / 255);
}

/** @return CV_8UC3, of the small frame's size. */
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
    cv::Mat result(small.size(), CV_8UC4);
    for (int y = 0; y < small.rows; ++y) {
        for (int x = 0; x < small.cols; ++x) {
            const auto& w = weighted.at<cv::Vec4f>(y, x);
            const float scale = 1.0F / w[3];
            result.at<cv::Vec4b>(y, x) = cv::Vec4b(cv::saturate_cast<uchar>(w[0] * scale),
                                                   cv::saturate_cast<uchar>(w[1] * scale),
                                                   cv::saturate_cast<uchar>(w[2] * scale), 255);
        }
    }
    return result;
}

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
    cv::Mat background;
    cv::resize(blurredBackground(small, matte.small()), background, frame.size(), 0, 0,
               cv::INTER_LINEAR);
    std::vector<uchar> shares(static_cast<std::size_t>(frame.cols));
    for (int y = 0; y < frame.rows; ++y) {
        uchar* const pixels = frame.ptr<uchar>(y);
        const uchar* const behind = background.ptr<uchar>(y);
        matte.row(pixels, y, frame.size(), shares.data());
        for (std::size_t x = 0; x < shares.size(); ++x) {
            uchar* const pixel = pixels + 4 * x;
            if (shares[x] == 0) {
                std::memcpy(pixel, behind + 4 * x, 4);
            } else if (shares[x] < 255) {
                for (std::size_t i = 0; i < 3; ++i) {
                    pixel[i] = mixed(behind[4 * x + i], pixel[i], shares[x]);
                }
            }
            pixel[3] = 255;
        }
    }
}
