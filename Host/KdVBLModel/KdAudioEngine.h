#pragma once

#include <KdVBLModel/KdAudioTake.h>
#include <KdVBLModel/KdCallbackPump.h>
#include <KdVBLModel/KdDeviceRegistry.h>
#include <KdVBLModel/KdListedDevices.h>
#include <KdVBLModel/KdSerialThread.h>
#include <KdVBLModel/KdSoundInput.h>

#include <QVector>

#include <functional>
#include <memory>
#include <mutex>

/**
 * What an audio recorder does, apart from its interface: the input that runs as long as a device is
 * chosen and somebody watches its level, and the take that is cut out of it.
 *
 * Whatever may block (opening and closing a device, files) is done on a worker, so that an
 * operation waits for a known time at most; a worker that a sound server holds for ever is left
 * behind, with this object, which is therefore shared with it.
 *
 * Operations are for one thread, the user interface's.
 */
class KdAudioEngine final : public IKdDeviceListener,
                            public std::enable_shared_from_this<KdAudioEngine>
{
public:
    static std::shared_ptr<KdAudioEngine> create();
    ~KdAudioEngine();

    /** Ends the take, lets the device go and calls nobody any more. */
    void shutDown();

    bool start();
    bool stop();
    void pause();
    void resume();
    KdVBLMODEL::_KdCaptureStatus status() const;

    QVector<KdCaptureDevice> listDevices();
    void setDevice(int index);
    void setFormat(const KdVBLMODEL::KdAudioFormat& format);
    void setInterval(int msec);
    void setOutputFile(const QString& path);
    QString outputFile() const;
    void setSwitch(KdCallbackPump::Switch kind, bool on);

    KdCallbackPump& callbacks() { return m_callbacks; }

    // IKdDeviceListener, on the registry's thread
    void onDeviceAdded(const KdCaptureDevice& device) override;
    void onDeviceRemoved(const KdCaptureDevice& device) override;
    void onDevicesListed(KdVBLMODEL::_KdDevType kind) override;

private:
    struct Settings
    {
        KdCaptureDevice device;
        KdVBLMODEL::KdAudioFormat format;
        int intervalMs = 50;
        QString outputFile;
    };

    /** The take that runs, or ran until its input or its disk failed. */
    struct RunningTake
    {
        std::shared_ptr<KdAudioTake> take;
        Settings settings;   ///< those it began with
        bool isOver = false; ///< finished already; the recorder still counts as recording
    };

    KdAudioEngine();

    Settings settings() const;
    RunningTake running() const;
    void post(std::function<void(KdAudioEngine&)> task);
    /** Makes next the running take, and what ran before take nothing more. */
    RunningTake exchangeTake(const RunningTake& next);

    // On the worker.
    bool beginTake();
    bool connectInput();
    bool undoStart();
    std::shared_ptr<KdAudioTake> openTake(const Settings& wanted) const;
    /** @return whether a file is that of the last take, which may be recorded again. */
    bool isLastFile(const QString& path) const;
    bool hearsInput(KdAudioTake& take) const;
    void concludeTake(const std::shared_ptr<KdAudioTake>& take,
                      KdVBLMODEL::_KdCaptureStatus status);
    bool openCapture(const Settings& wanted);
    void closeCapture();
    void updateCapture();
    void settle();
    void captureFailed(int captureNumber);
    void loseInput();
    void deviceCame(const KdCaptureDevice& device);
    void deviceWent(const KdCaptureDevice& device);
    void check();

    // On the input's thread.
    void onSamples(GstBuffer* buffer, const KdCaptureDevice& from);

    KdCallbackPump m_callbacks;
    /** Without patience: a list that comes later is told as an input that came. */
    KdListedDevices m_listed{KdVBLMODEL::kdtMicrophone, std::chrono::milliseconds(0)};

    mutable std::mutex m_mutex; ///< guards what follows; never held while anything may block
    Settings m_settings;
    KdVBLMODEL::_KdCaptureStatus m_status = KdVBLMODEL::fcsNoStart;
    RunningTake m_running;
    QString m_lastFile;

    bool m_isSettled = false; ///< the worker's alone, as what follows
    KdSoundInput m_input;
    KdSerialThread m_worker;
};
