#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <QString>

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
    static KdTakeContents read(const QString& path);
};
