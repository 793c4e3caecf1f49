#pragma once

#include <KCore/KCoreExport.h>

/** Which of the host's AI modules can be used. */
class KCORE_EXPORT KAIModuleHelper
{
public:
    /** @param moduleNumber the host's number of the module. @return false for an unknown number. */
    static bool isAvailableForUse(int moduleNumber);
};
