// Time from asking for the voice-over dialog to its first paint, beside a plain Qt dialog with as
// many widgets of the same kinds: for the first time in a process, each in one of its own, and
// again. All stand in one run; the ratios are the figures. "gui_cpu_ms" is the processor time of
// the user-interface thread alone: whatever the engine starts up must not be in it.

#include <KCore/KCoreDirs.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdWidgets/KdSkinManager.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolButton>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <ctime>
#include <memory>

namespace {

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

void processUntilPainted(const PaintWatch& watch)
{
    while (!watch.painted()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/** The kinds of widget that a twin tells apart. */
enum class Kind : char
{
    Label = 'l',
    Combo = 'c',
    Spin = 's',
    Edit = 'e',
    Check = 'k',
    Tool = 't',
    Push = 'p',
    Other = 'o'
};

Kind kindOf(const QWidget* widget)
{
    if (qobject_cast<const QLabel*>(widget)) {
        return Kind::Label;
    }
    if (qobject_cast<const QComboBox*>(widget)) {
        return Kind::Combo;
    }
    if (qobject_cast<const QAbstractSpinBox*>(widget)) {
        return Kind::Spin;
    }
    if (qobject_cast<const QLineEdit*>(widget)) {
        return Kind::Edit;
    }
    if (qobject_cast<const QCheckBox*>(widget)) {
        return Kind::Check;
    }
    if (qobject_cast<const QToolButton*>(widget)) {
        return Kind::Tool;
    }
    return qobject_cast<const QPushButton*>(widget) ? Kind::Push : Kind::Other;
}

QWidget* twinOf(Kind kind, QWidget* parent)
{
    switch (kind) {
    case Kind::Label:
        return new QLabel(QStringLiteral("Caption"), parent);
    case Kind::Combo:
        return new QComboBox(parent);
    case Kind::Spin:
        return new QDoubleSpinBox(parent);
    case Kind::Edit:
        return new QLineEdit(parent);
    case Kind::Check:
        return new QCheckBox(parent);
    case Kind::Tool:
        return new QToolButton(parent);
    case Kind::Push:
        return new QPushButton(parent);
    case Kind::Other:
        break;
    }
    return new QWidget(parent);
}

/** What a spin box or combo box is made of comes with its twin. */
bool isInner(const QWidget* widget)
{
    const QObject* const parent = widget->parent();
    return widget->isWindow() || qobject_cast<const QComboBox*>(parent) ||
           qobject_cast<const QAbstractSpinBox*>(parent) ||
           qobject_cast<const QLineEdit*>(parent) ||
           widget->inherits("QComboBoxPrivateContainer") || widget->inherits("QScrollBar") ||
           widget->inherits("QAbstractItemView");
}

/** @param kinds a letter for each widget */
QDialog* plainTwin(const QByteArray& kinds)
{
    auto* const dialog = new QDialog;
    dialog->setFixedSize(480, 448);
    auto* const layout = new QGridLayout(dialog);
    for (int i = 0; i < kinds.size(); ++i) {
        layout->addWidget(twinOf(static_cast<Kind>(kinds.at(i)), dialog), i / 4, i % 4);
    }
    return dialog;
}

QByteArray kindsIn(const QWidget& dialog)
{
    QByteArray kinds;
    const QList<QWidget*> all = dialog.findChildren<QWidget*>();
    for (const QWidget* widget : all) {
        if (!isInner(widget)) {
            kinds.append(static_cast<char>(kindOf(widget)));
        }
    }
    return kinds;
}

QByteArray kindsOfVoiceOver()
{
    const KdAudioRecordView view(nullptr);
    return kindsIn(view);
}

void openVoiceOver(benchmark::State& state)
{
    for (auto unused : state) {
        Q_UNUSED(unused)
        auto* const view = new KdAudioRecordView(nullptr);
        const PaintWatch watch(view);
        view->doModal();
        processUntilPainted(watch);
        state.PauseTiming();
        state.counters["widgets"] = static_cast<double>(kindsIn(*view).size());
        delete view;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

void openPlain(benchmark::State& state)
{
    const QByteArray kinds = kindsOfVoiceOver();
    for (auto unused : state) {
        Q_UNUSED(unused)
        QDialog* const dialog = plainTwin(kinds);
        const PaintWatch watch(dialog);
        dialog->show();
        processUntilPainted(watch);
        state.PauseTiming();
        state.counters["widgets"] = static_cast<double>(kinds.size());
        delete dialog;
        state.ResumeTiming();
    }
}

double threadMilliseconds()
{
    timespec used{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

/**
 * Opens one dialog in a process of its own and prints two times in milliseconds.
 * @param kinds of the plain twin; "view": the voice-over dialog
 */
int openOnce(const QByteArray& kinds)
{
    QElapsedTimer timer;
    timer.start();
    const double cpu = threadMilliseconds();
    std::unique_ptr<QDialog> dialog;
    if (kinds == "view") {
        auto view = std::make_unique<KdAudioRecordView>(nullptr);
        view->setAttribute(Qt::WA_DeleteOnClose, false);
        dialog = std::move(view);
    } else {
        dialog.reset(plainTwin(kinds));
    }
    const PaintWatch watch(dialog.get());
    dialog->show();
    processUntilPainted(watch);
    std::printf("%f %f\n", static_cast<double>(timer.nsecsElapsed()) / 1e6,
                threadMilliseconds() - cpu);
    return 0;
}

void openFirst(benchmark::State& state, const QByteArray& kinds)
{
    double cpu = 0.0;
    for (auto unused : state) {
        Q_UNUSED(unused)
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--open-once"), QString::fromLatin1(kinds)});
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

void openFirstPlain(benchmark::State& state)
{
    openFirst(state, kindsOfVoiceOver());
}

void openFirstVoiceOver(benchmark::State& state)
{
    openFirst(state, "view");
}

BENCHMARK(openFirstPlain)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(5)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(openFirstVoiceOver)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(5)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(openPlain)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(openVoiceOver)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QTemporaryDir folder;
    setZentraDocumentDir(folder.path());
    // The style sheet of the application counts for both sides.
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    if (argc == 3 && qstrcmp(argv[1], "--open-once") == 0) {
        return openOnce(argv[2]);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
