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

void VirtualCamera::occupy()
{
    signal(SIGUSR1);
}

void VirtualCamera::free()
{
    signal(SIGUSR2);
}

void VirtualCamera::signal(int number)
{
    if (m_process.state() == QProcess::Running) {
        ::kill(static_cast<pid_t>(m_process.processId()), number);
    }
}
