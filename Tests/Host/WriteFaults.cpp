#include "WriteFaults.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <climits>
#include <dlfcn.h>
#include <mutex>
#include <sys/uio.h>
#include <unistd.h>

namespace {

struct Fault
{
    int number = 0;
    int error = 0;
    int count = 0;
};

struct State
{
    std::mutex mutex;
    QByteArray path; ///< empty: nothing is watched
    std::function<void()> look;
    std::array<Fault, 2> faults;
    std::array<int, 2> calls{};
};

State& state()
{
    static State instance;
    return instance;
}

/** @return whether the descriptor leads to the watched file. Called with the mutex held. */
bool isWatched(int descriptor)
{
    if (state().path.isEmpty()) {
        return false;
    }
    std::array<char, PATH_MAX> target{};
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    const ssize_t length = readlink(link.constData(), target.data(), target.size() - 1);
    return length > 0 && state().path == QByteArray(target.data(), static_cast<int>(length));
}

enum class Verdict
{
    Pass,
    Look, ///< pass, and let the test look afterwards
    Part,
    Fail
};

Verdict judge(WriteFaults::Call call, int descriptor)
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    if (!isWatched(descriptor)) {
        return Verdict::Pass;
    }
    const auto index = static_cast<std::size_t>(call);
    const Fault& fault = state().faults[index];
    const int number = ++state().calls[index];
    if (fault.number == 0 || number < fault.number || number - fault.number >= fault.count) {
        return Verdict::Look;
    }
    errno = fault.error;
    return fault.error == 0 ? Verdict::Part : Verdict::Fail;
}

void look()
{
    std::function<void()> callback;
    {
        const std::lock_guard<std::mutex> lock(state().mutex);
        callback = state().look;
    }
    if (callback) {
        callback();
    }
}

template <typename Function>
Function real(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

#define KD_EXPORTED extern "C" __attribute__((visibility("default")))

KD_EXPORTED ssize_t writev(int descriptor, const iovec* pieces, int count)
{
    static const auto realWritev = real<ssize_t (*)(int, const iovec*, int)>("writev");
    static const auto realWrite = real<ssize_t (*)(int, const void*, size_t)>("write");
    switch (judge(WriteFaults::Call::Write, descriptor)) {
    case Verdict::Fail:
        return -1;
    case Verdict::Part:
        return realWrite(descriptor, pieces[0].iov_base, (pieces[0].iov_len + 1) / 2);
    case Verdict::Look: {
        const ssize_t result = realWritev(descriptor, pieces, count);
        const int error = errno;
        look();
        errno = error;
        return result;
    }
    case Verdict::Pass:
        break;
    }
    return realWritev(descriptor, pieces, count);
}

KD_EXPORTED int fsync(int descriptor)
{
    static const auto realSync = real<int (*)(int)>("fsync");
    return judge(WriteFaults::Call::Sync, descriptor) == Verdict::Fail ? -1 : realSync(descriptor);
}

WriteFaults::WriteFaults(const QString& path)
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().path = QFile::encodeName(path);
    state().look = nullptr;
    state().faults = {};
    state().calls = {};
}

WriteFaults::~WriteFaults()
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().path.clear();
    state().look = nullptr;
}

void WriteFaults::onWritten(std::function<void()> look)
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().look = std::move(look);
}

void WriteFaults::fail(Call call, int number, int error, int count)
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    state().faults[static_cast<std::size_t>(call)] = {number, error, count};
}

int WriteFaults::calls(Call call) const
{
    const std::lock_guard<std::mutex> lock(state().mutex);
    return state().calls[static_cast<std::size_t>(call)];
}
