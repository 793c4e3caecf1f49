// The same clip of 1280x720 at 30 pictures a second and 4 Mbit/s, with sound, by three recorders in
// one run: our take, gst-launch-1.0 and ffmpeg with x264 veryfast. All get the same pictures, noisy
// as a camera's, from a file and at a camera's pace. Each take runs in a child process; its cost is
// the operating system's own account of that process. Then a take of ten minutes, fed faster than
// that, for the time that its end takes. Times of this machine mean little; compare the rows of one
// run.

#include "BenchMain.h"
#include "ChildRun.h"

#include <Support/ClipProbe.h>
#include <Support/Command.h>
#include <Support/MediaProbe.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

namespace {

constexpr double kRate = 30.0;
constexpr double kSeconds = 10.0;
constexpr double kLongSeconds = 600.0;
constexpr int kMaterialSeconds = 12;
constexpr int kRepetitions = 2;
constexpr int kPatienceMs = 120000;
constexpr auto kSize = "1280x720";
constexpr auto kSmallSize = "640x360";

QTemporaryDir& workFolder()
{
    static QTemporaryDir folder;
    return folder;
}

QString material(const char* size)
{
    return workFolder().filePath(QStringLiteral("%1.i420").arg(QLatin1String(size)));
}

QString soundFile()
{
    return workFolder().filePath(QStringLiteral("sound.wav"));
}

bool makePictures(const char* size, int seconds)
{
    // A soft picture that moves, and the noise of a sensor.
    const QString source =
        QStringLiteral("testsrc2=size=%1:rate=30,gblur=sigma=3,noise=alls=6:allf=t")
            .arg(QLatin1String(size));
    return Command::run(QStringLiteral("ffmpeg"),
                        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"),
                         QStringLiteral("lavfi"), QStringLiteral("-i"), source,
                         QStringLiteral("-t"), QString::number(seconds), QStringLiteral("-pix_fmt"),
                         QStringLiteral("yuv420p"), QStringLiteral("-f"),
                         QStringLiteral("rawvideo"), material(size)},
                        kPatienceMs)
        .ok;
}

bool makeSound()
{
    const QString source =
        QStringLiteral("aevalsrc=exprs='0.2*(sin(220*2*PI*t)+sin(277.2*2*PI*t)+sin(1318.5*2*PI*t))'"
                       ":s=48000,pan=stereo|c0=c0|c1=c0");
    return Command::run(QStringLiteral("ffmpeg"),
                        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"),
                         QStringLiteral("lavfi"), QStringLiteral("-i"), source,
                         QStringLiteral("-t"), QString::number(kMaterialSeconds), soundFile()},
                        kPatienceMs)
        .ok;
}

/** How like the pictures that went in those of the file are, of its first five seconds; 1 is equal.
 */
double likeness(const QString& path)
{
    const Command::Result result = Command::run(
        QStringLiteral("ffmpeg"),
        {QStringLiteral("-v"),
         QStringLiteral("info"),
         QStringLiteral("-nostats"),
         QStringLiteral("-f"),
         QStringLiteral("rawvideo"),
         QStringLiteral("-pix_fmt"),
         QStringLiteral("yuv420p"),
         QStringLiteral("-s"),
         QLatin1String(kSize),
         QStringLiteral("-r"),
         QStringLiteral("30"),
         QStringLiteral("-i"),
         material(kSize),
         QStringLiteral("-i"),
         path,
         QStringLiteral("-lavfi"),
         QStringLiteral("[0:v]trim=end_frame=150,setpts=N/30/TB[a];"
                        "[1:v]trim=end_frame=150,setpts=N/30/TB,format=yuv420p[b];[b][a]ssim"),
         QStringLiteral("-f"),
         QStringLiteral("null"),
         QStringLiteral("-")},
        kPatienceMs);
    static const QRegularExpression all(QStringLiteral("All:([0-9.]+)"));
    return all.match(QString::fromUtf8(result.errors)).captured(1).toDouble();
}

/** @param takes how many like the one at path the child recorded */
bool reportTake(benchmark::State& state, const ChildCost& cost, const QString& path, int takes)
{
    const ClipInfo clip = ClipProbe::probe(path);
    if (!MediaProbe::probe(path).isReadable || clip.pictures() == 0) {
        state.SkipWithError("the take failed");
        return false;
    }
    state.SetIterationTime(cost.wallSeconds);
    state.counters["cpu_s_per_s"] = cost.cpuSeconds / (takes * clip.pictures() / kRate);
    state.counters["peak_MB"] = cost.peakMegabytes;
    state.counters["pictures"] = clip.pictures();
    state.counters["kbit_s"] =
        static_cast<double>(QFileInfo(path).size()) * 8e-3 / clip.pictureLength;
    state.counters["parts_ms"] = (clip.pictureLength - clip.soundLength) * 1000.0;
    return true;
}

void reportValues(benchmark::State& state, const ChildCost& cost)
{
    const QHash<QString, double> values = printedValues(cost);
    for (auto value = values.constBegin(); value != values.constEnd(); ++value) {
        state.counters[value.key().toStdString()] = value.value();
    }
}

ChildCost runTakes(const QString& folder, const char* size, double seconds, int takes,
                   const char* pace)
{
    const QStringList sides = QString::fromLatin1(size).split(QLatin1Char('x'));
    return runChild({QStringLiteral(CLIP_CHILD), material(size), sides.at(0), sides.at(1), folder,
                     QString::number(seconds), QString::number(takes), QString::fromLatin1(pace)},
                    0.0);
}

/** Two takes in one process: the first is cold, the second warm. */
void ourTake(benchmark::State& state)
{
    for (auto unused : state) {
        Q_UNUSED(unused)
        const QTemporaryDir folder(workFolder().filePath(QStringLiteral("takes")));
        const ChildCost cost = runTakes(folder.path(), kSize, kSeconds, 2, "real");
        const QString path = folder.filePath(QStringLiteral("take1.mp4"));
        if (reportTake(state, cost, path, 2)) {
            reportValues(state, cost);
            state.counters["ssim"] = likeness(path);
        }
    }
}

void ourLongTake(benchmark::State& state)
{
    for (auto unused : state) {
        Q_UNUSED(unused)
        const QTemporaryDir folder(workFolder().filePath(QStringLiteral("takes")));
        const ChildCost cost = runTakes(folder.path(), kSmallSize, kLongSeconds, 1, "fast");
        if (reportTake(state, cost, folder.filePath(QStringLiteral("take0.mp4")), 1)) {
            reportValues(state, cost);
        }
    }
}

void recordByCommand(benchmark::State& state, const QString& text)
{
    for (auto unused : state) {
        Q_UNUSED(unused)
        const QTemporaryDir folder(workFolder().filePath(QStringLiteral("takes")));
        const QString path = folder.filePath(QStringLiteral("take.mp4"));
        QStringList command = text.split(QLatin1Char(' '));
        command.replaceInStrings(QStringLiteral("OUTPUT"), path);
        command.replaceInStrings(QStringLiteral("PICTURES"), material(kSize));
        command.replaceInStrings(QStringLiteral("SOUND"), soundFile());
        const ChildCost cost = runChild(command, kSeconds);
        if (reportTake(state, cost, path, 1)) {
            state.counters["cold_stop_ms"] = cost.stopMilliseconds;
            state.counters["ssim"] = likeness(path);
        }
    }
}

// Without latency, as a recorder has to be; x264's usual way looks ahead, which costs twice as
// much.
void gstLaunch(benchmark::State& state)
{
    recordByCommand(
        state,
        QStringLiteral("gst-launch-1.0 -e filesrc location=PICTURES blocksize=1382400 ! "
                       "rawvideoparse format=i420 width=1280 height=720 framerate=30/1 ! clocksync "
                       "! queue ! x264enc bitrate=4000 speed-preset=veryfast tune=zerolatency "
                       "key-int-max=30 ! queue ! mp4mux name=mux ! filesink location=OUTPUT "
                       "filesrc location=SOUND ! wavparse ! clocksync ! audioconvert ! "
                       "avenc_aac bitrate=128000 ! queue ! mux."));
}

void ffmpeg(benchmark::State& state)
{
    recordByCommand(
        state,
        QStringLiteral("ffmpeg -y -re -f rawvideo -pix_fmt yuv420p -s 1280x720 -r 30 -i PICTURES "
                       "-re -i SOUND -c:v libx264 -preset veryfast -tune zerolatency -b:v 4M -g 30 "
                       "-c:a aac -b:a 128k OUTPUT"));
}

void configure(benchmark::internal::Benchmark* row)
{
    row->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(kRepetitions)->UseManualTime();
}

BENCHMARK(ourTake)->Apply(configure);
BENCHMARK(gstLaunch)->Apply(configure);
BENCHMARK(ffmpeg)->Apply(configure);
BENCHMARK(ourLongTake)->Unit(benchmark::kMillisecond)->Iterations(1)->UseManualTime();

std::vector<Aim> aims(const BenchResults& results)
{
    const auto most = Aim::Bound::AtMost;
    const auto cpu = [&](const char* other) {
        return results.ratio("ourTake", other, "cpu_s_per_s");
    };
    const auto likeness = [&](const char* other) {
        return results.ratio("ourTake", other, "ssim");
    };
    return {
        {"clip 720p30: CPU / gst-launch-1.0 with x264 veryfast", cpu("gstLaunch"), most, 0.7},
        {"clip 720p30: CPU / ffmpeg with x264 veryfast", cpu("ffmpeg"), most, 0.7},
        {"clip 720p30: SSIM / gst-launch-1.0 with x264 veryfast", likeness("gstLaunch"),
         Aim::Bound::AtLeast, 1.0},
        {"clip 720p30: SSIM / ffmpeg with x264 veryfast", likeness("ffmpeg"), Aim::Bound::AtLeast,
         1.0},
        {"clip of 10 s: ms until it is finished", results.value("ourTake", "warm_stop_ms"), most,
         2000},
        {"clip of 10 min: ms until it is finished", results.value("ourLongTake", "cold_stop_ms"),
         most, 2000},
        {"clip of 10 s: pictures lost", results.value("ourTake", "warm_lost"), most, 0},
    };
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (!makePictures(kSize, kMaterialSeconds) || !makePictures(kSmallSize, 2) || !makeSound()) {
        QTextStream(stderr) << "ffmpeg does not make the material\n";
        return 1;
    }
    return runBenchmarks(argc, argv, aims);
}
