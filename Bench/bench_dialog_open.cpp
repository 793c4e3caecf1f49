// Time from asking for a dialog to its first paint, beside a plain Qt dialog of its size with as
// many widgets of the same kinds: for the first time in a process, each in one of its own, and
// again. All stand in one run; the ratios are the figures. "gui_cpu_ms" is the processor time of
// the user-interface thread alone: whatever the engine starts up must not be in it.
//
// The first opening is measured as in a host that did nothing before. "Warm" is that in a host
// which let the engine look for devices earlier, as Studio does.

#include "BenchMain.h"
#include "PlainTwin.h"

#include <KCore/KCoreDirs.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdWebcamRecordView.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <ctime>
#include <memory>

namespace {

constexpr int kPatienceMs = 10000;

class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget* widget) { widget->installEventFilter(this); }
    bool painted() const { return m_painted; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        m_painted = m_painted || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    bool m_painted = false;
};

/** What is opened. */
enum class Which
{
    VoiceOver,
    Webcam
};

/** @return the dialog as its host makes it; the caller's. */
QDialog* makeDialog(Which which)
{
    if (which == Which::VoiceOver) {
        return new KdAudioRecordView(nullptr);
    }
    auto* const view = new KdWebcamRecordView(nullptr);
    view->initDevices();
    return view;
}

void showUntilPainted(QDialog* dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose, false);
    const PaintWatch watch(dialog);
    dialog->show();
    while (!watch.painted()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

PlainTwin::Pattern patternOf(Which which)
{
    const std::unique_ptr<QDialog> dialog(makeDialog(which));
    showUntilPainted(dialog.get());
    return PlainTwin::of(*dialog);
}

template <typename Make>
void openAgain(benchmark::State& state, const Make& make)
{
    for (auto unused : state) {
        Q_UNUSED(unused)
        QDialog* const dialog = make();
        showUntilPainted(dialog);
        state.PauseTiming();
        state.counters["widgets"] = static_cast<double>(PlainTwin::of(*dialog).kinds.size());
        delete dialog;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

void openDialog(benchmark::State& state, Which which)
{
    openAgain(state, [which] { return makeDialog(which); });
}

void openPlain(benchmark::State& state, Which which)
{
    const PlainTwin::Pattern pattern = patternOf(which);
    openAgain(state, [&pattern] { return PlainTwin::make(pattern); });
}

// In a process of its own

double threadMilliseconds()
{
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

/** Lets the engine look for devices, and waits for them. */
bool warmUp()
{
    auto* const recorder = KdVBLMODEL::createWebcamRecorder();
    const bool isDone = QTest::qWaitFor(
        [recorder] {
            QList<KdVBLMODEL::KdCaptureDevInfo> cameras;
            QList<KdVBLMODEL::KdCaptureDevInfo> microphones;
            return recorder->getDevices(KdVBLMODEL::kdtWebcam, &cameras) &&
                   recorder->getDevices(KdVBLMODEL::kdtMicrophone, &microphones) &&
                   !cameras.isEmpty() && !microphones.isEmpty();
        },
        kPatienceMs);
    recorder->release();
    return isDone;
}

/**
 * Opens one dialog and prints two times in milliseconds.
 * @param arguments "voice-over", "webcam" or the letters of a twin; its width and height; "warm"
 */
int openOnce(const QStringList& arguments)
{
    if (arguments.contains(QLatin1String("warm")) && !warmUp()) {
        return EXIT_FAILURE;
    }
    const QString what = arguments.value(0);
    const PlainTwin::Pattern pattern{what.toLatin1(),
                                     {arguments.value(1).toInt(), arguments.value(2).toInt()}};
    QElapsedTimer timer;
    timer.start();
    const double cpu = threadMilliseconds();
    std::unique_ptr<QDialog> dialog;
    if (what == QLatin1String("voice-over")) {
        dialog.reset(makeDialog(Which::VoiceOver));
    } else if (what == QLatin1String("webcam")) {
        dialog.reset(makeDialog(Which::Webcam));
    } else {
        dialog.reset(PlainTwin::make(pattern));
    }
    showUntilPainted(dialog.get());
    std::printf("%f %f\n", static_cast<double>(timer.nsecsElapsed()) / 1e6,
                threadMilliseconds() - cpu);
    return EXIT_SUCCESS;
}

void openFirst(benchmark::State& state, const QStringList& arguments)
{
    double cpu = 0.0;
    for (auto unused : state) {
        Q_UNUSED(unused)
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    QStringList(QStringLiteral("--open-once")) + arguments);
        child.waitForFinished();
        const QList<QByteArray> times = child.readAllStandardOutput().trimmed().split(' ');
        if (child.exitCode() != 0 || times.size() != 2) {
            state.SkipWithError("The dialog did not open");
            return;
        }
        state.SetIterationTime(times[0].toDouble() / 1e3);
        cpu += times[1].toDouble();
    }
    state.counters["gui_cpu_ms"] = benchmark::Counter(cpu, benchmark::Counter::kAvgIterations);
}

void openFirstPlain(benchmark::State& state, Which which)
{
    const PlainTwin::Pattern pattern = patternOf(which);
    openFirst(state, {QString::fromLatin1(pattern.kinds), QString::number(pattern.size.width()),
                      QString::number(pattern.size.height())});
}

void configureFirst(benchmark::internal::Benchmark* row)
{
    row->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(5)
        ->Repetitions(5)
        ->ReportAggregatesOnly(true);
}

void configureAgain(benchmark::internal::Benchmark* row)
{
    row->Unit(benchmark::kMillisecond)->Iterations(20)->Repetitions(5)->ReportAggregatesOnly(true);
}

void registerRows(const std::string& name, const QString& argument, Which which)
{
    const auto add = [&name](const char* kind, auto... what) {
        return benchmark::RegisterBenchmark((name + '/' + kind).c_str(), what...);
    };
    const QStringList cold{argument};
    const QStringList warm{argument, {}, {}, QStringLiteral("warm")};
    configureFirst(add("firstPlain", openFirstPlain, which));
    configureFirst(add("first", openFirst, cold));
    configureFirst(add("firstWarm", openFirst, warm));
    configureAgain(add("againPlain", openPlain, which));
    configureAgain(add("again", openDialog, which));
}

void addAims(std::vector<Aim>* aims, const BenchResults& results, const std::string& name)
{
    constexpr double most = 1.5;
    const auto add = [&](const char* what, const char* row, const char* plain, const char* figure) {
        aims->push_back({name + " dialog, " + what,
                         results.ratio(name + '/' + row, name + '/' + plain, figure),
                         Aim::Bound::AtMost, most});
    };
    add("first opening: time / plain dialog's", "first", "firstPlain", "time");
    add("first opening: GUI thread's CPU / plain dialog's", "first", "firstPlain", "gui_cpu_ms");
    add("first opening, engine warm: time / plain dialog's", "firstWarm", "firstPlain", "time");
    add("later opening: time / plain dialog's", "again", "againPlain", "time");
}

std::vector<Aim> aims(const BenchResults& results)
{
    std::vector<Aim> aims;
    addAims(&aims, results, "voiceOver");
    addAims(&aims, results, "webcam");
    return aims;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir folder;
    setZentraDocumentDir(folder.path());
    // The style sheet of the application counts for both sides.
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--open-once")) {
        return openOnce(arguments.mid(2));
    }
    VirtualMicrophone microphone;
    VirtualCamera camera;
    if (!microphone.plug() || !camera.plug()) {
        QTextStream(stderr) << "No virtual devices: run this by ./dev bench\n";
        return EXIT_FAILURE;
    }
    registerRows("voiceOver", QStringLiteral("voice-over"), Which::VoiceOver);
    registerRows("webcam", QStringLiteral("webcam"), Which::Webcam);
    return runBenchmarks(argc, argv, aims);
}
