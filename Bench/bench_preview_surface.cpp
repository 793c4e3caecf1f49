// The webcam's preview beside a preview by the plain recipe, frame by frame in turns: what handing
// a frame over costs the thread that brings it, what painting it costs the GUI thread, how long the
// frame lock is held, how far the pictures are apart, and how many frames of a 60 Hz camera are not
// shown. The figures are those of the one and the other in one row, times in milliseconds.

#include "BenchMain.h"

#include <KCore/KCoreDirs.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/PictureDifference.h>
#include <Support/PlainPreview.h>

#include <QApplication>
#include <QBackingStore>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTest>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr QSize kSurface(760, 428);
constexpr int kFrames = 3; ///< taken in turns, so that none is found in a cache
constexpr int kHertz = 60;
constexpr int kDropSeconds = 4;

double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

/** Milliseconds, many times over. */
class Times
{
public:
    void add(double time) { m_times.push_back(time); }

    double quantile(double share) const
    {
        if (m_times.empty()) {
            return 0;
        }
        std::vector<double> sorted = m_times;
        std::sort(sorted.begin(), sorted.end());
        const auto last = sorted.size() - 1;
        return sorted.at(std::min(std::size_t(share * double(sorted.size())), last));
    }
    double median() const { return quantile(0.5); }

private:
    std::vector<double> m_times;
};

/** Frames carry their number as a grey in their middle, so that it can be read where they are
 * shown. Not every grey counts: what is between two may come of scaling. */
namespace Mark {

constexpr int kCount = 32; ///< then they begin anew
constexpr int kStep = 256 / kCount;

void draw(QImage* frame, int number)
{
    const int side = frame->height() / 8;
    const int grey = number % kCount * kStep + kStep / 2;
    QRect place(0, 0, side, side);
    place.moveCenter(frame->rect().center());
    for (int y = place.top(); y <= place.bottom(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(frame->scanLine(y));
        std::fill(row + place.left(), row + place.right() + 1, qRgb(grey, grey, grey));
    }
}

int read(const QImage& surface)
{
    return qGreen(surface.pixel(surface.rect().center())) / kStep;
}

} // namespace Mark

/** A preview that measures its painting. */
template <typename Preview>
class Measured : public Preview
{
public:
    using Preview::frameLock;

    void forget()
    {
        paintTimes = Times();
        framesShown = 0;
        m_lastMark = -1;
    }

    Times paintTimes;
    int framesShown = 0; ///< each once, however often it is painted

protected:
    void paintEvent(QPaintEvent* event) override
    {
        const Clock::time_point start = Clock::now();
        Preview::paintEvent(event);
        paintTimes.add(millisecondsSince(start));
        const auto* const surface = dynamic_cast<QImage*>(this->backingStore()->paintDevice());
        const int mark = surface ? Mark::read(*surface) : m_lastMark;
        framesShown += mark == m_lastMark ? 0 : 1;
        m_lastMark = mark;
    }

private:
    int m_lastMark = -1;
};

void hand(KdWebCamDisplayLabel* preview, const QImage& frame)
{
    preview->WebcamFrameChanged(frame.width(), frame.height(),
                                const_cast<uchar*>(frame.constBits()));
}

void hand(PlainPreview* preview, const QImage& frame)
{
    if (preview->put(frame.width(), frame.height(), frame.constBits())) {
        QMetaObject::invokeMethod(preview, "update", Qt::QueuedConnection);
    }
}

void prepare(KdWebCamDisplayLabel* preview, bool isRound, bool isFlipped)
{
    preview->setShape(isRound ? KdVBLMODEL::fcrsCircle : KdVBLMODEL::fcrsSquare);
    preview->setFlipped(isFlipped);
    preview->setRecording(true); // without its strip, should the mouse be there
    preview->startRender();
}

void prepare(PlainPreview* preview, bool isRound, bool isFlipped)
{
    preview->setOptions(isRound, isFlipped);
}

QImage noisyFrame(const QSize& size, quint32 seed)
{
    QImage frame(size, QImage::Format_ARGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(frame.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            seed = seed * 1664525U + 1013904223U;
            const int grain = int(seed >> 27U);
            row[x] = qRgb(x * 223 / size.width() + grain, y * 223 / size.height() + grain,
                          (x / 24 + y / 24) % 2 == 0 ? 180 + grain : 40 + grain);
        }
    }
    return frame;
}

/** What one benchmark shows: frames of a size with options, the same for both. */
struct Scene
{
    explicit Scene(const benchmark::State& state)
        : size(int(state.range(0)), int(state.range(1)))
        , isRound(state.range(2) != 0)
        , isFlipped(state.range(3) != 0)
    {
        for (quint32 i = 0; i < kFrames; ++i) {
            frames.push_back(noisyFrame(size, i + 1));
        }
    }

    const QImage& frame(int number) const { return frames.at(std::size_t(number) % kFrames); }

    template <typename Preview>
    void open(Preview* preview) const
    {
        prepare(preview, isRound, isFlipped);
        preview->resize(kSurface);
        preview->show();
        if (!QTest::qWaitForWindowExposed(preview)) {
            qFatal("The preview does not come to the screen");
        }
        hand(preview, frame(0));
        preview->repaint();
        // So that no painting that is still to come is taken for one of the frames that follow.
        QTest::qWait(100);
        preview->forget();
    }

    QSize size;
    bool isRound;
    bool isFlipped;
    std::vector<QImage> frames;
};

template <typename Preview>
double timeToHand(Preview* preview, const QImage& frame)
{
    const Clock::time_point start = Clock::now();
    hand(preview, frame);
    return millisecondsSince(start);
}

void reportDifference(benchmark::State& state, const Scene& scene, KdWebCamDisplayLabel* own)
{
    own->repaint();
    const QImage shown = own->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QSize fitted = scene.size.scaled(kSurface, Qt::KeepAspectRatio);
    const QRectF place((kSurface.width() - fitted.width()) / 2,   // NOLINT: as the recipe divides
                       (kSurface.height() - fitted.height()) / 2, // NOLINT
                       fitted.width(), fitted.height());
    const QImage plain =
        PlainPreview::picture(scene.frame(0), kSurface, 1.0, scene.isRound, scene.isFlipped);
    const double enlarged = double(fitted.width()) / scene.size.width();
    const auto off = PictureDifference::between(shown, plain, {place, enlarged, scene.isRound});
    state.counters["off_mean"] = off.mean;
    state.counters["off_max"] = off.largest;
}

/** A frame is handed over and painted, by the one and the other in turns. */
void paint(benchmark::State& state)
{
    const Scene scene(state);
    Measured<KdWebCamDisplayLabel> own;
    Measured<PlainPreview> plain;
    scene.open(&own);
    scene.open(&plain);
    Times ownHand;
    Times plainHand;
    int number = 0;
    for (auto unused : state) {
        Q_UNUSED(unused)
        const QImage& frame = scene.frame(++number);
        plainHand.add(timeToHand(&plain, frame));
        plain.repaint();
        ownHand.add(timeToHand(&own, frame));
        own.repaint();
    }
    hand(&own, scene.frame(0));
    reportDifference(state, scene, &own);
    state.counters["own_hand"] = ownHand.median();
    state.counters["own_paint"] = own.paintTimes.median();
    state.counters["own_paint95"] = own.paintTimes.quantile(0.95);
    state.counters["plain_hand"] = plainHand.median();
    state.counters["plain_paint"] = plain.paintTimes.median();
    state.counters["plain_paint95"] = plain.paintTimes.quantile(0.95);
    state.counters["paint_ratio"] = plain.paintTimes.median() / own.paintTimes.median();
    state.counters["sum_ratio"] = (plainHand.median() + plain.paintTimes.median()) /
                                  (ownHand.median() + own.paintTimes.median());
}

/** Looks at a lock from a thread of its own, seldom enough to be hardly ever in the way. */
class LockProbe
{
public:
    explicit LockProbe(std::mutex* lock) : m_lock(*lock), m_thread([this] { run(); }) {}
    ~LockProbe()
    {
        m_isDone = true;
        m_thread.join();
    }

    /** @return the longest time that the lock was held since the last call. */
    double takeLongest() { return m_longest.exchange(0); }

private:
    void run()
    {
        while (!m_isDone) {
            if (m_lock.try_lock()) {
                m_lock.unlock();
                rest();
                continue;
            }
            const Clock::time_point start = Clock::now();
            while (!m_lock.try_lock()) {
            }
            m_lock.unlock();
            m_longest = std::max(m_longest.load(), millisecondsSince(start));
        }
    }

    static void rest()
    {
        const Clock::time_point start = Clock::now();
        while (millisecondsSince(start) < 0.003) {
        }
    }

    std::mutex& m_lock;
    std::atomic<double> m_longest{0};
    std::atomic<bool> m_isDone{false};
    std::thread m_thread;
};

struct LockTimes
{
    double held; ///< the longest in one round of a frame, a changed look and a painting
    double copy; ///< of the same frame to memory as cold as that of the preview
};

double timeToCopy(const QImage& frame, std::vector<uchar>* to)
{
    const Clock::time_point start = Clock::now();
    std::memcpy(to->data(), frame.constBits(), to->size());
    benchmark::DoNotOptimize(to->data());
    benchmark::ClobberMemory();
    return millisecondsSince(start);
}

template <typename Preview>
LockTimes lockTimes(const Scene& scene)
{
    constexpr int rounds = 60;
    Measured<Preview> preview;
    scene.open(&preview);
    LockProbe probe(&preview.frameLock());
    Times held;
    Times copy;
    std::vector<uchar> copied(std::size_t(scene.frame(0).sizeInBytes()));
    for (int i = 0; i < rounds; ++i) {
        // The one that is second finds the frame in a cache.
        if (i % 2 == 0) {
            copy.add(timeToCopy(scene.frame(i), &copied));
        }
        probe.takeLongest();
        hand(&preview, scene.frame(i));
        if (i % 2 != 0) {
            copy.add(timeToCopy(scene.frame(i), &copied));
        }
        // A changed look, which has to be drawn anew, every other time.
        prepare(&preview, scene.isRound, scene.isFlipped != (i % 2 == 0));
        preview.repaint();
        const double seen = probe.takeLongest();
        // The probe does not run all the time on a busy machine.
        if (seen > 0) {
            held.add(seen);
        }
    }
    return {held.median(), copy.median()};
}

void lock(benchmark::State& state)
{
    const Scene scene(state);
    for (auto unused : state) {
        Q_UNUSED(unused)
        const LockTimes own = lockTimes<KdWebCamDisplayLabel>(scene);
        state.counters["own_lock"] = own.held;
        state.counters["copy"] = own.copy;
        state.counters["plain_lock"] = lockTimes<PlainPreview>(scene).held;
    }
}

/** Hands frames over as a camera does, and ends the loop. @return how many there were. A camera
 * that comes late does not make up for it by frames without a pause. */
template <typename Preview>
int runCamera(Preview* preview, const Scene& scene, QEventLoop* loop)
{
    constexpr auto interval = std::chrono::nanoseconds(1000000000 / kHertz);
    const Clock::time_point end = Clock::now() + std::chrono::seconds(kDropSeconds);
    std::vector<QImage> frames = scene.frames;
    int count = 0;
    for (auto next = Clock::now(); next < end; next = std::max(next + interval, Clock::now())) {
        QImage& frame = frames[std::size_t(++count) % frames.size()];
        Mark::draw(&frame, count);
        std::this_thread::sleep_until(next);
        hand(preview, frame);
    }
    QMetaObject::invokeMethod(loop, "quit", Qt::QueuedConnection);
    return count;
}

/** @return the share of a 60 Hz camera's frames that was never shown. */
template <typename Preview>
double notShown(const Scene& scene)
{
    Measured<Preview> preview;
    scene.open(&preview);
    QEventLoop loop;
    int count = 0;
    std::thread camera([&] { count = runCamera(&preview, scene, &loop); });
    loop.exec();
    camera.join();
    QTest::qWait(100);
    return 1 - double(preview.framesShown) / count;
}

void frames60(benchmark::State& state)
{
    const Scene scene(state);
    for (auto unused : state) {
        Q_UNUSED(unused)
        state.counters["own_lost_%"] = 100 * notShown<KdWebCamDisplayLabel>(scene);
        state.counters["plain_lost_%"] = 100 * notShown<PlainPreview>(scene);
    }
}

void everyCase(benchmark::internal::Benchmark* bench)
{
    bench->ArgNames({"w", "h", "round", "flip"});
    for (const QSize& size :
         {QSize(640, 480), QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
        for (int options = 0; options < 4; ++options) {
            bench->Args({size.width(), size.height(), options / 2, options % 2});
        }
    }
}

void plainestAndDearest(benchmark::internal::Benchmark* bench)
{
    bench->ArgNames({"w", "h", "round", "flip"});
    for (const QSize& size :
         {QSize(640, 480), QSize(1280, 720), QSize(1920, 1080), QSize(3840, 2160)}) {
        bench->Args({size.width(), size.height(), 0, 0});
        bench->Args({size.width(), size.height(), 1, 1});
    }
}

BENCHMARK(paint)->Apply(everyCase)->Unit(benchmark::kMillisecond)->Iterations(60);
BENCHMARK(lock)->Apply(plainestAndDearest)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(frames60)->Apply(plainestAndDearest)->Unit(benchmark::kMillisecond)->Iterations(1);

std::string rowOf(const char* name, const QSize& size, int isRound, int isFlipped)
{
    return QStringLiteral("%1/w:%2/h:%3/round:%4/flip:%5")
        .arg(QLatin1String(name))
        .arg(size.width())
        .arg(size.height())
        .arg(isRound)
        .arg(isFlipped)
        .toStdString();
}

/** The worst of the plainest and the dearest look at some sizes; NaN unless all were measured. */
double worst(const char* name, const std::vector<QSize>& sizes,
             const std::function<double(const std::string&)>& figure)
{
    double most = -std::numeric_limits<double>::infinity();
    for (const QSize& size : sizes) {
        for (const int option : {0, 1}) {
            const double value = figure(rowOf(name, size, option, option));
            most = std::isnan(value) ? value : std::max(most, value);
            if (std::isnan(most)) {
                return most;
            }
        }
    }
    return most;
}

std::vector<Aim> aims(const BenchResults& results)
{
    const QSize hd(1920, 1080);
    const QSize uhd(3840, 2160);
    const std::vector<QSize> upToHd{{640, 480}, {1280, 720}, hd};
    const std::vector<QSize> all{{640, 480}, {1280, 720}, hd, uhd};
    const auto figure = [&](const char* name) {
        return [&results, name](const std::string& row) { return results.value(row, name); };
    };
    const auto lockToCopy = [&](const std::string& row) {
        return results.value(row, "own_lock") / results.value(row, "copy");
    };
    const auto faster = [&](int option) {
        return results.value(rowOf("paint", hd, option, option), "paint_ratio");
    };
    const auto most = Aim::Bound::AtMost;
    return {
        {"preview surface 1080p, circle and flip: times as fast as the plain recipe", faster(1),
         Aim::Bound::AtLeast, 25},
        {"preview surface 1080p, square: times as fast as the plain recipe", faster(0),
         Aim::Bound::AtLeast, 2},
        {"preview surface: longest hold of the lock / copy of a frame, worst case",
         worst("lock", all, lockToCopy), most, 1},
        {"preview surface: mean difference to the plain recipe in grey levels, worst",
         worst("paint", all, figure("off_mean")), most, 2},
        {"preview surface: % of 60 frames/s not shown, up to 1080p, worst case",
         worst("frames60", upToHd, figure("own_lost_%")), most, 0},
        {"preview surface: % of 60 frames/s not shown, 2160p, worst case",
         worst("frames60", {uhd}, figure("own_lost_%")), most, 1},
    };
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir folder;
    setZentraDocumentDir(folder.path());
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    return runBenchmarks(argc, argv, aims);
}
