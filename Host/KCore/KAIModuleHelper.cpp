#include "KAIModuleHelper.h"

#include <QtGlobal>

bool KAIModuleHelper::isAvailableForUse(int moduleNumber)
{
    Q_UNUSED(moduleNumber)
    return false; // This host ships no AI modules.
}
