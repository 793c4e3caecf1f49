#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdMainWindowLock.h>
#include <KdRecord/KdMinimumTake.h>
#include <KdRecord/KdOutputFolderCheck.h>
#include <KdRecord/KdRecordNotices.h>
#include <KdWidgets/KdWidget.h>

#include <QDateTime>
#include <QPointer>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class KAdvanceSettings;
class KdAudioDeviceBoxes;
class KdAudioRecordPanelUi;
class KdAudioRecorderHelper;
class KdOverlayPlace;
class KdShortcutWatch;
class KdTakeWatch;

/**
 * The voice-over panel: the user picks a microphone, a folder, a countdown and whether the project
 * is muted, and starts, pauses, resumes, re-records and stops a take. It owns the adapter to the
 * capture engine; closing it ends a running take and lets the adapter go. During a take the host's
 * main window is locked; it is unlocked at the latest when the panel is destroyed.
 *
 * GUI thread. The panel shows modal messages, which run nested event loops; it may be closed or
 * destroyed at any time, from inside its own signals and messages too, with one exception that Qt
 * makes: the slot of a sigMute() that comes from showing the panel must use deleteLater().
 */
class KdAudioRecordPanel : public KdWidget
{
    Q_OBJECT

public:
    explicit KdAudioRecordPanel(QWidget* parent = nullptr);
    ~KdAudioRecordPanel() override;

    /** @return what the engine is doing; not started once the panel is closed. */
    KdVBLMODEL::_KdCaptureStatus status() const;
    bool isMuted() const;

    /** What a press of the record button does while no take runs; a paused take goes on. */
    void startFromOutside();
    /** Stops a take or its countdown. */
    void stopFromOutside();

    void RetranslateUi() override;

    /** Seams: time that measures a take, time that names it, and the look at its folder. */
    void setTakeClock(const KdMinimumTake::Clock& clock);
    void setLocalTime(std::function<QDateTime()> localTime);
    void setFolderCheck(const KdOutputFolderCheck& check);

Q_SIGNALS:
    /** The OK button asks whoever shows the panel to close it. */
    void sigClose();
    /**
     * A take has ended, or the panel was closed.
     * @param filePath empty: there is nothing to import
     * @param sampling_rate carries the bits per sample
     * @param file_duration s
     */
    void sigCaptureFinished(QString filePath, int audio_channels, int sampling_rate,
                            int file_duration, QString deviceName);
    void sigMute(bool bMute);
    void sigPause();
    void sigResume();
    void sigStartCapture(bool bReStart);
    void sigStartCaptureFailed();
    /** The panel is being closed. */
    void sigEndCapture();
    /** @param duration recorded time in frames of the host's project */
    void sigCaptureDoing(qint64 duration);
    void sigStartRecordBtnClick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    /** Enter presses the focused button, since the blank may be the record shortcut. */
    void keyPressEvent(QKeyEvent* event) override;

private Q_SLOTS:
    void slotOnAudioDeviceChanged(int index);
    void slotOnStartStopClicked();
    void slotOnOkButtonClicked();
    void slotOnAdvanceButtonClicked();
    void slotCountViewFinished();
    void slotRefreshDevices();
    void slotSpaceShortcutActivated();
    void slotStopButtonClicked();
    void slotCountViewPressed(QPoint globalPos);
    void slotCaptureTime(qint64 miliseconds);
    void slotCaptureVolume(int volume);
    void slotOnSavePathChanged(const QString& strPath);
    void slotCountdownChanged(double value);
    void slotDeviceStatusChanged(KdVBLMODEL::KdCaptureDeviceStatus status, int deviceIdx);
    void slotReRecord();
    void slotPauseContinue();

private:
    void connectTakeControls();
    void connectSettings();
    void connectRecorder();
    void TranslateText();

    void InitUI(bool closePopup);
    void enableStart();

    bool isTakeRunning() const;
    void toggleStart(const char* function);
    void hideCountdown();
    void refuseWithoutDevice();
    bool isFolderUsable();
    void launchCountdown();
    void leaveTake();
    void showStartState();
    void SetEnable(bool enable);
    void showTakeButtons(bool visible);

    bool StartRecord(bool bReStart);
    KdVBLMODEL::_KdAudioRecordParams takeParams() const;
    QString freeTakePath() const;
    void rememberChoices();
    void failStart();
    void startOverTake();
    void dropTimeOfFormerTake(int formerSeconds);
    bool isTimeOfFormerTake(int seconds) const;
    void giveUpTake();
    void StopRecord(bool fromUi);
    bool endRecording(bool fromUi);
    bool endWhatRuns();
    void reportTake(bool isFinished);
    void handleDeviceLost(int status, int deviceIdx);
    void takeEndedByItself();
    /** Made and loaded once; it keeps what was chosen in it last, applied or not. */
    KAdvanceSettings* advanceSettings();

    const float m_projectFps;
    /** Null once the panel was closed. */
    KdAudioRecorderHelper* m_pRecorderHelper;
    std::unique_ptr<KdAudioRecordPanelUi> m_pUi;
    std::unique_ptr<KdAudioDeviceBoxes> m_pDevices;
    KdRecordNotices m_notices;
    KdShortcutWatch* m_pShortcut;
    KdOverlayPlace* m_pCountdownPlace;
    KdTakeWatch* m_pTakeWatch;
    QPointer<KAdvanceSettings> m_pAdvanceSettings;

    KdMinimumTake m_elapsed;
    std::function<QDateTime()> m_localTime;
    KdOutputFolderCheck m_folderCheck;
    KdMainWindowLock m_mainWindowLock;

    QString m_strOutputFile; ///< of the running take; empty when idle
    QString m_strLastFile;   ///< handed out last
    QString m_strTakeDevice; ///< what the running take is recorded from
    int m_nDurationSec = 0;
    /** False while reports of a take that was re-recorded may still be on their way. */
    bool m_bTakesTime = true;
    std::optional<int> m_formerSeconds; ///< reported of the take that was re-recorded
};
