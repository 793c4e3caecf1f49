#pragma once

#include <QObject>
#include <QString>

class QDialog;

/**
 * Nobody sits in front of a script: answers every modal message at once with its safe answer, by a
 * click on its button, and reports what it said. GUI thread.
 */
class StudioMessageWatch : public QObject
{
    Q_OBJECT

public:
    explicit StudioMessageWatch(QObject* parent = nullptr);
    ~StudioMessageWatch() override;

Q_SIGNALS:
    /** Comes before the answer. */
    void messageShown(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void answer(QDialog* message);
};
