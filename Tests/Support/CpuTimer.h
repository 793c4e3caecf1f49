#pragma once

#include <QtGlobal>

#include <ctime>

/**
 * How much this process has computed since start(). For limits on an effort, which must hold on a
 * machine as well that has other things to do meanwhile; waiting does not count.
 */
class CpuTimer
{
public:
    void start() { m_start = std::clock(); }
    /** In milliseconds, of all threads together. */
    qint64 elapsed() const { return qint64(std::clock() - m_start) * 1000 / CLOCKS_PER_SEC; }

private:
    std::clock_t m_start = 0;
};
