#pragma once

#include <opencv2/core.hpp>

#include <array>
#include <vector>

/**
 * Which colours the person has and which the background, learned from masks over time, for the
 * left, middle and right of the picture apart, and for the rows of the head and of the body: a sky
 * behind a head may have the colour of the shirt below it. Pictures are CV_8UC3 in Lab, masks
 * CV_32F from 0 to 1.
 */
class KdColourModel
{
public:
    /**
     * Learns from one picture.
     * @param mask how much of each pixel is person.
     * @param weight how far each pixel's mask is to be trusted.
     * @param chin the first row of the body.
     */
    void learn(const cv::Mat& lab, const cv::Mat& mask, const cv::Mat& weight, int chin);

    /** @return for each pixel (CV_32F) how much its colour speaks for the person, as a log ratio.
     */
    cv::Mat evidence(const cv::Mat& lab) const;

    void reset();

private:
    static constexpr int kBits = 4;
    static constexpr int kSide = 1 << kBits;
    static constexpr int kColumns = 3;
    static constexpr int kCells = 2 * kColumns;
    using Histogram = std::vector<float>;

    using Histograms = std::array<Histogram, kCells>;

    static Histogram sharesIn(const Histograms& all, std::size_t cell);
    std::size_t cellOf(int x, int y, int width) const;
    void updateRatios();

    Histograms m_person;
    Histograms m_background;
    Histograms m_ratio;
    int m_chin = 0;
};
