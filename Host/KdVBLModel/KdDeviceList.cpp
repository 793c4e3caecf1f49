#include <KdVBLModel/KdDeviceList.h>

#include <QHash>

#include <algorithm>

using namespace KdVBLMODEL;

namespace {

KdCaptureDevice deviceOf(const KdDeviceOffer& offer)
{
    return {offer.kind, offer.id, offer.name};
}

bool isAmong(const QVector<KdCaptureDevice>& devices, const KdCaptureDevice& device)
{
    return std::any_of(devices.begin(), devices.end(),
                       [&](const KdCaptureDevice& other) { return other.isSameAs(device); });
}

/** Two microphones of one make carry one name; a list that shows it twice helps nobody. */
void tellEqualNamesApart(QVector<KdCaptureDevice>* devices)
{
    QHash<QString, int> seen;
    for (KdCaptureDevice& device : *devices) {
        const int number = ++seen[device.name];
        if (number > 1) {
            device.name += QStringLiteral(" (%1)").arg(number);
        }
    }
}

} // namespace

QVector<KdDeviceList::Entry>::iterator KdDeviceList::find(Handle handle)
{
    return std::find_if(m_entries.begin(), m_entries.end(),
                        [handle](const Entry& entry) { return entry.handle == handle; });
}

std::optional<KdCaptureDevice> KdDeviceList::add(Handle handle, const KdDeviceOffer& offer)
{
    const bool isNew = !contains(offer.kind, offer.id);
    if (!replace(handle, handle, offer)) {
        m_entries.append({handle, offer});
    }
    return isNew ? std::make_optional(deviceOf(offer)) : std::nullopt;
}

bool KdDeviceList::replace(Handle former, Handle handle, const KdDeviceOffer& offer)
{
    const auto known = find(former);
    if (known == m_entries.end()) {
        return false;
    }
    *known = {handle, offer};
    return true;
}

std::optional<KdCaptureDevice> KdDeviceList::remove(Handle handle)
{
    const auto known = find(handle);
    if (known == m_entries.end()) {
        return std::nullopt;
    }
    const KdDeviceOffer offer = known->offer;
    m_entries.erase(known);
    return contains(offer.kind, offer.id) ? std::nullopt : std::make_optional(deviceOf(offer));
}

QVector<KdCaptureDevice> KdDeviceList::devices(_KdDevType kind) const
{
    QVector<KdCaptureDevice> devices;
    const auto append = [&](bool wantDefault) {
        for (const Entry& entry : m_entries) {
            const bool fits = entry.offer.kind == kind && entry.offer.isDefault == wantDefault;
            if (fits && !isAmong(devices, deviceOf(entry.offer))) {
                devices.append(deviceOf(entry.offer));
            }
        }
    };
    append(true);
    append(false);
    tellEqualNamesApart(&devices);
    return devices;
}

KdDeviceList::Handle KdDeviceList::bestOffer(_KdDevType kind, const QString& id) const
{
    const Entry* best = nullptr;
    for (const Entry& entry : m_entries) {
        const bool fits = entry.offer.kind == kind && entry.offer.id == id;
        if (fits && (!best || entry.offer.preference > best->offer.preference)) {
            best = &entry;
        }
    }
    return best ? best->handle : nullptr;
}

QVector<KdDeviceList::Handle> KdDeviceList::handles() const
{
    QVector<Handle> handles;
    for (const Entry& entry : m_entries) {
        handles.append(entry.handle);
    }
    return handles;
}

QVector<KdDeviceList::Change> KdDeviceList::changes(const KdDeviceList& from,
                                                    const KdDeviceList& to)
{
    const QVector<KdCaptureDevice> before = from.all();
    const QVector<KdCaptureDevice> after = to.all();
    QVector<Change> changes;
    for (const KdCaptureDevice& device : before) {
        if (!isAmong(after, device)) {
            changes.append({false, device});
        }
    }
    for (const KdCaptureDevice& device : after) {
        if (!isAmong(before, device)) {
            changes.append({true, device});
        }
    }
    return changes;
}

bool KdDeviceList::contains(_KdDevType kind, const QString& id) const
{
    return bestOffer(kind, id) != nullptr;
}

QVector<KdCaptureDevice> KdDeviceList::all() const
{
    return devices(kdtMicrophone) + devices(kdtWebcam);
}
