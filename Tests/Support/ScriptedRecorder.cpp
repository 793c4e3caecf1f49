#include "ScriptedRecorder.h"

#include <QFile>
#include <QtDebug>

using namespace KdVBLMODEL;

namespace {

QString fourCcText(qint32 code)
{
    QString text;
    for (int byte = 0; byte < 4; ++byte) {
        text += QLatin1Char(static_cast<char>((code >> (8 * byte)) & 0xff));
    }
    return text;
}

} // namespace

ScriptedRecorder::ScriptedRecorder(ScriptedEngineState& engine, bool hasFrames)
    : m_engine(engine), m_number(engine.nextRecorderNumber()), m_hasFrames(hasFrames)
{
}

ScriptedRecorder::~ScriptedRecorder() = default;

_KdCaptureDevInf ScriptedRecorder::selected(_KdDevType type) const
{
    return m_listed.value(type).value(m_selected.value(type, -1));
}

int ScriptedRecorder::deliver(ScriptedEngineState::Kind kind,
                              const std::function<void(ScriptedObservers::Observer&)>& call)
{
    using Kind = ScriptedEngineState::Kind;
    if (kind == Kind::Frame && !m_hasFrames) {
        return 0;
    }
    const std::size_t position = kind == Kind::Device ? 0 : kind == Kind::Time ? 1 : 2;
    return m_switches.at(position) ? m_observers.deliver(call) : 0;
}

bool ScriptedRecorder::succeeds(const char* operation) const
{
    return !m_engine.fails(QLatin1String(operation));
}

bool ScriptedRecorder::beginTake(_KdDevType neededDevice)
{
    // The test's action during start() may have released this recorder.
    if (m_isReleased || !succeeds("start") ||
        !isListed(neededDevice, m_selected.value(neededDevice, -1))) {
        return false;
    }
    endTake();
    if (!writeTake()) {
        return false;
    }
    m_takePath = m_nextPath;
    m_status = fcsRecording;
    return true;
}

bool ScriptedRecorder::writeTake() const
{
    if (m_engine.script.take.isNull()) {
        return true;
    }
    QFile file(m_nextPath);
    return !isStrangersFile() && file.open(QIODevice::WriteOnly) &&
           file.write(m_engine.script.take) == m_engine.script.take.size();
}

bool ScriptedRecorder::isStrangersFile() const
{
    return isStrict() && m_nextPath != m_takePath && QFile::exists(m_nextPath);
}

bool ScriptedRecorder::pauseTake()
{
    const bool isRecording = m_status == fcsRecording;
    m_status = isRecording ? fcsPaused : m_status;
    return isRecording;
}

bool ScriptedRecorder::resumeTake()
{
    const bool isPaused = m_status == fcsPaused;
    m_status = isPaused ? fcsRecording : m_status;
    return isPaused;
}

void ScriptedRecorder::endTake()
{
    m_status = fcsNoStart;
}

void ScriptedRecorder::listDevices(_KdDevType type, QList<_KdCaptureDevInf>* devices)
{
    m_listed[type] = type == kdtWebcam ? m_engine.script.webcams : m_engine.script.microphones;
    if (devices) {
        *devices = m_listed.value(type);
    }
}

bool ScriptedRecorder::isListed(_KdDevType type, int index) const
{
    return index >= 0 && index < m_listed.value(type).size();
}

QString ScriptedRecorder::path() const
{
    const QString path = m_takePath.isEmpty() ? m_nextPath : m_takePath;
    return m_engine.script.outputFile ? m_engine.script.outputFile(path) : path;
}

_KdCaptureStatus ScriptedRecorder::scriptedStatus() const
{
    return m_engine.script.status ? static_cast<_KdCaptureStatus>(m_engine.script.status(m_status))
                                  : m_status;
}

void ScriptedRecorder::markReleased()
{
    endTake();
    m_isReleased = true;
    m_observers.clear();
    ++m_engine.released;
}

void ScriptedRecorder::enterCall(const char* operation, const QStringList& texts,
                                 std::vector<std::any> arguments)
{
    ScriptedCall call;
    call.recorder = m_number;
    call.operation = QLatin1String(operation);
    call.text =
        call.operation + QLatin1Char('(') + texts.join(QStringLiteral(", ")) + QLatin1Char(')');
    call.arguments = std::move(arguments);
    call.thread = std::this_thread::get_id();
    if (m_isReleased) {
        qWarning().noquote() << "ScriptedEngine: called after release():" << call.text;
    }
    m_engine.enter(std::move(call));
}

QString ScriptedRecorder::describe(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString ScriptedRecorder::describe(QSize value)
{
    return QStringLiteral("%1x%2").arg(value.width()).arg(value.height());
}

QString ScriptedRecorder::describe(const KdAudioFormat& format)
{
    return QStringLiteral("mode=%1 fourcc=%2 bitrate=%3 channels=%4 bits=%5 rate=%6 volume=%7")
        .arg(format.bitrateMode)
        .arg(fourCcText(format.fourcc))
        .arg(format.bitrate)
        .arg(format.channels)
        .arg(format.bitPerSample)
        .arg(format.samplerate)
        .arg(format.volume);
}

QString ScriptedRecorder::describe(const KdVideoFormat& format)
{
    return QStringLiteral("fourcc=%1 rate=%2").arg(fourCcText(format.fourcc)).arg(format.frameRate);
}

QString ScriptedRecorder::describe(ScriptedObservers::Observer* observer)
{
    return observer ? QStringLiteral("observer") : QStringLiteral("null");
}
