#pragma once

#include <VirtualCamera/FlashBeepPattern.h>

#include <QString>
#include <QVector>

/** Finds the flashes and beeps of FlashBeepPattern.h in a file. Times in seconds. */
namespace FlashBeep {

/** When each flash of a file begins, by the first picture that is bright. */
QVector<double> flashes(const QString& path);
/** When each beep of a file begins. */
QVector<double> beeps(const QString& path);

/** For each flash how much later, in seconds, the nearest beep begins. */
QVector<double> offsets(const QString& path);

} // namespace FlashBeep
