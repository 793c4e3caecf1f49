// The same voice-over, from the same microphone, by four recorders in one run: the engine, a bare
// in-process pipeline, gst-launch-1.0 and ffmpeg. Each take runs in a child process; its cost is
// the operating system's own account of that process. Times of this machine mean little; compare
// the rows of one run.

#include "BenchMain.h"
#include "ChildRun.h"

#include <Support/MediaProbe.h>
#include <Support/VirtualMicrophone.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr double kSeconds = 10.0;
constexpr int kRepetitions = 5;
const QString kWarmFirstSample = QStringLiteral("warm_first_sample_ms");

QTemporaryDir& workFolder()
{
    static QTemporaryDir folder;
    return folder;
}

void reportCost(benchmark::State& state, const ChildCost& cost, double recordedSeconds)
{
    state.SetIterationTime(cost.wallSeconds);
    state.counters["cpu_s_per_s"] = cost.cpuSeconds / recordedSeconds;
    state.counters["peak_MB"] = cost.peakMegabytes;
}

/** What was between the start and the stop and is not in the file, at either end. */
void reportMissing(benchmark::State& state, double secondsInFile)
{
    state.counters["missing_ms"] = (kSeconds - secondsInFile) * 1000.0;
}

/** Two takes in one process: the first is cold, the second warm. */
void recordInProcess(benchmark::State& state, const char* kind)
{
    for (auto unused : state) {
        Q_UNUSED(unused)
        const QTemporaryDir folder(workFolder().filePath(QStringLiteral("takes")));
        const ChildCost cost =
            runChild({QStringLiteral(VOICE_OVER_CHILD), QString::fromLatin1(kind), folder.path(),
                      QString::number(kSeconds), QStringLiteral("2")},
                     0.0);
        const MediaInfo media = MediaProbe::probe(folder.filePath(QStringLiteral("take1.m4a")));
        if (!cost.ok || !media.isReadable) {
            state.SkipWithError("the take failed");
            return;
        }
        reportCost(state, cost, 2.0 * kSeconds);
        const QHash<QString, double> values = printedValues(cost);
        for (auto value = values.constBegin(); value != values.constEnd(); ++value) {
            state.counters[value.key().toStdString()] = value.value();
        }
        state.counters["head_lost_ms"] = std::max(0.0, values.value(kWarmFirstSample));
        reportMissing(state, media.seconds);
    }
}

void recordByCommand(benchmark::State& state, const QStringList& words)
{
    for (auto unused : state) {
        Q_UNUSED(unused)
        const QTemporaryDir folder(workFolder().filePath(QStringLiteral("takes")));
        const QString path = folder.filePath(QStringLiteral("take.m4a"));
        QStringList command = words;
        command.replaceInStrings(QStringLiteral("OUTPUT"), path);
        const ChildCost cost = runChild(command, kSeconds);
        const MediaInfo media = MediaProbe::probe(path);
        if (!media.isReadable) {
            state.SkipWithError("the take failed");
            return;
        }
        reportCost(state, cost, kSeconds);
        state.counters["cold_stop_ms"] = cost.stopMilliseconds;
        // Counted from the start of the process: a program of its own starts cold every time.
        reportMissing(state, media.seconds);
    }
}

void engine(benchmark::State& state)
{
    recordInProcess(state, "engine");
}

void barePipeline(benchmark::State& state)
{
    recordInProcess(state, "bare");
}

void gstLaunch(benchmark::State& state)
{
    recordByCommand(
        state,
        QStringLiteral("gst-launch-1.0 -e pulsesrc ! audioconvert ! audioresample ! "
                       "audio/x-raw,rate=48000,channels=2 ! avenc_aac bitrate=128000 ! mp4mux ! "
                       "filesink location=OUTPUT")
            .split(QLatin1Char(' ')));
}

void ffmpeg(benchmark::State& state)
{
    recordByCommand(
        state,
        QStringLiteral("ffmpeg -y -f pulse -ar 48000 -ac 2 -i default -c:a aac -b:a 128k OUTPUT")
            .split(QLatin1Char(' ')));
}

void configure(benchmark::internal::Benchmark* row)
{
    row->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(kRepetitions)->UseManualTime();
}

BENCHMARK(engine)->Apply(configure);
BENCHMARK(barePipeline)->Apply(configure);
BENCHMARK(gstLaunch)->Apply(configure);
BENCHMARK(ffmpeg)->Apply(configure);

std::vector<Aim> aims(const BenchResults& results)
{
    const auto most = Aim::Bound::AtMost;
    const auto toBare = [&](const char* figure) {
        return results.ratio("engine", "barePipeline", figure);
    };
    return {
        {"voice-over: CPU / ffmpeg's default AAC encoder",
         results.ratio("engine", "ffmpeg", "cpu_s_per_s"), most, 0.6},
        {"voice-over: peak memory / gst-launch-1.0",
         results.ratio("engine", "gstLaunch", "peak_MB"), most, 1.0},
        {"voice-over: first sample, cold / bare pipeline", toBare("cold_first_sample_ms"), most,
         1.0},
        {"voice-over: first sample, warm / bare pipeline", toBare("warm_first_sample_ms"), most,
         1.0},
        {"voice-over: stop, cold / bare pipeline", toBare("cold_stop_ms"), most, 1.0},
        {"voice-over: stop, warm / bare pipeline", toBare("warm_stop_ms"), most, 1.0},
        {"voice-over, warm: ms of the head lost", results.value("engine", "head_lost_ms"), most,
         0.0},
    };
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    VirtualMicrophone microphone;
    const QString speech = workFolder().filePath(QStringLiteral("speech.wav"));
    if (!TestSound::writeSpeech(
            speech, QStringLiteral("One two three four five six seven eight nine ten."), 900.0) ||
        !microphone.plug() || !microphone.play(speech)) {
        QTextStream(stderr) << "No virtual microphone: run this by ./dev bench\n";
        return 1;
    }
    return runBenchmarks(argc, argv, aims);
}
