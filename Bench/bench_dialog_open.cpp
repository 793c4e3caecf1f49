// Time from asking for the voice-over dialog to its first paint, beside a plain Qt dialog with as
// many widgets of the same kinds. Both stand in one run; the ratio of the two is the figure.

#include <KCore/KCoreDirs.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdWidgets/KdSkinManager.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolButton>

#include <benchmark/benchmark.h>

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

QWidget* twinOf(const QWidget* model, QWidget* parent)
{
    if (qobject_cast<const QLabel*>(model)) {
        return new QLabel(QStringLiteral("Caption"), parent);
    }
    if (qobject_cast<const QComboBox*>(model)) {
        return new QComboBox(parent);
    }
    if (qobject_cast<const QAbstractSpinBox*>(model)) {
        return new QDoubleSpinBox(parent);
    }
    if (qobject_cast<const QLineEdit*>(model)) {
        return new QLineEdit(parent);
    }
    if (qobject_cast<const QCheckBox*>(model)) {
        return new QCheckBox(parent);
    }
    if (qobject_cast<const QToolButton*>(model)) {
        return new QToolButton(parent);
    }
    if (qobject_cast<const QPushButton*>(model)) {
        return new QPushButton(parent);
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

QDialog* plainTwin(const QList<QWidget*>& models)
{
    auto* const dialog = new QDialog;
    dialog->setFixedSize(480, 448);
    auto* const layout = new QGridLayout(dialog);
    int position = 0;
    for (const QWidget* model : models) {
        layout->addWidget(twinOf(model, dialog), position / 4, position % 4);
        ++position;
    }
    return dialog;
}

QList<QWidget*> widgetsOf(const QWidget& dialog)
{
    QList<QWidget*> own;
    const QList<QWidget*> all = dialog.findChildren<QWidget*>();
    for (QWidget* widget : all) {
        if (!isInner(widget)) {
            own.append(widget);
        }
    }
    return own;
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
        state.counters["widgets"] = static_cast<double>(widgetsOf(*view).size());
        delete view;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}

void openPlain(benchmark::State& state)
{
    auto* const view = new KdAudioRecordView(nullptr);
    const QList<QWidget*> models = widgetsOf(*view);
    for (auto unused : state) {
        Q_UNUSED(unused)
        QDialog* const dialog = plainTwin(models);
        const PaintWatch watch(dialog);
        dialog->show();
        processUntilPainted(watch);
        state.PauseTiming();
        state.counters["widgets"] = static_cast<double>(models.size());
        delete dialog;
        state.ResumeTiming();
    }
    delete view;
}

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
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
