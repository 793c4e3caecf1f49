#include "KAudioBitrateLimits.h"

#include <QHash>

#include <algorithm>
#include <array>

namespace KAudioBitrateLimits {

namespace {

using ByChannels = std::array<int, 2>;

const QHash<int, ByChannels>& table()
{
    static const QHash<int, ByChannels> limits{
        {22050, {132, 265}}, {24000, {144, 244}}, {32000, {192, 384}},
        {44100, {265, 512}}, {48000, {512, 512}}, {96000, {512, 512}},
    };
    return limits;
}

} // namespace

QVector<int> all()
{
    return {96, 128, 160, 192, 256, 320, 512};
}

std::optional<int> limit(int sampleRate, int channels)
{
    const auto found = table().constFind(sampleRate);
    if (found == table().constEnd() || channels < 1 || channels > int(found->size())) {
        return std::nullopt;
    }
    return (*found)[size_t(channels - 1)];
}

QVector<int> offered(int limit)
{
    QVector<int> rates = all();
    rates.erase(std::upper_bound(rates.begin(), rates.end(), limit), rates.end());
    return rates;
}

} // namespace KAudioBitrateLimits
