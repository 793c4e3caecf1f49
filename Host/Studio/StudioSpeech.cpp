#include <Studio/StudioSpeech.h>

#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <array>
#include <cmath>

namespace StudioSpeech {

namespace {

constexpr int kRate = 24000;
constexpr int kSpeechTimeoutMs = 10000;
constexpr double kPi = 3.14159265358979323846;
constexpr double kSynthesisedSeconds = 20.0;

QByteArray wavHeader(quint32 dataBytes)
{
    QByteArray header;
    QDataStream out(&header, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + dataBytes);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(kRate) << quint32(kRate * 2)
        << quint16(2) << quint16(16);
    out.writeRawData("data", 4);
    out << dataBytes;
    return header;
}

/** Syllables at four a second, every ninth one silent, on a voice that wanders around 140 Hz. */
double sampleAt(double time)
{
    static constexpr std::array<double, 5> kHarmonics{1.0, 0.6, 0.45, 0.25, 0.12};
    const double syllable = time * 4.0;
    const bool isPause = static_cast<qint64>(syllable) % 9 == 8;
    const double envelope =
        isPause ? 0.0 : std::pow(std::sin(kPi * (syllable - std::floor(syllable))), 0.6);
    const double phase = 2.0 * kPi * 140.0 * time + 4.0 * std::sin(2.0 * kPi * 0.7 * time);
    double sum = 0.0;
    for (std::size_t i = 0; i < kHarmonics.size(); ++i) {
        sum += kHarmonics.at(i) * std::sin(phase * static_cast<double>(i + 1));
    }
    return 0.2 * envelope * sum;
}

QString spokenWords()
{
    return QStringLiteral("Hello. This is the demonstration microphone. Nobody speaks here but a "
                          "machine, so that you can see a "
                          "voice-over being recorded where there is no microphone. The quick brown "
                          "fox jumps over the lazy dog, and "
                          "then it does so again, a little more slowly, because the dog did not "
                          "notice the first time.");
}

bool speak(const QString& path)
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("espeak-ng"));
    if (program.isEmpty()) {
        return false;
    }
    QProcess speaker;
    speaker.start(program, {QStringLiteral("-s"), QStringLiteral("150"), QStringLiteral("-w"), path,
                            spokenWords()});
    const bool ended = speaker.waitForFinished(kSpeechTimeoutMs);
    return ended && speaker.exitStatus() == QProcess::NormalExit && speaker.exitCode() == 0 &&
           QFileInfo(path).size() > kRate;
}

} // namespace

QByteArray synthesise(double seconds)
{
    const int count = static_cast<int>(seconds * kRate);
    QByteArray samples;
    QDataStream out(&samples, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    for (int i = 0; i < count; ++i) {
        out << static_cast<qint16>(std::lround(sampleAt(static_cast<double>(i) / kRate) * 32767.0));
    }
    return wavHeader(static_cast<quint32>(samples.size())) + samples;
}

bool write(const QString& path)
{
    if (speak(path)) {
        return true;
    }
    QFile file(path);
    const QByteArray sound = synthesise(kSynthesisedSeconds);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(sound) == sound.size() && file.flush();
}

} // namespace StudioSpeech
