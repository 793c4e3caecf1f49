#pragma once

#include <QKeySequence>
#include <QObject>
#include <QString>

class QKeyEvent;

/** The host's shortcut that starts and stops a take. GUI thread. */
namespace KdRecordShortcut {

QKeySequence sequence();

/** @return the sequence as a user reads it, "Space" say. */
QString text();

/** @return whether key plus modifiers are exactly that sequence; never for an empty one. */
bool matches(const QKeyEvent& event, const QKeySequence& sequence);

} // namespace KdRecordShortcut

/**
 * Keeps the rest of a key press from the control that has the focus. A shortcut that was taken
 * while Qt asked for it is delivered as an ordinary key all the same: the space that started a take
 * would then also press the focused button.
 */
class KdKeyPressEater : public QObject
{
    Q_OBJECT

public:
    explicit KdKeyPressEater(QObject* parent);

    /** Swallows the press, repetitions and release that follow; the next press gets through. */
    void eat(int key);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int m_nKey = 0;
};
