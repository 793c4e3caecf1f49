#pragma once

#include <QStringList>

/**
 * The folders that takes were recorded into, over several runs of the program: a take that a crash
 * cut off may lie in one that the settings never came to name. GUI thread.
 */
namespace StudioTakeFolders {

/** @param folder absolute path; of many the one used least recently is forgotten. */
void remember(const QString& folder);
/** @return absolute paths, each once, the one used last first. */
QStringList remembered();

} // namespace StudioTakeFolders
