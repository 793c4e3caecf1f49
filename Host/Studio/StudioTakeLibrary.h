#pragma once

#include <KdWidgets/KdLiveText.h>
#include <Studio/StudioTake.h>

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

/**
 * A list of takes in the order they came, kept in a file "Takes.json" of one folder; the takes
 * themselves may lie elsewhere. A take whose file goes is kept as missing, and is good again when
 * the file returns. GUI thread.
 */
class StudioTakeLibrary : public QObject
{
    Q_OBJECT

public:
    explicit StudioTakeLibrary(QObject* parent = nullptr);

    /**
     * Shows the takes of that folder, which is made when it does not exist. A list that cannot be
     * read is put aside as "Takes.json.damaged" and reported by problem().
     */
    void open(const QString& folder);
    QString folder() const { return m_folder; }
    QString indexPath() const;

    const QVector<StudioTake>& takes() const { return m_takes; }
    int count() const { return m_takes.size(); }
    /** @return the row of that path, or -1. */
    int rowOf(const QString& path) const;

    /** Adds the take, or replaces the one at the same path, and saves the list. */
    void add(const StudioTake& take);
    /** Takes it off the list, leaving its file alone, and saves the list. */
    void remove(const QString& path);
    /** What a look into the file found. Without effect for a path that is not listed. */
    void setGood(const QString& path, qint64 durationMs, const QSize& picture = QSize());
    void setUnreadable(const QString& path, const QString& problem);
    /** Looks which files are there now; happens by itself when the folder changes. */
    void refresh();

Q_SIGNALS:
    /** Another folder was opened: everything is new. */
    void aboutToReset();
    void reset();
    void aboutToInsert(int row);
    void inserted(int row);
    void changed(int row);
    void aboutToRemove(int row);
    void removed(int row);
    /** A file is there that was not looked into yet. */
    void needsCheck(const QString& path);
    /** Something went wrong that the user should know. */
    void problem(const KdLiveText& text);

private:
    void load();
    void putAside();
    void save();
    void watch();
    /** Sets a state, and says so when that changes anything. */
    void update(int row, StudioTake::State state, const QString& problem, qint64 durationMs);
    void refreshRow(int row);

    QString m_folder;
    QVector<StudioTake> m_takes;
    QFileSystemWatcher m_watcher;
    QTimer m_refresh;
};
