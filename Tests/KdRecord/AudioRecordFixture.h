#pragma once

#include "RecordFixture.h"

#include <KdRecord/KdAudioRecordPanel.h>
#include <KdRecord/KdAudioRecordView.h>

#include <QSignalSpy>

class QAction;
class QSystemTrayIcon;

/**
 * What the tests of the voice-over panel and its dialog have in common beyond that: the panel, with
 * two microphones.
 */
class AudioRecordFixture : public RecordFixture
{
    Q_OBJECT

public:
    static constexpr const char* kStart = "KAudioCapture_RecorderButton";
    static constexpr const char* kStop = "KAudioCapture_pButtonStop";
    static constexpr const char* kPause = "KAudioCapture_ButtonPause";
    static constexpr const char* kReRecord = "KAudioCapture_ButtonReRecord";
    static constexpr const char* kDevice = "KAudioCapture_DeviceBox";
    static constexpr const char* kOk = "KPropertyPanel_Btn";

protected:
    /** The panel in a window of its own, on the screen. */
    void showPanel();
    /** The panel in its dialog. */
    void showView(QWidget* parent = nullptr);
    QSystemTrayIcon* tray() const;
    /** An entry of the tray icon's menu, from above. */
    QAction* entry(int position) const;
    /** Instruments a panel that the test has made itself. */
    void adopt(KdAudioRecordPanel* panel);
    void setVoiceFolder(const QString& folder);
    QString voiceFolder() const;

    QString timeText() const;
    bool isCountingDown() const;

    /** Presses the record button and waits until the engine records. @return the file's path */
    QString startTake();
    /** Presses the record button and waits until nothing is recorded. */
    void stopTake();
    /** @param state "idle", "counting", "recording", "paused" or "asking" (to re-record) */
    void reachState(const QString& state);
    /** Waits until the engine's list was asked for once more. */
    bool waitForRebuild(int formerCount);
    QStringList takes() const;

    QPointer<KdAudioRecordPanel> panel;
    QPointer<KdAudioRecordView> view;

protected Q_SLOTS:
    void init();

private:
    void recordSignals();
};
