#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <Support/RecorderEvents.h>

#include <QString>
#include <QStringList>

#include <memory>

/** A real audio recorder as its adapter has it: observed, with all its callbacks on. */
class RecorderFixture
{
public:
    RecorderFixture();
    /** Removes the observer and releases the recorder. */
    ~RecorderFixture();

    KdVBLMODEL::IKdAudioRecorder* operator->() const { return m_recorder; }
    KdVBLMODEL::IKdAudioRecorder* get() const { return m_recorder; }
    RecorderEvents& events() { return m_events; }

    QStringList deviceNames();
    /** Waits until a device of that name is listed and chooses it. */
    bool choose(const QString& name);
    /** Waits until the chosen device's level is reported. */
    bool hearsDevice();
    /** What the panel does for a take: output file, device, interval, format, start. */
    bool record(const QString& path, const KdVBLMODEL::KdAudioFormat& format = {});
    /** Waits until this much is recorded. */
    bool waitForTime(qint64 msec);

    static KdVBLMODEL::KdAudioFormat format(int samplerate, int channels = 2, int bitrate = 128000);

private:
    Q_DISABLE_COPY(RecorderFixture)

    RecorderEvents m_events;
    KdVBLMODEL::IKdAudioRecorder* m_recorder;
    int m_chosen = -1;
};
