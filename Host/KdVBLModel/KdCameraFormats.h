#pragma once

#include <KdVBLModel/KdGstNames.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QList>
#include <QSize>

#include <optional>

/** One way in which a camera gives its picture. */
struct KDVBLMODEL_EXPORT KdCameraMode
{
    QSize size;
    int rateNumerator = 0; ///< 0: the camera does not say; it gives what it likes
    int rateDenominator = 1;
    bool isJpeg = false;

    /** Pictures per second; what cameras usually do when this one does not say. */
    double frameRate() const;

    friend bool operator==(const KdCameraMode& left, const KdCameraMode& right)
    {
        return left.size == right.size && left.isJpeg == right.isJpeg &&
               left.rateNumerator == right.rateNumerator &&
               left.rateDenominator == right.rateDenominator;
    }
};

/**
 * What a camera offers, as lists to choose from. Of ranges, which some cameras offer instead, the
 * usual sizes and rates are listed, with the largest that the camera has. Values only; reads no
 * device.
 */
class KDVBLMODEL_EXPORT KdCameraFormats
{
public:
    KdCameraFormats() = default;
    /** @param caps of a device; null makes empty lists. What cannot be shown (compressed video,
     * pictures outside of the system's memory) is left out. */
    explicit KdCameraFormats(const GstCaps* caps);

    /** The largest first. */
    QList<QSize> resolutions() const;

    /** Those valid at a resolution: 30 and what is slower first, downwards, because the first is
     * what a user gets who does not choose; then what is faster, upwards. */
    QList<double> frameRates(QSize resolution) const;

    /**
     * @return how to have that: the nearest rate, raw where raw pictures reach it, else JPEG;
     * nothing for a resolution that is not offered.
     */
    std::optional<KdCameraMode> mode(QSize resolution, double frameRate) const;

    /** @return what to ask a source for. The caller's. */
    static GstCaps* createCaps(const KdCameraMode& mode);

private:
    void add(const KdCameraMode& mode);
    void addStructure(const GstStructure* structure);

    QList<KdCameraMode> m_modes;
};
