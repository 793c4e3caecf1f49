#pragma once

#include <KdRecord/KdClosing.h>
#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdFramelessDialog.h>

#include <QIcon>
#include <QString>

class KdAudioRecordPanel;
class QAction;
class QMenu;
class QSystemTrayIcon;

/**
 * The dialog through which a host records a voice-over. Make it, connect its signals, call
 * doModal(); it deletes itself when it is closed, however that happens, and then emits sigClose()
 * once. A take that runs is ended first, so sigFinished() still comes. During a take the host's
 * main window is locked.
 *
 * GUI thread. It may be destroyed at any time, from inside its own signals too, with one exception
 * that Qt makes: the slot of the sigMute() that comes from showing it must use deleteLater().
 */
class KDRECORD_EXPORT KdAudioRecordView : public KdFramelessDialog
{
    Q_OBJECT

public:
    /** @param parent the dialog stands over its window and goes with it; may be null. */
    explicit KdAudioRecordView(QWidget* parent = nullptr);
    ~KdAudioRecordView() override;

    /**
     * Shows the dialog and returns at once; it is modeless, whatever the name says.
     * @return 1: what comes of it is told by the signals.
     */
    int doModal();
    /** @return whether the project is to be silent during a take. */
    bool isMuted() const;
    /** @param minimized true: to the tray; false: back, in the middle of the screen. */
    void showOrHiddenViewMinimized(bool minimized);

    void RetranslateUi() override;
    /** Closes the dialog, as the Escape key does. Without effect while it is being closed. */
    void reject() override;

Q_SIGNALS:
    /**
     * A take has ended, or the dialog is being closed.
     * @param filePath the finished file; empty: there is nothing to import
     * @param fileInfo JSON: "audio_channels", "device_name", "file_duration" in seconds and
     *        "sampling_rate", which carries the bits per sample
     * @param fileExportInfo JSON: an empty object
     */
    void sigFinished(QString filePath, QString fileInfo, QString fileExportInfo);
    /**
     * Recording began.
     * @param bReStart true: what had been recorded so far was thrown away, and a take begins anew
     * in its place.
     */
    void sigStartCapture(bool bReStart);
    /**
     * The engine refused to record. The user is told after this, unless a receiver has destroyed
     * the dialog.
     */
    void sigStartCaptureFailed();
    /** The dialog is being closed. */
    void sigEndCapture();
    /**
     * Whether to silence the project, so that the microphone does not record it: on every showing
     * and every change.
     * @param bMute true: the project is to be silent during a take.
     */
    void sigMute(bool bMute);
    /**
     * @param duration recorded time in frames of the project, at the rate that it had when the
     * dialog was made; pauses left out.
     */
    void sigCaptureDoing(qint64 duration);
    /** The dialog is being closed: once for each closing, before a running take is ended. */
    void sigClose();
    /** A start was asked for: the countdown runs, or there is no device. */
    void sigStartRecordBtnClick();
    /** The take was paused. */
    void sigPause();
    /** The take goes on. */
    void sigResume();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void initWidgets();
    void initTray();
    void initConnects();
    void connectPanel();
    void connectTray();
    void updateTrayIcon();
    void updateTrayMenu();
    void minimizeToTray();
    void restore();
    void leave();
    void reportFinished(const QString& filePath, int audio_channels, int sampling_rate,
                        int file_duration, const QString& deviceName);

    KdAudioRecordPanel* m_pPanel = nullptr;
    QSystemTrayIcon* m_pTrayIcon = nullptr;
    QMenu* m_pTrayMenu = nullptr;
    QAction* m_pActOpen = nullptr;
    QAction* m_pActStartOrStop = nullptr;
    QAction* m_pActQuit = nullptr;
    QIcon m_iconIdle;
    QIcon m_iconRunning;
    KdClosing m_closing;
};
