#pragma once

#include <Support/DialogDriver.h>
#include <Support/MediaProbe.h>
#include <Support/VirtualMicrophone.h>

#include <KdRecord/KdAudioRecordView.h>

#include <QElapsedTimer>
#include <QJsonObject>
#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <memory>

/**
 * The real voice-over dialog over the real engine and a virtual microphone: a main window, the
 * dialog, and what the dialog told its host. Failures of its steps fail the running test.
 */
class VoiceOverStage
{
public:
    /** What sigFinished carried. */
    struct Report
    {
        QString path;
        QJsonObject fileInfo;
        QString fileInfoText;
        QString fileExportInfo;
    };

    /** @param folder where takes go; made the voice folder of the host's settings */
    explicit VoiceOverStage(const QString& folder);
    ~VoiceOverStage();

    VirtualMicrophone& microphone() { return m_microphone; }

    /** Opens the dialog and waits until the red button can be pressed. */
    bool open();
    /** Opens the dialog, whatever devices there are. */
    void show();
    KdAudioRecordView* view() const { return m_view; }
    QWidget& mainWindow() { return *m_mainWindow; }

    template <typename Widget = QWidget>
    Widget* control(const QString& name, const TestPlace& place = TestPlace()) const
    {
        return DialogDriver::child<Widget>(*m_view, name, place);
    }
    void press(const QString& name, const TestPlace& place = TestPlace()) const;
    void pressRecord(const TestPlace& place = TestPlace()) const;
    QString deviceText() const;
    void setCountdown(int seconds) const;

    /** Presses the red button and waits until recording began. */
    bool startTake(const TestPlace& place = TestPlace());
    /** Waits until the engine has reported that much recorded time of the running take. */
    bool waitForElapsed(qint64 msec, const TestPlace& place = TestPlace()) const;
    /** Presses the red button and waits for the report. */
    bool stopTake(const TestPlace& place = TestPlace());
    bool waitForReports(int count, const TestPlace& place = TestPlace()) const;

    QList<Report> reports() const { return m_reports; }
    Report lastReport() const { return m_reports.isEmpty() ? Report() : m_reports.last(); }
    /** The engine's last elapsed time of the take at hand in ms. */
    qint64 lastElapsed() const { return m_lastElapsed; }
    QList<qint64> frames() const { return m_frames; }
    int starts() const { return m_starts; }
    int restarts() const { return m_restarts; }
    int closings() const { return m_closings; }

private:
    void connectView();
    void note(const QString& path, const QString& fileInfo, const QString& fileExportInfo);

    VirtualMicrophone m_microphone;
    std::unique_ptr<QWidget> m_mainWindow;
    QPointer<KdAudioRecordView> m_view;
    QList<Report> m_reports;
    QList<qint64> m_frames;
    qint64 m_lastElapsed = 0;
    int m_starts = 0;
    int m_restarts = 0;
    int m_closings = 0;
};
