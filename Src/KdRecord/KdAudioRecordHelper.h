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
    /**
     * Makes the recorder and observes it.
     * @param parent owns the helper; may be null.
     */
    explicit KdAudioRecorderHelper(QObject* parent);
    /** Ends a running take, detaches from the engine and releases the recorder. */
    ~KdAudioRecorderHelper() override;

    /**
     * Reads the audio inputs from the engine anew.
     * @param[out] out the audio inputs, in the engine's order.
     */
    void getValidAudioDevices(QList<KdVBLMODEL::_KdCaptureDevInf>& out);

    /**
     * Selects an audio input and sets the format, the volume included, to the defaults.
     * @param index position in the list that getValidAudioDevices() read last. For any other the
     * engine is told all the same (it refuses to start), the current device becomes the empty
     * record, and the log warns.
     */
    void setCurrentDevice(int index);
    /** @param[out] out the current device, the empty record when there is none. */
    void getCurrentDeviceInfo(KdVBLMODEL::_KdCaptureDevInf& out) const;

    /**
     * Hands the engine everything that it needs for the next take. The current device and format,
     * and so the getters, stay as setCurrentDevice() left them.
     * @param params not checked here: what the engine cannot use makes start() answer false.
     */
    void setAudioRecordParams(const KdVBLMODEL::_KdAudioRecordParams& params);

    /**
     * Hands the engine the current format with this one field replaced, as do the five setters that
     * follow. The current format itself stays, so that the getters go on to answer what the last
     * setCurrentDevice() established, and a second setter does not carry the first one's value.
     * @param volume 0.0 to 1.0; -1.0: the device keeps its own.
     */
    void setAudioVolume(double volume);
    /**
     * As setAudioVolume().
     * @param bitrate in bits per second.
     */
    void setBitRate(int bitrate);
    /**
     * As setAudioVolume().
     * @param bits of one sample, 16 as a rule.
     */
    void setBitsPerSample(int bits);
    /**
     * As setAudioVolume().
     * @param channels 1 mono, 2 stereo.
     */
    void setChannels(int channels);
    /**
     * As setAudioVolume().
     * @param fourcc the codec's four-character code, first character in the lowest byte.
     */
    void setFourCC(int fourcc);
    /**
     * As setAudioVolume().
     * @param samplerate in Hz.
     */
    void SetSampleRate(int samplerate);

    /**
     * @return the volume that setCurrentDevice() established last, at first the default: -1.0, the
     * device keeps its own.
     */
    double getAudioVolume() const { return m_currentFormat.volume; }
    /**
     * @return the bit rate that setCurrentDevice() established last, at first the default, in bits
     * per second: 128000.
     */
    int getBitRate() const { return m_currentFormat.bitrate; }
    /**
     * @return the bits of one sample that setCurrentDevice() established last, at first the
     * default: 16.
     */
    int getBitsPerSample() const { return m_currentFormat.bitPerSample; }
    /** @return the channels that setCurrentDevice() established last, at first the default: 2. */
    int getChannels() const { return m_currentFormat.channels; }
    /**
     * @return the codec that setCurrentDevice() established last, at first the default:
     * KdVBLMODEL::kFourCcAac.
     */
    int getFourCC() const { return m_currentFormat.fourcc; }
    /**
     * @return the sample rate that setCurrentDevice() established last, at first the default, in
     * Hz: 44100.
     */
    int getSampleRate() const { return m_currentFormat.samplerate; }

    /** @return the engine's output file, asked for each time; empty without a recorder. */
    QString getOutPutFile() const;
    /** @return what the engine is doing, asked for each time; fcsNoStart without a recorder. */
    KdVBLMODEL::_KdCaptureStatus curStatus() const;

    /**
     * Begins a take with what setAudioRecordParams() handed over.
     * @return whether the recording began; the outcome is logged.
     */
    bool start();
    /** Nothing that follows is recorded until resume(). Without effect when no take runs. */
    void pause();
    /** Goes on with a paused take. Without effect when none is paused. */
    void resume();
    /**
     * Ends the take. Up to 2 s, the engine's limit.
     * @return false exactly when the engine could not finish the file, which then must not be used;
     * true as well when no take runs. The outcome is logged.
     */
    bool stop();

    /** Ends the delivery of callbacks for good; what was delivered before still arrives. Harmless
     * when repeated. */
    void removeEventObservers();

Q_SIGNALS:
    /** @param msec elapsed recorded time in ms. */
    void sigRecordedTime(qint64 msec);
    /** @param volume input level, 0 to 100. */
    void sigRecorderVolume(int volume);
    /**
     * The engine's device status, passed on without a judgement.
     * @param status what happened.
     * @param deviceIdx the device's index, or -1.
     */
    void sigDeviceStatus(KdVBLMODEL::KdCaptureDeviceStatus status, int deviceIdx);

protected:
    // On engine threads: each only posts to the slot of the same name.
    /**
     * Posts to sigDeviceStatus(). On an engine thread.
     * @param devStatus a KdVBLMODEL::_KdCaptureDeviceStatus
     * @param deviceIdx its index, or -1
     */
    void onCaptureDeviceCallback(int devStatus, int deviceIdx) override;
    /**
     * Posts to sigRecordedTime(). On an engine thread.
     * @param msec recorded time in ms.
     */
    void onTimeCallback(long long msec) override;
    /**
     * Posts to sigRecorderVolume(). On an engine thread.
     * @param volume input level, 0 to 100.
     */
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
