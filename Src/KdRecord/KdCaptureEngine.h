#pragma once

/**
 * @file
 * The contract between the recorder module and the capture engine.
 */

#include <QList>
#include <QMetaType>
#include <QSize>
#include <QString>
#include <QtGlobal>

#include <cstdint>

class QObject;

/**
 * @def KDCAPTUREENGINE_EXPORT
 * Marks the two factories: exported where KDCAPTUREENGINE_BUILD is defined, by which an engine is
 * compiled, nothing where KDCAPTUREENGINE_STATIC_DEFINE is, and imported otherwise.
 */
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
    kdtNone = 0,      ///< no device
    kdtDesktop = 1,   ///< a screen
    kdtWebcam = 2,    ///< the module asks for it
    kdtGame = 3,      ///< the picture of a game
    kdtCursor = 4,    ///< the mouse
    kdtKeyboard = 5,  ///< the keyboard
    kdtSpeaker = 7,   ///< an audio output
    kdtMicrophone = 8 ///< an audio input; the module asks for it
};

/** What a recorder is doing. */
enum _KdCaptureStatus : int
{
    fcsNoStart = 0,   ///< never started, or stopped
    fcsRecording = 1, ///< what comes in goes into the file
    fcsPaused = 2,    ///< a take runs, and what comes in is left out
    fcsEnded = 3      ///< the take ended by itself, as when its disk is full; stop() is still due
};

/** First argument of IKdRecorderEventObserver::onCaptureDeviceCallback. */
enum _KdCaptureDeviceStatus : int
{
    fcdWebcamListChanged = 1, ///< a webcam was added, or the list of webcams is complete
    fcdWebcamRemoved = 2,     ///< a webcam was removed
    fcdAudioInputAdded = 3,   ///< the list of audio inputs changed
    fcdAudioInputRemoved =
        4,                ///< an audio input was removed; in an audio take: its own input is gone
    fcdWebcamOccupied = 5 ///< another application holds the webcam
};
/** The name that the signals use. */
using KdCaptureDeviceStatus = _KdCaptureDeviceStatus;

/** The shape of the webcam picture. */
enum _KdCaptureRecordShape : int
{
    fcrsCircle = 0, ///< the largest circle in the middle of the picture, the rest black
    fcrsSquare = 1  ///< the whole picture
};

/** The treatment of the webcam picture's background. */
enum _KdCaptureRecordBackgroundMode : int
{
    fcbmNone = -1,  ///< the picture as it is
    fcbmRemove = 0, ///< only the person is left, on black
    fcbmBlur = 1    ///< blurred behind the person
};

/** One capture device. A default-constructed record is the empty one and counts as no device. */
struct _KdCaptureDevInf
{
    qint32 devType = kdtNone; ///< a _KdDevType
    qint32 index = -1;        ///< position in the engine's list for its type
    QString name;             ///< display name, plain text
    QString id; ///< unique identifier, the same after the device was unplugged and plugged again
};
/** The name that the signals use. */
using KdCaptureDevInfo = _KdCaptureDevInf;

/** Codes of KdAudioFormat::bitrateMode. */
enum _KdBitrateMode : int
{
    fbmVariable = 1, ///< VBR
    fbmConstant = 2  ///< CBR
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
    qint32 channels = 2;              ///< 1 mono, 2 stereo
    qint32 bitPerSample = 16;         ///< of what is handed to the codec
    qint32 samplerate = 44100;        ///< Hz
    double volume = -1.0;             ///< 0.0 to 1.0; -1.0: not set, the device keeps its own
};

/** Everything needed to record audio. */
struct _KdAudioRecordParams
{
    qint32 index = -1;    ///< the audio input's index, _KdCaptureDevInf::index
    qint32 interval = 0;  ///< interval of the time and volume callbacks in ms
    QString outputName;   ///< full path of the output file
    KdAudioFormat format; ///< of the file; the volume is the input's
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
    KdVideoFormat video;      ///< codec and frame rate of the file
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
    /** Observes nothing: addEventObserver() of a recorder does. */
    IKdRecorderEventObserver() = default;
    /**
     * Detaches from nothing: removeEventObserver() comes before, since callbacks may be in flight.
     */
    virtual ~IKdRecorderEventObserver() = default;

    /**
     * A device changed state.
     * @param devStatus a _KdCaptureDeviceStatus
     * @param deviceIdx its index, or -1
     */
    virtual void onCaptureDeviceCallback(int devStatus, int deviceIdx)
    {
        Q_UNUSED(devStatus)
        Q_UNUSED(deviceIdx)
    }

    /**
     * How long the take is by now, at the interval that was set.
     * @param msec recorded time in ms since the first sample in the file, pauses left out.
     */
    virtual void onTimeCallback(long long msec) { Q_UNUSED(msec) }

    /**
     * How loud the input is, at the interval that was set; without a take too, so that a meter can
     * be watched before one.
     * @param volume the input's level, 0 (silence) to 100 (full scale).
     */
    virtual void onVolumeCallback(int volume) { Q_UNUSED(volume) }

    /**
     * A new preview frame.
     * @param width of the frame in pixels.
     * @param height of the frame in pixels.
     * @param pARGB32Bits width x height pixels in QImage::Format_ARGB32 order without padding;
     * owned by the engine and valid only until the call returns.
     */
    virtual void onFrameChangedCallback(int width, int height, uint8_t* pARGB32Bits)
    {
        Q_UNUSED(width)
        Q_UNUSED(height)
        Q_UNUSED(pARGB32Bits)
    }

    /**
     * How loud the output is. The module does not listen to it, and an engine need not call it.
     * @param volume the output's level, 0 to 100.
     */
    virtual void onOutputVolumeCallback(int volume) { Q_UNUSED(volume) }

private:
    Q_DISABLE_COPY(IKdRecorderEventObserver)
};

/**
 * Records one audio input into a file. Made by createAudioRecorder(), freed by release() alone.
 *
 * Bad input: a null pointer is ignored; an unknown index or an unusable output file is answered by
 * start() with false.
 */
class IKdAudioRecorder
{
public:
    /**
     * Begins a take. In mid-take the running take ends first.
     * @return true when recording began; false when there is no such input or the file cannot be
     * made. The status is then fcsNoStart, and there is no file.
     */
    virtual bool start() = 0;
    /** Nothing that follows is recorded until resume(). Without effect when no take runs. */
    virtual void pause() = 0;
    /** Goes on with a paused take. Without effect when none is paused. */
    virtual void resume() = 0;
    /**
     * Ends the take, paused or not.
     * @return true when the file was finished, or when no take ran; false: the file must not be
     * used.
     */
    virtual bool stop() = 0;
    /**
     * @param format copied by the engine; null is ignored. A value that the codec does not have
     * becomes the nearest that it has.
     */
    virtual void setAudioFormat(const KdAudioFormat* format) = 0;
    /** Keeps a place in the order; the module does not call it. */
    virtual void reserved6() = 0;
    /**
     * Delivery of device status callbacks.
     * @param on off at first.
     */
    virtual void setCallbackSwitch1(bool on) = 0;
    /**
     * Delivery of time callbacks.
     * @param on off at first.
     */
    virtual void setCallbackSwitch2(bool on) = 0;
    /**
     * Delivery of volume callbacks.
     * @param on off at first.
     */
    virtual void setCallbackSwitch3(bool on) = 0;
    /** @param msec interval of the time and volume callbacks; 0 and less: the engine's choice. */
    virtual void setInterval(int msec) = 0;
    /**
     * @param[out] devices filled with the audio inputs, each with its place as index; null is
     * ignored.
     */
    virtual void getDevices(QList<_KdCaptureDevInf>* devices) = 0;
    /**
     * @param index position in the list that getDevices() filled last; any other makes start()
     * answer false.
     */
    virtual void setDevice(int index) = 0;
    /**
     * @param path absolute path of the next take's file, in a folder that exists. Only the file of
     * this recorder's own last take may be there already: it is recorded again.
     */
    virtual void setOutputFile(const QString& path) = 0;
    /** @return the output file's path: of the running take, else of the last one, else as set. */
    virtual QString getOutputFile() = 0;
    /** @return what the recorder is doing. */
    virtual _KdCaptureStatus curStatus() = 0;
    /** @param observer the caller's; must live until removeEventObserver() has returned. */
    virtual void addEventObserver(IKdRecorderEventObserver* observer) = 0;
    /**
     * A barrier, see above.
     * @param observer called no more; one that was never added is fine.
     */
    virtual void removeEventObserver(IKdRecorderEventObserver* observer) = 0;
    /** Ends a running take, then destroys the recorder. Nothing may be called on it afterwards. */
    virtual void release() = 0;

protected:
    /** For engines. */
    IKdAudioRecorder() = default;
    /** Not for callers: release() destroys it. */
    ~IKdAudioRecorder() = default;

private:
    Q_DISABLE_COPY(IKdAudioRecorder)
};

/**
 * Shows a webcam's picture and records it, with or without an audio input. Made by
 * createWebcamRecorder(), freed by release() alone. A recorder that has no observer and nothing to
 * record holds no thread, no device and no descriptor, since not every caller releases it.
 *
 * Bad input: a null pointer is ignored or answered with false; an unknown index or an unusable
 * output file is answered with false, by the operation itself or by start().
 */
class IKdWebcamRecorder
{
public:
    /**
     * Begins a take; a preview goes on meanwhile. In mid-take the running take ends first.
     * @return true when recording began; false when the webcam, or the audio input that is to be
     * recorded, is not there, or the file cannot be made. The status is then fcsNoStart, and there
     * is no file.
     */
    virtual bool start() = 0;
    /**
     * Nothing that follows is recorded until resume(); a preview goes on.
     * @return false when no take is being recorded.
     */
    virtual bool pause() = 0;
    /**
     * Goes on with a paused take.
     * @return false when none is paused.
     */
    virtual bool resume() = 0;
    /**
     * Ends the take, paused or not; a preview goes on.
     * @return true when the file was finished, or when no take ran; false: the file must not be
     * used.
     */
    virtual bool stop() = 0;
    /**
     * @param resolution one of getResolutions(), in pixels.
     * @return false when the webcam refuses it; what was set before then stays.
     */
    virtual bool setResolution(QSize resolution) = 0;
    /**
     * @param format copied by the engine: codec, and one of getFrameRates().
     * @return false for null and for what the engine or the webcam does not have; what was set
     * before then stays.
     */
    virtual bool setVideoFormat(const KdVideoFormat* format) = 0;
    /**
     * @param format copied by the engine. A value that the codec does not have becomes the nearest
     * that it has.
     * @return false for null.
     */
    virtual bool setAudioFormat(const KdAudioFormat* format) = 0;
    /**
     * @param[out] resolutions filled with the current webcam's resolutions in pixels, empty without
     * a webcam; null is ignored.
     */
    virtual void getResolutions(QList<QSize>* resolutions) = 0;
    /**
     * @param[out] frameRates filled with the frame rates valid at the current resolution, in frames
     * per second, the first being the one for a user who does not choose; at least one for each
     * resolution that getResolutions() lists. Null is ignored.
     */
    virtual void getFrameRates(QList<double>* frameRates) = 0;
    /**
     * Delivery of device status callbacks.
     * @param on off at first.
     */
    virtual void setCallbackSwitch1(bool on) = 0;
    /**
     * Delivery of time callbacks.
     * @param on off at first.
     */
    virtual void setCallbackSwitch2(bool on) = 0;
    /**
     * Delivery of volume and frame callbacks.
     * @param on off at first.
     */
    virtual void setCallbackSwitch3(bool on) = 0;
    /**
     * @param on whether the next take has sound from the audio input that setDevice() chose; it has
     * none at first.
     */
    virtual void setRecordAudio(bool on) = 0;
    /** @param msec interval of the time and volume callbacks; 0 and less: the engine's choice. */
    virtual void setInterval(int msec) = 0;
    /**
     * @param type kdtWebcam or kdtMicrophone.
     * @param[out] devices filled with the devices of that type, each with its place as index.
     * @return false on failure, as for another type or null; the list is then left empty.
     */
    virtual bool getDevices(_KdDevType type, QList<_KdCaptureDevInf>* devices) = 0;
    /**
     * Chooses a device. A preview that runs shows the new webcam. Resolution and frame rate that it
     * does not have give way to some that it has.
     * @param type kdtWebcam or kdtMicrophone.
     * @param index position in the list that getDevices() filled last for that type.
     * @return false when there is no such device, or it has gone; what was set before then stays.
     */
    virtual bool setDevice(_KdDevType type, int index) = 0;
    /**
     * @param path absolute path of the next take's file, in a folder that exists. Only the file of
     * this recorder's own last take may be there already: it is recorded again.
     */
    virtual void setOutputFile(const QString& path) = 0;
    /** @return the output file's path: of the running take, else of the last one, else as set. */
    virtual QString getOutputFile() = 0;
    /** Keeps a place in the order; the module does not call it. */
    virtual void reserved19() = 0;
    /**
     * Frames come from now on, of whatever webcam, resolution and rate are set. Harmless when
     * repeated. The webcam may be opened later: one that then cannot be is told of by
     * fcdWebcamOccupied.
     * @return false when the webcam that was chosen is not there.
     */
    virtual bool startPreview() = 0;
    /**
     * No frame comes any more. Harmless when repeated.
     * @return false when the engine could not; callers only log that.
     */
    virtual bool stopPreview() = 0;
    /** @return what the recorder is doing; a preview is not part of that. */
    virtual _KdCaptureStatus curStatus() = 0;
    /** @param observer the caller's; must live until removeEventObserver() has returned. */
    virtual void addEventObserver(IKdRecorderEventObserver* observer) = 0;
    /**
     * A barrier, see above.
     * @param observer called no more; one that was never added is fine.
     */
    virtual void removeEventObserver(IKdRecorderEventObserver* observer) = 0;
    /**
     * Ends a running take and the preview, then destroys the recorder. Nothing may be called on it
     * afterwards.
     */
    virtual void release() = 0;
    /**
     * What takes look like; the preview's frames are whole all the same, since whoever shows them
     * cuts them. In mid-take too.
     * @param shape fcrsCircle or fcrsSquare.
     * @return false for any other.
     */
    virtual bool setRecordDisplayShape(_KdCaptureRecordShape shape) = 0;
    /** @return as set last; fcrsSquare at first. */
    virtual _KdCaptureRecordShape getRecordDisplayShape() = 0;
    /**
     * What becomes of the background, in preview and takes. In mid-take too.
     * @param mode an unknown one counts as fcbmNone. One that this machine cannot apply is ignored,
     * which the log tells.
     */
    virtual void setBackgroundMode(_KdCaptureRecordBackgroundMode mode) = 0;
    /** @return as applied last; fcbmNone at first. */
    virtual _KdCaptureRecordBackgroundMode getBackgroundMode() = 0;
    /** Keeps a place in the order; the module does not call it. */
    virtual void reserved30() = 0;
    /** Keeps a place in the order; the module does not call it. */
    virtual void reserved31() = 0;
    /**
     * For engines that can record more than the webcam beside it.
     * @param on whether nothing but the webcam is recorded.
     * @return false when the engine cannot do as asked.
     */
    virtual bool setOnlyWebcam(bool on) = 0;
    /**
     * Whether takes are mirrored left to right; the preview's frames are not, since whoever shows
     * them flips them. In mid-take too.
     * @param on whether they are.
     */
    virtual void setRecordFlip(bool on) = 0;
    /** @return as set last; false at first. */
    virtual bool getRecordFlip() = 0;

protected:
    /** For engines. */
    IKdWebcamRecorder() = default;
    /** Not for callers: release() destroys it. */
    ~IKdWebcamRecorder() = default;

private:
    Q_DISABLE_COPY(IKdWebcamRecorder)
};

/**
 * Makes a recorder without an observer, whose callbacks are all off. User-interface thread.
 * @param owner the object on whose behalf the recorder works; it must outlive the recorder. May be
 * null.
 * @return a new recorder, freed by its release() alone. An engine that cannot record at all may
 * answer null.
 */
KDCAPTUREENGINE_EXPORT IKdAudioRecorder* createAudioRecorder(QObject* owner);

/**
 * Makes a recorder without an observer, whose callbacks are all off. User-interface thread.
 * @return a new recorder, freed by its release() alone. An engine that cannot record at all may
 * answer null.
 */
KDCAPTUREENGINE_EXPORT IKdWebcamRecorder* createWebcamRecorder();

} // namespace KdVBLMODEL

// So that they can be queued between threads.
Q_DECLARE_METATYPE(KdVBLMODEL::_KdCaptureDeviceStatus)
Q_DECLARE_METATYPE(KdVBLMODEL::_KdCaptureDevInf)
