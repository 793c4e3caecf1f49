#pragma once

#include <opencv2/core.hpp>

/** A drawing, just good enough to be taken for a person, before a background of many colours. */
class DrawnPerson
{
public:
    explicit DrawnPerson(cv::Size size = {640, 360});

    /** @param aside where the head's middle is, as a share of the width. @return CV_8UC4, opaque.
     */
    cv::Mat frame(double aside = 0.5, unsigned noise = 1) const;
    /** @return the empty room. */
    cv::Mat room(unsigned noise = 1) const;
    /** @return CV_8U, 255 on the person. */
    cv::Mat truth(double aside = 0.5) const;

private:
    cv::Mat m_background; ///< CV_8UC3
};
