#pragma once

#include <KdVBLModel/KdWebcamEngine.h>

#include <array>
#include <memory>

/**
 * The webcam recorder of the engine contract; the work is KdWebcamEngine's.
 *
 * The adapter leaves its recorder without releasing it: one that records nothing, and that nobody
 * observes any more, lets go of everything but its settings until it is used again.
 */
class KdWebcamRecorder final : public KdVBLMODEL::IKdWebcamRecorder
{
public:
    KdWebcamRecorder();

    bool start() override;
    bool pause() override;
    bool resume() override;
    bool stop() override;
    bool setResolution(QSize resolution) override;
    bool setVideoFormat(const KdVBLMODEL::KdVideoFormat* format) override;
    bool setAudioFormat(const KdVBLMODEL::KdAudioFormat* format) override;
    void getResolutions(QList<QSize>* resolutions) override;
    void getFrameRates(QList<double>* frameRates) override;
    void setCallbackSwitch1(bool on) override;
    void setCallbackSwitch2(bool on) override;
    void setCallbackSwitch3(bool on) override;
    void setRecordAudio(bool on) override;
    void setInterval(int msec) override;
    bool getDevices(KdVBLMODEL::_KdDevType type,
                    QList<KdVBLMODEL::_KdCaptureDevInf>* devices) override;
    bool setDevice(KdVBLMODEL::_KdDevType type, int index) override;
    void setOutputFile(const QString& path) override;
    QString getOutputFile() override;
    void reserved19() override {}
    bool startPreview() override;
    bool stopPreview() override;
    KdVBLMODEL::_KdCaptureStatus curStatus() override;
    void addEventObserver(KdVBLMODEL::IKdRecorderEventObserver* observer) override;
    void removeEventObserver(KdVBLMODEL::IKdRecorderEventObserver* observer) override;
    void release() override;
    bool setRecordDisplayShape(KdVBLMODEL::_KdCaptureRecordShape shape) override;
    KdVBLMODEL::_KdCaptureRecordShape getRecordDisplayShape() override;
    void setBackgroundMode(KdVBLMODEL::_KdCaptureRecordBackgroundMode mode) override;
    KdVBLMODEL::_KdCaptureRecordBackgroundMode getBackgroundMode() override;
    void reserved30() override {}
    void reserved31() override {}
    bool setOnlyWebcam(bool on) override;
    void setRecordFlip(bool on) override;
    bool getRecordFlip() override;

private:
    ~KdWebcamRecorder();

    KdWebcamEngine& engine();
    /** When there is nothing to do, and nobody to do it for. */
    void rest();
    void setSwitch(KdCallbackPump::Switch kind, bool on);

    std::shared_ptr<KdWebcamEngine> m_engine; ///< null while resting
    KdWebcamEngine::Legacy m_legacy;          ///< while resting
    std::array<bool, 4> m_switches{};
};
