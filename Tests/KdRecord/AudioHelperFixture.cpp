#include "AudioHelperFixture.h"

using namespace KdVBLMODEL;

void AudioHelperFixture::init()
{
    KdTestCase::init();
    m_engine = std::make_unique<ScriptedEngine>();
}

void AudioHelperFixture::cleanup()
{
    const int alive = m_engine->alive();
    m_engine.reset();
    KdTestCase::cleanup();
    QCOMPARE(alive, 0);
}

QStringList AudioHelperFixture::messages(int level) const
{
    QStringList result;
    for (const KdLogRecord& record : logRecords()) {
        if (record.level == level && record.file == "Src/KdRecord/KdAudioRecordHelper" &&
            record.line > 0) {
            result.append(QString::fromUtf8(record.function) + QStringLiteral(": ") +
                          record.message);
        }
    }
    return result;
}

_KdCaptureDevInf AudioHelperFixture::microphone(int index, const QString& name, const QString& id)
{
    return {kdtMicrophone, index, name, id};
}

_KdCaptureDevInf AudioHelperFixture::currentDevice(const KdAudioRecorderHelper& helper)
{
    _KdCaptureDevInf device;
    helper.getCurrentDeviceInfo(device);
    return device;
}

bool AudioHelperFixture::hasDefaultFormat(const KdAudioRecorderHelper& helper)
{
    return helper.getFourCC() == 0x20434141 && helper.getBitRate() == 128000 &&
           helper.getBitsPerSample() == 16 && helper.getChannels() == 2 &&
           helper.getSampleRate() == 44100 && qFuzzyCompare(helper.getAudioVolume(), -1.0);
}

void AudioHelperFixture::selectFirst(KdAudioRecorderHelper& helper)
{
    QList<_KdCaptureDevInf> devices;
    helper.getValidAudioDevices(devices);
    helper.setCurrentDevice(0);
}
