#pragma once

#include <Studio/StudioTake.h>

#include <QByteArray>
#include <QString>
#include <QVector>

/** The text of a take list as it is kept in a takes folder. Pure functions. */
namespace StudioTakeIndex {

/** A read list. */
struct Content
{
    bool valid = false; ///< whether the text was a take list at all
    int skipped = 0;    ///< entries that made no sense
    QVector<StudioTake> takes;
};

/**
 * @param folder the takes folder, absolute: files below it are written relative to it, so that the
 * folder can be moved as a whole
 */
QByteArray write(const QVector<StudioTake>& takes, const QString& folder);

/** Reads what write() wrote. Values of a wrong type count as absent; an entry without a file is
 * skipped. */
Content read(const QByteArray& text, const QString& folder);

} // namespace StudioTakeIndex
