#include "PreviewProgram.h"

#include "ProcessTime.h"

#include <QRegularExpression>
#include <QTest>

namespace {

constexpr int kPatienceMs = 30000;
constexpr int kFirstPictures = 30; ///< more than a window paints without a camera
constexpr int kRestMs = 2000;

struct Times
{
    double program = 0.0;
    double displayServer = 0.0;
    double camera = 0.0;
};

Times timesNow(qint64 program, qint64 camera)
{
    return {ProcessTime::ofTree(program), ProcessTime::ofTree(ProcessTime::displayServer()),
            ProcessTime::ofTree(camera)};
}

} // namespace

PreviewProgram::PreviewProgram(const QStringList& command)
{
    m_clock.start();
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput, [this] { read(); });
    m_process.start(command.first(), command.mid(1));
}

PreviewProgram::~PreviewProgram()
{
    m_process.kill();
    m_process.waitForFinished(kPatienceMs);
}

void PreviewProgram::read()
{
    static const QRegularExpression rendered(QStringLiteral("rendered: ([0-9]+)"));
    m_line += m_process.readAllStandardOutput();
    const int end = m_line.lastIndexOf('\n');
    const auto match =
        rendered.match(QString::fromUtf8(m_line.left(end)).section(QLatin1Char('\n'), -1));
    if (match.hasMatch()) {
        m_count = match.captured(1).toInt();
        m_countedNs = m_clock.nsecsElapsed();
    }
    m_line.remove(0, end + 1);
}

PreviewCost PreviewProgram::watch(double seconds, qint64 cameraProcess)
{
    PreviewCost cost;
    if (!QTest::qWaitFor([this] { return m_count > kFirstPictures; }, kPatienceMs)) {
        return cost;
    }
    // What its start costs is not what is asked for.
    QTest::qWait(kRestMs);
    const int count = m_count;
    const qint64 countedNs = m_countedNs;
    const qint64 startNs = m_clock.nsecsElapsed();
    const Times before = timesNow(m_process.processId(), cameraProcess);
    QTest::qWait(static_cast<int>(seconds * 1000.0));
    const Times after = timesNow(m_process.processId(), cameraProcess);
    const double passed = static_cast<double>(m_clock.nsecsElapsed() - startNs) * 1e-9;
    cost.ok = m_process.state() == QProcess::Running && m_count > count;
    cost.program = (after.program - before.program) / passed;
    cost.displayServer = (after.displayServer - before.displayServer) / passed;
    cost.camera = (after.camera - before.camera) / passed;
    if (cost.ok) {
        cost.picturesPerSecond =
            (m_count - count) / (static_cast<double>(m_countedNs - countedNs) * 1e-9);
        cost.perPicture = cost.program / cost.picturesPerSecond;
    }
    return cost;
}
