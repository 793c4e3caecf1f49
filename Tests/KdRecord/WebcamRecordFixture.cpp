#include "WebcamRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KRecordSettingParam.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdWebcamRecorderCodes.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QSignalSpy>
#include <QTimer>
#include <QVBoxLayout>

using namespace KdVBLMODEL;

void WebcamRecordFixture::init()
{
    RecordFixture::init();
    setCameras({QStringLiteral("Cam A"), QStringLiteral("Cam B")});
    engine->script().resolutions = {QSize(640, 480), QSize(1280, 720), QSize(1920, 1080)};
    setCaptureFolder(temporaryPath(QStringLiteral("clips")));
}

void WebcamRecordFixture::makePanel()
{
    window = new QWidget;
    auto* const column = new QVBoxLayout(window);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const made = new KdWebcamRecordPanel(window);
    column->addWidget(made);
    adopt(made);
    window->resize(798, 640);
}

void WebcamRecordFixture::showPanel()
{
    makePanel();
    panel->InitUI();
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window));
    signalTexts.clear();
}

void WebcamRecordFixture::adopt(KdWebcamRecordPanel* made)
{
    panel = made;
    panel->setTakeClock([this] { return nowMs; });
    panel->setLocalTime([this] { return localTime; });
    recordSignals();
    recordOrders();
}

void WebcamRecordFixture::recordSignals()
{
    using Panel = KdWebcamRecordPanel;
    const auto note = [this](const QString& text) { signalTexts.append(text); };
    connect(panel, &Panel::sigClose, this, [note] { note(QStringLiteral("sigClose")); });
    connect(panel, &Panel::sigStartRecordBtnClick, this,
            [note] { note(QStringLiteral("sigStartRecordBtnClick")); });
    connect(panel, &Panel::sigCaptureFinished, this,
            [this, note](const QString& path, QSize size, double rate, int seconds,
                         const QString& camera) {
                finishedPath = path;
                const QString numbers = QStringLiteral("%1x%2, %3, %4")
                                            .arg(size.width())
                                            .arg(size.height())
                                            .arg(rate)
                                            .arg(seconds);
                note(QStringLiteral("sigCaptureFinished(") +
                     (path.isEmpty() ? QString() : QStringLiteral("path")) + QStringLiteral(", ") +
                     numbers + QStringLiteral(", ") + camera + QLatin1Char(')'));
            });
}

void WebcamRecordFixture::recordOrders()
{
    using Panel = KdWebcamRecordPanel;
    const auto note = [this](const char* what, double value) {
        signalTexts.append(QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(value));
    };
    connect(panel, &Panel::sigWebcamRecorderOrderType, this,
            [note](int order) { note("order", order); });
    connect(panel, &Panel::sigSetCurrentWebCamDevice, this,
            [note](int index) { note("camera", index); });
    connect(panel, &Panel::sigSetCurrentAudioDevice, this,
            [note](int index) { note("microphone", index); });
    connect(panel, &Panel::sigSetCurrentResolution, this,
            [note](QSize size) { note("width", size.width()); });
    connect(panel, &Panel::sigSetCurrentFrameRate, this,
            [note](double rate) { note("rate", rate); });
}

void WebcamRecordFixture::setCameras(const QStringList& names)
{
    QList<_KdCaptureDevInf> devices;
    for (const QString& name : names) {
        const int index = devices.size();
        devices.append({kdtWebcam, index, name, QStringLiteral("id-") + name});
    }
    engine->script().webcams = devices;
}

void WebcamRecordFixture::store(const KRecordSettingData& choices)
{
    KRecordSettingParam::instance()->setData(choices);
}

KRecordSettingData WebcamRecordFixture::stored()
{
    return KRecordSettingParam::instance()->data();
}

void WebcamRecordFixture::setCaptureFolder(const QString& folder)
{
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetCaptureFileFolder(folder);
}

QString WebcamRecordFixture::captureFolder()
{
    return KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->GetCaptureFileFolder();
}

QString WebcamRecordFixture::textOf(const char* label) const
{
    return control<QLabel>(label)->text();
}

QString WebcamRecordFixture::statusText() const
{
    QString text = textOf(kStatus);
    while (text.endsWith(QLatin1Char('.'))) {
        text.chop(1);
    }
    return text;
}

QString WebcamRecordFixture::choice(const char* list) const
{
    return control<QComboBox>(list)->currentText();
}

QStringList WebcamRecordFixture::choices(const char* list) const
{
    QStringList rows;
    const auto* const box = control<QComboBox>(list);
    for (int row = 0; row < box->count(); ++row) {
        rows.append(box->itemText(row));
    }
    return rows;
}

void WebcamRecordFixture::choose(const char* list, const QString& text)
{
    QVERIFY(choices(list).contains(text));
    control<QComboBox>(list)->setCurrentText(text);
}

bool WebcamRecordFixture::isCountingDown() const
{
    return control<KdCountCtrlVideo>(kCountdown)->isActive();
}

QString WebcamRecordFixture::startTake()
{
    click(kStart);
    const bool isRecording =
        DialogDriver::waitUntil([this] { return panel && panel->status() == fcsRecording; },
                                QStringLiteral("the recording"));
    return isRecording ? engine->lastCall("setOutputFile").argument<QString>(0) : QString();
}

void WebcamRecordFixture::stopTake()
{
    click(kStart);
    DialogDriver::waitUntil([this] { return !panel || panel->status() == fcsNoStart; },
                            QStringLiteral("the end of the recording"));
}

void WebcamRecordFixture::reachState(const QString& state)
{
    if (state == QLatin1String("empty")) {
        makePanel();
        return;
    }
    showPanel();
    if (state == QLatin1String("counting")) {
        control<QDoubleSpinBox>(kSeconds)->setValue(9);
        click(kStart);
    } else if (state != QLatin1String("preview")) {
        startTake();
    }
    if (state == QLatin1String("paused")) {
        click(kPause);
    } else if (state == QLatin1String("asking")) {
        click(kReRecord);
    }
}

void WebcamRecordFixture::deliverDevice(int status)
{
    engine->deliverDevice(status, 0);
    drain();
}

int WebcamRecordFixture::orders(int number) const
{
    return signalTexts.count(QStringLiteral("order %1").arg(number));
}

bool WebcamRecordFixture::isRunning(const char* timer) const
{
    return panel->findChild<QTimer*>(QLatin1String(timer))->isActive();
}

void WebcamRecordFixture::fire(const char* timer)
{
    auto* const running = panel->findChild<QTimer*>(QLatin1String(timer));
    QVERIFY2(running->isActive(), timer);
    const int interval = running->interval();
    QSignalSpy fired(running, &QTimer::timeout);
    running->start(0);
    // More than once where it was put off.
    QTRY_VERIFY(fired.count() > 0);
    if (panel) {
        running->setInterval(interval);
    }
}

void WebcamRecordFixture::lookAtDevices(int status)
{
    deliverDevice(status);
    fire(kDeviceChangeTimer);
}
