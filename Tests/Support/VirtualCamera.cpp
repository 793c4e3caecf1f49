#include "VirtualCamera.h"

#include "Command.h"

#include <QTest>

#include <csignal>

namespace {
constexpr int kTimeoutMs = 10000;
}

VirtualCamera::VirtualCamera(const QString& nodeName, const QString& description,
                             const QStringList& modes)
    : m_nodeName(nodeName), m_description(description), m_modes(modes)
{
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
}

VirtualCamera::~VirtualCamera()
{
    free();
    unplug();
}

bool VirtualCamera::plug()
{
    QStringList arguments{m_nodeName, m_description};
    arguments += m_modes;
    m_process.start(QStringLiteral(KD_VIRTUAL_CAMERA), arguments);
    return m_process.waitForStarted(kTimeoutMs) &&
           QTest::qWaitFor([this] { return isPlugged(); }, kTimeoutMs);
}

bool VirtualCamera::unplug()
{
    m_process.kill();
    m_process.waitForFinished(kTimeoutMs);
    return QTest::qWaitFor([this] { return !isPlugged(); }, kTimeoutMs);
}

bool VirtualCamera::isPlugged() const
{
    const Command::Result nodes =
        Command::run(QStringLiteral("pw-cli"), {QStringLiteral("ls"), QStringLiteral("Node")});
    return nodes.output.contains("node.name = \"" + m_nodeName.toUtf8() + '"');
}

void VirtualCamera::hold()
{
    signal(SIGSTOP);
}

void VirtualCamera::letGo()
{
    signal(SIGCONT);
}

bool VirtualCamera::occupy()
{
    m_other.start(QStringLiteral("gst-launch-1.0"),
                  {QStringLiteral("pipewiresrc"), QStringLiteral("target-object=") + m_nodeName,
                   QStringLiteral("stream-properties=p,node.exclusive=(string)true"),
                   QStringLiteral("!"), QStringLiteral("identity"), QStringLiteral("silent=false"),
                   QStringLiteral("!"), QStringLiteral("fakesink"), QStringLiteral("-v")});
    QByteArray said;
    const auto hasPicture = [&] {
        said += m_other.readAllStandardOutput();
        return said.contains("chain   *******");
    };
    return m_other.waitForStarted(kTimeoutMs) && QTest::qWaitFor(hasPicture, kTimeoutMs);
}

void VirtualCamera::free()
{
    m_other.kill();
    m_other.waitForFinished(kTimeoutMs);
}

void VirtualCamera::signal(int number)
{
    if (m_process.state() == QProcess::Running) {
        ::kill(static_cast<pid_t>(m_process.processId()), number);
    }
}
