#pragma once

#include <KdVBLModel/KdMatte.h>
#include <KdVBLModel/KdVBLModelExport.h>

/** Puts a treatment of the background into a frame: values, no state. Frames are CV_8UC4, BGRA. */
namespace KdBackgroundPaint {

/** Makes the background transparent, and black under that. */
KDVBLMODEL_EXPORT void remove(cv::Mat& frame, const KdMatte& matte);

/**
 * Blurs the background. No colour of the person runs into it.
 * @param small the frame as the matte got it.
 */
KDVBLMODEL_EXPORT void blur(cv::Mat& frame, const cv::Mat& small, const KdMatte& matte);

} // namespace KdBackgroundPaint
