#pragma once

#include "UserScene.h"

#include <Support/ScriptedEngine.h>
#include <Support/WindowAnswers.h>

#include <QPointer>
#include <QTemporaryDir>
#include <QWidget>

/** An open recorder over an engine that answers as told, with two devices of each kind. */
class RecorderStage
{
public:
    explicit RecorderStage(bool withDevices = true);
    ~RecorderStage();

    ScriptedEngine& engine() { return m_engine; }
    QWidget* view() const { return m_view; }
    /** The dialog; goes with this object. */
    void setView(QWidget* view);
    void press(const char* button);
    void setCountdown(const char* box, int seconds);
    /** A take runs. */
    void record(const char* start, const char* countdown);
    /** Shows a window and waits until the keyboard is its. */
    static void show(QWidget* window);
    static void waitForWindow(const char* className);

private:
    Q_DISABLE_COPY(RecorderStage)

    QTemporaryDir m_folder;
    ScriptedEngine m_engine;
    QWidget m_host;
    QPointer<QWidget> m_view;
};

/** How to work one of the recorders. */
struct RecorderManual
{
    const char* name;
    std::function<QWidget*()> open; ///< makes its dialog
    // Names of its controls, and the class of its countdown.
    const char* start;
    const char* seconds;
    const char* pause;
    const char* again;
    const char* countdown;
};

/** A recorder's dialog from its opening to a take that is thrown away. */
UserScenes takeScenes(const RecorderManual& manual);
/** The voice-over's dialog in its states, its advanced settings, and the page of video settings. */
UserScenes voiceOverScenes();
/** The webcam's dialog in its states, and the strip over its picture. */
UserScenes webcamScenes();
/** Every message of both. @param answers lives as long as the scenes are shown */
UserScenes messageScenes(const std::unique_ptr<WindowAnswers>& answers);
