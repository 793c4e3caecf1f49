#include "KdRecordDeviceConnectorPrivate.h"

#include <KdCore/KdBaseLog.h>

#include <QPointer>

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

using namespace KdVBLMODEL;

namespace {

using Device = KdRecordDeviceConnectorPrivate::Device;

constexpr char kSourceFile[] = "Src/KdRecord/KdRecordDeviceConnector";
constexpr char kRefresh[] = "KdRecordDeviceConnectorPrivate::refreshDeviceList";
constexpr char kSwitch[] = "KdRecordDeviceConnectorPrivate::switchDevice";

void logMisuse(const char* function, const char* message)
{
    KdBaseLog::write(KdBaseLog::Error, {kSourceFile, function}, "%s", message);
}

bool isSame(const Device& a, const Device& b)
{
    return a.devType == b.devType && a.id == b.id;
}

bool contains(const QList<Device>& list, const Device& device)
{
    return std::any_of(list.begin(), list.end(),
                       [&device](const Device& listed) { return isSame(listed, device); });
}

/**
 * Hooks are the host's code: what they throw ends here. Called through a copy, so that a hook may
 * replace itself and outlives the connector that it destroys.
 * @return nothing when the hook threw.
 */
template <typename Hook, typename Argument>
auto call(const Hook& registered, const Argument& argument, const char* function)
    -> std::optional<decltype(registered(argument))>
{
    try {
        const Hook hook = registered;
        return hook(argument);
    } catch (const std::exception& error) {
        KdBaseLog::write(KdBaseLog::Error, {kSourceFile, function},
                         "The hook of the host threw an exception: %s", error.what());
    } catch (...) {
        logMisuse(function, "The hook of the host threw an exception of an unknown type");
    }
    return std::nullopt;
}

} // namespace

KdRecordDeviceConnectorPrivate::KdRecordDeviceConnectorPrivate(KdRecordDeviceConnector* connector,
                                                               _KdDevType type)
    : q(connector), deviceType(type)
{
}

bool KdRecordDeviceConnectorPrivate::checkRefreshDeviceListFunction() const
{
    if (!refreshHook) {
        logMisuse("KdRecordDeviceConnectorPrivate::checkRefreshDeviceListFunction",
                  "You must registerRefreshDeviceList firstly");
    }
    return static_cast<bool>(refreshHook);
}

bool KdRecordDeviceConnectorPrivate::checkSwitchDeviceFunction() const
{
    if (!switchHook) {
        logMisuse("KdRecordDeviceConnectorPrivate::checkSwitchDeviceFunction",
                  "You must registerSwitchDevice firstly");
    }
    return static_cast<bool>(switchHook);
}

void KdRecordDeviceConnectorPrivate::refreshDeviceList()
{
    if (m_isRefreshing) {
        logMisuse(kRefresh, "The list of devices cannot be refreshed by its own refresh hook");
        return;
    }
    refresh(false);
}

void KdRecordDeviceConnectorPrivate::handleDeviceRemoval()
{
    if (m_isRefreshing) {
        // The hook runs an event loop, and may have listed the device before it was removed.
        m_isRemovalMissed = true;
        return;
    }
    refresh(true);
}

void KdRecordDeviceConnectorPrivate::refresh(bool isRemoval)
{
    if (!checkRefreshDeviceListFunction()) {
        return;
    }
    const QList<Device> oldDevices = devices;
    const Device oldCurrent = currentDevice;
    const ListResult first = listDevices();
    // Once: a hook that brings a removal about each time must come to an end.
    const bool isListedAgain = first.isRemovalMissed && first.isAlive && refreshHook;
    if (!first.isAlive || (isListedAgain && !listDevices().isAlive)) {
        return;
    }
    const bool isLost = contains(oldDevices, oldCurrent) && !contains(devices, oldCurrent);
    if (isLost && (isRemoval || first.isRemovalMissed)) {
        Q_EMIT q->sigCurrentDeviceLost(oldCurrent);
    }
}

KdRecordDeviceConnectorPrivate::ListResult KdRecordDeviceConnectorPrivate::listDevices()
{
    const QPointer<KdRecordDeviceConnector> alive(q);
    const QList<Device> former = std::exchange(devices, {});
    m_isRefreshing = true;
    const auto listed = call(refreshHook, deviceType, kRefresh);
    if (!alive) {
        return {};
    }
    m_isRefreshing = false;
    ListResult result;
    result.isRemovalMissed = std::exchange(m_isRemovalMissed, false);
    devices = listed.value_or(former);
    if (listed) {
        updateCurrentDevice();
        Q_EMIT q->sigDeviceListRefreshed();
    }
    result.isAlive = !alive.isNull();
    return result;
}

/** By the id alone: an engine may list a device under another type, index and name than before. */
void KdRecordDeviceConnectorPrivate::updateCurrentDevice()
{
    const auto found = std::find_if(devices.cbegin(), devices.cend(), [this](const Device& listed) {
        return listed.id == currentDevice.id;
    });
    if (found != devices.cend()) {
        currentDevice = *found;
    }
}

bool KdRecordDeviceConnectorPrivate::switchDevice(const Device& device)
{
    if (!checkSwitchDeviceFunction()) {
        return false;
    }
    if (m_isSwitching) {
        logMisuse(kSwitch, "The device cannot be switched by its own switch hook");
        return false;
    }
    if (!contains(devices, device)) {
        KdBaseLog::write(KdBaseLog::Error, {kSourceFile, kSwitch},
                         "Switch device error: record device not exists(%s)",
                         device.name.toUtf8().constData());
        return false;
    }
    const QPointer<KdRecordDeviceConnector> alive(q);
    const Device chosen = device; // the caller's may be one of the list that the hook refreshes
    m_isSwitching = true;
    const bool isSwitched = call(switchHook, chosen, kSwitch).value_or(false);
    if (!alive) {
        return isSwitched;
    }
    m_isSwitching = false;
    if (isSwitched) {
        currentDevice = chosen;
    }
    return isSwitched;
}
