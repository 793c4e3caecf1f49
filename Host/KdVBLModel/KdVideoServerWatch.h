#pragma once

#include <KdVBLModel/KdGstNames.h>

#include <functional>
#include <memory>

/**
 * Tells when the video server (PipeWire) comes and goes, which its device provider does not.
 *
 * Lives on the thread that runs the context.
 */
class KdVideoServerWatch
{
public:
    /** @param connection a socket that is connected to the server and stays so for the whole life
     * of the process, for whoever cannot do without; -1: the server is gone, or not there. */
    using Changed = std::function<void(int connection)>;

    /** @param changed called first for the state found, then for every change, on the context's
     * thread, never out of this constructor. */
    KdVideoServerWatch(GMainContext* context, Changed changed);
    ~KdVideoServerWatch();

private:
    KdVideoServerWatch(const KdVideoServerWatch&) = delete;
    KdVideoServerWatch& operator=(const KdVideoServerWatch&) = delete;

    class Private;
    std::unique_ptr<Private> d;
};
