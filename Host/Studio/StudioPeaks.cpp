#include <Studio/StudioPeaks.h>

#include <algorithm>
#include <cmath>

StudioPeakFolder::StudioPeakFolder(int mostStretches) : m_mostStretches(std::max(2, mostStretches))
{
}

void StudioPeakFolder::add(const float* samples, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        addSample(samples[i]);
    }
}

void StudioPeakFolder::addSample(float sample)
{
    if (m_stretches.isEmpty() || m_stretches.constLast().samples >= m_samplesPerStretch) {
        if (m_stretches.size() >= m_mostStretches) {
            joinNeighbours();
        }
        if (m_stretches.isEmpty() || m_stretches.constLast().samples >= m_samplesPerStretch) {
            m_stretches.append(Stretch());
        }
    }
    const float size = std::isfinite(sample) ? std::abs(sample) : 0.0F;
    Stretch& stretch = m_stretches.last();
    stretch.peak = std::max(stretch.peak, size);
    stretch.power += static_cast<double>(size) * static_cast<double>(size);
    ++stretch.samples;
    ++m_total;
}

void StudioPeakFolder::joinNeighbours()
{
    QVector<Stretch> joined;
    joined.reserve(m_mostStretches);
    for (int i = 0; i < m_stretches.size(); i += 2) {
        Stretch stretch = m_stretches.at(i);
        if (i + 1 < m_stretches.size()) {
            const Stretch& next = m_stretches.at(i + 1);
            stretch.peak = std::max(stretch.peak, next.peak);
            stretch.power += next.power;
            stretch.samples += next.samples;
        }
        joined.append(stretch);
    }
    m_stretches = joined;
    m_samplesPerStretch *= 2;
}

StudioPeaks StudioPeakFolder::peaks() const
{
    StudioPeaks peaks;
    peaks.reserve(m_stretches.size());
    for (const Stretch& stretch : m_stretches) {
        const double power = stretch.power / static_cast<double>(stretch.samples);
        peaks.append(
            {std::min(1.0F, stretch.peak), static_cast<float>(std::min(1.0, std::sqrt(power)))});
    }
    return peaks;
}

StudioPeaks foldPeaks(const StudioPeaks& peaks, int columns)
{
    StudioPeaks folded;
    if (peaks.isEmpty() || columns <= 0) {
        return folded;
    }
    folded.reserve(columns);
    const qint64 count = peaks.size();
    for (int column = 0; column < columns; ++column) {
        const auto first = static_cast<int>(column * count / columns);
        const auto end = std::max(first + 1, static_cast<int>((column + 1) * count / columns));
        StudioPeak widest;
        double power = 0.0;
        for (int i = first; i < end; ++i) {
            const StudioPeak& peak = peaks.at(i);
            widest.peak = std::max(widest.peak, peak.peak);
            power += static_cast<double>(peak.rms) * static_cast<double>(peak.rms);
        }
        widest.rms = static_cast<float>(std::sqrt(power / (end - first)));
        folded.append(widest);
    }
    return folded;
}
