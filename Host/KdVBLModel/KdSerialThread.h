#pragma once

#include <KdVBLModel/KdVBLModelExport.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

/**
 * A thread that does one task after the other, for work that may block for longer than its caller
 * can wait. All operations may be called on any thread, but the destructor.
 */
class KDVBLMODEL_EXPORT KdSerialThread
{
public:
    using Task = std::function<void()>;
    using Milliseconds = std::chrono::milliseconds;

    /** @param tick done every interval between tasks while setTicking(true); may be null. */
    explicit KdSerialThread(Task tick = {}, Milliseconds interval = Milliseconds(250));
    /** Waits for the tasks. On the thread itself: returns, and the thread ends after this task. */
    ~KdSerialThread();

    /** Dropped once finish() was called. */
    void post(Task task);

    /**
     * Does the task once no other of this kind has come for that long, which it then stands for:
     * for what would be done in vain while its reasons still change. Other tasks do not wait for
     * it. Dropped by finish().
     */
    void postAtRest(Task task, Milliseconds rest);

    void setTicking(bool on);

    /**
     * Does the task there and waits for it.
     * @param late gets the result, on the thread, when the caller had given up by then.
     * @return nothing when it was not done in time, or not at all after finish().
     */
    template <typename Result>
    std::optional<Result> call(std::function<Result()> task, Milliseconds patience,
                               std::function<void(Result)> late = {});

    /**
     * Does what was posted and ends the thread.
     * @return false when that takes longer; it then ends by itself as soon as it can. Tasks must
     * therefore own what they use.
     */
    bool finish(Milliseconds patience);

private:
    KdSerialThread(const KdSerialThread&) = delete;
    KdSerialThread& operator=(const KdSerialThread&) = delete;

    class State;
    std::shared_ptr<State> m_state; ///< shared with the thread
    std::thread m_thread;
};

template <typename Result>
std::optional<Result> KdSerialThread::call(std::function<Result()> task, Milliseconds patience,
                                           std::function<void(Result)> late)
{
    struct Call
    {
        std::mutex mutex;
        std::condition_variable done;
        std::optional<Result> result;
        bool isAbandoned = false;
    };
    const auto call = std::make_shared<Call>();
    post([call, task = std::move(task), late = std::move(late)] {
        const Result result = task();
        std::unique_lock<std::mutex> lock(call->mutex);
        if (!call->isAbandoned) {
            call->result = result;
            call->done.notify_all();
        } else if (late) {
            lock.unlock();
            late(result);
        }
    });
    std::unique_lock<std::mutex> lock(call->mutex);
    call->done.wait_for(lock, patience, [&call] { return call->result.has_value(); });
    call->isAbandoned = !call->result;
    return call->result;
}
