#include <KdVBLModel/KdListedDevices.h>

#include <KdVBLModel/KdDeviceRegistry.h>

#include <algorithm>

KdListedDevices::KdListedDevices(KdVBLMODEL::_KdDevType kind, std::chrono::milliseconds patience)
    : m_kind(kind), m_patience(patience)
{
}

// Whether the list is complete is asked with the lock held: else complete() could come in between,
// and nobody would be told of the list.
QVector<KdCaptureDevice> KdListedDevices::list()
{
    KdDeviceRegistry& registry = KdDeviceRegistry::instance();
    registry.waitUntilListed(m_kind, m_patience);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isIncomplete = !registry.waitUntilListed(m_kind, std::chrono::milliseconds(0));
    m_devices = registry.devices(m_kind);
    return m_devices;
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
