#include "ProcessUse.h"

#include <QDir>

#include <malloc.h>

namespace {

int entriesIn(const char* folder)
{
    return QDir(QLatin1String(folder))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

} // namespace

ProcessUse ProcessUse::now()
{
    ProcessUse use;
    use.files = entriesIn("/proc/self/fd");
    use.threads = entriesIn("/proc/self/task");
    const struct mallinfo2 heap = mallinfo2();
    use.heapKb = static_cast<qint64>((heap.uordblks + heap.hblkhd) / 1024);
    return use;
}
