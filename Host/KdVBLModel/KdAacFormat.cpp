#include "KdAacFormat.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr int kDefaultBitrate = 128000;
constexpr int kLeastPerChannel = 16000;
constexpr std::array<int, 12> kRates = {8000,  11025, 12000, 16000, 22050, 24000,
                                        32000, 44100, 48000, 64000, 88200, 96000};

int nearestRate(int asked)
{
    return *std::min_element(kRates.begin(), kRates.end(), [asked](int left, int right) {
        return std::llabs(qint64(left) - asked) < std::llabs(qint64(right) - asked);
    });
}

int nearestBitrate(int asked, int samplerate, int channels)
{
    const int wanted = asked > 0 ? asked : kDefaultBitrate;
    return qBound(kLeastPerChannel * channels, wanted, aacMaxBitrate(samplerate, channels));
}

QString noteOn(const KdVBLMODEL::KdAudioFormat& asked, const KdAacFormat& given)
{
    QStringList differences;
    if (asked.fourcc != KdVBLMODEL::kFourCcAac) {
        differences.append(QStringLiteral("the codec is AAC"));
    }
    if (asked.samplerate != given.samplerate) {
        differences.append(
            QStringLiteral("%1 Hz instead of %2").arg(given.samplerate).arg(asked.samplerate));
    }
    if (asked.channels != given.channels) {
        differences.append(
            QStringLiteral("%1 channels instead of %2").arg(given.channels).arg(asked.channels));
    }
    if (asked.bitrate != given.bitrate) {
        differences.append(
            QStringLiteral("%1 bit/s instead of %2").arg(given.bitrate).arg(asked.bitrate));
    }
    if ((asked.bitrateMode == KdVBLMODEL::fbmConstant) != given.isConstant) {
        differences.append(
            QStringLiteral("a variable bit rate, since constant ones end at %1 bit/s")
                .arg(aacMaxConstantBitrate(given.samplerate, given.channels)));
    }
    return differences.isEmpty() ? QString()
                                 : QStringLiteral("The nearest that AAC has is recorded: %1.")
                                       .arg(differences.join(QStringLiteral(", ")));
}

} // namespace

KdAacFormat nearestAacFormat(const KdVBLMODEL::KdAudioFormat& asked)
{
    KdAacFormat format;
    format.samplerate = nearestRate(asked.samplerate);
    format.channels = qBound(1, asked.channels, 2);
    format.bitrate = nearestBitrate(asked.bitrate, format.samplerate, format.channels);
    format.isConstant = asked.bitrateMode == KdVBLMODEL::fbmConstant &&
                        format.bitrate <= aacMaxConstantBitrate(format.samplerate, format.channels);
    format.note = noteOn(asked, format);
    return format;
}

QString aacFormatText(const KdAacFormat& format)
{
    return QStringLiteral("AAC, %1 Hz, %2 channels, %3 kbit/s %4")
        .arg(format.samplerate)
        .arg(format.channels)
        .arg(format.bitrate / 1000)
        .arg(format.isConstant ? QLatin1String("constant") : QLatin1String("variable"));
}
