#pragma once

#include <KdRecord/KdCaptureEngine.h>

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <any>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

class ScriptedEngineState;

/** One call of a recorder operation. */
struct ScriptedCall
{
    int recorder = 0;                ///< 1 for the first recorder that was made, and so on
    QString operation;               ///< "setDevice"
    QString text;                    ///< "setDevice(8, 0)"
    std::vector<std::any> arguments; ///< in the types of the contract
    std::thread::id thread;

    /** Throws std::bad_any_cast when the argument is of another type. */
    template <typename T>
    T argument(std::size_t position) const
    {
        return std::any_cast<T>(arguments.at(position));
    }
};

/**
 * What the engine answers. The defaults are those of a well-behaved engine with one microphone and
 * one webcam. Change it on the thread that calls the recorders.
 */
struct EngineScript
{
    EngineScript();

    QList<KdVBLMODEL::_KdCaptureDevInf> microphones;
    QList<KdVBLMODEL::_KdCaptureDevInf> webcams;
    QList<QSize> resolutions;                   ///< of a webcam that resolutionsOf does not name
    QHash<QString, QList<QSize>> resolutionsOf; ///< by the webcam's id
    QList<double> frameRates;                   ///< at every resolution
    bool isStrict = false; ///< refuses all that the contract has an engine refuse; else it takes
                           ///< what it is given, which shows what the module gives it
    QSet<QString> failing; ///< operations that answer false and change nothing
    QByteArray take;       ///< what start() writes; null: it leaves the disk alone
    std::function<int(int status)> status; ///< replaces the status that curStatus() answers
    std::function<QString(const QString&)>
        outputFile; ///< replaces the path that getOutputFile() answers
};

/**
 * A capture engine for unit tests: records what is asked of it, answers from a script, and calls
 * observers from threads of its own.
 *
 * Make one before the first recorder of a test; the one made last answers. Without a script it
 * behaves well:
 * - start() answers true and makes the status 1, pause() 2, resume() 1, stop() 0; pause() and
 * resume() outside a take change nothing;
 * - start() answers false when the device's index is not in the list that the recorder handed out
 * last;
 * - setDevice() of the webcam recorder answers false for such an index;
 * - a failing stop() ends the take all the same.
 * A recorder stays usable until the process ends; a call after its release() is a warning.
 */
class ScriptedEngine
{
public:
    ScriptedEngine();
    ~ScriptedEngine();

    EngineScript& script();
    /** Shorthands for script().failing; "createAudioRecorder" and "createWebcamRecorder" answer
     * null. */
    void fail(const char* operation);
    void succeed(const char* operation);
    /** @param action runs inside each call of operation, before it takes effect; null takes it
     * away. */
    void during(const char* operation, std::function<void()> action);

    /** Everything called so far, in order. */
    std::vector<ScriptedCall> records() const;
    /** The same as texts. */
    QStringList calls() const;
    /** The same without the operations that only ask (getDevices, curStatus, ...). */
    QStringList commands() const;
    QStringList callsOf(const char* operation) const;
    int count(const char* operation) const;
    /** Throws std::out_of_range when operation was not called. */
    ScriptedCall lastCall(const char* operation) const;
    void clearCalls();

    int created() const;
    int released() const;
    int alive() const { return created() - released(); }
    /** The owner of the audio recorder made last. */
    QObject* owner() const;

    /** Of the recorder made last; the status is 0 and the rest empty when there is none. */
    KdVBLMODEL::_KdCaptureStatus status() const;
    bool isPreviewing() const;
    KdVBLMODEL::_KdCaptureDevInf selectedDevice(KdVBLMODEL::_KdDevType type) const;
    int observerCount() const;
    /** As chosen last, empty before. Any thread. */
    QSize pictureSize() const;

    /**
     * Call the observers of every live recorder on a thread of the engine and return when they are
     * done. Device status obeys switch 1, time switch 2, volume and frames (webcam recorders only)
     * switch 3.
     */
    void deliverDevice(int status, int index);
    void deliverTime(qint64 msec);
    void deliverVolume(int volume);
    void deliverFrame(const QImage& picture);

    /** Threads that deliver all kinds of callbacks without a pause until stopFlood() or the end. */
    void startFlood(int threads);
    void stopFlood();
    /** Callbacks that observers were given by the flood. */
    quint64 floodCount() const;

private:
    Q_DISABLE_COPY(ScriptedEngine)
    std::shared_ptr<ScriptedEngineState> m_state;
};
