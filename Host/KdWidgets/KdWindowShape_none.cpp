#include "KdWindowShape.h"

bool KdWindowShape::windowsAreBlended()
{
    return true;
}
