#pragma once

#include <QString>
#include <QStringList>

/** Which row of a device list is selected after the list was filled anew. Any thread. */
namespace KdDeviceChoice {

/**
 * @param remembered the text that was selected until now; it counts before stored
 * @param stored the user's choice of an earlier session; asked only while nothing is remembered
 * @return the last row with that name, else 0, also for an empty list
 */
int rowToSelect(const QStringList& names, const QString& remembered, const QString& stored);

} // namespace KdDeviceChoice
