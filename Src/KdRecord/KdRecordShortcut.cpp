#include <KdRecord/KdRecordShortcut.h>

#include <KdZentraCore/IKdShortcutEditManager.h>

#include <QCoreApplication>
#include <QKeyEvent>

QKeySequence KdRecordShortcut::sequence()
{
    return IKdShortcutEditManager::GetInstance()->GetKeySequence(
        IKdShortcutEditManager::kRecordShortcutId);
}

QString KdRecordShortcut::text()
{
    return sequence().toString(QKeySequence::NativeText);
}

bool KdRecordShortcut::matches(const QKeyEvent& event, const QKeySequence& sequence)
{
    const QKeySequence pressed(event.key() | static_cast<int>(event.modifiers()));
    return !sequence.isEmpty() && pressed == sequence;
}

KdKeyPressEater::KdKeyPressEater(QObject* parent) : QObject(parent) {}

void KdKeyPressEater::eat(int key)
{
    m_nKey = key;
    QCoreApplication::instance()->installEventFilter(this);
}

bool KdKeyPressEater::eventFilter(QObject* watched, QEvent* event)
{
    Q_UNUSED(watched)
    const QEvent::Type type = event->type();
    if (type != QEvent::ShortcutOverride && type != QEvent::KeyPress &&
        type != QEvent::KeyRelease) {
        return false;
    }
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->key() != m_nKey) {
        return false;
    }
    // Qt asks anew before each press: this one is another press, whose release may have been
    // missed.
    const bool isNextPress = type == QEvent::ShortcutOverride && !key->isAutoRepeat();
    const bool isRelease = type == QEvent::KeyRelease && !key->isAutoRepeat();
    if (isNextPress || isRelease) {
        QCoreApplication::instance()->removeEventFilter(this);
    }
    return type != QEvent::ShortcutOverride;
}
