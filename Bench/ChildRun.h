#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/** What one run of a child process cost. */
struct ChildCost
{
    bool ok = false;         ///< ended with status 0
    double cpuSeconds = 0.0; ///< user and system time
    double peakMegabytes = 0.0;
    double wallSeconds = 0.0;      ///< from start to end
    double stopMilliseconds = 0.0; ///< from the interrupt to the end
    QString output;                ///< its standard output
};

/**
 * Runs a program, interrupts it (SIGINT) after the given time and waits for its end.
 * @param interruptAfterSeconds 0: the program ends by itself
 */
ChildCost runChild(const QStringList& command, double interruptAfterSeconds);

/** @return what a child printed as lines of a name and a number. */
QHash<QString, double> printedValues(const ChildCost& cost);
