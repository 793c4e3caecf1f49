#pragma once

#include "FileDevices.h"

#include <KdCore/KdObserverList.h>
#include <KdRecord/KdCaptureEngine.h>

#include <QFile>
#include <QHash>

#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

/**
 * What both recorders of this engine are made of: a take, its file, its observers, and a thread
 * that plays the time while there is somebody to tell or something to record. The operations are
 * called on the user-interface thread; the thread reports, without any lock.
 */
class FileTake
{
public:
    using Observer = KdVBLMODEL::IKdRecorderEventObserver;

    FileTake() = default;
    ~FileTake();

    QList<KdVBLMODEL::_KdCaptureDevInf> listDevices(KdVBLMODEL::_KdDevType type);
    /** @return false when there is no such device, or it has gone; the one before then stays */
    bool select(KdVBLMODEL::_KdDevType type, int index);
    void deselect(KdVBLMODEL::_KdDevType type) { m_selected.remove(type); }
    /** @return the chosen device, the empty record without one */
    KdVBLMODEL::_KdCaptureDevInf device(KdVBLMODEL::_KdDevType type) const;

    /** @param content what the file gets at once and then each time the interval is over */
    bool start(const QByteArray& content);
    bool pause();
    bool resume();
    bool stop();

    /** What a running take gets from now on. */
    void setContent(const QByteArray& content);
    /** @param picture shown from now on; null: none is */
    void setPreview(const QImage& picture);
    void setOutputFile(const QString& path) { m_nextPath = path; }
    QString outputFile() const { return m_takePath.isEmpty() ? m_nextPath : m_takePath; }
    void setInterval(int msec);
    void setSwitch(std::size_t number, bool on) { m_switches.at(number - 1) = on; }
    KdVBLMODEL::_KdCaptureStatus status() const { return m_status; }
    void addObserver(Observer* observer);
    void removeObserver(Observer* observer);

private:
    bool openFile();
    void keepThreadAsNeeded();
    void run();
    void tick(int msec);
    void reportPicture();

    KdObserverList<Observer> m_observers;
    std::array<std::atomic<bool>, 3> m_switches{};
    std::atomic<KdVBLMODEL::_KdCaptureStatus> m_status{KdVBLMODEL::fcsNoStart};
    std::atomic<int> m_interval{100};
    std::atomic<long long> m_elapsed{0};
    int m_nextInterval = 100;
    QHash<int, QList<KdVBLMODEL::_KdCaptureDevInf>> m_listed;
    QHash<int, KdVBLMODEL::_KdCaptureDevInf> m_selected;
    QString m_nextPath;
    QString m_takePath;

    std::mutex m_mutex; ///< for what follows; never held while an observer is called
    std::condition_variable m_wake;
    bool m_quit = false;
    bool m_isWhole = true; ///< whether all of the take went into its file
    QFile m_file;
    QByteArray m_content;
    QImage m_preview;

    std::thread m_thread; ///< last: it uses all of the above
};

/** An audio recorder whose takes are the bytes of its device's file. */
class FileAudioRecorder final : public KdVBLMODEL::IKdAudioRecorder
{
public:
    bool start() override;
    void pause() override { m_take.pause(); }
    void resume() override { m_take.resume(); }
    bool stop() override { return m_take.stop(); }
    void setAudioFormat(const KdVBLMODEL::KdAudioFormat* format) override { Q_UNUSED(format) }
    void reserved6() override {}
    void setCallbackSwitch1(bool on) override { m_take.setSwitch(1, on); }
    void setCallbackSwitch2(bool on) override { m_take.setSwitch(2, on); }
    void setCallbackSwitch3(bool on) override { m_take.setSwitch(3, on); }
    void setInterval(int msec) override { m_take.setInterval(msec); }
    void getDevices(QList<KdVBLMODEL::_KdCaptureDevInf>* devices) override;
    void setDevice(int index) override;
    void setOutputFile(const QString& path) override { m_take.setOutputFile(path); }
    QString getOutputFile() override { return m_take.outputFile(); }
    KdVBLMODEL::_KdCaptureStatus curStatus() override { return m_take.status(); }
    void addEventObserver(KdVBLMODEL::IKdRecorderEventObserver* observer) override
    {
        m_take.addObserver(observer);
    }
    void removeEventObserver(KdVBLMODEL::IKdRecorderEventObserver* observer) override
    {
        m_take.removeObserver(observer);
    }
    void release() override { delete this; }

private:
    ~FileAudioRecorder() = default;
    FileTake m_take;
};
