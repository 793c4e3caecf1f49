#pragma once

#include "Shot.h"

#include <QPointer>
#include <QString>
#include <QWidget>

/** A dialog of which shots are taken: its buttons, and the windows that come up over it. */
class DialogStage
{
public:
    /** Presses the dialog's child of that name as a mouse does, once it is on the screen. */
    void press(const QString& name);

    /** Takes the next window of that name when it is on the screen, then closes it. */
    void shootWhenShown(const Shot& shot, const QString& windowName, const QString& name);
    /** Lets that window come and go. */
    void waitForShot();
    /** @return whether the shots of such windows were written. */
    bool ok() const { return m_ok; }

    /** @return null when there is none. */
    static QWidget* visibleWindow(const QString& name);
    /** @return whether it came. */
    static bool waitForWindow(const QString& name);

protected:
    /** @param dialog must go before the stage */
    void setDialog(QWidget* dialog) { m_dialog = dialog; }

private:
    QPointer<QWidget> m_dialog;
    bool m_isAwaited = false; ///< a window to be shot
    bool m_ok = true;
};
