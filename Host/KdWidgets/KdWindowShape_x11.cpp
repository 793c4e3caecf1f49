#include "KdWindowShape.h"

#include <QX11Info>

bool KdWindowShape::windowsAreBlended()
{
    return !QX11Info::isPlatformX11() || QX11Info::isCompositingManagerRunning();
}
