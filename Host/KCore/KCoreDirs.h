#pragma once

#include <KCore/KCoreExport.h>

#include <QString>

/** @return the host's per-user folder for its data, without a trailing separator; it exists. Any
 * thread. */
KCORE_EXPORT QString getZentraDocumentDir();

/** Makes getZentraDocumentDir() answer this folder, which is created; empty returns to the default.
 */
KCORE_EXPORT void setZentraDocumentDir(const QString& path);
