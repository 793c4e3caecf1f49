#pragma once

#include <QDateTime>
#include <QString>

#include <functional>

/** Composes where a take goes. Any thread. */
namespace KdTakePath {

/** @return whether a path must not be used. */
using IsTaken = std::function<bool(const QString& path)>;

/** @return whether there is anything under that name, be it a link that leads nowhere. */
bool isThere(const QString& path);

/**
 * @param folder any form of separators, with or without one at the end
 * @param pattern "/REC_%1.m4a": a separator and the file's name with %1 for the time
 * @return folder and name in native separators, doubled ones collapsed
 */
QString compose(const QString& folder, const QString& pattern, const QDateTime& time);

/**
 * The same for the first second from time on whose path is free: two takes may begin within one
 * second, and the second one must neither replace the first nor be refused because of it.
 */
QString composeFree(const QString& folder, const QString& pattern, const QDateTime& time,
                    const IsTaken& isTaken);

/**
 * Drops empty parts of a path. A separator at the front goes too, except '/', where it is the root
 * of the file system and dropping it would make the path a relative one.
 */
QString collapseSeparators(const QString& path, QChar separator);

} // namespace KdTakePath
