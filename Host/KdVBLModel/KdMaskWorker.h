#pragma once

#include <KdVBLModel/KdSerialThread.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <opencv2/core.hpp>

#include <chrono>
#include <functional>
#include <memory>

/**
 * Finds masks on a thread of its own, one at a time, and keeps the newest. It rests twice as long
 * as it worked: on a machine that has no time left it works less often instead of taking more. All
 * operations may be called on any thread, and none waits for a mask but those that say so.
 */
class KDVBLMODEL_EXPORT KdMaskWorker
{
public:
    using Milliseconds = std::chrono::milliseconds;

    /** What finds masks; made, called and destroyed on the thread. */
    class Finder
    {
    public:
        virtual ~Finder() = default;
        /** @param seconds when the picture was given. @return the mask; empty for none. */
        virtual cv::Mat maskOf(const cv::Mat& picture, double seconds) = 0;
    };
    using MakeFinder = std::function<std::unique_ptr<Finder>()>;
    /** @return seconds that run forward; asked on any thread. */
    using Clock = std::function<double()>;

    /** No more masks than this in a second, however fast they are found. */
    static constexpr double kHighestRate = 15.0;

    explicit KdMaskWorker(MakeFinder makeFinder, Clock clock = monotonicSeconds);
    /** Waits for the mask that is being found. */
    ~KdMaskWorker();

    /** @return whether it would take a picture now: it has nothing to do and rested enough. */
    bool wants() const;
    /** @param picture nobody changes it afterwards. */
    void give(const cv::Mat& picture);

    /** @return the newest mask, which nobody changes any more; empty before the first. */
    cv::Mat newest() const;
    /** Forgets all masks, the one that is being found too, and begins with a new finder. */
    void reset();

    /** Waits until the picture given last has its mask. @return false when that takes longer. */
    bool waitForMask(Milliseconds patience) const;

private:
    static double monotonicSeconds();

    class State;

    std::shared_ptr<State> m_state;
    KdSerialThread m_thread;
};
