#include <KdVBLModel/KdHeadTrack.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr std::size_t kPathLength = 15;
constexpr float kHeldStill = 0.05F; ///< of the face's width, what a still face's square jitters by
constexpr float kMoving = 0.15F;

cv::Point2f middleOf(const cv::Rect2f& face)
{
    return {face.x + face.width / 2.0F, face.y + face.height / 2.0F};
}

} // namespace

cv::Point2f KdHeadTrack::see(const cv::Rect2f& face, double seconds)
{
    const cv::Point2f moved = m_face ? middleOf(face) - middleOf(*m_face) : cv::Point2f(0.0F, 0.0F);
    m_face = face;
    m_seenAt = seconds;
    m_path.push_back(middleOf(face));
    if (m_path.size() > kPathLength) {
        m_path.pop_front();
    }
    return moved;
}

void KdHeadTrack::forget()
{
    m_face.reset();
    m_path.clear();
}

float KdHeadTrack::movement() const
{
    if (m_path.empty()) {
        return 0.0F;
    }
    const auto byX = [](const cv::Point2f& a, const cv::Point2f& b) { return a.x < b.x; };
    const auto byY = [](const cv::Point2f& a, const cv::Point2f& b) { return a.y < b.y; };
    const auto x = std::minmax_element(m_path.begin(), m_path.end(), byX);
    const auto y = std::minmax_element(m_path.begin(), m_path.end(), byY);
    const float reach = std::hypot(x.second->x - x.first->x, y.second->y - y.first->y);
    return std::clamp((reach / m_face->width - kHeldStill) / (kMoving - kHeldStill), 0.0F, 1.0F);
}

int KdHeadTrack::chin(int height) const
{
    return m_face ? std::clamp(cvRound(m_face->y + 1.1F * m_face->height), 0, height) : height;
}
