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
    /** @param parent may be null */
    explicit KdAudioRecordView(QWidget* parent = nullptr);
    ~KdAudioRecordView() override;

    /** Shows the dialog and returns at once; it is modeless, whatever the name says. @return 1 */
    int doModal();
    /** @return whether the project is to be silent during a take. */
    bool isMuted() const;
    /** @param minimized true: to the tray; false: back, in the middle of the screen. */
    void showOrHiddenViewMinimized(bool minimized);

    void RetranslateUi() override;
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
    /** @param bReStart the take is recorded anew */
    void sigStartCapture(bool bReStart);
    void sigStartCaptureFailed();
    /** The dialog is being closed. */
    void sigEndCapture();
    /** Whether to silence the project: on every showing and every change. */
    void sigMute(bool bMute);
    /** @param duration recorded time in frames of the project */
    void sigCaptureDoing(qint64 duration);
    void sigClose();
    /** A start was asked for: the countdown runs, or there is no device. */
    void sigStartRecordBtnClick();
    void sigPause();
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
