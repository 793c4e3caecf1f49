#include "IKdShortcutEditManager.h"

#include <QHash>

namespace {

class ShortcutEditManager final : public IKdShortcutEditManager
{
public:
    QKeySequence GetKeySequence(int shortcutId) const override
    {
        return m_sequences.value(shortcutId);
    }

    void SetKeySequence(int shortcutId, const QKeySequence& sequence) override
    {
        m_sequences.insert(shortcutId, sequence);
    }

private:
    QHash<int, QKeySequence> m_sequences{{kRecordShortcutId, QKeySequence(Qt::Key_Space)}};
};

} // namespace

IKdShortcutEditManager* IKdShortcutEditManager::GetInstance()
{
    static ShortcutEditManager manager;
    return &manager;
}
