#pragma once

#include <QObject>
#include <QRunnable>
#include <QThreadPool>

#include <deque>
#include <functional>
#include <mutex>

/**
 * Does jobs one after another on a thread of its own, and what they report on the thread this
 * object lives on. Jobs and reports cross under a std::mutex of ours, which a race detector sees,
 * unlike the locks inside Qt.
 */
class StudioWorker : public QObject, private QRunnable
{
    Q_OBJECT

public:
    explicit StudioWorker(QObject* parent = nullptr);
    ~StudioWorker() override;

    /** On this object's thread. */
    void start(std::function<void()> job);
    /** From any thread: runs report later on this object's, unless that object goes before. */
    void report(std::function<void()> report);
    /** Drops the jobs that wait, and waits for the one that runs. */
    void stop();

private Q_SLOTS:
    void deliver();

private:
    using Calls = std::deque<std::function<void()>>;

    void run() override;
    std::function<void()> take(Calls* calls);

    std::mutex m_mutex;
    Calls m_jobs;
    Calls m_reports;
    QThreadPool m_pool;
};
