#pragma once

#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/ScriptedEngine.h>
#include <Support/WindowAnswers.h>

#include <KdRecord/KdAudioRecordPanel.h>
#include <KdRecord/KdAudioRecordView.h>

#include <QAbstractButton>
#include <QDateTime>
#include <QPointer>
#include <QSignalSpy>
#include <QStringList>
#include <QTranslator>
#include <QWidget>

#include <functional>
#include <initializer_list>
#include <memory>

class QAction;
class QSystemTrayIcon;

/** Says everything in brackets. */
class BracketingTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int n) const override;
    bool isEmpty() const override { return false; }
};

/**
 * What the tests of the voice-over panel and its dialog have in common: a scripted engine with two
 * microphones whose takes leave a file, fresh settings, a folder for takes, a clock that stands
 * still until it is moved, and a main window of the host.
 */
class AudioRecordFixture : public KdTestCase
{
    Q_OBJECT

public:
    static constexpr const char* kStart = "KAudioCapture_RecorderButton";
    static constexpr const char* kStop = "KAudioCapture_pButtonStop";
    static constexpr const char* kPause = "KAudioCapture_ButtonPause";
    static constexpr const char* kReRecord = "KAudioCapture_ButtonReRecord";
    static constexpr const char* kDevice = "KAudioCapture_DeviceBox";
    static constexpr const char* kOk = "KPropertyPanel_Btn";

    static constexpr const char* kTooShort = "The recording is too short. Data cannot be saved.";
    static constexpr const char* kDeviceIssue = "Unable to record due to an issue with the device.";
    static constexpr const char* kPermission =
        "Please check whether you have permission to write or read on the path, or choose other "
        "path to create.";

    /** @param lines UTF-8 */
    static QStringList texts(std::initializer_list<const char*> lines);

protected:
    /** The panel in a window of its own, on the screen. */
    void showPanel();
    /** The panel in its dialog. */
    void showView(QWidget* parent = nullptr);
    QSystemTrayIcon* tray() const;
    /** An entry of the tray icon's menu, from above. */
    QAction* entry(int position) const;
    /** Instruments a panel that the test has made itself. */
    void adopt(KdAudioRecordPanel* panel);
    void setMicrophones(const QStringList& names);
    void setVoiceFolder(const QString& folder);
    QString voiceFolder() const;

    template <typename Widget>
    Widget* control(const char* name) const
    {
        return panel->findChild<Widget*>(QLatin1String(name));
    }
    QAbstractButton* button(const char* name) const { return control<QAbstractButton>(name); }
    void click(const char* name, const TestPlace& place = TestPlace());
    QString timeText() const;
    bool isCountingDown() const;
    bool isLocked() const;

    /** Presses the record button and waits until the engine records. @return the file's path */
    QString startTake();
    /** The take has run for that long by the panel's clock. */
    void passTime(qint64 milliseconds) { nowMs += milliseconds; }
    /** Presses the record button and waits until nothing is recorded. */
    void stopTake();
    void pressKey(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /** @param state "idle", "counting", "recording", "paused" or "asking" (to re-record) */
    void reachState(const QString& state);
    /** Waits until the engine's list was asked for once more. */
    bool waitForRebuild(int formerCount);
    QStringList takes() const;
    /** Waits until everything that was posted by now has been delivered. */
    static void drain();

    std::unique_ptr<ScriptedEngine> engine;
    /** Here from the start: a message that no one expects would block the test. */
    std::unique_ptr<WindowAnswers> answers;
    std::unique_ptr<QWidget> mainWindow;
    QPointer<QWidget> window;
    QPointer<KdAudioRecordPanel> panel;
    QPointer<KdAudioRecordView> view;
    /** The panel's signals in order, "sigStartCapture(false)". */
    QStringList signalTexts;
    QString finishedPath;
    qint64 nowMs = 0;
    QDateTime localTime;

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    void recordSignals();
};
