#pragma once

#include "ScriptedEngine.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class ScriptedRecorder;

/** What a ScriptedEngine and its recorders share. */
class ScriptedEngineState
{
public:
    using Observer = KdVBLMODEL::IKdRecorderEventObserver;
    enum class Kind
    {
        Device,
        Time,
        Volume,
        Frame
    };

    ScriptedEngineState();
    ~ScriptedEngineState();

    /** The state that the factories use: of the engine made last, never null. */
    static std::shared_ptr<ScriptedEngineState> current();
    static std::shared_ptr<ScriptedEngineState> makeCurrent();

    int nextRecorderNumber() { return ++created; }
    void keep(std::shared_ptr<ScriptedRecorder> recorder);
    std::vector<std::shared_ptr<ScriptedRecorder>> observedRecorders() const;
    std::shared_ptr<ScriptedRecorder> lastRecorder() const;

    /** Records the call and runs what the test wants to happen during it. */
    void enter(ScriptedCall call);
    bool fails(const QString& operation) const { return script.failing.contains(operation); }

    /** On the calling thread. @return how many observers were called. */
    int deliverHere(Kind kind, const std::function<void(Observer&)>& call);
    void deliverOnThread(Kind kind, const std::function<void(Observer&)>& call);
    void flood();
    void stopFlood();

    EngineScript script;
    QHash<QString, std::function<void()>> actions;
    QObject* owner = nullptr;
    std::atomic<int> created{0};
    std::atomic<int> released{0};
    std::atomic<bool> flooding{false};
    std::atomic<quint64> flooded{0};
    std::vector<std::thread> floodThreads;
    mutable std::mutex mutex; ///< guards calls and recorders
    std::vector<ScriptedCall> calls;

private:
    std::vector<std::shared_ptr<ScriptedRecorder>> m_recorders;
};
