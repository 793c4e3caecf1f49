#include <KdVBLModel/KdBackgroundEffect.h>

class KdBackgroundEffect::Private
{
};

bool KdBackgroundEffect::isAvailable()
{
    return false; // built without OpenCV
}

KdBackgroundEffect::KdBackgroundEffect() = default;

KdBackgroundEffect::~KdBackgroundEffect() = default;

void KdBackgroundEffect::apply(Mode /*mode*/, uchar* /*argb*/, int /*width*/, int /*height*/,
                               int /*stride*/)
{
}

void KdBackgroundEffect::reset() {}

bool KdBackgroundEffect::waitForMask(std::chrono::milliseconds /*patience*/) const
{
    return true;
}
