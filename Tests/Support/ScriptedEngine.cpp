#include "ScriptedEngine.h"

#include "ScriptedAudioRecorder.h"
#include "ScriptedEngineState.h"
#include "ScriptedWebcamRecorder.h"

#include <algorithm>
#include <stdexcept>

using namespace KdVBLMODEL;

namespace {

using Kind = ScriptedEngineState::Kind;
using Observer = ScriptedEngineState::Observer;

bool onlyAsks(const QString& operation)
{
    return operation.startsWith(QLatin1String("get")) || operation == QLatin1String("curStatus");
}

} // namespace

IKdAudioRecorder* KdVBLMODEL::createAudioRecorder(QObject* owner)
{
    const auto engine = ScriptedEngineState::current();
    if (engine->fails(QStringLiteral("createAudioRecorder"))) {
        return nullptr;
    }
    const auto recorder = std::make_shared<ScriptedAudioRecorder>(*engine);
    engine->owner = owner;
    engine->keep(recorder);
    return recorder.get();
}

IKdWebcamRecorder* KdVBLMODEL::createWebcamRecorder()
{
    const auto engine = ScriptedEngineState::current();
    if (engine->fails(QStringLiteral("createWebcamRecorder"))) {
        return nullptr;
    }
    const auto recorder = std::make_shared<ScriptedWebcamRecorder>(*engine);
    engine->keep(recorder);
    return recorder.get();
}

EngineScript::EngineScript()
    : microphones{{kdtMicrophone, 0, QStringLiteral("Microphone"), QStringLiteral("microphone-id")}}
    , webcams{{kdtWebcam, 0, QStringLiteral("Webcam"), QStringLiteral("webcam-id")}}
    , resolutions{QSize(640, 480), QSize(1280, 720)}
    , frameRates{30.0, 15.0}
{
}

ScriptedEngine::ScriptedEngine() : m_state(ScriptedEngineState::makeCurrent()) {}

ScriptedEngine::~ScriptedEngine()
{
    stopFlood();
}

EngineScript& ScriptedEngine::script()
{
    return m_state->script;
}

void ScriptedEngine::fail(const char* operation)
{
    m_state->script.failing.insert(QLatin1String(operation));
}

void ScriptedEngine::succeed(const char* operation)
{
    m_state->script.failing.remove(QLatin1String(operation));
}

void ScriptedEngine::during(const char* operation, std::function<void()> action)
{
    m_state->actions[QLatin1String(operation)] = std::move(action);
}

std::vector<ScriptedCall> ScriptedEngine::records() const
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->calls;
}

QStringList ScriptedEngine::calls() const
{
    QStringList texts;
    for (const ScriptedCall& call : records()) {
        texts.append(call.text);
    }
    return texts;
}

QStringList ScriptedEngine::commands() const
{
    QStringList texts;
    for (const ScriptedCall& call : records()) {
        if (!onlyAsks(call.operation)) {
            texts.append(call.text);
        }
    }
    return texts;
}

QStringList ScriptedEngine::callsOf(const char* operation) const
{
    QStringList texts;
    for (const ScriptedCall& call : records()) {
        if (call.operation == QLatin1String(operation)) {
            texts.append(call.text);
        }
    }
    return texts;
}

int ScriptedEngine::count(const char* operation) const
{
    return callsOf(operation).size();
}

ScriptedCall ScriptedEngine::lastCall(const char* operation) const
{
    const std::vector<ScriptedCall> all = records();
    const auto found =
        std::find_if(all.rbegin(), all.rend(), [operation](const ScriptedCall& call) {
            return call.operation == QLatin1String(operation);
        });
    if (found == all.rend()) {
        throw std::out_of_range(std::string("never called: ") + operation);
    }
    return *found;
}

void ScriptedEngine::clearCalls()
{
    const std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->calls.clear();
}

int ScriptedEngine::created() const
{
    return m_state->created;
}

int ScriptedEngine::released() const
{
    return m_state->released;
}

QObject* ScriptedEngine::owner() const
{
    return m_state->owner;
}

_KdCaptureStatus ScriptedEngine::status() const
{
    const auto recorder = m_state->lastRecorder();
    return recorder ? recorder->status() : fcsNoStart;
}

bool ScriptedEngine::isPreviewing() const
{
    const auto recorder = m_state->lastRecorder();
    return recorder && recorder->isPreviewing();
}

_KdCaptureDevInf ScriptedEngine::selectedDevice(_KdDevType type) const
{
    const auto recorder = m_state->lastRecorder();
    return recorder ? recorder->selected(type) : _KdCaptureDevInf();
}

QSize ScriptedEngine::pictureSize() const
{
    const auto recorder = m_state->lastRecorder();
    return recorder ? recorder->pictureSize() : QSize();
}

int ScriptedEngine::observerCount() const
{
    const auto recorder = m_state->lastRecorder();
    return recorder ? recorder->observerCount() : 0;
}

void ScriptedEngine::deliverDevice(int status, int index)
{
    m_state->deliverOnThread(Kind::Device, [status, index](Observer& observer) {
        observer.onCaptureDeviceCallback(status, index);
    });
}

void ScriptedEngine::deliverTime(qint64 msec)
{
    m_state->deliverOnThread(Kind::Time,
                             [msec](Observer& observer) { observer.onTimeCallback(msec); });
}

void ScriptedEngine::deliverVolume(int volume)
{
    m_state->deliverOnThread(Kind::Volume,
                             [volume](Observer& observer) { observer.onVolumeCallback(volume); });
}

void ScriptedEngine::deliverFrame(const QImage& picture)
{
    // A copy per delivery that goes when the callback has returned, as the contract allows.
    QImage frame = picture.convertToFormat(QImage::Format_ARGB32);
    uint8_t* const pixels = frame.bits();
    m_state->deliverOnThread(Kind::Frame, [&frame, pixels](Observer& observer) {
        observer.onFrameChangedCallback(frame.width(), frame.height(), pixels);
    });
}

void ScriptedEngine::startFlood(int threads)
{
    stopFlood();
    m_state->flooding = true;
    for (int i = 0; i < threads; ++i) {
        m_state->floodThreads.emplace_back([state = m_state.get()] { state->flood(); });
    }
}

void ScriptedEngine::stopFlood()
{
    m_state->stopFlood();
}

quint64 ScriptedEngine::floodCount() const
{
    return m_state->flooded;
}
