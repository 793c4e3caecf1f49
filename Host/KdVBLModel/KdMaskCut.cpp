#include <KdVBLModel/KdMaskCut.h>

#include <opencv2/imgproc/detail/gcgraph.hpp>

#include <array>
#include <cmath>

namespace {

using Graph = cv::detail::GCGraph<float>;

struct Neighbour
{
    int dx;
    int dy;
    float nearness;
};

constexpr std::array<Neighbour, 4> kNeighbours = {
    {{-1, 0, 1.0F}, {-1, -1, 0.7071F}, {0, -1, 1.0F}, {1, -1, 0.7071F}}};

float distance(const cv::Mat& lab, int x, int y, const Neighbour& neighbour)
{
    const auto& a = lab.at<cv::Vec3b>(y, x);
    const auto& b = lab.at<cv::Vec3b>(y + neighbour.dy, x + neighbour.dx);
    float sum = 0.0F;
    for (int i = 0; i < 3; ++i) {
        const float difference = static_cast<float>(a[i]) - static_cast<float>(b[i]);
        sum += difference * difference;
    }
    return sum;
}

template <typename Visit>
void forEachPair(cv::Size size, Visit visit)
{
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            for (const Neighbour& neighbour : kNeighbours) {
                if (y + neighbour.dy >= 0 && x + neighbour.dx >= 0 &&
                    x + neighbour.dx < size.width) {
                    visit(x, y, neighbour);
                }
            }
        }
    }
}

/** What counts as an edge depends on how much contrast the picture has. */
float edgeScale(const cv::Mat& lab)
{
    double sum = 0.0;
    int pairs = 0;
    forEachPair(lab.size(), [&](int x, int y, const Neighbour& neighbour) {
        sum += static_cast<double>(distance(lab, x, y, neighbour));
        ++pairs;
    });
    return sum > 0.0 ? static_cast<float>(0.5 * pairs / sum) : 0.0F;
}

} // namespace

cv::Mat kdCutMask(const cv::Mat& lab, const cv::Mat& evidence, const cv::Mat& dull, float stiffness)
{
    const int width = lab.cols;
    Graph graph(static_cast<unsigned>(lab.total()), static_cast<unsigned>(lab.total()) * 8U);
    for (int y = 0; y < lab.rows; ++y) {
        for (int x = 0; x < width; ++x) {
            const int node = graph.addVtx();
            const float value = evidence.at<float>(y, x);
            graph.addTermWeights(node, std::max(value, 0.0F), std::max(-value, 0.0F));
        }
    }
    const float scale = edgeScale(lab);
    forEachPair(lab.size(), [&](int x, int y, const Neighbour& neighbour) {
        const float sharp = 1.0F - std::max(dull.at<float>(y, x),
                                            dull.at<float>(y + neighbour.dy, x + neighbour.dx));
        const float edge = scale * sharp * distance(lab, x, y, neighbour);
        const float cost = stiffness * neighbour.nearness * std::exp(-edge);
        const int node = y * width + x;
        graph.addEdges(node, node + neighbour.dy * width + neighbour.dx, cost, cost);
    });
    graph.maxFlow();
    cv::Mat mask(lab.size(), CV_32F);
    for (int y = 0; y < lab.rows; ++y) {
        for (int x = 0; x < width; ++x) {
            mask.at<float>(y, x) = graph.inSourceSegment(y * width + x) ? 1.0F : 0.0F;
        }
    }
    return mask;
}
