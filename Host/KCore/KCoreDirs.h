#pragma once

/**
 * @file
 * The folder in which a host keeps what belongs to its user. Any thread.
 */

#include <KCore/KCoreExport.h>

#include <QString>

/**
 * @return the host's per-user folder for its data, absolute, without a trailing separator. It is
 * made where it is missing; when that fails, writing into it fails too.
 */
KCORE_EXPORT QString getZentraDocumentDir();

/**
 * Makes getZentraDocumentDir() answer another folder. Nothing is moved there, and what was read
 * from the former folder counts until it is read again.
 * @param path of the folder, which is created; a relative one counts from the working directory.
 * Empty: back to the default, "KdRecord" in the user's folder for application data.
 */
KCORE_EXPORT void setZentraDocumentDir(const QString& path);
