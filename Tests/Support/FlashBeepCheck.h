#pragma once

#include <QString>
#include <QVector>

/** Whether what was recorded of a FlashBeepSource is in step. Failing is a failure of the test at
 * hand. */
namespace FlashBeepCheck {

/**
 * Sound and picture begin and end together, and each beep comes within 40 ms of its flash.
 * @param least so many flashes must be found
 * @param cuts where pauses were, in seconds: flashes and beeps there are not whole, and do not
 * count
 */
void verifyTogether(const QString& path, int least, const QVector<double>& cuts = {});

} // namespace FlashBeepCheck
