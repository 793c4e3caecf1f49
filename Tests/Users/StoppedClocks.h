#pragma once

#include <QObject>

/**
 * While this lives, toasts stay and countdowns do not count: a look at a window that passes takes
 * as long as the machine needs for it.
 */
class StoppedClocks : public QObject
{
public:
    StoppedClocks();

    bool eventFilter(QObject* watched, QEvent* event) override;
};
