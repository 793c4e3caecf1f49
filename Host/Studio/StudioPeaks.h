#pragma once

#include <QMetaType>
#include <QVector>

#include <cstddef>

/** The loudness of a stretch of sound, 0.0 to 1.0 (full scale). */
struct StudioPeak
{
    float peak = 0.0F; ///< the largest sample
    float rms = 0.0F;  ///< the mean power's root
};

using StudioPeaks = QVector<StudioPeak>;

/**
 * Folds sound of a length that is not known beforehand into a bounded number of stretches of equal
 * length: when there are too many, neighbours are joined.
 */
class StudioPeakFolder
{
public:
    /** @param mostStretches at least 2 */
    explicit StudioPeakFolder(int mostStretches = 2048);

    /** @param samples mono; NaN and infinity count as silence */
    void add(const float* samples, std::size_t count);
    /** The stretches so far, the last one may be short. */
    StudioPeaks peaks() const;
    qint64 sampleCount() const { return m_total; }

private:
    struct Stretch
    {
        float peak = 0.0F;
        double power = 0.0;
        qint64 samples = 0;
    };

    void addSample(float sample);
    void joinNeighbours();

    int m_mostStretches;
    qint64 m_samplesPerStretch = 64;
    qint64 m_total = 0;
    QVector<Stretch> m_stretches;
};

/** Folds peaks onto that many columns of a picture; with fewer peaks than columns a peak fills
 * several. */
StudioPeaks foldPeaks(const StudioPeaks& peaks, int columns);

Q_DECLARE_METATYPE(StudioPeaks)
