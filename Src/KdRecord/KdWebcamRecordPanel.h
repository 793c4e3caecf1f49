#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdMainWindowLock.h>
#include <KdRecord/KdMinimumTake.h>
#include <KdRecord/KdOutputFolderCheck.h>
#include <KdRecord/KdRecordNotices.h>
#include <KdWidgets/KdWidget.h>

#include <QDateTime>
#include <QPointer>
#include <QSize>
#include <QString>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class KdDeviceBox;
class KdOverlayPlace;
class KdShortcutWatch;
class KdTakeWatch;
class KdWebCamDisplayLabel;
class KdWebcamRecordPanelUi;
class KdWebcamRecorderHelper;
class QTimer;

/**
 * The webcam panel: shows the camera's picture, lets the user choose camera, microphone, size, rate
 * and countdown, and starts, pauses, resumes, re-records and stops a take. It owns the adapter to
 * the capture engine, which it drives by orders (KdWebcamRecorderCodes.h); the order signals are
 * connected to it and tell others what happens. During a countdown and a take the host's main
 * window is locked; it is unlocked at the latest when the panel is destroyed.
 *
 * A new panel shows nothing yet: InitUI() fills the lists and starts the preview.
 *
 * GUI thread, save slotWebcamFrameChanged(). The panel shows modal messages, which run nested event
 * loops; it may be destroyed at any time, from inside its own signals and messages too, with frames
 * and device events on their way. That stops the preview, ends a running take and deletes its file.
 * One exception is made by Qt: the slots of signals that come from the user's choice in a list (an
 * order, sigSetCurrent...()) must use deleteLater().
 */
class KdWebcamRecordPanel : public KdWidget
{
    Q_OBJECT

public:
    explicit KdWebcamRecordPanel(QWidget* parent = nullptr);
    ~KdWebcamRecordPanel() override;

    /** Fills all lists anew and starts the preview. */
    void InitUI();
    /** Whoever shows the panel is closing: ends a take or its countdown, deletes the take's file,
     * stops the preview. Reports nothing. Harmless when repeated. */
    void AbordRecorder();

    /** @return whether the preview window's switch is on. */
    bool isRecordPreview() const;
    /** Puts the countdown over the middle of the picture: when the window has moved. */
    void placeCountdown();

    /** What the engine answers. */
    KdVBLMODEL::_KdCaptureStatus status() const;
    KdVBLMODEL::_KdCaptureRecordShape recordDisplayShape() const;
    KdVBLMODEL::_KdCaptureRecordBackgroundMode aiEffectType() const;
    bool isRecordFlipped() const;

    void RetranslateUi() override;

    /** Seams: time that measures a take, time that names it, and the look at its folder. */
    void setTakeClock(const KdMinimumTake::Clock& clock);
    void setLocalTime(std::function<QDateTime()> localTime);
    void setFolderCheck(const KdOutputFolderCheck& check);

Q_SIGNALS:
    /** The OK button asks whoever shows the panel to close it. */
    void sigClose();
    /**
     * A take has ended, or its start was refused.
     * @param filePath empty: there is nothing to import
     * @param file_duration s
     * @param deviceName the camera's
     */
    void sigCaptureFinished(QString filePath, QSize resolution, double frame_rate,
                            int file_duration, QString deviceName);
    /** A start was asked for: the countdown runs, or there is no camera. */
    void sigStartRecordBtnClick();
    /** @param order a KdWebcamOrder::Order */
    void sigWebcamRecorderOrderType(int order);
    /** Positions in the adapter's lists. */
    void sigSetCurrentWebCamDevice(int index);
    void sigSetCurrentAudioDevice(int index);
    void sigSetCurrentResolution(QSize resolution);
    void sigSetCurrentFrameRate(double frameRates);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    /** Enter presses the focused button, since the blank may be the record shortcut. */
    void keyPressEvent(QKeyEvent* event) override;

private Q_SLOTS:
    void slotOnVideoDeviceChanged(int index);
    void slotOnAudioDeviceChanged(int index);
    void slotOnFrameRateChanged(int index);
    void slotOnResoutionChanged(int index);
    void slotSpaceShortcutActivated();
    void slotOnStartStopClicked();
    void slotCaptureTime(qint64 miliseconds);
    void slotOnOkButtonClicked();
    void slotOnCountCtrlFinished();
    void slotCountdownChanged(double value);
    /** On an engine thread. */
    void slotWebcamFrameChanged(int width, int height, uint8_t* bits);
    void slotRecorderResponeType(int response);
    void slotDeviceLostTimer();
    void slotOnVoiceVulomeChanged(int volume);
    void slotReRecord();
    void slotPauseContinue();
    void slotStateChanged(int state);

private:
    void makeRecorder();
    QTimer* makeTimer(const QString& name, int milliseconds, void (KdWebcamRecordPanel::*fired)());
    void makeWidgets();
    void connectTakeControls();
    void connectChoices();
    void connectDisplay();
    void TranslateText();
    void showStatus();
    void showPreviewText();

    class Presence;
    bool sendOrder(int order);

    // Devices and formats
    bool loadWebcamDeviceItems();
    bool loadAudioDeviceItems();
    void reloadFormats();
    void reloadResolutions();
    void retranslateFrameRates();
    void reloadFrameRates(double rate);
    void applyChosenRate();
    void showDeviceTips();
    void enableStart();
    void giveOptions();
    void webcamSwitched();
    void webcamDeviceChanged();
    void audioDeviceChanged();
    void resolutionSwitched();
    void keepFormerCamera();
    int microphoneOfTake() const;
    void noteLoss(std::optional<QString>& lost, const QString& name, const char* message);
    void noteDeviceChange();
    void startDeviceChangeTimer();
    void takeUpDeviceChange();
    void lookForDeviceChange();
    void lostInTake();
    void leaveAbortedCountdown();
    void leaveLostDevices();

    // Takes
    bool isTakeRunning() const;
    void refuseWithoutDevice();
    bool isFolderUsable();
    void launchCountdown();
    void storeOptions();
    void leaveTake();
    bool endTake();
    bool reportTake();
    void dropTake();
    void showIdle();
    void showRecording();
    void showStartState();
    bool startTake();
    void stopOrphan(const QString& path);
    void failStart();
    void startOverTake();
    void dropTimeOfFormerTake();
    void rememberChoices();
    QString freeTakePath() const;
    void takeEndedByItself();
    KdVBLMODEL::_KdCaptureStatus takeStatus() const;
    bool abortCountdown();

    /** What a running take is recorded from. The lists may show something else by its end. */
    struct Source
    {
        QSize resolution;
        double frameRate = 0.0;
        QString camera;
    };
    Source currentSource() const;

    KdWebcamRecorderHelper* m_pRecorder = nullptr;
    std::unique_ptr<KdWebcamRecordPanelUi> m_pUi;
    /** For engine threads; null until there is one. */
    std::atomic<KdWebCamDisplayLabel*> m_pDisplay{nullptr};
    std::unique_ptr<KdDeviceBox> m_pCameras;
    std::unique_ptr<KdDeviceBox> m_pMicrophones;
    KdRecordNotices m_notices;
    KdShortcutWatch* m_pShortcut;
    KdTakeWatch* m_pTakeWatch;
    KdOverlayPlace* m_pCountdownPlace = nullptr;

    QTimer* m_pDeviceChangeTimer;
    QTimer* m_pDeviceLostTimer;
    bool m_bDeviceChangePending = false;
    /** The names of devices whose loss is still to be reported. */
    std::optional<QString> m_lostWebcam;
    std::optional<QString> m_lostAudio;
    /** How often the panel was aborted: whoever comes back from a message finds out. */
    int m_nAborts = 0;

    KdMinimumTake m_elapsed;
    std::function<QDateTime()> m_localTime;
    KdOutputFolderCheck m_folderCheck;
    KdMainWindowLock m_mainWindowLock;

    QString m_strOutputFile; ///< of the running take; empty when there is none
    Source m_takeSource;
    int m_nDurationSec = 0;
    /** False while reports of a take that was re-recorded may still be on their way. */
    bool m_bTakesTime = true;
    /** What the preview window's switch says; by its state from the first change on. */
    bool m_bOffersToOpenPreview = false;
};

/** Tells whoever comes back from a signal or a message whether the panel is still there, and was
 * not aborted meanwhile. */
class KdWebcamRecordPanel::Presence
{
public:
    explicit Presence(KdWebcamRecordPanel* panel) : m_panel(panel), m_aborts(panel->m_nAborts) {}
    operator bool() const { return m_panel && m_panel->m_nAborts == m_aborts; }

private:
    QPointer<KdWebcamRecordPanel> m_panel;
    int m_aborts;
};
