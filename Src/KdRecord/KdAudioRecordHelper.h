#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdDeviceAudioFormat.h>
#include <KdRecord/KdRecordExport.h>

#include <QList>
#include <QObject>
#include <QString>

/**
 * The voice-over panel's way to the capture engine. Owns one recorder of the engine, keeps the list
 * of audio inputs and the current one, forwards parameters and commands, and turns the engine's
 * callbacks into signals. It has no user interface and shows no messages: it reports by return
 * values, signals and the log.
 *
 * Threads: every operation is called on the thread that owns the helper, usually the user-interface
 * thread, and every signal is emitted there, never from inside an operation. No callback of the
 * engine reaches a helper that has been destroyed.
 *
 * An engine that supplies no recorder is an engine without devices: lists are empty, start()
 * answers false, stop() true.
 *
 * The usual order: construct, getValidAudioDevices(), setCurrentDevice(); for a take
 * setAudioRecordParams(), start(), pause() and resume() as asked, stop(); removeEventObservers()
 * before the owner goes.
 */
class KDRECORD_EXPORT KdAudioRecorderHelper : public QObject,
                                              public KdVBLMODEL::IKdRecorderEventObserver
{
    Q_OBJECT

public:
    explicit KdAudioRecorderHelper(QObject* parent);
    /** Ends a running take, detaches from the engine and releases the recorder. */
    ~KdAudioRecorderHelper() override;

    /** Reads the audio inputs from the engine anew. @param out receives them, in the engine's
     * order. */
    void getValidAudioDevices(QList<KdVBLMODEL::_KdCaptureDevInf>& out);

    /**
     * Selects an audio input and sets the format, the volume included, to the defaults.
     * @param index position in the list that getValidAudioDevices() read last. For any other the
     * engine is told all the same (it refuses to start), the current device becomes the empty
     * record, and the log warns.
     */
    void setCurrentDevice(int index);
    /** @param out receives the current device, the empty record when there is none. */
    void getCurrentDeviceInfo(KdVBLMODEL::_KdCaptureDevInf& out) const;

    /**
     * Hands the engine everything that it needs for the next take. The current device and format,
     * and so the getters, stay as setCurrentDevice() left them.
     */
    void setAudioRecordParams(const KdVBLMODEL::_KdAudioRecordParams& params);

    /**
     * Each hands the engine the current format with one field replaced. The current format itself
     * stays, so that the getters go on to answer what the last setCurrentDevice() established, and
     * a second setter does not carry the first one's value.
     */
    void setAudioVolume(double volume);
    void setBitRate(int bitrate);
    void setBitsPerSample(int bits);
    void setChannels(int channels);
    void setFourCC(int fourcc);
    void SetSampleRate(int samplerate);

    /** The current format's fields; the defaults until the first setCurrentDevice(). */
    double getAudioVolume() const { return m_currentFormat.volume; }
    int getBitRate() const { return m_currentFormat.bitrate; }
    int getBitsPerSample() const { return m_currentFormat.bitPerSample; }
    int getChannels() const { return m_currentFormat.channels; }
    int getFourCC() const { return m_currentFormat.fourcc; }
    int getSampleRate() const { return m_currentFormat.samplerate; }

    /** @return the engine's output file, asked for each time. */
    QString getOutPutFile() const;
    KdVBLMODEL::_KdCaptureStatus curStatus() const;

    /** @return whether the recording began. */
    bool start();
    void pause();
    void resume();
    /** @return false exactly when the engine could not finish the file, which then must not be
     * used. */
    bool stop();

    /** Ends the delivery of callbacks for good; what was delivered before still arrives. Harmless
     * when repeated. */
    void removeEventObservers();

Q_SIGNALS:
    /** @param msec elapsed recorded time in ms. */
    void sigRecordedTime(qint64 msec);
    /** @param volume input level, 0 to 100. */
    void sigRecorderVolume(int volume);
    /** The engine's device status, passed on without a judgement. */
    void sigDeviceStatus(KdVBLMODEL::KdCaptureDeviceStatus status, int deviceIdx);

protected:
    // On engine threads: each only posts to the slot of the same name.
    void onCaptureDeviceCallback(int devStatus, int deviceIdx) override;
    void onTimeCallback(long long msec) override;
    void onVolumeCallback(int volume) override;

private Q_SLOTS:
    void slotTimeCallback(qint64 msec);
    void slotVolumeCallback(int volume);
    void slotCaptureDeviceCallback(int devStatus, int deviceIdx);

private:
    KdVBLMODEL::IKdAudioRecorder* recorder() const;
    void attach();
    void sendFormat(const KdDeviceAudioFormat& format);

    KdVBLMODEL::IKdAudioRecorder* m_pRecorder = nullptr;
    QList<KdVBLMODEL::_KdCaptureDevInf> m_devices;
    KdVBLMODEL::_KdCaptureDevInf m_currentDevice;
    KdDeviceAudioFormat m_currentFormat;
    const KdDeviceAudioFormat m_defaultFormat;
};
