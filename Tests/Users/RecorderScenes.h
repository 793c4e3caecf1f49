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

/** The voice-over's dialog in its states, its advanced settings, and the page of video settings. */
UserScenes voiceOverScenes();
/** The webcam's dialog in its states, and the strip over its picture. */
UserScenes webcamScenes();
/** Every message of both. @param answers lives as long as the scenes are shown */
UserScenes messageScenes(const std::unique_ptr<WindowAnswers>& answers);
