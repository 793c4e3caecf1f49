#pragma once

#include "FileRecorder.h"

/** A webcam recorder that shows one picture, and whose clips are that picture over and over. */
class FileWebcamRecorder final : public KdVBLMODEL::IKdWebcamRecorder
{
public:
    bool start() override;
    bool pause() override { return m_take.pause(); }
    bool resume() override { return m_take.resume(); }
    bool stop() override { return m_take.stop(); }
    bool setResolution(QSize resolution) override;
    bool setVideoFormat(const KdVBLMODEL::KdVideoFormat* format) override;
    bool setAudioFormat(const KdVBLMODEL::KdAudioFormat* format) override { return format; }
    void getResolutions(QList<QSize>* resolutions) override;
    void getFrameRates(QList<double>* frameRates) override;
    void setCallbackSwitch1(bool on) override { m_take.setSwitch(1, on); }
    void setCallbackSwitch2(bool on) override { m_take.setSwitch(2, on); }
    void setCallbackSwitch3(bool on) override { m_take.setSwitch(3, on); }
    void setRecordAudio(bool on) override { m_recordsAudio = on; }
    void setInterval(int msec) override { m_take.setInterval(msec); }
    bool getDevices(KdVBLMODEL::_KdDevType type,
                    QList<KdVBLMODEL::_KdCaptureDevInf>* devices) override;
    bool setDevice(KdVBLMODEL::_KdDevType type, int index) override;
    void setOutputFile(const QString& path) override { m_take.setOutputFile(path); }
    QString getOutputFile() override { return m_take.outputFile(); }
    void reserved19() override {}
    bool startPreview() override;
    bool stopPreview() override;
    KdVBLMODEL::_KdCaptureStatus curStatus() override { return m_take.status(); }
    void addEventObserver(KdVBLMODEL::IKdRecorderEventObserver* observer) override
    {
        m_take.addObserver(observer);
    }
    void removeEventObserver(KdVBLMODEL::IKdRecorderEventObserver* observer) override
    {
        m_take.removeObserver(observer);
    }
    void release() override { delete this; }
    bool setRecordDisplayShape(KdVBLMODEL::_KdCaptureRecordShape shape) override;
    KdVBLMODEL::_KdCaptureRecordShape getRecordDisplayShape() override { return m_shape; }
    void setBackgroundMode(KdVBLMODEL::_KdCaptureRecordBackgroundMode mode) override;
    KdVBLMODEL::_KdCaptureRecordBackgroundMode getBackgroundMode() override
    {
        return KdVBLMODEL::fcbmNone;
    }
    void reserved30() override {}
    void reserved31() override {}
    bool setOnlyWebcam(bool on) override { return on; }
    void setRecordFlip(bool on) override;
    bool getRecordFlip() override { return m_flip; }

private:
    ~FileWebcamRecorder() = default;
    QImage picture() const;
    /** What a clip is made of; empty without a picture. */
    QByteArray content() const;

    FileTake m_take;
    KdVBLMODEL::_KdCaptureRecordShape m_shape = KdVBLMODEL::fcrsSquare;
    bool m_recordsAudio = false;
    bool m_isPreviewing = false;
    bool m_flip = false;
};
