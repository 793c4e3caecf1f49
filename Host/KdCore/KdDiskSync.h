#pragma once

/** Getting a file's bytes onto the disk itself. Reentrant. */
namespace KdDiskSync {

/** @param handle a file descriptor open for writing. @return whether all that was written is on
 * disk. */
bool sync(int handle);

} // namespace KdDiskSync
