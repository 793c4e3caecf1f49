#pragma once

#include <QObject>
#include <QPointer>
#include <QVector>

class QWidget;

/**
 * Swallows the input of single windows, while the windows that belong to them, dialogs for
 * instance, stay usable: disabling the window itself would disable those too. Works for as long as
 * there is an application. GUI thread.
 */
class KdInputBlocker : public QObject
{
    Q_OBJECT

public:
    static KdInputBlocker* instance();

    /** The window is forgotten when it is destroyed. */
    void block(QWidget* window);
    void release(QWidget* window);
    /** @return whether widget is a blocked window, stands in one, or in a menu of one; false for
     * null. */
    bool isBlocked(const QWidget* widget) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    KdInputBlocker() = default;
    ~KdInputBlocker() override = default;
    bool belongsToBlockedWindow(const QObject* object) const;

    QVector<QPointer<QWidget>> m_windows;
};
