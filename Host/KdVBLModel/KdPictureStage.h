#pragma once

#include <KdVBLModel/KdBackgroundEffect.h>
#include <KdVBLModel/KdFramePump.h>
#include <KdVBLModel/KdGst.h>
#include <KdVBLModel/KdPictureConverter.h>
#include <KdVBLModel/KdVBLModelExport.h>
#include <KdVBLModel/KdWebcamTake.h>

#include <memory>
#include <optional>

/**
 * What becomes of a camera's picture on its way: the background is treated, the take gets it, the
 * preview shows it. What is shown is what is recorded. A treatment that begins knows nothing of a
 * scene that was seen before. Belongs to the camera's thread, of which
 * there is one at a time; reset() may be called while there is none.
 */
class KDVBLMODEL_EXPORT KdPictureStage
{
public:
    struct Wanted
    {
        KdBackgroundEffect::Mode background = KdVBLMODEL::fcbmNone;
        bool isShown = false;
        std::shared_ptr<KdWebcamTake> take; ///< null: none
    };

    /** @param frames gets what is shown */
    explicit KdPictureStage(KdFramePump& frames);

    /** What the pictures are that come from now on. */
    void setFormat(const GstCaps* caps);

    /** @return the take's answer, as of KdWebcamTake::feedPicture(). */
    std::optional<qint64> process(GstBuffer* picture, qint64 captureNs, const Wanted& wanted);

    /** Forgets what was learned of the scene: another camera. */
    void reset() { m_effect.reset(); }

private:
    KdPictureStage(const KdPictureStage&) = delete;
    KdPictureStage& operator=(const KdPictureStage&) = delete;

    bool draw(GstBuffer* picture, const Wanted& wanted, KdFramePump::Frame* frame);
    void followTreatment(bool isTreated);
    std::optional<qint64> record(GstBuffer* picture, qint64 captureNs, const Wanted& wanted,
                                 const KdFramePump::Frame* frame);

    KdFramePump& m_frames;
    KdPictureConverter m_converter;
    KdBackgroundEffect m_effect;
    bool m_isTreating = false; ///< the latest picture was treated
    KdGstBufferPtr m_i420;     ///< used again and again
};
