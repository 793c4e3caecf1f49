#include "KAIModuleHelper.h"

#include <map>
#include <mutex>
#include <utility>

namespace {

class Offers
{
public:
    KAIModuleHelper::Probe probeOf(int moduleNumber)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto found = m_probes.find(moduleNumber);
        return found == m_probes.end() ? KAIModuleHelper::Probe() : found->second;
    }

    void set(int moduleNumber, KAIModuleHelper::Probe probe)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_probes[moduleNumber] = std::move(probe);
    }

private:
    std::mutex m_mutex;
    std::map<int, KAIModuleHelper::Probe> m_probes;
};

/** Never destroyed: libraries offer and ask while they are loaded and unloaded. */
Offers& offers()
{
    static auto* const kept = new Offers;
    return *kept;
}

} // namespace

bool KAIModuleHelper::isAvailableForUse(int moduleNumber)
{
    const Probe probe = offers().probeOf(moduleNumber);
    return probe && probe();
}

void KAIModuleHelper::offer(int moduleNumber, Probe probe)
{
    offers().set(moduleNumber, std::move(probe));
}
