#pragma once

#include <KdVBLModel/KdCaptureDevice.h>
#include <KdVBLModel/KdDeviceOffer.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QVector>

#include <optional>

/**
 * Makes one list of devices from the offers of several systems: a device is there from its first
 * offer to the end of its last. Devices of equal names get numbers, as in "Camera (2)"; whatever
 * comes and goes beside it, a device keeps the name that it has been given. Not thread-safe.
 */
class KDVBLMODEL_EXPORT KdDeviceList
{
public:
    /** Tells offers apart; never looked into. */
    using Handle = const void*;

    struct Change
    {
        bool isAdded;
        KdCaptureDevice device;
    };

    /** @return the device when it was not there before. A handle that is known is updated. */
    std::optional<KdCaptureDevice> add(Handle handle, const KdDeviceOffer& offer);

    /** Puts an offer that changed in the place of its former self. @return whether that was there.
     */
    bool replace(Handle former, Handle handle, const KdDeviceOffer& offer);

    /** Gives devices the names that they have in the list that this one follows. */
    void keepNames(const KdDeviceList& former);

    /** @return the device when this was its last offer. */
    std::optional<KdCaptureDevice> remove(Handle handle);

    /** The system's default first, then in the order in which they came. */
    QVector<KdCaptureDevice> devices(KdVBLMODEL::_KdDevType kind) const;

    /** @return the offer through which to open the device, null when it is not there. */
    Handle bestOffer(KdVBLMODEL::_KdDevType kind, const QString& id) const;

    bool holds(Handle handle) const { return handles().contains(handle); }
    QVector<Handle> handles() const;

    /** @return what went and what came, in this order, on the way from one list to another. */
    static QVector<Change> changes(const KdDeviceList& from, const KdDeviceList& to);

private:
    struct Entry
    {
        Handle handle;
        KdDeviceOffer offer;
        QString name; ///< the device's, the same in all of its offers

        KdCaptureDevice device() const { return {offer.kind, offer.id, name}; }
    };

    QVector<Entry>::iterator find(Handle handle);
    bool contains(KdVBLMODEL::_KdDevType kind, const QString& id) const;
    QString knownName(const KdDeviceOffer& offer) const;
    QString nameFor(const KdDeviceOffer& offer) const;
    bool isTaken(KdVBLMODEL::_KdDevType kind, const QString& name) const;
    QVector<KdCaptureDevice> all() const;

    QVector<Entry> m_entries;
};
