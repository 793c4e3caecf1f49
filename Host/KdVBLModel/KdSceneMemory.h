#pragma once

#include <opencv2/core.hpp>

/**
 * What the camera has seen so far of the scene behind the person, pixel by pixel, and where the
 * picture stands still. Pictures are CV_8UC3 in Lab, masks CV_32F from 0 to 1.
 */
class KdSceneMemory
{
public:
    /** Takes in a picture; before evidence(). Evens out light that changes all over. */
    void see(const cv::Mat& lab);

    /**
     * @return for each pixel (CV_32F) how much speaks for the person: below 0 where it looks like
     * the background that was seen there, above 0 where it does not, 0 where none was seen yet.
     */
    cv::Mat evidence() const;

    /**
     * @return for each pixel (CV_32F, 0 to 1) whether there is something to be seen that has not
     * changed for a while, as nothing on a person who moves does.
     */
    cv::Mat stillness() const;

    /** @return how much of a mask's area changed within about a second, from 0 to 1. */
    float unrestWithin(const cv::Mat& mask) const;

    /** Learns the background of the last picture seen. @param mask above a quarter is person. */
    void learn(const cv::Mat& mask);

    void reset();

private:
    void evenOut(const cv::Mat& lab);

    cv::Mat m_picture;    ///< CV_32FC3, the last one, its light evened out
    cv::Mat m_background; ///< CV_32FC3
    cv::Mat m_spread;     ///< CV_32F, variance around the background
    cv::Mat m_count;      ///< CV_32F, how often the background was seen
    cv::Mat m_average;    ///< CV_32FC3, of all pictures, person or not
    cv::Mat m_unrest;     ///< CV_32F, variance around that
    float m_seen = 0.0F;
    float m_noise = 9.0F; ///< variance of a pixel that does not change
};
