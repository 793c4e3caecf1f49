#pragma once

#include <opencv2/core.hpp>

#include <QString>

#include <string>
#include <vector>

/** A person cut out of a photograph, with the outline that the cut follows. */
struct ClipPerson
{
    std::string name;
    QString path;                   ///< of the photograph
    cv::Rect part;                  ///< of the photograph that is used
    std::vector<cv::Point> outline; ///< roughly, in pixels of the photograph
    double height;                  ///< of the part, as a share of the frame's height
};

/**
 * A clip of a person who sways, nods, leans and walks aside before a background that stands still,
 * under light that flickers and with a camera's noise. The true mask is what it was composed with.
 */
class PersonClip
{
public:
    /** @return the persons whose photographs Debian's packages opencv-doc and python3-skimage hold.
     */
    static std::vector<ClipPerson> persons();
    /** @return paths of photographs that make textured backgrounds, from the same packages. */
    static std::vector<QString> backgrounds();

    PersonClip(const ClipPerson& person, const QString& background, cv::Size size, unsigned seed);

    bool isValid() const { return !m_background.empty() && !m_cutOut.empty(); }
    /** Composes the frame of that moment. @param truth gets the share of person in each pixel,
     * CV_32F. */
    cv::Mat frame(double seconds, cv::Mat& truth);

private:
    cv::Mat m_background; ///< CV_32FC3
    cv::Mat m_cutOut;     ///< CV_32FC4, premultiplied
    double m_height;
    cv::RNG m_random;
};
