// A camera of 1280x720 at 30 pictures a second on the screen: by the engine and the label of the
// webcam's dialog, by the whole dialog, and by gst-launch-1.0 with ximagesink, at the camera's own
// size and at that of the label. All get the same virtual camera, one after the other, in several
// rounds; the figures are the medians. The time of a row is the processor time of the program
// itself for one picture, "cpu" the same for one second; what the X server and the camera's program
// need beside it are the next columns. Two more rows treat the background, for the pictures that
// come to the screen then.

#include "BenchMain.h"
#include "PreviewProgram.h"

#include <Support/VirtualCamera.h>

#include <QCoreApplication>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>

namespace {

constexpr int kRounds = 3;
constexpr double kSeconds = 6.0;
constexpr auto kCamera = "bench_camera";

struct Contender
{
    std::string name;
    QStringList command;
};

QStringList gstLaunch(const QString& conversion)
{
    // Of the two sinks one counts what the other shows.
    const QString pipeline =
        QStringLiteral("gst-launch-1.0 -v pipewiresrc target-object=%1 ! "
                       "video/x-raw,format=YUY2,width=1280,height=720,framerate=30/1 ! %2 ! "
                       "fpsdisplaysink text-overlay=false video-sink=ximagesink")
            .arg(QLatin1String(kCamera), conversion);
    return pipeline.split(QLatin1Char(' '));
}

QStringList own(const QStringList& arguments)
{
    return QStringList(QStringLiteral(PREVIEW_CHILD)) + arguments;
}

std::vector<Contender> contenders()
{
    const QString label = QStringLiteral("label");
    const QString size = QStringLiteral("video/x-raw,width=760,height=428,pixel-aspect-ratio=1/1");
    return {
        {"ourLabel", own({label, QStringLiteral("none")})},
        {"ximagesink", gstLaunch(QStringLiteral("videoconvert"))},
        {"ximagesinkAtLabelSize", gstLaunch(QStringLiteral("videoconvertscale ! ") + size)},
        {"ourDialog", own({QStringLiteral("dialog")})},
        {"ourLabelBlurred", own({label, QStringLiteral("blur")})},
        {"ourLabelRemoved", own({label, QStringLiteral("remove")})},
    };
}

double median(const std::vector<PreviewCost>& costs, double PreviewCost::*figure)
{
    std::vector<double> values;
    values.reserve(costs.size());
    for (const PreviewCost& cost : costs) {
        values.push_back(cost.*figure);
    }
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

using Costs = std::map<std::string, std::vector<PreviewCost>>;

Costs measureAll(qint64 cameraProcess)
{
    Costs costs;
    for (int round = 0; round < kRounds; ++round) {
        for (const Contender& contender : contenders()) {
            PreviewProgram program(contender.command);
            costs[contender.name].push_back(program.watch(kSeconds, cameraProcess));
        }
    }
    return costs;
}

/** Measured with the first row, in rounds, so that what else the machine does meets all alike. */
const std::vector<PreviewCost>& costsOf(const std::string& name, qint64 cameraProcess)
{
    static const Costs all = measureAll(cameraProcess);
    return all.at(name);
}

void report(benchmark::State& state, const std::string& name, qint64 cameraProcess)
{
    const std::vector<PreviewCost>& costs = costsOf(name, cameraProcess);
    if (std::any_of(costs.begin(), costs.end(), [](const auto& cost) { return !cost.ok; })) {
        state.SkipWithError("no pictures were shown");
        return;
    }
    for (auto unused : state) {
        static_cast<void>(unused);
        state.SetIterationTime(median(costs, &PreviewCost::perPicture));
    }
    state.counters["cpu"] = median(costs, &PreviewCost::program);
    state.counters["x_server"] = median(costs, &PreviewCost::displayServer);
    state.counters["camera"] = median(costs, &PreviewCost::camera);
    state.counters["pictures_s"] = median(costs, &PreviewCost::picturesPerSecond);
}

std::vector<Aim> aims(const BenchResults& results)
{
    const auto cpu = [&](const char* row) { return results.value(row, "time"); };
    const double least = std::min(cpu("ximagesink"), cpu("ximagesinkAtLabelSize"));
    const double shown = results.value("ourLabel", "pictures_s");
    const auto kept = [&](const char* row) { return results.value(row, "pictures_s") / shown; };
    return {
        {"preview 720p30: CPU a picture, engine and label / the cheaper ximagesink",
         cpu("ourLabel") / least, Aim::Bound::AtMost, 1.5},
        {"preview 720p30: CPU a picture, whole dialog / the cheaper ximagesink",
         cpu("ourDialog") / least, Aim::Bound::AtMost, 1.5},
        {"preview 720p30: pictures shown, background blurred / not treated",
         kept("ourLabelBlurred"), Aim::Bound::AtLeast, 0.99},
        {"preview 720p30: pictures shown, background removed / not treated",
         kept("ourLabelRemoved"), Aim::Bound::AtLeast, 0.99},
    };
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    VirtualCamera camera(QLatin1String(kCamera), QStringLiteral("Bench Camera"),
                         {QStringLiteral("YUY2:1280x720@30")});
    if (!camera.plug()) {
        QTextStream(stderr) << "No virtual camera: run this by ./dev bench\n";
        return 1;
    }
    for (const Contender& contender : contenders()) {
        benchmark::RegisterBenchmark(contender.name.c_str(), report, contender.name,
                                     camera.processId())
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->UseManualTime();
    }
    return runBenchmarks(argc, argv, aims);
}
