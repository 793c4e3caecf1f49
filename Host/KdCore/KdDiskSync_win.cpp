#include "KdDiskSync.h"

#include <io.h>

bool KdDiskSync::sync(int handle)
{
    return _commit(handle) == 0;
}
