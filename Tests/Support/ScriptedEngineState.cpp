#include "ScriptedEngineState.h"

#include "ScriptedRecorder.h"

namespace {

// Kept until the process ends, so that a recorder that outlives its engine object still answers.
std::vector<std::shared_ptr<ScriptedEngineState>>& states()
{
    static std::vector<std::shared_ptr<ScriptedEngineState>> all;
    return all;
}

} // namespace

ScriptedEngineState::ScriptedEngineState() = default;

ScriptedEngineState::~ScriptedEngineState()
{
    stopFlood();
}

std::shared_ptr<ScriptedEngineState> ScriptedEngineState::current()
{
    return states().empty() ? makeCurrent() : states().back();
}

std::shared_ptr<ScriptedEngineState> ScriptedEngineState::makeCurrent()
{
    states().push_back(std::make_shared<ScriptedEngineState>());
    return states().back();
}

void ScriptedEngineState::keep(std::shared_ptr<ScriptedRecorder> recorder)
{
    const std::lock_guard<std::mutex> lock(mutex);
    m_recorders.push_back(std::move(recorder));
}

std::vector<std::shared_ptr<ScriptedRecorder>> ScriptedEngineState::observedRecorders() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::vector<std::shared_ptr<ScriptedRecorder>> live;
    for (const auto& recorder : m_recorders) {
        // One that was left behind has nobody to call.
        if (!recorder->isReleased() && recorder->observerCount() > 0) {
            live.push_back(recorder);
        }
    }
    return live;
}

std::shared_ptr<ScriptedRecorder> ScriptedEngineState::lastRecorder() const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return m_recorders.empty() ? nullptr : m_recorders.back();
}

void ScriptedEngineState::enter(ScriptedCall call)
{
    const std::function<void()> action = actions.value(call.operation);
    {
        const std::lock_guard<std::mutex> lock(mutex);
        calls.push_back(std::move(call));
    }
    if (action) {
        action();
    }
}

int ScriptedEngineState::deliverHere(Kind kind, const std::function<void(Observer&)>& call)
{
    int called = 0;
    for (const auto& recorder : observedRecorders()) {
        called += recorder->deliver(kind, call);
    }
    return called;
}

void ScriptedEngineState::deliverOnThread(Kind kind, const std::function<void(Observer&)>& call)
{
    std::thread([this, kind, &call] { deliverHere(kind, call); }).join();
}

void ScriptedEngineState::flood()
{
    std::vector<uint32_t> pixels(144);
    auto* const frame = reinterpret_cast<uint8_t*>(pixels.data());
    for (int round = 0; flooding; ++round) {
        int called = deliverHere(Kind::Time, [round](Observer& o) { o.onTimeCallback(round); });
        called +=
            deliverHere(Kind::Volume, [round](Observer& o) { o.onVolumeCallback(round % 101); });
        called += deliverHere(Kind::Frame,
                              [frame](Observer& o) { o.onFrameChangedCallback(16, 9, frame); });
        // Seldom, as in life: receivers log each device event.
        if (round % 256 == 0) {
            called +=
                deliverHere(Kind::Device, [](Observer& o) { o.onCaptureDeviceCallback(3, 0); });
        }
        flooded += static_cast<quint64>(called);
    }
}

void ScriptedEngineState::stopFlood()
{
    flooding = false;
    for (std::thread& thread : floodThreads) {
        thread.join();
    }
    floodThreads.clear();
}
