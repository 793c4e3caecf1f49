#include "KdDiskSync.h"

#include <cerrno>
#include <unistd.h>

bool KdDiskSync::sync(int handle)
{
    // Some file systems cannot sync and say so; their answer to the write is then the best there
    // is.
    return fsync(handle) == 0 || errno == EINVAL || errno == ENOTSUP;
}
