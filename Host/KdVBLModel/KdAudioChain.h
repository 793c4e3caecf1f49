#pragma once

#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>

/**
 * An audio input as a bin for a pipeline: the source, brought to one known format, with volume and
 * level meter, ending in a call for every block of sound. One code path for every kind of source.
 */
class KDVBLMODEL_EXPORT KdAudioChain
{
public:
    /** Interleaved 32-bit floats; the buffer is only lent. Called on the source's thread. */
    using Samples = std::function<void(GstBuffer* buffer)>;

    static constexpr int kSamplerate = 48000;
    static constexpr int kChannels = 2;
    static constexpr int kBytesPerFrame = kChannels * static_cast<int>(sizeof(float));

    /** @param source floating, null is allowed and makes an invalid chain */
    KdAudioChain(GstElement* source, Samples samples);
    /** The bin must be gone from its pipeline, or in state NULL. */
    ~KdAudioChain();

    /** False when an element is missing; errors() then says which. */
    bool isValid() const { return m_error.empty(); }
    const std::string& error() const { return m_error; }

    /** To be added to a pipeline, which takes a reference of its own. */
    GstElement* bin() const { return m_bin.get(); }

    /** @return what every block has; owned by the caller. */
    static GstCaps* createCaps();

    /** @param volume 0 to 1; anything else: as the device gives it. Any thread. */
    void setVolume(double volume);
    /** @param msec between two level messages. Any thread. */
    void setLevelInterval(int msec);

    /** When the last block came, monotonic nanoseconds; 0 before the first. Any thread. */
    qint64 lastArrivalNs() const { return m_lastArrivalNs; }

    /** @return the loudest channel's peak in decibels, when the message is one of a level meter. */
    static std::optional<double> peakDecibel(const GstStructure* message);

private:
    KdAudioChain(const KdAudioChain&) = delete;
    KdAudioChain& operator=(const KdAudioChain&) = delete;

    static GstPadProbeReturn onBuffer(GstPad* pad, GstPadProbeInfo* info, gpointer self);

    void build(GstElement* source);
    GstElement* add(const char* factory);
    bool link(std::initializer_list<GstElement*> elements);

    KdGstPtr<GstElement> m_bin;
    GstElement* m_volume = nullptr; ///< the bin's
    GstElement* m_level = nullptr;  ///< the bin's
    std::string m_error;
    std::atomic<qint64> m_lastArrivalNs{0};

    std::mutex
        m_mutex; ///< held during a call of m_samples, so that it is seen whole by all threads
    Samples m_samples;
};
