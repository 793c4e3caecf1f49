#pragma once

#include <KdVBLModel/KdMp4Boxes.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QByteArray>

class QIODevice;

/** Where things lie in a take's file, and how far its writing had come. */
struct KDVBLMODEL_EXPORT KdTakeLayout
{
    enum class State
    {
        NoIndex,    ///< nothing tells what the media data is: the first fragment was never complete
        Fragmented, ///< its header, then fragments
        Hidden, ///< the muxer had begun to finalise: the header is renamed, perhaps buried in the
                ///< media data
        Whole   ///< an ordinary file
    };

    State state = State::NoIndex;
    KdMp4Box header;  ///< the movie header; valid unless NoIndex
    qint64 slot = -1; ///< where the 16 bytes lie that make all that follows one piece of media data
    qint64 mediaEnd =
        0; ///< where the index is to begin: what follows is at most a part of an earlier one

    static KdTakeLayout of(QIODevice* file);

    /** @return those 16 bytes for media data that ends at end. */
    static QByteArray mediaHeader(qint64 slot, qint64 end);

    static constexpr int kMediaHeaderSize = 16;
};
