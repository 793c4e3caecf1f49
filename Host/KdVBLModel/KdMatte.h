#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <opencv2/core.hpp>

/**
 * A mask of low resolution fitted to the edges of one frame, so that it can be laid over the frame
 * at full resolution. A value; any thread.
 */
class KDVBLMODEL_EXPORT KdMatte
{
public:
    enum Region : uchar
    {
        Background,
        Rim,
        Person
    };

    /**
     * @param small the frame, scaled to the mask's size; CV_8UC3, BGR.
     * @param mask CV_32F, 0 to 1; may be some frames old: its border moves to the near edges.
     */
    KdMatte(const cv::Mat& small, const cv::Mat& mask);

    /** @return where in the small frame (CV_8U, Region) there is anything to compute. */
    const cv::Mat& regions() const { return m_regions; }
    /** @return the share of person in each pixel of the small frame, CV_32F. */
    const cv::Mat& small() const { return m_small; }

    /**
     * The shares of person, 0 to 255, in a row of the full frame.
     * @param pixels the row, 4 bytes each, blue first.
     * @param shares gets as many values as the row has pixels.
     */
    void row(const uchar* pixels, int y, cv::Size frame, uchar* shares) const;

private:
    void fit(const cv::Mat& colours, const cv::Mat& mask);
    void estimate(const cv::Mat& colours);

    cv::Mat m_factors; ///< CV_32FC4: share = b * f0 + g * f1 + r * f2 + f3, colours 0 to 1
    cv::Mat m_regions;
    cv::Mat m_small;
};
