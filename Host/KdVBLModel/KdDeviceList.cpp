#include <KdVBLModel/KdDeviceList.h>

#include <algorithm>

using namespace KdVBLMODEL;

namespace {

bool isAmong(const QVector<KdCaptureDevice>& devices, const KdCaptureDevice& device)
{
    return std::any_of(devices.begin(), devices.end(),
                       [&](const KdCaptureDevice& other) { return other.isSameAs(device); });
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
        m_entries.append({handle, offer, nameFor(offer)});
    }
    return isNew ? std::make_optional(find(handle)->device()) : std::nullopt;
}

bool KdDeviceList::replace(Handle former, Handle handle, const KdDeviceOffer& offer)
{
    const auto known = find(former);
    if (known == m_entries.end()) {
        return false;
    }
    const bool keepsName = known->offer.kind == offer.kind && known->offer.id == offer.id &&
                           known->offer.name == offer.name;
    known->handle = handle;
    known->offer = offer;
    if (!keepsName) {
        known->name.clear();
        known->name = nameFor(offer);
    }
    return true;
}

void KdDeviceList::keepNames(const KdDeviceList& former)
{
    for (Entry& entry : m_entries) {
        entry.name = former.knownName(entry.offer);
    }
    for (Entry& entry : m_entries) {
        if (entry.name.isEmpty()) {
            entry.name = nameFor(entry.offer);
        }
    }
}

std::optional<KdCaptureDevice> KdDeviceList::remove(Handle handle)
{
    const auto known = find(handle);
    if (known == m_entries.end()) {
        return std::nullopt;
    }
    const KdCaptureDevice device = known->device();
    m_entries.erase(known);
    return contains(device.kind, device.id) ? std::nullopt : std::make_optional(device);
}

QVector<KdCaptureDevice> KdDeviceList::devices(_KdDevType kind) const
{
    QVector<KdCaptureDevice> devices;
    const auto append = [&](bool wantDefault) {
        for (const Entry& entry : m_entries) {
            const bool fits = entry.offer.kind == kind && entry.offer.isDefault == wantDefault;
            if (fits && !isAmong(devices, entry.device())) {
                devices.append(entry.device());
            }
        }
    };
    append(true);
    append(false);
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

/** @return the name that the offer's device has by now, empty for one that is not there. */
QString KdDeviceList::knownName(const KdDeviceOffer& offer) const
{
    for (const Entry& entry : m_entries) {
        const bool fits = entry.offer.kind == offer.kind && entry.offer.id == offer.id;
        if (fits && !entry.name.isEmpty()) {
            return entry.name;
        }
    }
    return {};
}

/** Two microphones of one make carry one name; a list that shows it twice helps nobody. */
QString KdDeviceList::nameFor(const KdDeviceOffer& offer) const
{
    QString name = knownName(offer);
    if (!name.isEmpty()) {
        return name;
    }
    name = offer.name;
    for (int number = 2; isTaken(offer.kind, name); ++number) {
        name = offer.name + QStringLiteral(" (%1)").arg(number);
    }
    return name;
}

bool KdDeviceList::isTaken(_KdDevType kind, const QString& name) const
{
    return std::any_of(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.offer.kind == kind && entry.name == name;
    });
}

QVector<KdCaptureDevice> KdDeviceList::all() const
{
    return devices(kdtMicrophone) + devices(kdtWebcam);
}
