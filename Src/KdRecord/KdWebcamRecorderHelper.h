#pragma once

#include <KdRecord/KdCaptureEngine.h>
#include <KdRecord/KdDeviceAudioFormat.h>
#include <KdRecord/KdRecordExport.h>

#include <QList>
#include <QObject>
#include <QSize>
#include <QString>

#include <mutex>

/**
 * The webcam panel's way to the capture engine. Owns one recorder of the engine, keeps the lists of
 * webcams and audio inputs with the current one of each, runs the preview and the takes, and turns
 * the engine's callbacks into signals. It is driven by order numbers and reports by response
 * numbers (KdWebcamRecorderCodes.h) and the log; it has no user interface.
 *
 * Threads: every operation is called on the thread that owns the helper, usually the user-interface
 * thread, and every signal is emitted there, save sigWebCamFrameChanged(), which comes on an engine
 * thread. Destroying a helper is safe at any moment, with callbacks in flight and from its own
 * signals: none reaches it afterwards. A receiver of frames has to live as long.
 *
 * The recorder is made by order 0 and released by order 1 only. Destroying the helper detaches it
 * from a recorder that is left, and leaves that to the engine.
 *
 * Without a recorder (before order 0, after order 1, or when the engine supplied none) lists are
 * empty, nothing previews or records, and switches are answered as if they had succeeded.
 */
class KDRECORD_EXPORT KdWebcamRecorderHelper : public QObject,
                                               public KdVBLMODEL::IKdRecorderEventObserver
{
    Q_OBJECT

public:
    /**
     * Makes no recorder: order 0 does.
     * @param parent owns the helper; may be null.
     */
    explicit KdWebcamRecorderHelper(QObject* parent);
    /** Detaches from a recorder that is left, and leaves that to the engine. */
    ~KdWebcamRecorderHelper() override;

    /**
     * Hands the engine everything that it needs for the next take. What the getters answer stays.
     * Without effect when there is no recorder.
     * @param params not checked here: what the engine cannot use makes it refuse to start, which
     * the log tells.
     */
    void setWebcamRecordParams(const KdVBLMODEL::_KdWebcamRecordParams& params);
    /** A countdown begins: from now until the take's end a device's loss is one in a take. */
    void setCountCtrl();

    /**
     * @param on whether nothing but the webcam is recorded.
     * @return what the engine answered; false without a recorder.
     */
    bool setOnlyWebcam(bool on);
    /**
     * @param shape of the takes' picture, of one that runs too.
     * @return what the engine answered; false without a recorder.
     */
    bool setRecordDisplayShape(KdVBLMODEL::_KdCaptureRecordShape shape);
    /**
     * @param on whether takes are mirrored left to right, one that runs too. Without effect when
     * there is no recorder.
     */
    void setRecordFlip(bool on);
    /**
     * Applies a background mode, to preview and takes.
     * @param mode every one but fcbmNone, known or not, is refused, which only the log tells, while
     * the host's AI module for it is not available.
     */
    void setAIEffectType(KdVBLMODEL::_KdCaptureRecordBackgroundMode mode);

    /** @return the engine's, asked for each time; fcrsSquare without a recorder. */
    KdVBLMODEL::_KdCaptureRecordShape getRecordDisplayShape() const;
    /** @return the engine's, asked for each time; false without a recorder. */
    bool getRecordFlip() const;
    /** @return the engine's, asked for each time; fcbmNone without a recorder. */
    KdVBLMODEL::_KdCaptureRecordBackgroundMode getCurAIEffectType() const;
    /** @return the engine's, asked for each time; fcsNoStart without a recorder. */
    KdVBLMODEL::_KdCaptureStatus curStatus() const;
    /** @return the engine's output file, asked for each time; empty without a recorder. */
    QString getOutPutFile() const;

    /** @return the webcams as read last, by order 0 or 9 or upon a device's removal in a take. */
    QList<KdVBLMODEL::_KdCaptureDevInf> getWebcamDevices() const { return m_webcams; }
    /**
     * @return the audio inputs as read last, by order 0 or 9 or upon a device's removal in a take.
     */
    QList<KdVBLMODEL::_KdCaptureDevInf> getAudioDevices() const { return m_audioInputs; }
    /** @return the webcam switched to last; the empty record when there is none. */
    KdVBLMODEL::_KdCaptureDevInf getCurrentWebCamDeviceInfo() const { return m_currentWebcam; }
    /** @return the audio input switched to last; the empty record when there is none. */
    KdVBLMODEL::_KdCaptureDevInf getCurrentAudioDeviceInfo() const { return m_currentAudioInput; }
    /** @return the resolution asked for last, accepted or not; invalid before the first. */
    QSize getCurrentResolution() const { return m_currentResolution; }
    /** @return the frame rate asked for last, accepted or not; 0 before the first. */
    double getCurrentFrameRate() const { return m_currentFrameRate; }
    /** @param[out] out the current webcam's resolutions in the engine's order. */
    void getValidResolutions(QList<QSize>& out) const;
    /** @param[out] out the frame rates at the current resolution in the engine's order. */
    void getValidFrameRates(QList<double>& out) const;

    /**
     * Forgets a current device, and that a take was running; the lists, the formats and the preview
     * stay.
     * @param webcam true: the webcam; false: the audio input.
     */
    void clearCurrentDeviceInfo(bool webcam);

Q_SIGNALS:
    /** @param msec elapsed recorded time in ms. */
    void sigRecordedTime(qint64 msec);
    /** @param volume input level, 0 to 100. */
    void sigRecorderVolume(int volume);
    /**
     * A preview frame, on an engine thread: connect with Qt::DirectConnection, never block.
     * @param width of the frame in pixels.
     * @param height of the frame in pixels.
     * @param bits width x height pixels in QImage::Format_ARGB32 order without padding, the
     * engine's, valid only during the emission.
     */
    void sigWebCamFrameChanged(int width, int height, uint8_t* bits);
    /** @param code a KdWebcamResponse::Response. */
    void sigRecorderResponeType(int code);

public Q_SLOTS:
    /** @param order a KdWebcamOrder::Order; any other is ignored. */
    void slotWebcamRecorderOrderType(int order);
    /**
     * Switches to a webcam, to its default resolution and its first frame rate there, and shows it.
     * Answered by responses 9 and 1; when the engine refuses by none, and nothing has changed.
     * @param index position in getWebcamDevices(). For any other that the engine accepts all the
     * same the current webcam becomes the empty record, and the log warns.
     */
    void slotSetCurrentWebCamDevice(int index);
    /**
     * Switches to an audio input and the default audio format; the preview goes on. Answered by
     * response 2; when the engine refuses by none, and nothing has changed.
     * @param index position in getAudioDevices(), see above.
     */
    void slotSetCurrentAudioDevice(int index);
    /**
     * Applies a resolution and the first frame rate there, and shows it. It counts as the current
     * one, and response 9 follows, even when the engine refuses.
     * @param resolution in pixels, one of getValidResolutions().
     */
    void slotSetCurrentResolution(QSize resolution);
    /**
     * Applies a frame rate and shows it. It counts as the current one even when the engine refuses.
     * @param frameRates one of getValidFrameRates(), in frames per second.
     */
    void slotSetCurrentFrameRate(double frameRates);

protected:
    // On engine threads. Each but the last only posts to the slot of the same name.
    /**
     * Posts to the helper's thread, which answers by a response. On an engine thread.
     * @param devStatus a KdVBLMODEL::_KdCaptureDeviceStatus
     * @param deviceIdx ignored
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
    /**
     * Emits sigWebCamFrameChanged() at once. On an engine thread.
     * @param width of the frame in pixels.
     * @param height of the frame in pixels.
     * @param pARGB32Bits the pixels, valid only during the call.
     */
    void onFrameChangedCallback(int width, int height, uint8_t* pARGB32Bits) override;

    /** @return the identifier of the preview run, a new one for each start; on any thread. */
    QString previewId() const;

private Q_SLOTS:
    void slotTimeCallback(qint64 msec);
    void slotVolumeCallback(int volume);
    void slotCaptureDeviceCallback(int devStatus, int deviceIdx);
    /** On the engine thread; drops a frame of any other preview run than the current one. */
    void slotFrameChangedCallback(int width, int height, void* pARGB32Bits, const QString& id);

private:
    KdVBLMODEL::IKdWebcamRecorder* recorder() const;
    void initRecorder();
    void uninitRecorder();
    void readValidWebCamDevices();
    void readValidAudioDevices();

    void startPreview();
    void stopPreview();
    void startTake();
    void startWebcamRecorder();
    void pauseWebcamRecorder();
    void resumeWebcamRecorder();
    void stopTake();
    void stopWebcamRecorder();
    void stopEverything();

    void checkDevices();
    void checkWebcam();
    void checkAudioInput();
    bool reportLossInTake();
    void readValidResolutions();
    void readValidFrameRates();
    void sendAudioFormat();
    static bool hasDeviceExists(const KdVBLMODEL::_KdCaptureDevInf& device,
                                const QList<KdVBLMODEL::_KdCaptureDevInf>& list);

    KdVBLMODEL::IKdWebcamRecorder* m_pRecorder = nullptr;
    bool m_bPreviewing = false;
    bool m_bRecordingActive = false;     ///< a countdown or a take runs
    mutable std::mutex m_previewIdMutex; ///< guards m_sPreviewId, which engine threads read
    QString m_sPreviewId;
    QList<KdVBLMODEL::_KdCaptureDevInf> m_webcams;
    QList<KdVBLMODEL::_KdCaptureDevInf> m_audioInputs;
    KdVBLMODEL::_KdCaptureDevInf m_currentWebcam;
    KdVBLMODEL::_KdCaptureDevInf m_currentAudioInput;
    QList<QSize> m_resolutions;
    QList<double> m_frameRates;
    QSize m_currentResolution;
    double m_currentFrameRate = 0.0;
    const qint32 m_videoFourCc = KdVBLMODEL::kFourCcH264;
    KdDeviceAudioFormat m_currentAudioFormat;
    const KdDeviceAudioFormat m_defaultAudioFormat;
};
