#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>

class QWidget;
class StudioMessageWatch;
class StudioRecordSession;

/** What came of a take that nobody watched. */
struct StudioTakeResult
{
    QString error; ///< sentences that say what is missing or went wrong; empty: all went well
    QString path;
    QString fileInfo;
    QString fileExportInfo;
};

/** How a person works one of the recorder's dialogs. */
struct StudioRecorderManual
{
    QString startButton; ///< object names; the start button also stops
    QString okButton;
    std::function<bool()> canHaveDevice;    ///< false: waiting long for one makes no sense
    std::function<QString()> missingDevice; ///< sentences that say what is missing

    static StudioRecorderManual voiceOver();
    static StudioRecorderManual webcam();
};

/**
 * Records a take the way a person does: opens the dialog, presses its buttons with the mouse, waits
 * for the countdown, lets it record for a while, stops, and presses OK. Every wait has an end; a
 * message is answered, and its text is the failure. One run an object. GUI thread.
 */
class StudioUnattendedTake : public QObject
{
    Q_OBJECT

public:
    /** How long each step may take, in ms. */
    struct Patience
    {
        int device = 8000;
        int withoutServer = 2000; ///< instead, when there is none who could have a device
        int countdown = 20000;
        int stop = 10000;
        int import = 15000;
        int closing = 5000;
    };

    /** @param session must outlive the run */
    StudioUnattendedTake(StudioRecordSession* session, StudioRecorderManual manual, double seconds,
                         const Patience& patience, QObject* parent = nullptr);
    ~StudioUnattendedTake() override;

    /** finished() follows. May run until then. */
    void run();
    /** What the editor made of the file that the recorder handed over. */
    void noteImported(const QString& path);
    void noteImportFailed(const QString& path, const QString& why);

Q_SIGNALS:
    /** Recording has gone on for half of its length. */
    void halfRecorded();
    /** Comes once. */
    void finished(const StudioTakeResult& result);

private:
    enum class Step
    {
        Idle,
        Device,
        Countdown,
        Recording,
        Stopping,
        Importing,
        Closing,
        Over
    };

    void connectSession();
    void enter(Step step, int patienceMs);
    /** Presses the control as soon as a person could, in the patience of the step. */
    void pressWhenPossible(const QString& objectName);
    void tryToPress();
    /** What keeps the control from being pressed; empty: nothing. */
    QString obstacle() const;
    QWidget* control() const;
    QString missingDeviceText() const;
    void handleStarted();
    void stopTake();
    void handleFinished(const QString& path, const QString& fileInfo,
                        const QString& fileExportInfo);
    void handleMessage(const QString& text);
    void handleTimeout();
    void handleClosed();
    void fail(const QString& error);
    void finish();

    StudioRecordSession* m_pSession;
    StudioRecorderManual m_manual;
    double m_seconds;
    Patience m_patience;
    Step m_step = Step::Idle;
    StudioTakeResult m_result;
    std::unique_ptr<StudioMessageWatch> m_watch;
    QTimer m_deadline;
    QString m_controlName;
    QTimer m_pressPoll;
    QTimer m_take;
    QTimer m_half;
};
