#include "DiskStall.h"

#include <condition_variable>
#include <dlfcn.h>
#include <mutex>
#include <sys/statvfs.h>

namespace {

struct State
{
    std::mutex mutex;
    std::condition_variable changed;
    bool isStalled = false;
    int waiting = 0;
};

State& state()
{
    static State instance;
    return instance;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int statvfs64(const char* path,
                                                                struct statvfs64* answer)
{
    using Function = int (*)(const char*, struct statvfs64*);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "statvfs64"));
    {
        std::unique_lock<std::mutex> lock(state().mutex);
        ++state().waiting;
        state().changed.wait(lock, [] { return !state().isStalled; });
        --state().waiting;
    }
    return real(path, answer);
}

DiskStall::DiskStall()
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().isStalled = true;
}

void DiskStall::letGo()
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().isStalled = false;
    state().changed.notify_all();
}

bool DiskStall::isAsked() const
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    return state().isStalled && state().waiting > 0;
}
