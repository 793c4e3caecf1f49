// Commits the sin that is named on the command line, so that a sanitizer that does not look is
// noticed.
#include "ScriptedEngine.h"

#include <atomic>
#include <cstring>
#include <memory>
#include <thread>

using namespace KdVBLMODEL;

namespace {

/** Has a member that the engine's thread writes and ours reads, without any protection. */
class RacyObserver : public IKdRecorderEventObserver
{
public:
    void onTimeCallback(long long msec) override
    {
        time = msec + 1;
        // Relaxed, so that it tells when to look and yet orders nothing: the race is found every
        // time.
        isWritten.store(true, std::memory_order_relaxed);
    }

    long long time = 0;
    std::atomic<bool> isWritten{false};
};

int race()
{
    ScriptedEngine engine;
    // On the heap: clang leaves out what it takes for a local of one thread.
    const auto observer = std::make_unique<RacyObserver>();
    IKdAudioRecorder* const recorder = createAudioRecorder(nullptr);
    recorder->addEventObserver(observer.get());
    recorder->setCallbackSwitch2(true);
    std::thread delivery([&engine] { engine.deliverTime(1); });
    while (!observer->isWritten.load(std::memory_order_relaxed)) {
        std::this_thread::yield();
    }
    const bool isSeen = observer->time > 0;
    delivery.join();
    recorder->release();
    return isSeen ? 0 : 1;
}

int useAfterFree()
{
    auto value = std::make_unique<int>(1);
    int* const freed = value.get();
    value.reset();
    return *freed; // NOLINT(clang-analyzer-cplusplus.NewDelete): the sin itself
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
