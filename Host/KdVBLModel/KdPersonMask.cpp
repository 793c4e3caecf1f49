#include <KdVBLModel/KdPersonMask.h>

#include <KdVBLModel/KdMaskCut.h>
#include <KdVBLModel/KdPersonShape.h>

#include <opencv2/imgproc.hpp>

#include <algorithm>

namespace {

// How much the four voices count. Found by trying, on the clips of the benchmark.
constexpr float kShape = 0.8F;
constexpr float kColour = 1.0F;
constexpr float kScene = 0.8F;
constexpr float kStillness = 2.5F;
constexpr float kStillBody = 0.25F; ///< a body is often held still while the head moves
constexpr float kBefore = 0.2F;     ///< for what the last picture's mask was
constexpr float kStiffness = 12.0F;

constexpr int kFirstRounds = 3;
constexpr float kFollow = 0.8F;        ///< how far the mask goes to the new border in one picture
constexpr double kTurnedAway = 1.0;    ///< seconds without a face until its place counts less
constexpr double kLeft = 5.0;          ///< seconds without a face and movement: nobody is there
constexpr double kQuiet = 2.0;         ///< seconds until an empty scene is learned
constexpr float kMovingInMask = 0.02F; ///< share of the mask

cv::Mat smallLab(const cv::Mat& picture)
{
    cv::Mat small;
    cv::resize(picture, small, {picture.cols / 2, picture.rows / 2}, 0, 0, cv::INTER_AREA);
    cv::Mat lab;
    cv::cvtColor(small, lab, cv::COLOR_BGR2Lab);
    return lab;
}

void shift(cv::Mat& mask, const cv::Point2f& by)
{
    const cv::Matx23f move(1.0F, 0.0F, by.x, 0.0F, 1.0F, by.y);
    cv::warpAffine(mask, mask, move, mask.size(), cv::INTER_LINEAR, cv::BORDER_REPLICATE);
}

} // namespace

KdPersonMask::KdPersonMask(const QString& modelFolder) : m_faces(modelFolder) {}

cv::Size KdPersonMask::pictureSize(cv::Size frame)
{
    const int height = cvRound(static_cast<double>(kPictureWidth) * frame.height / frame.width);
    return {kPictureWidth, std::clamp(height / 2 * 2, 16, 2 * kPictureWidth)};
}

cv::Size KdPersonMask::maskSize(cv::Size frame)
{
    const cv::Size picture = pictureSize(frame);
    return {picture.width / 2, picture.height / 2};
}

void KdPersonMask::reset()
{
    m_faces.reset();
    m_head.forget();
    m_colours.reset();
    m_scene.reset();
    m_cut.release();
    m_mask.release();
}

cv::Mat KdPersonMask::update(const cv::Mat& picture, double seconds)
{
    const cv::Mat lab = smallLab(picture);
    if (lab.size() != m_size) {
        reset();
        m_size = lab.size();
        m_emptySince = seconds;
    }
    m_scene.see(lab);
    follow(picture, seconds);
    if (!m_head.face() || hasLeft(seconds)) {
        return nobody(seconds);
    }
    const cv::Mat shapeNow = shape(seconds);
    if (m_cut.empty()) {
        m_cut = firstCut(lab, shapeNow);
        m_mask = m_cut.clone();
    } else {
        m_cut = cut(lab, shapeNow);
        m_mask += kFollow * (m_cut - m_mask);
    }
    learnColours(lab, m_cut, shapeNow);
    m_scene.learn(m_mask);
    return m_mask.clone();
}

void KdPersonMask::follow(const cv::Mat& picture, double seconds)
{
    cv::Mat grey;
    cv::cvtColor(picture, grey, cv::COLOR_BGR2GRAY);
    const std::optional<cv::Rect2f> face = m_faces.find(grey);
    if (!face) {
        return;
    }
    const cv::Rect2f inMask(face->x / 2, face->y / 2, face->width / 2, face->height / 2);
    const cv::Point2f moved = m_head.see(inMask, seconds);
    m_movedAt = seconds;
    if (!m_cut.empty()) {
        shift(m_cut, moved);
    }
}

bool KdPersonMask::hasLeft(double seconds)
{
    if (!m_mask.empty() && m_scene.unrestWithin(m_mask) > kMovingInMask) {
        m_movedAt = seconds;
    }
    return seconds - m_movedAt > kLeft;
}

/** An empty room is worth knowing; someone who was not noticed must not be taken for one. */
cv::Mat KdPersonMask::nobody(double seconds)
{
    const cv::Mat all(m_size, CV_32F, cv::Scalar(1.0));
    cv::Mat none = cv::Mat::zeros(m_size, CV_32F);
    if (!m_cut.empty()) {
        m_head.forget();
        m_faces.reset();
        m_colours.reset();
        m_cut.release();
        m_mask.release();
        m_emptySince = seconds;
    }
    if (m_scene.unrestWithin(all) > kMovingInMask / 4.0F) {
        m_emptySince = seconds;
    } else if (seconds - m_emptySince > kQuiet) {
        m_scene.learn(none);
    }
    return none;
}

cv::Mat KdPersonMask::shape(double seconds) const
{
    const cv::Mat evidence = KdPersonShape::evidence(m_size, *m_head.face());
    const double late = std::max(m_head.absence(seconds) - kTurnedAway, 0.0);
    return evidence * std::max(1.0 - 0.35 * late, 0.3);
}

cv::Mat KdPersonMask::firstCut(const cv::Mat& lab, const cv::Mat& shapeNow)
{
    cv::Mat mask;
    cv::Mat(shapeNow > 0.0F).convertTo(mask, CV_32F, 1.0 / 255.0);
    for (int round = 0; round < kFirstRounds; ++round) {
        learnColours(lab, mask, shapeNow);
        mask = cut(lab, shapeNow);
    }
    return mask;
}

cv::Mat KdPersonMask::cut(const cv::Mat& lab, const cv::Mat& shapeNow) const
{
    cv::Mat still = m_scene.stillness() * m_head.movement();
    still.rowRange(m_head.chin(still.rows), still.rows) *= kStillBody;
    cv::Mat evidence = kShape * shapeNow + kColour * m_colours.evidence(lab) +
                       kScene * m_scene.evidence() - kStillness * still;
    if (!m_cut.empty()) {
        evidence += kBefore * (2.0F * m_cut - 1.0F);
    }
    return kdCutMask(lab, evidence, still, kStiffness);
}

/** Where mask and shape disagree the mask may be wrong: a model that learns its errors keeps them.
 */
void KdPersonMask::learnColours(const cv::Mat& lab, const cv::Mat& mask, const cv::Mat& shapeNow)
{
    cv::Mat trust(mask.size(), CV_32F);
    for (int y = 0; y < mask.rows; ++y) {
        for (int x = 0; x < mask.cols; ++x) {
            const float agrees = shapeNow.at<float>(y, x) * (2.0F * mask.at<float>(y, x) - 1.0F);
            trust.at<float>(y, x) = std::clamp(0.25F * agrees - 0.5F, 0.05F, 1.0F);
        }
    }
    m_colours.learn(lab, mask, trust, m_head.chin(mask.rows));
}
