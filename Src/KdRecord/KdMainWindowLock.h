#pragma once

#include <qwindowdefs.h>

/**
 * Takes the input of the host's main window away during a take and gives it back, at the latest
 * when destroyed. Without a main window it does nothing. GUI thread.
 */
class KdMainWindowLock
{
public:
    KdMainWindowLock() = default;
    ~KdMainWindowLock();

    void setLocked(bool locked);

private:
    KdMainWindowLock(const KdMainWindowLock&) = delete;
    KdMainWindowLock& operator=(const KdMainWindowLock&) = delete;

    /** What was locked, by number: the window itself may be gone by the time it is unlocked. */
    WId m_lockedWindow = 0;
};
