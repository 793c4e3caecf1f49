#pragma once

#include <QObject>

class QSocketNotifier;

/**
 * Turns the system's requests to end (Ctrl+C, the end of the session) into a signal, so that a
 * running take is finished first. One object at a time. GUI thread.
 */
class StudioQuitSignals : public QObject
{
    Q_OBJECT

public:
    explicit StudioQuitSignals(QObject* parent = nullptr);
    ~StudioQuitSignals() override;

Q_SIGNALS:
    void quitRequested(int signalNumber);

private:
    void read();

    QSocketNotifier* m_pNotifier = nullptr;
};
