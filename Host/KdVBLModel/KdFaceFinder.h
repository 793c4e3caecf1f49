#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <opencv2/core.hpp>
#include <opencv2/objdetect.hpp>

#include <QString>
#include <QStringList>

#include <optional>

/**
 * Where the person's face is, from frame to frame. Near the last face it looks in every picture,
 * elsewhere and for faces in profile only now and then, since that takes long. One thread.
 */
class KDVBLMODEL_EXPORT KdFaceFinder
{
public:
    /** @return the folder with the descriptions of faces that OpenCV brings; empty without one. */
    static QString modelFolder();

    /** @param folder holds the descriptions; without them no face is ever found. */
    explicit KdFaceFinder(const QString& folder = modelFolder());

    /** @return whether the description of a face could be read. */
    bool isUsable() const { return !m_frontal.empty(); }

    /**
     * @param grey one picture, about 320 wide.
     * @return a square from brows to chin, in pixels, smoothed over time; of several faces the one
     * that was there before, else the largest. Nothing when there is none in this picture.
     */
    std::optional<cv::Rect2f> find(const cv::Mat& grey);

    void reset();

private:
    /** Where the folder with the descriptions may lie, on this system. */
    static QStringList modelFolders();

    enum class View
    {
        Frontal,
        Profile,
        MirroredProfile
    };

    std::optional<cv::Rect2f> look(const cv::Mat& grey, View view, const cv::Rect& area,
                                   cv::Size smallest, cv::Size largest);
    std::optional<cv::Rect2f> lookNearLast(const cv::Mat& grey);
    std::optional<cv::Rect2f> lookEverywhere(const cv::Mat& grey);
    cv::Rect2f smoothed(const cv::Rect2f& face);

    cv::CascadeClassifier m_frontal;
    cv::CascadeClassifier m_profile;
    std::optional<cv::Rect2f> m_last;
    View m_lastView = View::Frontal;
    int m_misses = 0; ///< pictures since the last face
};
