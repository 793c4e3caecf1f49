#include "PersonClip.h"

#include <opencv2/imgproc.hpp>

#include <QImage>

#include <algorithm>
#include <cmath>

namespace {

const auto kPhotographs = QStringLiteral("/usr/share/doc/opencv-doc/opencv4/html/");
const auto kSamples = QStringLiteral("/usr/share/doc/opencv-doc/examples/data/");
const auto kScience = QStringLiteral("/usr/lib/python3/dist-packages/skimage/data/");

cv::Mat load(const QString& path)
{
    const QImage image = QImage(path).convertToFormat(QImage::Format_RGB888);
    if (image.isNull()) {
        return {};
    }
    const cv::Mat rgb(image.height(), image.width(), CV_8UC3, const_cast<uchar*>(image.constBits()),
                      static_cast<std::size_t>(image.bytesPerLine()));
    cv::Mat bgr;
    cv::cvtColor(rgb, bgr, cv::COLOR_RGB2BGR);
    return bgr;
}

cv::Mat ellipse(int radius)
{
    return cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * radius + 1, 2 * radius + 1});
}

/** Where along the outline the person ends exactly, the picture's own edges tell. */
cv::Mat startingPoint(const cv::Mat& outlined, int band)
{
    cv::Mat padded;
    cv::copyMakeBorder(outlined, padded, band, band, band, band, cv::BORDER_REPLICATE);
    const cv::Rect inside(band, band, outlined.cols, outlined.rows);
    cv::Mat inner;
    cv::erode(padded, inner, ellipse(band));
    cv::Mat outer;
    cv::dilate(padded, outer, ellipse(band));
    cv::Mat labels(outlined.size(), CV_8U, cv::Scalar(cv::GC_BGD));
    labels.setTo(cv::GC_PR_BGD, outer(inside));
    labels.setTo(cv::GC_PR_FGD, outlined);
    labels.setTo(cv::GC_FGD, inner(inside));
    return labels;
}

cv::Mat largestPart(const cv::Mat& mask)
{
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centres;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centres);
    int best = 1;
    for (int i = 2; i < count; ++i) {
        if (stats.at<int>(i, cv::CC_STAT_AREA) > stats.at<int>(best, cv::CC_STAT_AREA)) {
            best = i;
        }
    }
    return labels == best;
}

/** @return CV_32FC4, premultiplied. */
cv::Mat cutOut(const ClipPerson& person)
{
    const cv::Mat photograph = load(person.path);
    if (photograph.empty()) {
        return {};
    }
    cv::Mat outlined = cv::Mat::zeros(photograph.size(), CV_8U);
    cv::fillPoly(outlined, std::vector<std::vector<cv::Point>>{person.outline}, cv::Scalar(255));
    const cv::Mat part = photograph(person.part).clone();
    cv::Mat labels = startingPoint(outlined(person.part), std::max(4, person.part.height / 50));
    cv::Mat backgroundModel;
    cv::Mat personModel;
    cv::setRNGSeed(1);
    cv::grabCut(part, labels, {}, backgroundModel, personModel, 4, cv::GC_INIT_WITH_MASK);
    cv::Mat alpha = (labels & 1) * 255;
    cv::medianBlur(alpha, alpha, 7);
    alpha = 255 - largestPart(255 - largestPart(alpha));
    cv::GaussianBlur(alpha, alpha, {}, 1.2);
    cv::Mat share;
    alpha.convertTo(share, CV_32F, 1 / 255.0);
    std::vector<cv::Mat> channels;
    cv::Mat colours;
    part.convertTo(colours, CV_32FC3);
    cv::split(colours, channels);
    for (cv::Mat& channel : channels) {
        channel = channel.mul(share);
    }
    channels.push_back(share);
    cv::Mat result;
    cv::merge(channels, result);
    return result;
}

cv::Mat backgroundOf(const QString& path, cv::Size size)
{
    const cv::Mat photograph = load(path);
    if (photograph.empty()) {
        return {};
    }
    const double scale = std::max(static_cast<double>(size.width) / photograph.cols,
                                  static_cast<double>(size.height) / photograph.rows);
    cv::Mat scaled;
    cv::resize(photograph, scaled, {}, scale + 1e-3, scale + 1e-3, cv::INTER_CUBIC);
    const cv::Rect middle({(scaled.cols - size.width) / 2, (scaled.rows - size.height) / 2}, size);
    cv::Mat result;
    scaled(middle).convertTo(result, CV_32FC3);
    return result;
}

double step(double at)
{
    return at < 0.0 ? 0.0 : at > 1.0 ? 1.0 : at * at * (3.0 - 2.0 * at);
}

/** Holds still in the third second. */
double swayTime(double seconds)
{
    return seconds < 2.0 ? seconds : std::max(2.0, seconds - 1.0);
}

/** Sits and sways a little; from the fourth second on moves aside, and back from the seventh. */
cv::Matx23d placeAt(double seconds, double height, cv::Size frame, cv::Size cut)
{
    const double sway = swayTime(seconds);
    const double scale = height * frame.height / cut.height * (1.0 + 0.01 * std::sin(sway * 1.6));
    const double turn = 0.03 * std::sin(sway * 1.1);
    const double aside = 0.16 * (step((seconds - 4.0) / 1.2) - step((seconds - 7.0) / 1.5));
    const double x = frame.width * (0.47 + 0.006 * std::sin(sway * 0.9) + aside);
    const double y = frame.height * (1.04 + 0.004 * std::sin(sway * 2.3));
    const double c = scale * std::cos(turn);
    const double s = scale * std::sin(turn);
    const double footX = cut.width / 2.0;
    const double footY = cut.height;
    return {c, -s, x - c * footX + s * footY, s, c, y - s * footX - c * footY};
}

/** Moves the head alone: rows shift against each other, most at the top, not at all below the neck.
 */
void moveHead(cv::Mat& person, double seconds)
{
    const double sway = swayTime(seconds);
    const double reach = person.cols * 0.02 * std::sin(sway * 3.1) * std::cos(sway * 0.7);
    const double nod = person.rows * 0.008 * std::sin(sway * 4.3);
    cv::Mat map(person.size(), CV_32FC2);
    for (int y = 0; y < map.rows; ++y) {
        const double share = 1.0 - step((static_cast<double>(y) / map.rows - 0.45) / 0.3);
        for (int x = 0; x < map.cols; ++x) {
            map.at<cv::Vec2f>(y, x) = {static_cast<float>(x - share * reach),
                                       static_cast<float>(y - share * nod)};
        }
    }
    cv::Mat moved;
    cv::remap(person, moved, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    person = moved;
}

} // namespace

std::vector<ClipPerson> PersonClip::persons()
{
    using Points = std::vector<cv::Point>;
    const Points shirt = {{0, 434},   {0, 402},   {20, 366},  {45, 335},  {100, 302}, {148, 274},
                          {165, 268}, {168, 262}, {160, 250}, {148, 210}, {145, 140}, {150, 100},
                          {155, 80},  {170, 55},  {200, 30},  {215, 22},  {250, 28},  {290, 53},
                          {308, 75},  {314, 110}, {313, 150}, {319, 153}, {316, 182}, {302, 206},
                          {290, 212}, {288, 268}, {330, 294}, {380, 325}, {415, 343}, {434, 368},
                          {434, 434}};
    const Points jacket = {{0, 824},   {2, 760},   {8, 660},   {22, 595},  {50, 550},  {75, 538},
                           {110, 548}, {150, 548}, {200, 533}, {215, 520}, {190, 470}, {184, 400},
                           {184, 330}, {178, 270}, {186, 215}, {194, 165}, {218, 138}, {264, 105},
                           {327, 86},  {382, 84},  {436, 98},  {473, 130}, {496, 170}, {504, 210},
                           {502, 280}, {498, 328}, {523, 318}, {537, 340}, {528, 392}, {510, 446},
                           {492, 452}, {488, 490}, {480, 545}, {500, 570}, {527, 590}, {560, 605},
                           {578, 680}, {584, 760}, {584, 824}};
    const Points suit = {{20, 512},  {22, 400},  {28, 340},  {45, 280},  {80, 230},  {113, 205},
                         {114, 185}, {128, 162}, {150, 150}, {182, 148}, {186, 138}, {178, 125},
                         {160, 112}, {153, 85},  {163, 52},  {195, 38},  {205, 24},  {232, 15},
                         {265, 22},  {295, 45},  {302, 85},  {292, 115}, {275, 133}, {268, 150},
                         {257, 175}, {285, 200}, {303, 232}, {307, 246}, {335, 258}, {350, 300},
                         {362, 350}, {400, 345}, {440, 355}, {472, 382}, {490, 420}, {500, 455},
                         {508, 480}, {512, 512}};
    const Points close = {{0, 470},   {0, 418},   {40, 405},  {110, 397}, {150, 380}, {190, 345},
                          {205, 316}, {195, 290}, {178, 235}, {165, 190}, {148, 165}, {140, 60},
                          {146, 20},  {484, 20},  {492, 60},  {494, 130}, {488, 190}, {478, 220},
                          {470, 260}, {472, 300}, {465, 345}, {497, 378}, {497, 470}};
    return {
        {"shirt", kPhotographs + QStringLiteral("227943776_1.jpg"), {0, 0, 434, 434}, shirt, 0.93},
        {"jacket",
         kPhotographs + QStringLiteral("230501201_1.jpg"),
         {0, 0, 584, 824},
         jacket,
         1.02},
        {"suit", kScience + QStringLiteral("astronaut.png"), {0, 0, 512, 512}, suit, 1.0},
        {"close", kPhotographs + QStringLiteral("12.jpg"), {0, 20, 497, 450}, close, 1.08}};
}

std::vector<QString> PersonClip::backgrounds()
{
    return {kScience + QStringLiteral("motorcycle_left.png"),
            kSamples + QStringLiteral("aloeL.jpg"),
            kSamples + QStringLiteral("leuvenA.jpg"),
            kSamples + QStringLiteral("rubberwhale1.png"),
            kSamples + QStringLiteral("building.jpg"),
            kSamples + QStringLiteral("graf1.png")};
}

PersonClip::PersonClip(const ClipPerson& person, const QString& background, cv::Size size,
                       unsigned seed)
    : m_background(backgroundOf(background, size))
    , m_cutOut(cutOut(person))
    , m_height(person.height)
    , m_random(seed)
{
}

cv::Mat PersonClip::frame(double seconds, cv::Mat& truth)
{
    const cv::Matx23d place = placeAt(seconds, m_height, m_background.size(), m_cutOut.size());
    cv::Mat person;
    cv::warpAffine(m_cutOut, person, place, m_background.size(), cv::INTER_LINEAR);
    moveHead(person, seconds);
    cv::extractChannel(person, truth, 3);
    cv::Mat noise(m_background.size(), CV_32FC3);
    m_random.fill(noise, cv::RNG::NORMAL, 0.0, 3.0);
    const double light = 1.0 + 0.015 * std::sin(seconds * 20.0) + 0.03 * std::sin(seconds * 0.7);
    cv::Mat result(m_background.size(), CV_8UC3);
    for (int y = 0; y < result.rows; ++y) {
        for (int x = 0; x < result.cols; ++x) {
            const auto& front = person.at<cv::Vec4f>(y, x);
            const cv::Vec3f colour = m_background.at<cv::Vec3f>(y, x) * (1.0F - front[3]) +
                                     cv::Vec3f(front[0], front[1], front[2]);
            const cv::Vec3f lit = colour * static_cast<float>(light) + noise.at<cv::Vec3f>(y, x);
            result.at<cv::Vec3b>(y, x) = cv::Vec3b(lit);
        }
    }
    return result;
}
