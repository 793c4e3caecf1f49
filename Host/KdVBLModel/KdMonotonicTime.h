#pragma once

#include <QtGlobal>

#include <chrono>

/** @return nanoseconds on a clock that never jumps; only differences mean anything. */
inline qint64 kdMonotonicNs()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}
