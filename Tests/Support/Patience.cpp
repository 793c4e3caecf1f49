#include "Patience.h"

int KdTest::patience(int msec)
{
    return msec * KD_BUILD_SLOWDOWN;
}
