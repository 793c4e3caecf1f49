#include <KdVBLModel/KdSceneMemory.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr float kWellKnown = 6.0F;    ///< pictures after which a background pixel is believed fully
constexpr float kSlowest = 0.03F;     ///< how fast a well-known background follows changes
constexpr float kUnrest = 6.0F;       ///< times the noise
constexpr float kAverageRate = 0.08F; ///< remembers about a second
constexpr float kJump = 64.0F;        ///< something else is to be seen there now
constexpr float kJumpRate = 0.4F;
constexpr float kStrongestFor = 4.0F;
constexpr float kStrongestAgainst = 4.0F;

/** Squared distance; lightness counts less, since shadows fall on the background too. */
float distance(const cv::Vec3f& a, const cv::Vec3f& b)
{
    const cv::Vec3f d = a - b;
    return 0.6F * d[0] * d[0] + 1.5F * (d[1] * d[1] + d[2] * d[2]);
}

float medianOf(std::vector<float>& values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void KdSceneMemory::reset()
{
    *this = KdSceneMemory();
}

/** Cameras change their exposure, lamps flicker: the median over what is known shows by how much.
 */
void KdSceneMemory::evenOut(const cv::Mat& lab)
{
    lab.convertTo(m_picture, CV_32FC3);
    std::vector<float> changes;
    changes.reserve(lab.total());
    for (int y = 0; y < lab.rows; ++y) {
        for (int x = 0; x < lab.cols; ++x) {
            if (m_count.at<float>(y, x) >= kWellKnown) {
                changes.push_back(m_background.at<cv::Vec3f>(y, x)[0] -
                                  m_picture.at<cv::Vec3f>(y, x)[0]);
            }
        }
    }
    if (changes.size() > lab.total() / 10) {
        m_picture += cv::Scalar(std::clamp(medianOf(changes), -25.0F, 25.0F), 0, 0);
    }
}

void KdSceneMemory::see(const cv::Mat& lab)
{
    if (m_count.size() != lab.size()) {
        reset();
        m_background = cv::Mat::zeros(lab.size(), CV_32FC3);
        m_spread = cv::Mat(lab.size(), CV_32F, cv::Scalar(30.0));
        m_count = cv::Mat::zeros(lab.size(), CV_32F);
        m_unrest = cv::Mat::zeros(lab.size(), CV_32F);
        lab.convertTo(m_average, CV_32FC3);
    }
    evenOut(lab);
    m_seen += 1.0F;
    const float rate = std::max(1.0F / m_seen, kAverageRate);
    std::vector<float> unrest;
    for (int y = 0; y < lab.rows; ++y) {
        for (int x = 0; x < lab.cols; ++x) {
            auto& average = m_average.at<cv::Vec3f>(y, x);
            const cv::Vec3f& now = m_picture.at<cv::Vec3f>(y, x);
            auto& variance = m_unrest.at<float>(y, x);
            const float off = distance(now, average);
            variance += rate * (std::min(off, kJump) - variance);
            average += (off < kJump ? rate : std::max(rate, kJumpRate)) * (now - average);
            unrest.push_back(variance);
        }
    }
    const auto quiet = unrest.begin() + static_cast<std::ptrdiff_t>(unrest.size() / 4);
    std::nth_element(unrest.begin(), quiet, unrest.end());
    m_noise = std::clamp(*quiet, 1.0F, 40.0F);
}

cv::Mat KdSceneMemory::evidence() const
{
    cv::Mat result(m_picture.size(), CV_32F);
    for (int y = 0; y < result.rows; ++y) {
        for (int x = 0; x < result.cols; ++x) {
            const float off =
                distance(m_picture.at<cv::Vec3f>(y, x), m_background.at<cv::Vec3f>(y, x)) /
                (m_spread.at<float>(y, x) + 2.0F * m_noise + 6.0F);
            const float known = std::min(m_count.at<float>(y, x) / kWellKnown, 1.0F);
            result.at<float>(y, x) =
                known * std::clamp(0.8F * (off - 3.0F), -kStrongestAgainst, kStrongestFor);
        }
    }
    return result;
}

cv::Mat KdSceneMemory::stillness() const
{
    cv::Mat lightness;
    cv::extractChannel(m_average, lightness, 0);
    cv::Mat dx;
    cv::Mat dy;
    cv::Sobel(lightness, dx, CV_32F, 1, 0, 3, 0.125);
    cv::Sobel(lightness, dy, CV_32F, 0, 1, 3, 0.125);
    cv::Mat result(m_picture.size(), CV_32F);
    for (int y = 0; y < result.rows; ++y) {
        for (int x = 0; x < result.cols; ++x) {
            const float texture = std::hypot(dx.at<float>(y, x), dy.at<float>(y, x));
            const float unrest = m_unrest.at<float>(y, x) / m_noise;
            const float still = std::clamp(2.0F - 0.5F * unrest, 0.0F, 1.0F);
            result.at<float>(y, x) = still * std::clamp(texture / 8.0F - 0.5F, 0.0F, 1.0F);
        }
    }
    return result * std::clamp((m_seen - 8.0F) / 8.0F, 0.0F, 1.0F);
}

float KdSceneMemory::unrestWithin(const cv::Mat& mask) const
{
    const cv::Mat inside = mask > 0.5F;
    const int area = cv::countNonZero(inside);
    const int restless = cv::countNonZero((m_unrest > kUnrest * m_noise) & inside);
    return area == 0 ? 0.0F : static_cast<float>(restless) / static_cast<float>(area);
}

void KdSceneMemory::learn(const cv::Mat& mask)
{
    cv::Mat near;
    cv::dilate(mask, near, cv::getStructuringElement(cv::MORPH_ELLIPSE, {5, 5}));
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            if (near.at<float>(y, x) > 0.25F) {
                continue;
            }
            auto& count = m_count.at<float>(y, x);
            auto& background = m_background.at<cv::Vec3f>(y, x);
            auto& spread = m_spread.at<float>(y, x);
            const cv::Vec3f& now = m_picture.at<cv::Vec3f>(y, x);
            count += 1.0F;
            const float rate = std::max(1.0F / count, kSlowest);
            if (count > 1.0F) {
                spread +=
                    std::max(rate, 0.05F) * (std::min(distance(now, background), 400.0F) - spread);
            }
            background += rate * (now - background);
        }
    }
}
