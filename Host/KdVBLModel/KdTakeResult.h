#pragma once

/** How the file of a take ended. */
enum class KdTakeResult
{
    Finished, ///< an ordinary MP4 with everything pushed, on disk
    Kept,     ///< something failed (a full disk, say); what was written until then plays
    Lost      ///< there is no usable file
};
