#pragma once

#include <Support/DialogDriver.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>
#include <Support/WindowAnswers.h>

#include <KdRecord/KdWebcamRecordView.h>

#include <QImage>
#include <QJsonObject>
#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class KdWebcamRecorderHelper;

/**
 * The real webcam dialog over the real engine, a virtual camera and a virtual microphone: a main
 * window, the dialog, and what the dialog told its host. Failures of its steps fail the running
 * test.
 */
class WebcamStage
{
public:
    static constexpr const char* kStart = "KProDlg_KCameraCptBtn";
    static constexpr const char* kPause = "KCameraCapture_ButtonPause";
    static constexpr const char* kReRecord = "KCameraCapture_ButtonReRecord";
    static constexpr const char* kCamera = "KCameraCapture_VideoBox";
    static constexpr const char* kMicrophone = "KCameraCapture_AudioBox";
    static constexpr const char* kResolution = "KCameraCapture_ResolutionBox";
    static constexpr const char* kFrameRate = "KCameraCapture_FrameRateBox";
    static constexpr const char* kOk = "KCameraCapture_OkButton";
    static constexpr const char* kDisplay = "KCameraCapture_Display";

    /** What sigFinished carried. */
    struct Report
    {
        QString path;
        QJsonObject fileInfo;
        QJsonObject fileExportInfo;
    };

    /** @param folder where clips go; made the capture folder of the host's settings */
    explicit WebcamStage(const QString& folder);
    ~WebcamStage();

    VirtualCamera& camera() { return m_camera; }
    VirtualMicrophone& microphone() { return m_microphone; }
    /** Here from the start: a message that no one expects would block the test. */
    WindowAnswers& answers() { return m_answers; }

    /** Opens the dialog, whatever devices there are, without a countdown. */
    void show();
    /** Opens the dialog and waits until it shows the camera's picture. */
    bool open();
    KdWebcamRecordView* view() const { return m_view; }
    QWidget& mainWindow() { return *m_mainWindow; }

    template <typename Widget = QWidget>
    Widget* control(const char* name, const TestPlace& place = TestPlace()) const
    {
        return DialogDriver::child<Widget>(*m_view, QString::fromLatin1(name), place);
    }
    void press(const char* name, const TestPlace& place = TestPlace()) const;
    /** Presses a button of the strip over the picture, which comes with the mouse. */
    void pressOption(const char* name, const TestPlace& place = TestPlace()) const;
    QStringList choices(const char* list) const;
    QString choice(const char* list) const;
    void choose(const char* list, const QString& text, const TestPlace& place = TestPlace()) const;
    void setCountdown(int seconds) const;
    /** The dialog's picture as it is on the screen, without the black beside it. */
    QImage shownPicture() const;
    /** Waits until a picture comes that was not there before, of that size if it is valid. */
    bool waitForPicture(const QSize& size = QSize(), const TestPlace& place = TestPlace());

    bool isRecording() const;
    /** Presses the red button and waits until recording began. */
    bool startTake(const TestPlace& place = TestPlace());
    /** Waits until the engine has reported that much recorded time of the running take. */
    bool waitForElapsed(qint64 msec, const TestPlace& place = TestPlace()) const;
    /** Presses the red button and waits for the report. */
    bool stopTake(const TestPlace& place = TestPlace());
    /** Records with what is chosen until so much is recorded. @return the file, empty when a step
     * failed */
    QString recordClip(qint64 msec, const TestPlace& place = TestPlace());
    bool waitForReports(int count, const TestPlace& place = TestPlace()) const;

    QList<Report> reports() const { return m_reports; }
    Report lastReport() const { return m_reports.isEmpty() ? Report() : m_reports.last(); }
    /** The engine's last elapsed time in ms. */
    qint64 lastElapsed() const { return m_lastElapsed; }
    int closings() const { return m_closings; }

private:
    void connectView();

    VirtualCamera m_camera;
    VirtualMicrophone m_microphone;
    WindowAnswers m_answers;
    std::unique_ptr<QWidget> m_mainWindow;
    QPointer<KdWebcamRecordView> m_view;
    QPointer<KdWebcamRecorderHelper> m_helper;
    /** Sizes of the frames that came, noted on the engine's threads. */
    class Frames;
    std::unique_ptr<Frames> m_frames;
    QList<Report> m_reports;
    qint64 m_lastElapsed = 0;
    int m_closings = 0;
};
