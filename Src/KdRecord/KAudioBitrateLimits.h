#pragma once

#include <QVector>

#include <limits>
#include <optional>

/** Which bit rates, in kbit/s, a voice-over may have. */
namespace KAudioBitrateLimits {

constexpr int Unlimited = std::numeric_limits<int>::max();

/** @return every bit rate there is, ascending. */
QVector<int> all();

/** @return the highest constant bit rate; nothing for a sample rate or channel count without a
 * limit of its own. */
std::optional<int> limit(int sampleRate, int channels);

/** @return the bit rates up to a limit, ascending. */
QVector<int> offered(int limit);

} // namespace KAudioBitrateLimits
