#pragma once

#include <KdRecord/KdClosing.h>
#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdFramelessDialog.h>

#include <QPointer>
#include <QString>

class KdWebcamRecordPanel;

/**
 * The dialog through which a host records from a webcam. Make it, call initDevices(), connect its
 * signals, call doModal(). It deletes itself when it is closed, however that happens, and then
 * emits sigClose() once. A take that runs when it is closed is thrown away, its file too, and not
 * reported. During a countdown and a take the host's main window is locked.
 *
 * GUI thread. It may be destroyed at any time, from inside its own signals and while doModal() runs
 * too; that throws a running take away as well, and emits nothing.
 */
class KDRECORD_EXPORT KdWebcamRecordView : public KdFramelessDialog
{
    Q_OBJECT

public:
    /** @param parent the dialog stands over its window and goes with it; may be null. */
    explicit KdWebcamRecordView(QWidget* parent);
    ~KdWebcamRecordView() override;

    /**
     * Shows the dialog, modal to the application, and returns when it is closed, by then deleted.
     * Without effect while it runs already.
     * @return 1: what came of it is told by the signals.
     */
    int doModal();
    /** Fills the lists of devices and starts the preview; again at any time. */
    void initDevices();
    /** @return whether the preview window's switch is on. */
    bool isRecordPreview() const;

    void RetranslateUi() override;
    /** Closes the dialog, as the Escape key does. Without effect while it is being closed. */
    void reject() override;

Q_SIGNALS:
    /**
     * A take has ended.
     * @param filePath the finished file; empty: it was too short, there is nothing to import
     * @param fileInfo JSON: "video_resolution" ("1280x720"), "frame_rate" ("29.97fps"),
     *        "record_type", "file_duration" in seconds, "device_name", "camera_record_backgroud",
     *        "camera_record_shape", "is_use_mirror" and "is_camera_zoom"; background and shape are
     *        texts in the language of the dialog, the former is empty when there is none
     * @param fileExportInfo JSON: "file_type", "file_format", "video_codec" and "video_muxer"
     */
    void sigFinished(QString filePath, QString fileInfo, QString fileExportInfo);
    /** The dialog is being closed: once for each closing, after a running take was thrown away. */
    void sigClose();
    /** A start was asked for: the countdown runs, or there is no camera. */
    void sigStartRecordBtnClick();

protected:
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void initWidgets();
    void initConnects();
    QSize wantedSize() const;
    /** Everything that goes with a closing, once. @return whether this object is still there */
    bool leave();
    void reportFinished(const QString& filePath, const QSize& resolution, double frame_rate,
                        int file_duration, const QString& deviceName);

    QPointer<KdWebcamRecordPanel> m_pPanel;
    bool m_bZoomed = false;
    bool m_bModal = false; ///< doModal() runs
    KdClosing m_closing;
};
