#include <KdRecord/KdShortcutWatch.h>

#include <KdZentraCore/KdUtility.h>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>

KdShortcutWatch::KdShortcutWatch(QWidget* panel) : QObject(panel), m_pPanel(panel), m_eater(this) {}

void KdShortcutWatch::start()
{
    stop();
    for (QWidget* const window : {m_pPanel->parentWidget(), KdUtility::gGetMainWindow()}) {
        // Never twice, even where parent and main window are one.
        if (window && !m_windows.contains(window)) {
            window->installEventFilter(m_pPanel);
            m_windows.append(window);
        }
    }
}

void KdShortcutWatch::stop()
{
    for (const QPointer<QWidget>& window : qAsConst(m_windows)) {
        if (window) {
            window->removeEventFilter(m_pPanel);
        }
    }
    m_windows.clear();
}

bool KdShortcutWatch::takes(QEvent* event)
{
    takesShortcut(event);
    return event->type() == QEvent::ShortcutOverride;
}

bool KdShortcutWatch::takesShortcut(QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride) {
        return false;
    }
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (!KdRecordShortcut::matches(*key, KdRecordShortcut::sequence())) {
        return false;
    }
    event->accept();
    if (!key->isAutoRepeat()) {
        m_eater.eat(key->key());
        // Not from inside: Qt goes on with the window, which the take's slots may destroy.
        QMetaObject::invokeMethod(this, &KdShortcutWatch::sigPressed, Qt::QueuedConnection);
    }
    return true;
}

bool KdShortcutWatch::pressedFocusedButton(const QKeyEvent* event) const
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    auto* const button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    if (!isEnter || !button || !m_pPanel->isAncestorOf(button)) {
        return false;
    }
    if (!event->isAutoRepeat()) {
        button->click();
    }
    return true;
}
