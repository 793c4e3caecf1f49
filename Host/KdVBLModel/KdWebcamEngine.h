#pragma once

#include <KdVBLModel/KdCallbackPump.h>
#include <KdVBLModel/KdCameraInput.h>
#include <KdVBLModel/KdDeviceRegistry.h>
#include <KdVBLModel/KdListedDevices.h>
#include <KdVBLModel/KdPictureStage.h>
#include <KdVBLModel/KdSerialThread.h>
#include <KdVBLModel/KdSoundInput.h>
#include <KdVBLModel/KdWebcamSettings.h>
#include <KdVBLModel/KdWebcamTake.h>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

/**
 * What a webcam recorder does, apart from its interface: the camera that runs while there is a
 * preview or a take, the audio input beside it, and the take that is made of both. A preview goes
 * on, untouched, while a take begins, pauses and ends.
 *
 * Whatever may block (opening and closing devices, files) is done on a worker, so that an operation
 * waits for a known time at most; a worker that a server holds for ever is left behind, with this
 * object, which is therefore shared with it.
 *
 * Operations are for one thread, the user interface's.
 */
class KdWebcamEngine final : public IKdDeviceListener,
                             public std::enable_shared_from_this<KdWebcamEngine>
{
public:
    /** What an engine leaves to the one that takes its place. */
    struct Legacy
    {
        KdWebcamSettings settings;
        QString lastFile; ///< of the last take
    };

    static std::shared_ptr<KdWebcamEngine> create(const Legacy& former);
    ~KdWebcamEngine();

    /** Ends the take and the preview, lets the devices go and calls nobody any more.
     * @return false when a device does not let go in time; it is left behind. */
    bool shutDown(std::chrono::milliseconds patience);
    Legacy legacy() const;

    bool start();
    bool stop();
    bool pause();
    bool resume();
    KdVBLMODEL::_KdCaptureStatus status() const;

    /** Returns at once; the camera is opened when what it depends on has come to rest. */
    bool startPreview();
    bool stopPreview();

    QVector<KdCaptureDevice> listDevices(KdVBLMODEL::_KdDevType kind);
    bool setDevice(KdVBLMODEL::_KdDevType kind, int index);
    QList<QSize> resolutions() const;
    QList<double> frameRates() const;
    bool setResolution(QSize resolution);
    bool setFrameRate(double frameRate);
    void setSoundFormat(const KdVBLMODEL::KdAudioFormat& format);
    void setRecordAudio(bool on);
    void setInterval(int msec);
    void setOutputFile(const QString& path);
    QString outputFile() const;

    void setShape(KdVBLMODEL::_KdCaptureRecordShape shape);
    KdVBLMODEL::_KdCaptureRecordShape shape() const { return settings().shape; }
    void setFlip(bool on);
    bool isFlipped() const { return settings().isFlipped; }
    void setBackground(KdBackgroundEffect::Mode mode);
    KdBackgroundEffect::Mode background() const { return settings().background; }

    void setSwitch(KdCallbackPump::Switch kind, bool on);
    KdCallbackPump& callbacks() { return m_callbacks; }

    // IKdDeviceListener, on the registry's threads
    void onDeviceAdded(const KdCaptureDevice& device) override;
    void onDeviceRemoved(const KdCaptureDevice& device) override;
    void onDevicesListed(KdVBLMODEL::_KdDevType kind) override;

private:
    using Settings = KdWebcamSettings;

    /** The take that runs, or ran until its device or its disk failed. */
    struct RunningTake
    {
        std::shared_ptr<KdWebcamTake> take;
        Settings settings;   ///< those it began with
        bool isOver = false; ///< finished already; stop() is still due

        bool runs() const { return take && !isOver; }
        bool uses(const KdCaptureDevice& device) const
        {
            return settings.camera.isSameAs(device) ||
                   (settings.hasSound && settings.microphone.isSameAs(device));
        }
    };

    /** A device that gave nothing any more and is listed all the same. */
    struct Loss
    {
        KdCaptureDevice device;
        qint64 sinceNs = 0;
    };

    explicit KdWebcamEngine(const Legacy& former);

    Settings settings() const;
    RunningTake running() const;
    bool isPreviewing() const;
    void setPreviewing(bool on);
    /** @param change of the settings, made with the lock held */
    void change(const std::function<void(Settings&)>& change);
    void post(std::function<void(KdWebcamEngine&)> task);
    RunningTake exchangeTake(const RunningTake& next);

    // On the worker.
    bool beginTake();
    bool connectDevices();
    bool undoStart();
    void abandonTake();
    std::shared_ptr<KdWebcamTake> openTake(const Settings& wanted) const;
    void concludeTake(const std::shared_ptr<KdWebcamTake>& take,
                      KdVBLMODEL::_KdCaptureStatus status);
    void update();
    void settle();
    bool openCamera(const Settings& wanted);
    void closeCamera();
    bool openMicrophone(const Settings& wanted);
    void closeMicrophone();
    void updateTicking();
    void cameraFailed(int number);
    void microphoneFailed(int number);
    void loseCamera();
    void loseMicrophone();
    void loseDevice(const KdCaptureDevice& device);
    void endTakeOf(const KdCaptureDevice& device, KdVBLMODEL::_KdCaptureStatus status);
    void deviceCame(const KdCaptureDevice& device);
    void deviceWent(const KdCaptureDevice& device);
    void tellRemoval(const KdCaptureDevice& device);
    void check();
    void reportLosses();

    // On the devices' threads.
    void onPicture(GstBuffer* picture, qint64 captureNs, const KdCaptureDevice& from);
    void onSound(GstBuffer* sound, const KdCaptureDevice& from);
    void tellTime(const RunningTake& of, std::optional<qint64> due);
    void show(KdFramePump::Frame& frame);

    KdCallbackPump m_callbacks;
    KdFramePump m_frames;
    KdPictureStage m_stage;
    /** A panel waits for more than a second before it looks for a camera that came. */
    static constexpr std::chrono::milliseconds kFirstListPatience{250};
    KdListedDevices m_cameras{KdVBLMODEL::kdtWebcam, kFirstListPatience};
    KdListedDevices m_microphones{KdVBLMODEL::kdtMicrophone, kFirstListPatience};

    mutable std::mutex m_mutex; ///< guards what follows; never held while anything may block
    std::condition_variable m_changed;
    Settings m_settings;
    int m_changes = 0; ///< of the settings or the preview, so far
    bool m_isPreviewing = false;
    KdVBLMODEL::_KdCaptureStatus m_status = KdVBLMODEL::fcsNoStart;
    RunningTake m_running;
    QString m_lastFile;

    // The worker's alone.
    KdCameraInput m_camera;
    KdCaptureDevice m_formerCamera; ///< the one that is open, or was the last
    KdSoundInput m_microphone;
    std::vector<Loss> m_losses;

    KdSerialThread m_worker;
};
