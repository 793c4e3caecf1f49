#pragma once

#include <KdRecord/KdAudioRecordHelper.h>

#include <Support/KdTestCase.h>
#include <Support/ScriptedEngine.h>

#include <memory>

/** Base of the adapter's tests: an engine for each, which must get every recorder back. */
class AudioHelperFixture : public KdTestCase
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    /** The adapter's log of one level, each as "function: message". */
    QStringList messages(int level) const;

    static KdVBLMODEL::_KdCaptureDevInf microphone(int index, const QString& name,
                                                   const QString& id);
    static KdVBLMODEL::_KdCaptureDevInf currentDevice(const KdAudioRecorderHelper& helper);
    static bool hasDefaultFormat(const KdAudioRecorderHelper& helper);
    static void selectFirst(KdAudioRecorderHelper& helper);

    std::unique_ptr<ScriptedEngine> m_engine;
};
