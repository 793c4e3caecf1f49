#pragma once

#include <KCore/KCoreExport.h>

#include <functional>

/**
 * Which of the host's AI modules can be used. Whoever implements a module offers it here, so that
 * this library knows none of them. All operations may be called on any thread.
 */
class KCORE_EXPORT KAIModuleHelper
{
public:
    /** Looks at what the module needs and says whether it works now; called on the asking thread.
     */
    using Probe = std::function<bool()>;

    /** The webcam picture's background, blurred or removed. */
    static constexpr int kBackgroundModule = 5;

    /**
     * @param moduleNumber the host's number of the module.
     * @return what the module's probe says; false for a number that nobody offers.
     */
    static bool isAvailableForUse(int moduleNumber);

    /**
     * Makes a module known, replaces it or withdraws it.
     * @param moduleNumber the host's number of the module.
     * @param probe asked from now on, on whatever thread wants to know; null: the module is offered
     * no more. A question that is on its way meanwhile may still reach the former one.
     */
    static void offer(int moduleNumber, Probe probe);
};
