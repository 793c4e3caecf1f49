#pragma once

#include <QKeySequence>
#include <QList>
#include <QObject>
#include <QWidget>

class QHelpEvent;

/**
 * Keys for controls that the Tab key does not reach: a list opens, a button is pressed, a field
 * gets the focus. The tool tip of such a control names its key behind what it says already. Belongs
 * to the panel. GUI thread.
 */
class KdControlKeys : public QObject
{
    Q_OBJECT

public:
    explicit KdControlKeys(QWidget* panel);
    ~KdControlKeys() override;

    /** @param control of the panel; its key works while it is enabled and on the screen */
    void add(QWidget* control, const QKeySequence& key);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry
    {
        QWidget* control;
        QKeySequence key;
    };

    static void use(QWidget* control);
    static void describe(const Entry& entry);
    static void showTip(const Entry& entry, const QHelpEvent* event);

    QWidget* const m_pPanel;
    QList<Entry> m_entries;
};
