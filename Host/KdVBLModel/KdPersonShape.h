#pragma once

#include <opencv2/core.hpp>

/** What a person before a camera looks like, given the face: values, no state. */
namespace KdPersonShape {

/**
 * @param face a square from brows to chin, in pixels of the result; may reach over its edges.
 * @return for each pixel (CV_32F) how much speaks for head, neck and body being there: above 0 for,
 * below 0 against, at most kCertain either way.
 */
cv::Mat evidence(cv::Size size, const cv::Rect2f& face);

constexpr float kCertain = 10.0F;

} // namespace KdPersonShape
