#include <KCore/KAIModuleHelper.h>
#include <KdVBLModel/KdBackgroundEffect.h>

namespace {

void offerBackgroundModule()
{
    KAIModuleHelper::offer(KAIModuleHelper::kBackgroundModule, KdBackgroundEffect::isAvailable);
}

} // namespace

// Whoever loads the engine has the module, before any recorder is made.
Q_CONSTRUCTOR_FUNCTION(offerBackgroundModule)
