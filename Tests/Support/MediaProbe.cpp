#include "MediaProbe.h"

#include "Command.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

QJsonObject ffprobe(const QString& path)
{
    const Command::Result result = Command::run(
        QStringLiteral("ffprobe"),
        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_format"),
         QStringLiteral("-show_streams"), QStringLiteral("-of"), QStringLiteral("json"), path});
    return result.ok ? QJsonDocument::fromJson(result.output).object() : QJsonObject();
}

void readStream(const QJsonObject& stream, MediaInfo* info)
{
    const QString codec = stream.value(QLatin1String("codec_name")).toString();
    if (stream.value(QLatin1String("codec_type")) == QLatin1String("audio")) {
        info->audioCodec = codec;
        info->samplerate = stream.value(QLatin1String("sample_rate")).toString().toInt();
        info->channels = stream.value(QLatin1String("channels")).toInt();
        info->bitrate = stream.value(QLatin1String("bit_rate")).toString().toInt();
    } else {
        info->videoCodec = codec;
        info->width = stream.value(QLatin1String("width")).toInt();
        info->height = stream.value(QLatin1String("height")).toInt();
    }
}

double decibel(double amplitude)
{
    return amplitude > 0.0 ? 20.0 * std::log10(amplitude)
                           : -std::numeric_limits<double>::infinity();
}

QVector<float> part(const QString& path, double fromSeconds, double seconds)
{
    constexpr int kRate = 48000;
    const QVector<float> all = MediaProbe::samples(path, kRate);
    const int from = static_cast<int>(fromSeconds * kRate);
    return all.mid(from, seconds > 0.0 ? static_cast<int>(seconds * kRate) : -1);
}

} // namespace

MediaInfo MediaProbe::probe(const QString& path)
{
    MediaInfo info;
    const QJsonObject found = ffprobe(path);
    const QJsonObject format = found.value(QLatin1String("format")).toObject();
    info.container = format.value(QLatin1String("format_name")).toString();
    info.seconds = format.value(QLatin1String("duration")).toString().toDouble();
    const QJsonArray streams = found.value(QLatin1String("streams")).toArray();
    for (const QJsonValue& stream : streams) {
        readStream(stream.toObject(), &info);
    }
    const Command::Result decoded =
        Command::run(QStringLiteral("ffmpeg"),
                     // With the file's own times: rounded to frames, two pictures of a camera that
                     // hurries after a delay would become one.
                     {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                      QStringLiteral("-fps_mode"), QStringLiteral("passthrough"),
                      QStringLiteral("-enc_time_base"), QStringLiteral("-1"), QStringLiteral("-f"),
                      QStringLiteral("null"), QStringLiteral("-")},
                     120000);
    info.complaint = QString::fromUtf8(decoded.errors);
    info.isReadable = decoded.ok && decoded.errors.isEmpty() && !streams.isEmpty();
    return info;
}

QVector<float> MediaProbe::samples(const QString& path, int samplerate)
{
    const Command::Result decoded =
        Command::run(QStringLiteral("ffmpeg"),
                     {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                      QStringLiteral("-af"), QStringLiteral("pan=mono|c0=c0"),
                      QStringLiteral("-ar"), QString::number(samplerate), QStringLiteral("-f"),
                      QStringLiteral("f32le"), QStringLiteral("-")},
                     120000);
    QVector<float> samples;
    if (decoded.ok) {
        samples.resize(decoded.output.size() / static_cast<int>(sizeof(float)));
        std::memcpy(samples.data(), decoded.output.constData(),
                    static_cast<size_t>(samples.size()) * sizeof(float));
    }
    return samples;
}

double MediaProbe::meanDecibel(const QString& path, double fromSeconds, double seconds)
{
    const QVector<float> samples = part(path, fromSeconds, seconds);
    double squares = 0.0;
    for (const float sample : samples) {
        squares += static_cast<double>(sample) * static_cast<double>(sample);
    }
    return samples.isEmpty() ? decibel(0.0) : decibel(std::sqrt(squares / samples.size()));
}

double MediaProbe::peakDecibel(const QString& path, double fromSeconds, double seconds)
{
    double peak = 0.0;
    for (const float sample : part(path, fromSeconds, seconds)) {
        peak = std::max(peak, std::abs(static_cast<double>(sample)));
    }
    return decibel(peak);
}

double MediaProbe::toneDecibel(const QVector<float>& samples, int samplerate, double frequency,
                               double second, double windowSeconds)
{
    constexpr double kPi = 3.14159265358979323846;
    const int from = qMax(0, static_cast<int>((second - windowSeconds / 2) * samplerate));
    const int count = qMin(static_cast<int>(windowSeconds * samplerate), samples.size() - from);
    double real = 0.0;
    double imaginary = 0.0;
    for (int i = 0; i < count; ++i) {
        // The window keeps a loud neighbour from passing for this frequency.
        const double window = 1.0 - std::cos(2.0 * kPi * i / count);
        const double angle = 2.0 * kPi * frequency * i / samplerate;
        const double sample = window * static_cast<double>(samples[from + i]);
        real += sample * std::cos(angle);
        imaginary += sample * std::sin(angle);
    }
    return count > 0 ? decibel(2.0 * std::hypot(real, imaginary) / count) : decibel(0.0);
}

double MediaProbe::steadyToneDecibel(const QString& path, double frequency)
{
    constexpr int kRate = 48000;
    constexpr double kPart = 0.02;
    const QVector<float> all = samples(path, kRate);
    QVector<double> parts;
    const int count = static_cast<int>(all.size() / (kRate * kPart));
    for (int i = 1; i < count; ++i) {
        parts.append(toneDecibel(all, kRate, frequency, i * kPart, kPart));
    }
    std::sort(parts.begin(), parts.end());
    return parts.isEmpty() ? decibel(0.0) : parts[parts.size() / 2];
}

double MediaProbe::pitchAt(const QVector<float>& samples, int samplerate, double second,
                           double windowSeconds)
{
    const int from = static_cast<int>((second - windowSeconds / 2) * samplerate);
    const int to = static_cast<int>((second + windowSeconds / 2) * samplerate);
    double first = -1.0;
    double last = -1.0;
    int crossings = 0;
    for (int i = qMax(from, 1); i < qMin(to, samples.size()); ++i) {
        const double before = static_cast<double>(samples[i - 1]);
        const double after = static_cast<double>(samples[i]);
        if (before < 0.0 && after >= 0.0) {
            last = i - after / (after - before);
            first = crossings == 0 ? last : first;
            ++crossings;
        }
    }
    return crossings > 1 ? (crossings - 1) * samplerate / (last - first) : 0.0;
}

QVector<double> MediaProbe::moments(double first, double end, double step)
{
    const int count = std::max(0, static_cast<int>(std::ceil((end - first) / step)));
    QVector<double> times;
    for (int index = 0; index < count; ++index) {
        times.append(first + index * step);
    }
    return times;
}
