#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

/** The scale of the level callbacks: linear in decibels, as a meter shows them. Pure. */
namespace KdLevelScale {

/** What is shown as silence. */
constexpr double kFloorDecibel = -60.0;

/** @param decibel below full scale. @return 0 (at the floor, below it, or no number) to 100. */
KDVBLMODEL_EXPORT int fromDecibel(double decibel);

} // namespace KdLevelScale
