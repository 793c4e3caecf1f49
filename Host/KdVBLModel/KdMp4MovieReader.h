#pragma once

#include <KdVBLModel/KdMp4Movie.h>
#include <KdVBLModel/KdVBLModelExport.h>

/** Reads movie headers and fragments that may be damaged in any way. Reentrant, pure. */
class KDVBLMODEL_EXPORT KdMp4MovieReader
{
public:
    /**
     * @param header what a moov box holds.
     * @param available size of the file; samples that would lie beyond it are left out.
     * @return the movie with the samples its own tables name; without tracks when it makes no
     * sense.
     */
    static KdMp4Movie read(const QByteArray& header, qint64 available);
};

/** Adds the samples that a fragment names to a movie. Reentrant, pure. */
class KDVBLMODEL_EXPORT KdMp4FragmentReader
{
public:
    /**
     * A run without sizes, which the muxer is known to write, gets them from where the next one
     * begins.
     * @param content what the moof box holds.
     * @param offset where that box begins in the file.
     * @param available size of the file; samples that would lie beyond it are left out.
     */
    static void append(KdMp4Movie* movie, const QByteArray& content, qint64 offset,
                       qint64 available);
};
