#pragma once

#include "RecordFixture.h"

#include <KdRecord/KRecordSettingData.h>
#include <KdRecord/KdWebcamRecordPanel.h>

/**
 * What the tests of the webcam panel and its dialog have in common beyond that: the panel, with two
 * cameras and two microphones.
 */
class WebcamRecordFixture : public RecordFixture
{
    Q_OBJECT

public:
    static constexpr const char* kStart = "KProDlg_KCameraCptBtn";
    static constexpr const char* kPause = "KCameraCapture_ButtonPause";
    static constexpr const char* kReRecord = "KCameraCapture_ButtonReRecord";
    static constexpr const char* kCamera = "KCameraCapture_VideoBox";
    static constexpr const char* kMicrophone = "KCameraCapture_AudioBox";
    static constexpr const char* kResolution = "KCameraCapture_ResolutionBox";
    static constexpr const char* kFrameRate = "KCameraCapture_FrameRateBox";
    static constexpr const char* kSeconds = "KCameraCapture_CountdownBox";
    static constexpr const char* kPreview = "KCameraCapture_PreviewBox";
    static constexpr const char* kOk = "KCameraCapture_OkButton";
    static constexpr const char* kStatus = "KCameraCapture_Status";
    static constexpr const char* kCountdown = "KCameraCapture_Countdown";
    static constexpr const char* kDisplay = "KCameraCapture_Display";
    static constexpr const char* kHint = "KCameraCapture_Hint";

protected:
    /** A panel in a window of its own, not filled yet and not on the screen. */
    void makePanel();
    /** The panel filled and on the screen. */
    void showPanel();
    /** Instruments a panel that the test has made itself. */
    void adopt(KdWebcamRecordPanel* panel);
    void setCameras(const QStringList& names);
    static void store(const KRecordSettingData& choices);
    static KRecordSettingData stored();
    void setCaptureFolder(const QString& folder);
    static QString captureFolder();
    QStringList takes() const { return filesIn(captureFolder()); }

    QString textOf(const char* label) const;
    /** The status without the dots that come and go. */
    QString statusText() const;
    QString timeText() const { return textOf("KCameraCapture_TimeLabel"); }
    QString choice(const char* list) const;
    QStringList choices(const char* list) const;
    void choose(const char* list, const QString& text);
    bool isCountingDown() const;

    /** Presses the record button and waits until the engine records. @return the file's path */
    QString startTake();
    /** Presses the record button and waits until nothing is recorded. */
    void stopTake();
    /** @param state "empty" (never filled), "preview", "counting", "recording", "paused" or
     * "asking" (to re-record) */
    void reachState(const QString& state);
    /** The engine reports a device event, and the panel has heard of it. */
    void deliverDevice(int status);
    static constexpr const char* kDeviceChangeTimer = "KCameraCapture_DeviceChangeTimer";
    static constexpr const char* kDeviceLostTimer = "KCameraCapture_DeviceLostTimer";
    bool isRunning(const char* timer) const;
    /** Lets the time of a timer that runs pass at once, and waits for what it does. */
    void fire(const char* timer);
    /** The devices went or came, and the panel has looked at them. */
    void lookAtDevices(int status);
    int orders(int number) const;

    QPointer<KdWebcamRecordPanel> panel;

protected Q_SLOTS:
    void init();

private:
    void recordSignals();
    void recordOrders();
};
