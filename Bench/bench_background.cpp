// The background's treatment: how well the person is found, and what that costs. The clips are
// composed here, from photographs of persons and of textured places that Debian's packages hold, so
// that the true mask is known. Overlap is what found and true mask have in common, as a share of
// what either covers; it does not depend on the machine. For the cost, frames come at 30 a second,
// as a camera's, and the effect works as it does in the engine: on its own thread, at its own rate,
// behind the frames. Times of this machine mean little; compare the rows of one run, the first of
// which does nothing. In the rows named "busy" every processor has other work all the time: the
// effect is to find fewer masks then, and not to lose frames.

#include "BenchMain.h"
#include "PersonClip.h"

#include <KdVBLModel/KdBackgroundEffect.h>
#include <KdVBLModel/KdBackgroundPaint.h>
#include <KdVBLModel/KdPersonMask.h>

#include <opencv2/imgproc.hpp>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <deque>
#include <memory>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

using namespace KdVBLMODEL;

namespace {

using Clock = std::chrono::steady_clock;
using Mode = KdBackgroundEffect::Mode;

constexpr double kFrameRate = 30.0;
constexpr double kClipSeconds = 8.0;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/** Waits for the moments at which a camera's frames come. */
class Pace
{
public:
    /** @return how many frames came and went while the last one was worked at. */
    int waitForNext()
    {
        const Clock::time_point late = Clock::now();
        m_next += kInterval;
        int lost = 0;
        for (; m_next + kInterval < late; m_next += kInterval) {
            ++lost;
        }
        std::this_thread::sleep_until(m_next);
        return lost;
    }

private:
    static constexpr auto kInterval =
        std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(1 / kFrameRate));

    Clock::time_point m_next = Clock::now();
};

/** Other work for every processor, as long as it lives. */
class OtherWork
{
public:
    OtherWork()
    {
        for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) {
            m_threads.emplace_back([this] {
                for (unsigned step = 0; !m_isDone; ++step) {
                    benchmark::DoNotOptimize(step);
                }
            });
        }
    }
    ~OtherWork()
    {
        m_isDone = true;
        for (std::thread& thread : m_threads) {
            thread.join();
        }
    }

private:
    OtherWork(const OtherWork&) = delete;
    OtherWork& operator=(const OtherWork&) = delete;

    std::atomic<bool> m_isDone{false};
    std::vector<std::thread> m_threads;
};

double overlap(const cv::Mat& frame, const cv::Mat& truth)
{
    cv::Mat alpha;
    cv::extractChannel(frame, alpha, 3);
    const cv::Mat found = alpha > 127;
    const cv::Mat wanted = truth > 0.5F;
    const int either = cv::countNonZero(found | wanted);
    return either == 0 ? 1.0 : static_cast<double>(cv::countNonZero(found & wanted)) / either;
}

void apply(KdBackgroundEffect& effect, Mode mode, cv::Mat& frame)
{
    effect.apply(mode, frame.data, frame.cols, frame.rows, static_cast<int>(frame.step));
}

/** Composed in advance: that takes longer than a frame lasts. @return CV_8UC4. */
std::vector<cv::Mat> composed(PersonClip& clip, double seconds)
{
    std::vector<cv::Mat> frames;
    for (int i = 0; i < static_cast<int>(seconds * kFrameRate); ++i) {
        cv::Mat truth;
        cv::Mat frame;
        cv::cvtColor(clip.frame(i / kFrameRate, truth), frame, cv::COLOR_BGR2BGRA);
        frames.push_back(frame);
    }
    return frames;
}

cv::Mat scaled(const cv::Mat& picture, cv::Size size)
{
    cv::Mat small;
    cv::resize(picture, small, size, 0, 0, cv::INTER_AREA);
    return small;
}

/**
 * As the effect does it on a machine that has time: every other frame's mask is found, and there
 * two frames later.
 * @return the overlap of each frame, from the first with a mask on.
 */
std::vector<double> overlaps(PersonClip& clip)
{
    KdPersonMask finder;
    std::deque<cv::Mat> masks;
    std::vector<double> result;
    for (int i = 0; i < static_cast<int>(kClipSeconds * kFrameRate); ++i) {
        cv::Mat truth;
        const cv::Mat picture = clip.frame(i / kFrameRate, truth);
        if (i % 2 == 0) {
            masks.push_back(finder.update(
                scaled(picture, KdPersonMask::pictureSize(picture.size())), i / kFrameRate));
        }
        if (masks.size() < 2) {
            continue;
        }
        if (masks.size() > 2) {
            masks.pop_front();
        }
        if (result.empty() && cv::countNonZero(masks.front()) == 0) {
            continue;
        }
        cv::Mat frame;
        cv::cvtColor(picture, frame, cv::COLOR_BGR2BGRA);
        const KdMatte matte(scaled(picture, masks.front().size()), masks.front());
        KdBackgroundPaint::remove(frame, matte);
        result.push_back(overlap(frame, truth));
    }
    return result;
}

/** Of the clips so far. */
std::vector<double>& allMeans()
{
    static std::vector<double> means;
    return means;
}

void quality(benchmark::State& state, const ClipPerson& person, const QString& background)
{
    PersonClip clip(person, background, {640, 360}, 1);
    if (!clip.isValid()) {
        state.SkipWithError("a photograph is missing: install opencv-doc and python3-skimage");
        return;
    }
    for (auto unused : state) {
        static_cast<void>(unused);
        const std::vector<double> values = overlaps(clip);
        if (values.empty()) {
            state.SkipWithError("the person was not found");
            return;
        }
        const auto count = static_cast<double>(values.size());
        allMeans().push_back(std::accumulate(values.begin(), values.end(), 0.0) / count);
        state.counters["overlap_mean"] = allMeans().back();
        state.counters["overlap_worst"] = *std::min_element(values.begin(), values.end());
        state.counters["until_found_s"] = kClipSeconds - count / kFrameRate;
    }
}

void cost(benchmark::State& state, Mode mode, cv::Size size, bool isBusy)
{
    PersonClip clip(PersonClip::persons().front(), PersonClip::backgrounds().front(), size, 1);
    if (!clip.isValid()) {
        state.SkipWithError("a photograph is missing: install opencv-doc and python3-skimage");
        return;
    }
    const std::vector<cv::Mat> frames = composed(clip, 1.0);
    const std::unique_ptr<OtherWork> work(isBusy ? new OtherWork : nullptr);
    KdBackgroundEffect effect;
    std::vector<double> times;
    int lost = 0;
    const std::clock_t start = std::clock();
    const Clock::time_point begin = Clock::now();
    Pace pace;
    for (auto unused : state) {
        static_cast<void>(unused);
        cv::Mat frame = frames[times.size() % frames.size()].clone();
        const Clock::time_point before = Clock::now();
        apply(effect, mode, frame);
        times.push_back(millisecondsSince(before));
        state.SetIterationTime(times.back() / 1000.0);
        lost += pace.waitForNext();
    }
    const double cpu = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    std::sort(times.begin(), times.end());
    state.counters["p95_ms"] = times[times.size() * 95 / 100];
    state.counters["worst_ms"] = times.back();
    if (!isBusy) {
        state.counters["cpu_s_per_s"] = cpu * 1000.0 / millisecondsSince(begin);
    }
    state.counters["frames_lost"] = lost;
}

void registerCosts(const std::string& prefix, cv::Size size, bool isBusy)
{
    const std::vector<std::pair<std::string, Mode>> modes = {
        {"nothing", fcbmNone}, {"blur", fcbmBlur}, {"remove", fcbmRemove}};
    for (const auto& [name, mode] : modes) {
        benchmark::RegisterBenchmark((prefix + name).c_str(), cost, mode, size, isBusy)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(240)
            ->UseManualTime();
    }
}

void registerQualities()
{
    for (const ClipPerson& person : PersonClip::persons()) {
        for (const QString& background : PersonClip::backgrounds()) {
            const std::string place = background.section(QLatin1Char('/'), -1).toStdString();
            benchmark::RegisterBenchmark(("quality/" + person.name + "/" + place).c_str(), quality,
                                         person, background)
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond);
        }
    }
}

std::vector<Aim> aims(const BenchResults& results)
{
    const auto lostMore = [&](const std::string& rows, const char* mode) {
        return results.value(rows + mode, "frames_lost") -
               results.value(rows + "nothing", "frames_lost");
    };
    std::vector<Aim> aims{
        {"background 720p30: frames lost more with blur than without",
         lostMore("cost/720p/", "blur"), Aim::Bound::AtMost, 0},
        {"background 720p30: frames lost more with removal than without",
         lostMore("cost/720p/", "remove"), Aim::Bound::AtMost, 0},
        {"background 720p30, busy machine: frames lost more with blur",
         lostMore("busy/720p/", "blur"), Aim::Bound::AtMost, 0},
        {"background 720p30, busy machine: frames lost more with removal",
         lostMore("busy/720p/", "remove"), Aim::Bound::AtMost, 0},
    };
    const std::vector<double>& means = allMeans();
    if (!means.empty()) {
        const double sum = std::accumulate(means.begin(), means.end(), 0.0);
        aims.push_back({"background: overlap with the true mask, mean of all clips",
                        sum / static_cast<double>(means.size()), Aim::Bound::AtLeast, 0.85});
        aims.push_back({"background: overlap with the true mask, worst clip",
                        *std::min_element(means.begin(), means.end()), Aim::Bound::AtLeast, 0.85});
    }
    return aims;
}

} // namespace

int main(int argc, char** argv)
{
    registerCosts("cost/720p/", {1280, 720}, false);
    registerCosts("busy/720p/", {1280, 720}, true);
    registerCosts("cost/1080p/", {1920, 1080}, false);
    registerQualities();
    return runBenchmarks(argc, argv, aims);
}
