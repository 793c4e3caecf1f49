#pragma once

#include <KdVBLModel/KdColourModel.h>
#include <KdVBLModel/KdFaceFinder.h>
#include <KdVBLModel/KdHeadTrack.h>
#include <KdVBLModel/KdSceneMemory.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <opencv2/core.hpp>

/**
 * Where in a webcam's picture the person is.
 *
 * Four things speak for or against each pixel: where it lies from the face, its colour, the
 * background that was seen there before, and whether it stands still while the head moves. The best
 * border through all that is found anew in every picture, and smoothed over time.
 *
 * Until a face is seen, nobody is there. A person who turns away is kept for as long as anything
 * moves within the mask; when nothing does for a while, the person has left. One thread; the same
 * pictures at the same times give the same masks.
 */
class KDVBLMODEL_EXPORT KdPersonMask
{
public:
    static constexpr int kPictureWidth = 320; ///< of the pictures that it wants

    explicit KdPersonMask(const QString& modelFolder = KdFaceFinder::modelFolder());

    /** @return the size of picture that it wants for frames of this size. */
    static cv::Size pictureSize(cv::Size frame);
    /** @return the size of the masks for frames of this size: half of that. */
    static cv::Size maskSize(cv::Size frame);

    /**
     * @param picture CV_8UC3, BGR, of pictureSize(); a change of size begins a new scene.
     * @param seconds when it was taken, on any clock that runs forward.
     * @return CV_32F, of maskSize(): 1 on the person, 0 on the background.
     */
    cv::Mat update(const cv::Mat& picture, double seconds);

private:
    void reset();
    void follow(const cv::Mat& picture, double seconds);
    bool hasLeft(double seconds);
    cv::Mat nobody(double seconds);
    cv::Mat shape(double seconds) const;
    cv::Mat firstCut(const cv::Mat& lab, const cv::Mat& shape);
    cv::Mat cut(const cv::Mat& lab, const cv::Mat& shape) const;
    void learnColours(const cv::Mat& lab, const cv::Mat& mask, const cv::Mat& shape);

    KdFaceFinder m_faces;
    KdHeadTrack m_head;
    KdColourModel m_colours;
    KdSceneMemory m_scene;
    double m_movedAt = 0.0; ///< when something last moved within the mask
    double m_emptySince = 0.0;
    cv::Size m_size;
    cv::Mat m_cut;  ///< CV_32F, 0 or 1; empty while nobody is there
    cv::Mat m_mask; ///< that, smoothed over time
};
