#pragma once

#include "UserScene.h"

#include <Studio/StudioWindow.h>

#include <Support/ScriptedEngine.h>

#include <QTemporaryDir>

#include <memory>

class StudioLanguages;

/** Studio over a folder of takes and an engine that answers as told. */
class StudioStage
{
public:
    explicit StudioStage(StudioLanguages& languages);
    ~StudioStage();

    StudioWindow& window() { return *m_window; }
    /** One of each kind, in the order of Row. */
    void addTakes();
    enum Row : int
    {
        Spoken,
        Clip,
        Missing,
        Unreadable,
        Recovered ///< nobody reported it
    };
    void choose(Row row);
    /** Makes the recovery find so many. */
    void findUnfinished(int count);

private:
    Q_DISABLE_COPY(StudioStage)

    void add(const QString& name, const QByteArray& content, const StudioTake& like);
    void addClip();

    QTemporaryDir m_folder;
    ScriptedEngine m_engine;
    std::unique_ptr<StudioWindow> m_window;
};

/** The main window in its states, its menus and its question. */
UserScenes studioScenes(StudioLanguages& languages);
/** The windows beside it: devices, and both pages of settings. */
UserScenes studioSideScenes();
