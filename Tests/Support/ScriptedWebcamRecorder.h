#pragma once

#include "ScriptedRecorder.h"

class ScriptedWebcamRecorder final : public KdVBLMODEL::IKdWebcamRecorder, public ScriptedRecorder
{
public:
    explicit ScriptedWebcamRecorder(ScriptedEngineState& engine);

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
    void reserved19() override;
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
    void reserved30() override;
    void reserved31() override;
    bool setOnlyWebcam(bool on) override;
    void setRecordFlip(bool on) override;
    bool getRecordFlip() override;

private:
    /** What the script says that the chosen webcam can do. */
    QList<QSize> offered() const;
    bool isOffered(const KdVBLMODEL::KdVideoFormat* format) const;

    KdVBLMODEL::_KdCaptureRecordShape m_shape = KdVBLMODEL::fcrsSquare;
    KdVBLMODEL::_KdCaptureRecordBackgroundMode m_background = KdVBLMODEL::fcbmNone;
    bool m_isFlipped = false;
};
