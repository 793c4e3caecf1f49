// Commits the sin that is named on the command line, so that a sanitizer that does not look is
// noticed.
#include "ScriptedEngine.h"

#include <cstring>
#include <memory>
#include <thread>

using namespace KdVBLMODEL;

namespace {

/** Is written by the engine's threads and read by ours, without any protection. */
class RacyObserver : public IKdRecorderEventObserver
{
public:
    void onTimeCallback(long long msec) override { time = msec; }

    long long time = 0;
};

int race()
{
    ScriptedEngine engine;
    RacyObserver observer;
    IKdAudioRecorder* const recorder = createAudioRecorder(nullptr);
    recorder->addEventObserver(&observer);
    recorder->setCallbackSwitch2(true);
    engine.startFlood(2);
    while (observer.time < 1000) {
        std::this_thread::yield();
    }
    engine.stopFlood();
    recorder->release();
    return 0;
}

int useAfterFree()
{
    auto value = std::make_unique<int>(1);
    int* const freed = value.get();
    value.reset();
    return *freed;
}

int leak()
{
    const char* const lost = new char[12345]();
    return lost[0];
}

int overflow(int number)
{
    return number + 2147483647;
}

} // namespace

int main(int argc, char** argv)
{
    const char* const sin = argc > 1 ? argv[1] : "";
    if (std::strcmp(sin, "race") == 0) {
        return race();
    }
    if (std::strcmp(sin, "use-after-free") == 0) {
        return useAfterFree() == 7 ? 1 : 0;
    }
    if (std::strcmp(sin, "leak") == 0) {
        return leak();
    }
    if (std::strcmp(sin, "overflow") == 0) {
        return overflow(argc) == 7 ? 1 : 0;
    }
    return 2;
}
