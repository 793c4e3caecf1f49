#pragma once

#include <KdVBLModel/KdMp4Movie.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QByteArray>

/** Puts an ordinary movie header together. Reentrant, pure. */
class KDVBLMODEL_EXPORT KdMp4MovieWriter
{
public:
    /**
     * @return a whole moov box: the movie's own header with the samples that are known written into
     * its tables, and with nothing left that speaks of fragments.
     */
    static QByteArray write(const KdMp4Movie& movie);
};
