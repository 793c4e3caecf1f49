#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <memory>

class KdAudioEngine;

/** The audio recorder of the engine contract; the work is KdAudioEngine's. */
class KdAudioRecorder final : public KdVBLMODEL::IKdAudioRecorder
{
public:
    KdAudioRecorder();

    bool start() override;
    void pause() override;
    void resume() override;
    bool stop() override;
    void setAudioFormat(const KdVBLMODEL::KdAudioFormat* format) override;
    void reserved6() override {}
    void setCallbackSwitch1(bool on) override;
    void setCallbackSwitch2(bool on) override;
    void setCallbackSwitch3(bool on) override;
    void setInterval(int msec) override;
    void getDevices(QList<KdVBLMODEL::_KdCaptureDevInf>* devices) override;
    void setDevice(int index) override;
    void setOutputFile(const QString& path) override;
    QString getOutputFile() override;
    KdVBLMODEL::_KdCaptureStatus curStatus() override;
    void addEventObserver(KdVBLMODEL::IKdRecorderEventObserver* observer) override;
    void removeEventObserver(KdVBLMODEL::IKdRecorderEventObserver* observer) override;
    void release() override;

private:
    ~KdAudioRecorder();

    std::shared_ptr<KdAudioEngine> m_engine;
};
