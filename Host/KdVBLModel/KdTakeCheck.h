#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

#include <functional>

/** What a player would find in a file. */
struct KdTakeContents
{
    bool isReadable = false;
    QString problem; ///< one sentence when it is not readable
    int audioFrames = 0;
    int videoFrames = 0;
};

/** Reads a file as a player does, all of it. Blocks; needs gst_init(). */
class KDVBLMODEL_EXPORT KdTakeCheck
{
public:
    /** @param goesOn asked some times a second; once it answers false the file counts as not
     * readable, without a problem. */
    static KdTakeContents read(const QString& path, const std::function<bool()>& goesOn = {});
};
