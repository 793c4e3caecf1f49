#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

class QWidget;
class StudioMessageWatch;
class StudioRecordSession;

/** What came of a voice-over that nobody watched. */
struct StudioVoiceOverResult
{
    QString error; ///< sentences that say what is missing or went wrong; empty: all went well
    QString path;
    QString fileInfo;
    QString fileExportInfo;
};

/**
 * Records a voice-over the way a person does: opens the dialog, presses its buttons with the mouse,
 * waits for the countdown, speaks for a while, stops, and presses OK. Every wait has an end; a
 * message is answered, and its text is the failure. One run an object. GUI thread.
 */
class StudioVoiceOver : public QObject
{
    Q_OBJECT

public:
    /** How long each step may take, in ms. */
    struct Patience
    {
        int microphone = 8000;
        int withoutServer = 2000; ///< instead, when no sound server answers
        int countdown = 20000;
        int stop = 10000;
        int import = 15000;
        int closing = 5000;
    };

    /** @param session must outlive the run */
    StudioVoiceOver(StudioRecordSession* session, double seconds, const Patience& patience,
                    QObject* parent = nullptr);
    StudioVoiceOver(StudioRecordSession* session, double seconds, QObject* parent = nullptr);
    ~StudioVoiceOver() override;

    /** finished() follows. */
    void run();
    /** What the editor made of the file that the recorder handed over. */
    void noteImported(const QString& path);
    void noteImportFailed(const QString& path, const QString& why);

Q_SIGNALS:
    /** Comes once. */
    void finished(const StudioVoiceOverResult& result);

private:
    enum class Step
    {
        Idle,
        Microphone,
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
    QString missingSoundText() const;
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
    double m_seconds;
    Patience m_patience;
    Step m_step = Step::Idle;
    StudioVoiceOverResult m_result;
    std::unique_ptr<StudioMessageWatch> m_watch;
    QTimer m_deadline;
    QString m_controlName;
    QTimer m_pressPoll;
    QTimer m_take;
};
