#pragma once

#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdVBLModelExport.h>

#include <QtGlobal>

#include <gst/audio/audio.h>

#include <vector>

/**
 * Brings raw audio from one rate, sample type and number of channels to another, without gaps
 * between the calls. Not thread-safe.
 */
class KDVBLMODEL_EXPORT KdAudioConverter
{
public:
    /** @param from, to interleaved audio/x-raw with everything fixed @return null when that is not
     * what they are. */
    static std::unique_ptr<KdAudioConverter> create(const GstCaps* from, const GstCaps* to);
    ~KdAudioConverter();

    int bytesPerFrame() const { return m_from.bpf; }

    /** @param data frames, interleaved @return what they give so far; null for nothing yet. */
    KdGstBufferPtr convert(const void* data, qint64 frames);

    /** @return what was held back to smooth the end, which is then over; null for nothing. */
    KdGstBufferPtr drain();

private:
    KdAudioConverter(const GstAudioInfo& from, const GstAudioInfo& to,
                     GstAudioConverter* converter);
    KdAudioConverter(const KdAudioConverter&) = delete;
    KdAudioConverter& operator=(const KdAudioConverter&) = delete;

    GstAudioInfo m_from;
    GstAudioInfo m_to;
    GstAudioConverter* m_converter;
    std::vector<char> m_waiting; ///< sound that is too little for a frame
    bool m_isUsed = false;
};
