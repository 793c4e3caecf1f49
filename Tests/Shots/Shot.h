#pragma once

#include <QString>

#include <functional>

class QWidget;

/** Saves what a user sees of a window and of everything of ours that lies over it. */
class Shot
{
public:
    /** @param folder where the images go @param skin part of their names, with the scale */
    Shot(const QString& folder, const QString& skin);

    /**
     * Waits until the window is exposed and painted, then writes "<name>-<skin>-<scale>.png".
     * @return whether the image was written; a failure is told on standard error
     */
    bool take(QWidget* window, const QString& name) const;

    /** Runs the event loop until condition holds, 5 s at most; a miss is told on standard error. */
    static bool waitFor(const std::function<bool()>& condition, const char* what);
    /** Runs the event loop that long, for what moves. */
    static void letPass(int ms);

private:
    QString m_folder;
    QString m_suffix;
};
