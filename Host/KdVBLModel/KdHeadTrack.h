#pragma once

#include <opencv2/core.hpp>

#include <deque>
#include <optional>

/** Where the face was seen last, and how much it moved about lately. Positions in pixels of the
 * mask. */
class KdHeadTrack
{
public:
    /** @return how far it moved since it was seen last. */
    cv::Point2f see(const cv::Rect2f& face, double seconds);
    void forget();

    const std::optional<cv::Rect2f>& face() const { return m_face; }
    /** @return seconds since it was seen last. */
    double absence(double seconds) const { return seconds - m_seenAt; }
    /** @return 0 for a head that is held still to 1 for one that is not. */
    float movement() const;
    /** @return the first row below the head, within a picture of that height. */
    int chin(int height) const;

private:
    std::optional<cv::Rect2f> m_face;
    double m_seenAt = 0.0;
    std::deque<cv::Point2f> m_path; ///< of the last second or so
};
