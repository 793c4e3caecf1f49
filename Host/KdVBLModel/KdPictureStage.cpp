#include <KdVBLModel/KdPictureStage.h>

#include <KdCore/KdBaseLog.h>

#include <utility>

using namespace KdVBLMODEL;

KdPictureStage::KdPictureStage(KdFramePump& frames) : m_frames(frames) {}

void KdPictureStage::setFormat(const GstCaps* caps)
{
    m_i420.reset();
    m_isTreating = false;
    if (!m_converter.setFormat(caps)) {
        KdBaseLog::write(
            KdBaseLog::Error, {"Host/KdVBLModel/KdPictureStage", "KdPictureStage::setFormat"},
            "The camera gives what is no picture: %s", KdGCharPtr(gst_caps_to_string(caps)).get());
        return;
    }
    m_i420.reset(KdPictureConverter::createI420(m_converter.size()));
}

std::optional<qint64> KdPictureStage::process(GstBuffer* picture, qint64 captureNs,
                                              const Wanted& wanted)
{
    const bool isWanted = !m_converter.size().isEmpty() && (wanted.isShown || wanted.take);
    const bool isTreated = isWanted && wanted.background != fcbmNone;
    followTreatment(isTreated);
    if (!isWanted) {
        return std::nullopt;
    }
    const bool isDrawn = wanted.isShown || isTreated || !m_converter.givesI420();
    KdFramePump::Frame frame;
    if (isDrawn && !draw(picture, wanted, &frame)) {
        return std::nullopt;
    }
    const std::optional<qint64> due =
        wanted.take ? record(picture, captureNs, wanted, isDrawn ? &frame : nullptr) : std::nullopt;
    if (wanted.isShown) {
        m_frames.post(std::move(frame));
    }
    return due;
}

// Where the person was when the last treatment ended says nothing of where that person is now.
void KdPictureStage::followTreatment(bool isTreated)
{
    const bool wasTreated = std::exchange(m_isTreating, isTreated);
    if (isTreated && !wasTreated) {
        m_effect.reset();
    }
}

bool KdPictureStage::draw(GstBuffer* picture, const Wanted& wanted, KdFramePump::Frame* frame)
{
    *frame = m_frames.create(m_converter.size());
    if (!m_converter.toArgb(picture, frame->pixels.data(), frame->stride())) {
        return false;
    }
    m_effect.apply(wanted.background, frame->pixels.data(), frame->size.width(),
                   frame->size.height(), frame->stride());
    return true;
}

std::optional<qint64> KdPictureStage::record(GstBuffer* picture, qint64 captureNs,
                                             const Wanted& wanted, const KdFramePump::Frame* frame)
{
    const bool isUntouched = wanted.background == fcbmNone && m_converter.givesI420();
    const bool isReady = isUntouched
                             ? m_converter.toI420(picture, m_i420.get())
                             : KdPictureConverter::argbToI420(frame->pixels.data(), frame->stride(),
                                                              wanted.background != fcbmRemove,
                                                              frame->size, m_i420.get());
    return isReady ? wanted.take->feedPicture(m_i420.get(), captureNs) : std::nullopt;
}
