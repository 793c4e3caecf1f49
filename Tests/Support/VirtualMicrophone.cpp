#include "VirtualMicrophone.h"

#include "Command.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <functional>

namespace {

constexpr int kTimeoutMs = 10000;

/** Text as the sound server's tools read it within their object notation. */
QString quoted(const QString& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    escaped.replace(QLatin1Char('"'), QLatin1String("\\\""));
    escaped.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QStringList ports(const QString& direction)
{
    const Command::Result result = Command::run(QStringLiteral("pw-link"), {direction});
    return QString::fromUtf8(result.output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

bool hasPorts(const QString& node, const QString& direction)
{
    const QStringList all = ports(direction);
    return std::any_of(all.begin(), all.end(), [&node](const QString& port) {
        return port.trimmed().startsWith(node + QLatin1Char(':'));
    });
}

bool hasPort(const QString& name, const QString& direction)
{
    const QStringList all = ports(direction);
    return std::any_of(all.begin(), all.end(),
                       [&name](const QString& port) { return port.trimmed() == name; });
}

bool createNode(const QString& name, const QString& description, const QString& mediaClass)
{
    // Never suspended: WirePlumber 0.4.13 dies when a node goes that it is about to suspend.
    const QString properties =
        QStringLiteral("{ factory.name=support.null-audio-sink node.name=%1 node.description=%2 "
                       "media.class=%3 object.linger=true audio.position=[ FL FR ] "
                       "session.suspend-timeout-seconds=0 }")
            .arg(name, quoted(description), mediaClass);
    return Command::run(QStringLiteral("pw-cli"),
                        {QStringLiteral("create-node"), QStringLiteral("adapter"), properties})
        .ok;
}

} // namespace

VirtualMicrophone::VirtualMicrophone(const QString& nodeName, const QString& description)
    : m_nodeName(nodeName), m_description(description)
{
}

VirtualMicrophone::~VirtualMicrophone()
{
    stopPlaying();
    if (isPlugged()) {
        unplug();
    }
}

bool VirtualMicrophone::plug()
{
    return createNode(m_nodeName, m_description, QStringLiteral("Audio/Source/Virtual")) &&
           QTest::qWaitFor([this] { return isPlugged(); }, kTimeoutMs);
}

bool VirtualMicrophone::unplug()
{
    return destroyNode(m_nodeName) && QTest::qWaitFor([this] { return !isPlugged(); }, kTimeoutMs);
}

bool VirtualMicrophone::isPlugged() const
{
    return hasPorts(m_nodeName, QStringLiteral("-o"));
}

bool VirtualMicrophone::play(const QString& soundFile)
{
    stopPlaying();
    const QString feeder = QStringLiteral("%1_feeder_%2").arg(m_nodeName).arg(++m_playCount);
    m_player.start(QStringLiteral("pw-cat"),
                   {QStringLiteral("--playback"), QStringLiteral("--target=0"),
                    QStringLiteral("--properties={ node.name=%1 }").arg(feeder), soundFile});
    return m_player.waitForStarted() && hear(feeder);
}

bool VirtualMicrophone::hear(const QString& node)
{
    return QTest::qWaitFor([&node] { return hasPorts(node, QStringLiteral("-o")); }, kTimeoutMs) &&
           link(node);
}

bool VirtualMicrophone::link(const QString& feeder)
{
    // The ports of streams and those of devices have different names.
    const QString port = hasPort(feeder + QStringLiteral(":capture_FL"), QStringLiteral("-o"))
                             ? QStringLiteral("%1:capture_%2")
                             : QStringLiteral("%1:output_%2");
    for (const char* channel : {"FL", "FR"}) {
        const QString from = port.arg(feeder, QLatin1String(channel));
        const QString to = QStringLiteral("%1:input_%2").arg(m_nodeName, QLatin1String(channel));
        if (!Command::run(QStringLiteral("pw-link"), {from, to}).ok) {
            return false;
        }
    }
    return true;
}

void VirtualMicrophone::stopPlaying()
{
    if (m_player.state() != QProcess::NotRunning) {
        m_player.kill();
        m_player.waitForFinished();
    }
}

bool VirtualMicrophone::createOutput(const QString& nodeName, const QString& description)
{
    return createNode(nodeName, description, QStringLiteral("Audio/Sink")) &&
           QTest::qWaitFor([&] { return hasPorts(nodeName, QStringLiteral("-i")); }, kTimeoutMs);
}

bool VirtualMicrophone::destroyNode(const QString& nodeName)
{
    return Command::run(QStringLiteral("pw-cli"), {QStringLiteral("destroy"), nodeName}).ok;
}

namespace {

// ffmpeg's own way from one channel to two makes it quieter.
constexpr auto kBothChannels = "pan=stereo|c0=c0|c1=c0";

bool writeFiltered(const QString& path, const QString& lavfi, double seconds)
{
    return Command::run(QStringLiteral("ffmpeg"),
                        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"),
                         QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"), lavfi,
                         QStringLiteral("-t"), QString::number(seconds), QStringLiteral("-af"),
                         QLatin1String(kBothChannels), QStringLiteral("-ar"),
                         QStringLiteral("48000"), path})
        .ok;
}

} // namespace

bool TestSound::writeTone(const QString& path, double frequency, double decibel, double seconds)
{
    const QString tone = QStringLiteral("aevalsrc=exprs='pow(10,%1/20)*sin(2*PI*%2*t)':s=48000")
                             .arg(decibel)
                             .arg(frequency);
    return writeFiltered(path, tone, seconds);
}

bool TestSound::writeSweep(const QString& path, double fromFrequency, double toFrequency,
                           double seconds)
{
    const QString sweep =
        QStringLiteral("aevalsrc=exprs='0.5*sin(2*PI*(%1*t+(%2-%1)*t*t/(2*%3)))':s=48000")
            .arg(fromFrequency)
            .arg(toFrequency)
            .arg(seconds);
    return writeFiltered(path, sweep, seconds);
}

bool TestSound::writeSpeech(const QString& path, const QString& text, double seconds)
{
    const QString once = path + QStringLiteral(".once.wav");
    const bool spoken =
        Command::run(QStringLiteral("espeak-ng"), {QStringLiteral("-w"), once, text}).ok;
    const bool written =
        spoken &&
        Command::run(QStringLiteral("ffmpeg"),
                     {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y"),
                      QStringLiteral("-stream_loop"), QStringLiteral("-1"), QStringLiteral("-i"),
                      once, QStringLiteral("-t"), QString::number(seconds), QStringLiteral("-af"),
                      QLatin1String(kBothChannels), QStringLiteral("-ar"), QStringLiteral("48000"),
                      path})
            .ok;
    QFile::remove(once);
    return written;
}
