#include <KdVBLModel/KdBackgroundEffect.h>

#include <KdCore/KdBaseLog.h>

class KdBackgroundEffect::Private
{
};

bool KdBackgroundEffect::isAvailable()
{
    static const bool isLogged = [] {
        KdBaseLog::write(KdBaseLog::Info,
                         {"Host/KdVBLModel/KdBackgroundEffect", "KdBackgroundEffect::isAvailable"},
                         "Backgrounds cannot be treated: this was built without OpenCV.");
        return true;
    }();
    return !isLogged;
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
