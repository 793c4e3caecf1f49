#include "FlashBeep.h"

#include "ClipProbe.h"
#include "Command.h"
#include "MediaProbe.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kTimeoutMs = 120000;

/** One byte for each picture: its mean brightness. */
QByteArray brightness(const QString& path)
{
    return Command::run(QStringLiteral("ffmpeg"),
                        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                         QStringLiteral("-vsync"), QStringLiteral("passthrough"),
                         QStringLiteral("-vf"), QStringLiteral("scale=1:1:flags=area"),
                         QStringLiteral("-pix_fmt"), QStringLiteral("gray"), QStringLiteral("-f"),
                         QStringLiteral("rawvideo"), QStringLiteral("-")},
                        kTimeoutMs)
        .output;
}

} // namespace

QVector<double> FlashBeep::flashes(const QString& path)
{
    const QVector<double> times = ClipProbe::probe(path).pictureTimes;
    const QByteArray levels = brightness(path);
    QVector<double> begins;
    if (times.size() != levels.size()) {
        return begins;
    }
    bool wasBright = false;
    for (int i = 0; i < times.size(); ++i) {
        const bool isBright = static_cast<uchar>(levels[i]) > 128;
        if (isBright && !wasBright) {
            begins.append(times[i]);
        }
        wasBright = isBright;
    }
    return begins;
}

QVector<double> FlashBeep::beeps(const QString& path)
{
    constexpr int kRate = 48000;
    constexpr float kLoud = 0.2F;
    const int quiet = static_cast<int>(kRate * kLength / 2);
    const QVector<float> samples = MediaProbe::samples(path, kRate);
    QVector<double> begins;
    int last = -quiet;
    for (int i = 0; i < samples.size(); ++i) {
        if (std::abs(samples[i]) < kLoud) {
            continue;
        }
        if (i - last >= quiet) {
            begins.append(static_cast<double>(i) / kRate);
        }
        last = i;
    }
    return begins;
}

QVector<double> FlashBeep::offsets(const QString& path)
{
    const QVector<double> sounds = beeps(path);
    const QVector<double> lights = flashes(path);
    QVector<double> found;
    for (const double light : lights) {
        const auto nearest =
            std::min_element(sounds.begin(), sounds.end(), [light](double left, double right) {
                return std::abs(left - light) < std::abs(right - light);
            });
        if (nearest != sounds.end()) {
            found.append(*nearest - light);
        }
    }
    return found;
}
