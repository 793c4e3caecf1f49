#pragma once

#include <KdCore/KdCustomEventManager.h>

#include <QObject>

/**
 * Hears that a recorder is about to start the engine, and that the start is over. The engine needs
 * the machine for itself in between. GUI thread.
 */
class StudioStartWatch : public QObject, private IKdCustomEventReceiver
{
    Q_OBJECT

public:
    explicit StudioStartWatch(QObject* parent = nullptr);
    ~StudioStartWatch() override;

Q_SIGNALS:
    /** The recorder waits while this is handled. */
    void startBegins();
    /** Comes after each startBegins(), whether the start succeeded or not. */
    void startEnded();

private:
    void onCustomEvent(const KdCustomEvent& event) override;
};
