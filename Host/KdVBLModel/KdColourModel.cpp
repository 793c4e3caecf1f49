#include <KdVBLModel/KdColourModel.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr float kUnknown = 1e-4F;  ///< share of a colour that was never seen
constexpr float kStrongest = 4.0F; ///< no colour decides alone
constexpr float kMemory = 0.9F;    ///< what is kept of it from one picture to the next
constexpr float kSameRows = 0.3F;  ///< how much a cell learns from the others of its rows
constexpr float kOtherRows = 0.1F; ///< and from the rest

template <int kBits>
int binOf(const cv::Vec3b& colour)
{
    constexpr int kShift = 8 - kBits;
    // Lab uses about half of the range of a and b: a bin of theirs is half as wide.
    const auto chroma = [](int value) { return std::clamp((value - 64) * 2, 0, 255) >> kShift; };
    return ((colour[0] >> kShift) << (2 * kBits)) | (chroma(colour[1]) << kBits) |
           chroma(colour[2]);
}

void blurAlong(std::vector<float>& values, int stride, int side)
{
    const std::vector<float> from = values;
    const int count = static_cast<int>(values.size());
    for (int i = 0; i < count; ++i) {
        const int place = i / stride % side;
        const auto at = [&from](int index) { return from[static_cast<std::size_t>(index)]; };
        const float before = place > 0 ? at(i - stride) : 0.0F;
        const float after = place < side - 1 ? at(i + stride) : 0.0F;
        values[static_cast<std::size_t>(i)] = 0.5F * at(i) + 0.25F * (before + after);
    }
}

void forget(std::vector<float>& histogram, std::size_t bins)
{
    histogram.resize(bins);
    for (float& value : histogram) {
        value *= kMemory;
    }
}

void normalise(std::vector<float>& histogram)
{
    const float sum = std::accumulate(histogram.begin(), histogram.end(), 1e-6F);
    for (float& value : histogram) {
        value /= sum;
    }
}

} // namespace

void KdColourModel::reset()
{
    *this = KdColourModel();
}

std::size_t KdColourModel::cellOf(int x, int y, int width) const
{
    const int cell = x * kColumns / width + (y < m_chin ? 0 : kColumns);
    return static_cast<std::size_t>(cell);
}

void KdColourModel::learn(const cv::Mat& lab, const cv::Mat& mask, const cv::Mat& weight, int chin)
{
    m_chin = chin;
    for (std::size_t cell = 0; cell < kCells; ++cell) {
        forget(m_person[cell], std::size_t{1} << (3 * kBits));
        forget(m_background[cell], std::size_t{1} << (3 * kBits));
    }
    for (int y = 0; y < lab.rows; ++y) {
        for (int x = 0; x < lab.cols; ++x) {
            const auto bin = static_cast<std::size_t>(binOf<kBits>(lab.at<cv::Vec3b>(y, x)));
            const std::size_t cell = cellOf(x, y, lab.cols);
            const float trust = weight.at<float>(y, x);
            const float person = mask.at<float>(y, x);
            m_person[cell][bin] += trust * person;
            m_background[cell][bin] += trust * (1.0F - person);
        }
    }
    updateRatios();
}

KdColourModel::Histogram KdColourModel::sharesIn(const Histograms& all, std::size_t cell)
{
    Histogram result(all[cell].size());
    for (std::size_t other = 0; other < all.size(); ++other) {
        const bool isSameRows = cell / kColumns == other / kColumns;
        const float part = cell == other ? 1.0F : isSameRows ? kSameRows : kOtherRows;
        for (std::size_t i = 0; i < result.size(); ++i) {
            result[i] += part * all[other][i];
        }
    }
    for (const int stride : {1, kSide, kSide * kSide}) {
        blurAlong(result, stride, kSide);
    }
    normalise(result);
    return result;
}

void KdColourModel::updateRatios()
{
    for (std::size_t cell = 0; cell < kCells; ++cell) {
        const Histogram background = sharesIn(m_background, cell);
        m_ratio[cell] = sharesIn(m_person, cell);
        for (std::size_t i = 0; i < background.size(); ++i) {
            const float ratio = (m_ratio[cell][i] + kUnknown) / (background[i] + kUnknown);
            m_ratio[cell][i] = std::clamp(std::log(ratio), -kStrongest, kStrongest);
        }
    }
}

cv::Mat KdColourModel::evidence(const cv::Mat& lab) const
{
    cv::Mat result = cv::Mat::zeros(lab.size(), CV_32F);
    for (int y = 0; y < lab.rows && !m_ratio[0].empty(); ++y) {
        for (int x = 0; x < lab.cols; ++x) {
            const auto bin = static_cast<std::size_t>(binOf<kBits>(lab.at<cv::Vec3b>(y, x)));
            result.at<float>(y, x) = m_ratio[cellOf(x, y, lab.cols)][bin];
        }
    }
    return result;
}
