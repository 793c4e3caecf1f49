#pragma once

#include <QtGlobal>

/** What this process holds now, for tests that look for leaks. Linux only; zeros elsewhere. */
struct ProcessUse
{
    int files = 0; ///< open file descriptors
    int threads = 0;
    /** Allocated and not freed; unlike what the system has given, it does not depend on how many
     * threads have ever allocated. 0 with a sanitizer, which looks for leaks itself. */
    qint64 heapKb = 0;

    static ProcessUse now();
};
