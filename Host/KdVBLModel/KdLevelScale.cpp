#include <KdVBLModel/KdLevelScale.h>

#include <cmath>

int KdLevelScale::fromDecibel(double decibel)
{
    if (!(decibel > kFloorDecibel)) { // also true for what is not a number
        return 0;
    }
    if (decibel >= 0.0) {
        return 100;
    }
    return static_cast<int>(std::lround((1.0 - decibel / kFloorDecibel) * 100.0));
}
