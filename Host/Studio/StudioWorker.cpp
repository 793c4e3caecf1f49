#include <Studio/StudioWorker.h>

StudioWorker::StudioWorker(QObject* parent) : QObject(parent)
{
    // One for all jobs: a run takes the next of them.
    setAutoDelete(false);
    m_pool.setMaxThreadCount(1);
}

StudioWorker::~StudioWorker()
{
    stop();
}

void StudioWorker::start(std::function<void()> job)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_pool.start(this);
}

void StudioWorker::report(std::function<void()> report)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_reports.push_back(std::move(report));
    }
    QMetaObject::invokeMethod(this, "deliver", Qt::QueuedConnection);
}

void StudioWorker::stop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_jobs.clear();
    }
    m_pool.waitForDone();
    // Behind everything that the last run did.
    const std::lock_guard<std::mutex> lock(m_mutex);
}

std::function<void()> StudioWorker::take(Calls* calls)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (calls->empty()) {
        return [] {};
    }
    std::function<void()> call = std::move(calls->front());
    calls->pop_front();
    return call;
}

void StudioWorker::run()
{
    {
        const std::function<void()> job = take(&m_jobs);
        job();
    }
    // For stop(), which has to come after what the job did.
    const std::lock_guard<std::mutex> lock(m_mutex);
}

void StudioWorker::deliver()
{
    // The report may destroy this object.
    const std::function<void()> report = take(&m_reports);
    report();
}
