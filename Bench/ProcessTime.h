#pragma once

#include <QtGlobal>

/** Processor time, of other processes too. Linux only. */
namespace ProcessTime {

/** @return seconds that the process and those that it started have used so far, all threads; 0 for
 * one that is not there. */
double ofTree(qint64 processId);

/** @return the process that serves the display of the environment; 0 when that is not told. */
qint64 displayServer();

} // namespace ProcessTime
