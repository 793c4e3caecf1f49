#include <KdVBLModel/KdFaceFinder.h>

#include <opencv2/imgproc.hpp>

#include <QFile>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

constexpr int kPatience = 5;       ///< pictures without a face until all of the picture is searched
constexpr int kSearchInterval = 4; ///< without a face: pictures between two searches

const auto kFrontalName = QLatin1String("/haarcascades/haarcascade_frontalface_alt2.xml");
const auto kProfileName = QLatin1String("/haarcascades/haarcascade_profileface.xml");

void load(cv::CascadeClassifier& cascade, const QString& path)
{
    if (QFile::exists(path)) {
        cascade.load(QFile::encodeName(path).toStdString());
    }
}

/** The frontal description sees brows to chin; the profile's square is larger than that. */
cv::Rect2f faceOf(const cv::Rect& found, bool isProfile)
{
    const auto side = static_cast<float>(found.width) * (isProfile ? 0.85F : 1.0F);
    const auto middle = [](int start, int length) {
        return static_cast<float>(start) + static_cast<float>(length) / 2.0F;
    };
    return {middle(found.x, found.width) - side / 2.0F, middle(found.y, found.height) - side / 2.0F,
            side, side};
}

} // namespace

QString KdFaceFinder::modelFolder()
{
    const QStringList folders = modelFolders();
    const auto found = std::find_if(folders.begin(), folders.end(), [](const QString& folder) {
        return QFile::exists(folder + kFrontalName);
    });
    return found == folders.end() ? QString() : *found;
}

KdFaceFinder::KdFaceFinder(const QString& folder)
{
    load(m_frontal, folder + kFrontalName);
    load(m_profile, folder + kProfileName);
}

void KdFaceFinder::reset()
{
    m_last.reset();
    m_misses = 0;
}

std::optional<cv::Rect2f> KdFaceFinder::find(const cv::Mat& grey)
{
    std::optional<cv::Rect2f> face = m_last ? lookNearLast(grey) : std::nullopt;
    if (!face && (!m_last || m_misses >= kPatience) && m_misses % kSearchInterval == 0) {
        face = lookEverywhere(grey);
    }
    if (!face) {
        ++m_misses;
        return std::nullopt;
    }
    m_misses = 0;
    m_last = smoothed(*face);
    return m_last;
}

std::optional<cv::Rect2f> KdFaceFinder::lookNearLast(const cv::Mat& grey)
{
    const cv::Rect2f& last = *m_last;
    const cv::Rect around(cvFloor(last.x - 0.7F * last.width), cvFloor(last.y - 0.7F * last.height),
                          cvCeil(2.4F * last.width), cvCeil(2.4F * last.height));
    const cv::Rect area = around & cv::Rect({}, grey.size());
    const int smallest = cvRound(last.width * 0.75F);
    const int largest = cvRound(last.width * 1.5F);
    return look(grey, m_lastView, area, {smallest, smallest}, {largest, largest});
}

std::optional<cv::Rect2f> KdFaceFinder::lookEverywhere(const cv::Mat& grey)
{
    const int smallest = std::max(24, grey.rows / 7);
    for (const View view : {View::Frontal, View::Profile, View::MirroredProfile}) {
        if (const auto face =
                look(grey, view, cv::Rect({}, grey.size()), {smallest, smallest}, {})) {
            m_lastView = view;
            return face;
        }
    }
    return std::nullopt;
}

std::optional<cv::Rect2f> KdFaceFinder::look(const cv::Mat& grey, View view, const cv::Rect& area,
                                             cv::Size smallest, cv::Size largest)
{
    cv::CascadeClassifier& cascade = view == View::Frontal ? m_frontal : m_profile;
    if (cascade.empty() || area.width < 20 || area.height < 20) {
        return std::nullopt;
    }
    cv::Mat searched = grey(area);
    if (view == View::MirroredProfile) {
        cv::flip(searched.clone(), searched, 1);
    }
    std::vector<cv::Rect> found;
    cascade.detectMultiScale(searched, found, 1.15, 4, 0, smallest, largest);
    if (found.empty()) {
        return std::nullopt;
    }
    const auto smaller = [](const cv::Rect& a, const cv::Rect& b) { return a.width < b.width; };
    cv::Rect best = *std::max_element(found.begin(), found.end(), smaller);
    if (view == View::MirroredProfile) {
        best.x = area.width - best.x - best.width;
    }
    return faceOf(best + area.tl(), view != View::Frontal);
}

/** The square jitters by a few pixels on a face that does not move. */
cv::Rect2f KdFaceFinder::smoothed(const cv::Rect2f& face)
{
    if (!m_last) {
        return face;
    }
    const float moved = std::hypot(face.x - m_last->x, face.y - m_last->y) / face.width;
    const float weight = std::clamp(4.0F * moved, 0.3F, 1.0F);
    const auto mix = [weight](float before, float now) { return before + weight * (now - before); };
    return {mix(m_last->x, face.x), mix(m_last->y, face.y), mix(m_last->width, face.width),
            mix(m_last->height, face.height)};
}
