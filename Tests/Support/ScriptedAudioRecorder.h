#pragma once

#include "ScriptedRecorder.h"

class ScriptedAudioRecorder final : public KdVBLMODEL::IKdAudioRecorder, public ScriptedRecorder
{
public:
    explicit ScriptedAudioRecorder(ScriptedEngineState& engine);

    bool start() override;
    void pause() override;
    void resume() override;
    bool stop() override;
    void setAudioFormat(const KdVBLMODEL::KdAudioFormat* format) override;
    void reserved6() override;
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
};
