#include "TakeSound.h"

#include <KdVBLModel/KdTakeWriter.h>

#include <QVector>

#include <cmath>

namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr int kBlockMs = 10;

} // namespace

GstBuffer* TakeSound::tone(const KdTakeWriter& writer, qint64 firstFrame)
{
    const int frames = writer.samplerate() * kBlockMs / 1000;
    QVector<qint16> samples;
    for (int frame = 0; frame < frames; ++frame) {
        const double phase =
            kTwoPi * 1000.0 * static_cast<double>(firstFrame + frame) / writer.samplerate();
        const auto value = static_cast<qint16>(8000.0 * std::sin(phase));
        for (int channel = 0; channel < writer.channels(); ++channel) {
            samples.append(value);
        }
    }
    const auto bytes = static_cast<gsize>(samples.size()) * sizeof(qint16);
    GstBuffer* const buffer = gst_buffer_new_allocate(nullptr, bytes, nullptr);
    gst_buffer_fill(buffer, 0, samples.constData(), bytes);
    return buffer;
}

bool TakeSound::pushSeconds(KdTakeWriter& writer, double seconds)
{
    const auto end = writer.framesPushed() + static_cast<qint64>(seconds * writer.samplerate());
    while (writer.framesPushed() < end) {
        if (!writer.push(tone(writer, writer.framesPushed()))) {
            return false;
        }
    }
    return true;
}
