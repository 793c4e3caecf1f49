#pragma once

#include <KdRecord/KdRecordShortcut.h>

#include <QList>
#include <QPointer>
#include <QWidget>

/**
 * Hears the host's record shortcut in the windows around a panel, whose event filter asks it. The
 * panel takes every shortcut question of those windows, so that nothing of the host's happens below
 * a dialog that records. Belongs to the panel. GUI thread.
 */
class KdShortcutWatch : public QObject
{
    Q_OBJECT

public:
    explicit KdShortcutWatch(QWidget* panel);

    /** Makes the panel the event filter of its parent and of the host's main window. */
    void start();
    void stop();

    /** @return whether the event is a question for a shortcut: it is answered, whatever the key. */
    bool takes(QEvent* event);
    /** @return whether the event is the question for this very shortcut. For a field into which
     * its key could be typed. */
    bool takesShortcut(QEvent* event);

    /** @return whether the key was Enter for the panel's focused button, which it has pressed once,
     * however long it is held: the blank, which does so otherwise, may be the shortcut. */
    bool pressedFocusedButton(const QKeyEvent* event) const;

Q_SIGNALS:
    /** Comes from the event loop: whatever the panel does may destroy it. */
    void sigPressed();

private:
    QWidget* const m_pPanel;
    KdKeyPressEater m_eater;
    QList<QPointer<QWidget>> m_windows;
};
