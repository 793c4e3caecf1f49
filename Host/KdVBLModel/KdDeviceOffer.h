#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdVBLModel/KdGstNames.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QHash>
#include <QString>

#include <optional>

/** What a sound or video system says of one thing that it has. */
struct KdDeviceFacts
{
    QString provider;    ///< type name of its device object, as in "GstPulseDevice"
    QString deviceClass; ///< as in "Audio/Source/Virtual"
    QString displayName;
    QHash<QString, QString> properties;
};

/** One system's offer of a capture device. */
struct KdDeviceOffer
{
    KdVBLMODEL::_KdDevType kind = KdVBLMODEL::kdtNone;
    QString id;
    QString name;
    int preference = 0;     ///< which of several offers of one device to open: the highest
    bool isDefault = false; ///< the system would take it if nobody chose
};

/** @return the offer, or nothing for what is no capture device: an output's monitor. Pure. */
KDVBLMODEL_EXPORT std::optional<KdDeviceOffer> kdOfferFrom(const KdDeviceFacts& facts);

KDVBLMODEL_EXPORT KdDeviceFacts kdFactsOf(GstDevice* device);
