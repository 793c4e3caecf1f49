#pragma once

#include "KdAppSettings.h"

#include <QDomDocument>

/** The settings objects as XML and back. Reentrant. */
namespace KdSettingsXml {

QDomDocument toDocument(KSettings& settings);

/**
 * Takes over what the document holds. A count beyond its range becomes the nearest end of the
 * range; any other value that cannot be, or is no value at all, leaves the setting as it was.
 */
void read(const QDomDocument& document, KSettings& settings);

} // namespace KdSettingsXml
