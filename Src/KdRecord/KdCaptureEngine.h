#pragma once

#include <QList>
#include <QMetaType>
#include <QSize>
#include <QString>
#include <QtGlobal>

#include <cstdint>

class QObject;

#if defined(KDCAPTUREENGINE_STATIC_DEFINE)
#define KDCAPTUREENGINE_EXPORT
#elif defined(KDCAPTUREENGINE_BUILD)
#define KDCAPTUREENGINE_EXPORT Q_DECL_EXPORT
#else
#define KDCAPTUREENGINE_EXPORT Q_DECL_IMPORT
#endif

/**
 * The contract between the recorder module and the capture engine that its host supplies.
 *
 * An engine implements IKdAudioRecorder and IKdWebcamRecorder and exports the two factories; the
 * module implements IKdRecorderEventObserver. Rules that every engine keeps:
 *
 * - Recorder operations are called on the host's user-interface thread. None of them blocks it for
 * longer than 300 ms, stop() excepted, which is over within 2 s even when the device is gone or the
 * disk is full.
 * - Callbacks arrive on engine threads, never on the user-interface thread, and never while the
 * engine holds a lock that any recorder operation takes.
 * - removeEventObserver() is a barrier: when it returns, no callback on that observer is running on
 * another thread and none will start.
 * - An index is a position in the list that this recorder handed out last, whatever was plugged in
 * since.
 * - Device, format, interval and output file set while a take runs count from the next start.
 * - No operation throws.
 *
 * The order of the virtual operations is part of the contract: new ones go to the end.
 */
namespace KdVBLMODEL {

/** The kind of a capture device. 0 in a record means that no device is set. */
enum _KdDevType : int
{
    kdtNone = 0,
    kdtDesktop = 1,
    kdtWebcam = 2,
    kdtGame = 3,
    kdtCursor = 4,
    kdtKeyboard = 5,
    kdtSpeaker = 7,
    kdtMicrophone = 8
};

/** What a recorder is doing. */
enum _KdCaptureStatus : int
{
    fcsNoStart = 0, ///< never started, or stopped
    fcsRecording = 1,
    fcsPaused = 2,
    /** The take ended by itself: its disk is full or takes no more. stop() is still due. */
    fcsEnded = 3
};

/** First argument of IKdRecorderEventObserver::onCaptureDeviceCallback. */
enum _KdCaptureDeviceStatus : int
{
    fcdWebcamListChanged = 1, ///< a webcam was added
    fcdWebcamRemoved = 2,     ///< a webcam was removed
    fcdAudioInputAdded = 3,   ///< the list of audio inputs changed
    fcdAudioInputRemoved =
        4,                ///< an audio input was removed; in an audio take: its own input is gone
    fcdWebcamOccupied = 5 ///< another application holds the webcam
};
using KdCaptureDeviceStatus = _KdCaptureDeviceStatus;

/** The shape of the webcam picture. */
enum _KdCaptureRecordShape : int
{
    fcrsCircle = 0,
    fcrsSquare = 1
};

/** The treatment of the webcam picture's background. */
enum _KdCaptureRecordBackgroundMode : int
{
    fcbmNone = -1,
    fcbmRemove = 0,
    fcbmBlur = 1
};

/** One capture device. A default-constructed record is the empty one and counts as no device. */
struct _KdCaptureDevInf
{
    qint32 devType = kdtNone; ///< a _KdDevType
    qint32 index = -1;        ///< position in the engine's list for its type
    QString name;             ///< display name, plain text
    QString id; ///< unique identifier, the same after the device was unplugged and plugged again
};
using KdCaptureDevInfo = _KdCaptureDevInf;

/** Codes of KdAudioFormat::bitrateMode. */
enum _KdBitrateMode : int
{
    fbmVariable = 1,
    fbmConstant = 2
};

/** "AAC " as a four-character code, first character in the lowest byte. */
constexpr qint32 kFourCcAac = 0x20434141;

/** "C264" as a four-character code, first character in the lowest byte. */
constexpr qint32 kFourCcH264 = 0x34363243;

/** The unit in which an audio format is handed to the engine. */
struct KdAudioFormat
{
    qint32 bitrateMode = fbmVariable; ///< 1 VBR, 2 CBR
    qint32 fourcc = kFourCcAac;       ///< codec, four characters, little-endian
    qint32 bitrate = 128000;          ///< bits per second
    qint32 channels = 2;
    qint32 bitPerSample = 16;
    qint32 samplerate = 44100; ///< Hz
    double volume = -1.0;      ///< 0.0 to 1.0; -1.0: not set, the device keeps its own
};

/** Everything needed to record audio. */
struct _KdAudioRecordParams
{
    qint32 index = -1;   ///< the audio input's index, _KdCaptureDevInf::index
    qint32 interval = 0; ///< interval of the time and volume callbacks in ms
    QString outputName;  ///< full path of the output file
    KdAudioFormat format;
};

/** The unit in which the webcam's codec and frame rate are handed to the engine. */
struct KdVideoFormat
{
    qint32 fourcc = kFourCcH264; ///< codec, four characters, little-endian
    double frameRate = 0.0;      ///< frames per second
};

/** Everything needed to record from a webcam. */
struct _KdWebcamRecordParams
{
    bool recordAudio = false; ///< whether an audio input is recorded with the picture
    qint32 audioIndex = -1;   ///< the audio input's index, used only with recordAudio
    QString outputName;       ///< full path of the output file
    qint32 interval = 0;      ///< interval of the time and volume callbacks in ms
    KdVideoFormat video;
};

/**
 * What a recorder reports. All operations are called on engine threads, possibly while the
 * user-interface thread is inside a recorder operation: copy the arguments, post them, return;
 * never touch a widget, never block, never call the recorder. The observer belongs to the caller of
 * addEventObserver().
 */
class IKdRecorderEventObserver
{
public:
    IKdRecorderEventObserver() = default;
    virtual ~IKdRecorderEventObserver() = default;

    /** A device changed state. @param devStatus a _KdCaptureDeviceStatus @param deviceIdx its
     * index, or -1 */
    virtual void onCaptureDeviceCallback(int devStatus, int deviceIdx)
    {
        Q_UNUSED(devStatus)
        Q_UNUSED(deviceIdx)
    }

    /** @param msec recorded time in ms since the first sample in the file, pauses left out. */
    virtual void onTimeCallback(long long msec) { Q_UNUSED(msec) }

    /** @param volume the input's level, 0 (silence) to 100 (full scale). */
    virtual void onVolumeCallback(int volume) { Q_UNUSED(volume) }

    /**
     * A new preview frame.
     * @param pARGB32Bits width x height pixels in QImage::Format_ARGB32 order without padding;
     * owned by the engine and valid only until the call returns.
     */
    virtual void onFrameChangedCallback(int width, int height, uint8_t* pARGB32Bits)
    {
        Q_UNUSED(width)
        Q_UNUSED(height)
        Q_UNUSED(pARGB32Bits)
    }

    /** @param volume the output's level, 0 to 100. */
    virtual void onOutputVolumeCallback(int volume) { Q_UNUSED(volume) }

private:
    Q_DISABLE_COPY(IKdRecorderEventObserver)
};

/**
 * Records one audio input into a file. Made by createAudioRecorder(), freed by release() alone.
 *
 * Bad input: a null pointer, an unknown index or an unusable output file is answered by start()
 * with false.
 */
class IKdAudioRecorder
{
public:
    /** Begins a take. In mid-take the running take ends first. @return true when recording began.
     */
    virtual bool start() = 0;
    /** Nothing that follows is recorded until resume(). Without effect when no take runs. */
    virtual void pause() = 0;
    virtual void resume() = 0;
    /** Ends the take. @return true when the file was finished, or when no take ran. */
    virtual bool stop() = 0;
    /** @param format copied by the engine. */
    virtual void setAudioFormat(const KdAudioFormat* format) = 0;
    virtual void reserved6() = 0;
    /** Delivery of device status callbacks. */
    virtual void setCallbackSwitch1(bool on) = 0;
    /** Delivery of time callbacks. */
    virtual void setCallbackSwitch2(bool on) = 0;
    /** Delivery of volume callbacks. */
    virtual void setCallbackSwitch3(bool on) = 0;
    /** @param msec interval of the time and volume callbacks. */
    virtual void setInterval(int msec) = 0;
    /** @param devices filled with the audio inputs. */
    virtual void getDevices(QList<_KdCaptureDevInf>* devices) = 0;
    /** @param index position in the list that getDevices() filled last. */
    virtual void setDevice(int index) = 0;
    virtual void setOutputFile(const QString& path) = 0;
    /** @return the output file's path: of the running take, else of the last one, else as set. */
    virtual QString getOutputFile() = 0;
    virtual _KdCaptureStatus curStatus() = 0;
    virtual void addEventObserver(IKdRecorderEventObserver* observer) = 0;
    /** A barrier, see above. */
    virtual void removeEventObserver(IKdRecorderEventObserver* observer) = 0;
    /** Ends a running take, then destroys the recorder. */
    virtual void release() = 0;

protected:
    IKdAudioRecorder() = default;
    ~IKdAudioRecorder() = default;

private:
    Q_DISABLE_COPY(IKdAudioRecorder)
};

/**
 * Shows a webcam's picture and records it, with or without an audio input. Made by
 * createWebcamRecorder(), freed by release() alone.
 */
class IKdWebcamRecorder
{
public:
    virtual bool start() = 0;
    virtual bool pause() = 0;
    virtual bool resume() = 0;
    virtual bool stop() = 0;
    /** @return false when the webcam refuses it. */
    virtual bool setResolution(QSize resolution) = 0;
    virtual bool setVideoFormat(const KdVideoFormat* format) = 0;
    virtual bool setAudioFormat(const KdAudioFormat* format) = 0;
    /** @param resolutions filled with the current webcam's resolutions. */
    virtual void getResolutions(QList<QSize>* resolutions) = 0;
    /** @param frameRates filled with the frame rates valid at the current resolution. */
    virtual void getFrameRates(QList<double>* frameRates) = 0;
    /** Delivery of device status callbacks. */
    virtual void setCallbackSwitch1(bool on) = 0;
    /** Delivery of time callbacks. */
    virtual void setCallbackSwitch2(bool on) = 0;
    /** Delivery of volume and frame callbacks. */
    virtual void setCallbackSwitch3(bool on) = 0;
    virtual void setRecordAudio(bool on) = 0;
    /** @param msec interval of the time and volume callbacks. */
    virtual void setInterval(int msec) = 0;
    /** @param type kdtWebcam or kdtMicrophone. @return false on failure; the list is then left
     * empty. */
    virtual bool getDevices(_KdDevType type, QList<_KdCaptureDevInf>* devices) = 0;
    virtual bool setDevice(_KdDevType type, int index) = 0;
    virtual void setOutputFile(const QString& path) = 0;
    virtual QString getOutputFile() = 0;
    virtual void reserved19() = 0;
    virtual bool startPreview() = 0;
    virtual bool stopPreview() = 0;
    virtual _KdCaptureStatus curStatus() = 0;
    virtual void addEventObserver(IKdRecorderEventObserver* observer) = 0;
    /** A barrier, see above. */
    virtual void removeEventObserver(IKdRecorderEventObserver* observer) = 0;
    virtual void release() = 0;
    virtual bool setRecordDisplayShape(_KdCaptureRecordShape shape) = 0;
    virtual _KdCaptureRecordShape getRecordDisplayShape() = 0;
    virtual void setBackgroundMode(_KdCaptureRecordBackgroundMode mode) = 0;
    virtual _KdCaptureRecordBackgroundMode getBackgroundMode() = 0;
    virtual void reserved30() = 0;
    virtual void reserved31() = 0;
    virtual bool setOnlyWebcam(bool on) = 0;
    virtual void setRecordFlip(bool on) = 0;
    virtual bool getRecordFlip() = 0;

protected:
    IKdWebcamRecorder() = default;
    ~IKdWebcamRecorder() = default;

private:
    Q_DISABLE_COPY(IKdWebcamRecorder)
};

/**
 * @param owner the object on whose behalf the recorder works; it must outlive the recorder. May be
 * null.
 * @return a new recorder, freed by its release() alone.
 */
KDCAPTUREENGINE_EXPORT IKdAudioRecorder* createAudioRecorder(QObject* owner);

/** @return a new recorder, freed by its release() alone. */
KDCAPTUREENGINE_EXPORT IKdWebcamRecorder* createWebcamRecorder();

} // namespace KdVBLMODEL

// So that they can be queued between threads.
Q_DECLARE_METATYPE(KdVBLMODEL::_KdCaptureDeviceStatus)
Q_DECLARE_METATYPE(KdVBLMODEL::_KdCaptureDevInf)
