#pragma once

#include <KdZentraCore/KdZentraCoreExport.h>

#include <QKeySequence>

/** The host's keyboard shortcuts by number. GUI thread. */
class KDZENTRACORE_EXPORT IKdShortcutEditManager
{
public:
    /** Start and stop of a recording; Space at the start. */
    static constexpr int kRecordShortcutId = 3000;

    static IKdShortcutEditManager* GetInstance();

    /** @return the sequence, empty for an unknown id. */
    virtual QKeySequence GetKeySequence(int shortcutId) const = 0;
    virtual void SetKeySequence(int shortcutId, const QKeySequence& sequence) = 0;

protected:
    IKdShortcutEditManager() = default;
    virtual ~IKdShortcutEditManager() = default;

private:
    Q_DISABLE_COPY(IKdShortcutEditManager)
};
