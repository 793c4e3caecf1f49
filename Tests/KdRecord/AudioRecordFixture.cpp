#include "AudioRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdCountCtrl.h>
#include <KdVBLModel/KdProject.h>

#include <QAction>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QVBoxLayout>

using namespace KdVBLMODEL;

void AudioRecordFixture::init()
{
    RecordFixture::init();
    setVoiceFolder(temporaryPath(QStringLiteral("takes")));
    IKdProjectManager::getInstance()->setFrameRate(KdFrameRate::Fps25);
}

void AudioRecordFixture::showPanel()
{
    window = new QWidget;
    auto* const column = new QVBoxLayout(window);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const made = new KdAudioRecordPanel(window);
    column->addWidget(made);
    adopt(made);
    window->setFixedSize(480, 408);
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window));
}

void AudioRecordFixture::showView(QWidget* parent)
{
    view = new KdAudioRecordView(parent);
    window = view;
    adopt(view->findChild<KdAudioRecordPanel*>());
    QCOMPARE(view->doModal(), 1);
    // An active parent counts as active to QTest.
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget*>(view));
}

QSystemTrayIcon* AudioRecordFixture::tray() const
{
    return view->findChild<QSystemTrayIcon*>();
}

QAction* AudioRecordFixture::entry(int position) const
{
    return tray()->contextMenu()->actions().at(position);
}

void AudioRecordFixture::adopt(KdAudioRecordPanel* made)
{
    panel = made;
    panel->setTakeClock([this] { return nowMs; });
    panel->setLocalTime([this] { return localTime; });
    recordSignals();
}

void AudioRecordFixture::recordSignals()
{
    using Panel = KdAudioRecordPanel;
    const auto note = [this](const QString& text) { signalTexts.append(text); };
    connect(panel, &Panel::sigClose, this, [note] { note(QStringLiteral("sigClose")); });
    connect(panel, &Panel::sigEndCapture, this, [note] { note(QStringLiteral("sigEndCapture")); });
    connect(panel, &Panel::sigPause, this, [note] { note(QStringLiteral("sigPause")); });
    connect(panel, &Panel::sigResume, this, [note] { note(QStringLiteral("sigResume")); });
    connect(panel, &Panel::sigStartCaptureFailed, this,
            [note] { note(QStringLiteral("sigStartCaptureFailed")); });
    connect(panel, &Panel::sigStartRecordBtnClick, this,
            [note] { note(QStringLiteral("sigStartRecordBtnClick")); });
    connect(panel, &Panel::sigMute, this,
            [note](bool mute) { note(QStringLiteral("sigMute(%1)").arg(mute)); });
    connect(panel, &Panel::sigStartCapture, this,
            [note](bool again) { note(QStringLiteral("sigStartCapture(%1)").arg(again)); });
    connect(panel, &Panel::sigCaptureDoing, this,
            [note](qint64 frames) { note(QStringLiteral("sigCaptureDoing(%1)").arg(frames)); });
    connect(panel, &Panel::sigCaptureFinished, this,
            [this, note](const QString& path, int channels, int bits, int seconds,
                         const QString& device) {
                finishedPath = path;
                const QString numbers =
                    QStringLiteral("%1, %2, %3").arg(channels).arg(bits).arg(seconds);
                note(QStringLiteral("sigCaptureFinished(") +
                     (path.isEmpty() ? QString() : QStringLiteral("path")) + QStringLiteral(", ") +
                     numbers + QStringLiteral(", ") + device + QLatin1Char(')'));
            });
}

void AudioRecordFixture::setVoiceFolder(const QString& folder)
{
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(folder);
}

QString AudioRecordFixture::voiceFolder() const
{
    return KdAppSettings::GetInstance()
        ->GetSettings()
        ->GetFolderSettings()
        ->GetRecorderVoiceFolder();
}

QString AudioRecordFixture::timeText() const
{
    return control<QLabel>("KAudioCapture_TimeLabel")->text();
}

bool AudioRecordFixture::isCountingDown() const
{
    return control<KdCountCtrl>("KAudioCapture_Countdown")->isActive();
}

QString AudioRecordFixture::startTake()
{
    click(kStart);
    const bool isRecording =
        DialogDriver::waitUntil([this] { return panel && panel->status() == fcsRecording; },
                                QStringLiteral("the recording"));
    return isRecording ? engine->lastCall("setOutputFile").argument<QString>(0) : QString();
}

void AudioRecordFixture::stopTake()
{
    click(kStart);
    DialogDriver::waitUntil([this] { return !panel || panel->status() == fcsNoStart; },
                            QStringLiteral("the end of the recording"));
}

void AudioRecordFixture::reachState(const QString& state)
{
    auto* const seconds = control<QDoubleSpinBox>("KAudioCapture_CountdownBox");
    if (state == QLatin1String("counting")) {
        seconds->setValue(9);
        click(kStart);
    } else if (state != QLatin1String("idle")) {
        startTake();
    }
    if (state == QLatin1String("paused")) {
        click(kPause);
    } else if (state == QLatin1String("asking")) {
        click(kReRecord);
    }
}

bool AudioRecordFixture::waitForRebuild(int formerCount)
{
    return DialogDriver::waitUntil(
        [this, formerCount] { return engine->count("getDevices") > formerCount; },
        QStringLiteral("the device list's rebuilding"));
}

QStringList AudioRecordFixture::takes() const
{
    return filesIn(voiceFolder());
}
