#include <KdVBLModel/KdListedDevices.h>

#include <KdVBLModel/KdDeviceRegistry.h>

#include <algorithm>

namespace {
constexpr std::chrono::milliseconds kPatience{250};
}

KdListedDevices::KdListedDevices(KdVBLMODEL::_KdDevType kind) : m_kind(kind) {}

QVector<KdCaptureDevice> KdListedDevices::list()
{
    KdDeviceRegistry& registry = KdDeviceRegistry::instance();
    const bool isComplete = registry.waitUntilListed(m_kind, kPatience);
    const QVector<KdCaptureDevice> devices = registry.devices(m_kind);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_devices = devices;
    m_isIncomplete = !isComplete;
    return devices;
}

KdCaptureDevice KdListedDevices::at(int index) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_devices.value(index);
}

int KdListedDevices::indexOf(const KdCaptureDevice& device) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto listed = std::find_if(m_devices.begin(), m_devices.end(),
                                     [&](const auto& other) { return other.isSameAs(device); });
    return listed == m_devices.end() ? -1 : static_cast<int>(listed - m_devices.begin());
}

bool KdListedDevices::complete()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_isIncomplete, false);
}
