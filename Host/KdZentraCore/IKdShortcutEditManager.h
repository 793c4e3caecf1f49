#pragma once

#include <KdZentraCore/KdZentraCoreExport.h>

#include <QKeySequence>

/**
 * The host's keyboard shortcuts by number. Kept in memory: a host that lets its user choose them
 * sets them at every start. GUI thread.
 */
class KDZENTRACORE_EXPORT IKdShortcutEditManager
{
public:
    /** Start and stop of a recording; Space at the start. */
    static constexpr int kRecordShortcutId = 3000;

    /** @return the shortcuts; never null, lives until the process ends. */
    static IKdShortcutEditManager* GetInstance();

    /**
     * @param shortcutId the host's number of the shortcut.
     * @return the sequence, empty for an unknown number.
     */
    virtual QKeySequence GetKeySequence(int shortcutId) const = 0;
    /**
     * Counts from the next key on.
     * @param shortcutId the host's number of the shortcut; a new one is added.
     * @param sequence empty: no key.
     */
    virtual void SetKeySequence(int shortcutId, const QKeySequence& sequence) = 0;

protected:
    /** There is one set of shortcuts, made by GetInstance(). */
    IKdShortcutEditManager() = default;
    /** Nobody deletes it. */
    virtual ~IKdShortcutEditManager() = default;

private:
    Q_DISABLE_COPY(IKdShortcutEditManager)
};
