#include "FileRecorder.h"

#include <chrono>

using namespace KdVBLMODEL;

namespace {

constexpr int kLevel = 50;
constexpr int kBytesPerTick = 4096;

} // namespace

FileTake::FileTake() : m_thread([this] { run(); }) {}

FileTake::~FileTake()
{
    stop();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_quit = true;
    }
    m_wake.notify_all();
    m_thread.join();
}

QList<_KdCaptureDevInf> FileTake::listDevices(_KdDevType type)
{
    m_listed[type] = FileDevices::list(type);
    return m_listed.value(type);
}

bool FileTake::select(_KdDevType type, int index)
{
    m_selected[type] = index;
    return index >= 0 && index < m_listed.value(type).size();
}

_KdCaptureDevInf FileTake::device(_KdDevType type) const
{
    return m_listed.value(type).value(m_selected.value(type, -1));
}

bool FileTake::start(const QByteArray& head, const QByteArray& content)
{
    stop();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_file.setFileName(m_nextPath);
    if (content.isEmpty() || !m_file.open(QIODevice::WriteOnly) ||
        m_file.write(head + content) < 0) {
        m_file.close();
        return false;
    }
    m_takePath = m_nextPath;
    m_content = content;
    m_elapsed = 0;
    m_status = fcsRecording;
    return true;
}

void FileTake::pause()
{
    auto expected = fcsRecording;
    m_status.compare_exchange_strong(expected, fcsPaused);
}

void FileTake::resume()
{
    auto expected = fcsPaused;
    m_status.compare_exchange_strong(expected, fcsRecording);
}

bool FileTake::stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_status == fcsNoStart) {
        return true;
    }
    m_status = fcsNoStart;
    const bool finished = m_file.flush();
    m_file.close();
    return finished;
}

void FileTake::setPreview(const QImage& picture)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_preview = picture;
}

void FileTake::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_quit) {
        const int msec = m_interval;
        m_wake.wait_for(lock, std::chrono::milliseconds(msec));
        lock.unlock();
        tick(msec);
        lock.lock();
    }
}

void FileTake::tick(int msec)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_status == fcsRecording) {
            m_file.write(m_content.left(kBytesPerTick));
            m_elapsed += msec;
        }
    }
    if (m_status == fcsRecording && m_switches[1]) {
        m_observers.notify([this](Observer& observer) { observer.onTimeCallback(m_elapsed); });
    }
    if (m_switches[2]) {
        m_observers.notify([](Observer& observer) { observer.onVolumeCallback(kLevel); });
        reportPicture();
    }
}

void FileTake::reportPicture()
{
    QImage picture;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        picture = m_preview;
    }
    if (picture.isNull()) {
        return;
    }
    m_observers.notify([&picture](Observer& observer) {
        observer.onFrameChangedCallback(picture.width(), picture.height(), picture.bits());
    });
}

bool FileAudioRecorder::start()
{
    return m_take.start({}, FileDevices::sound(m_take.device(kdtMicrophone)));
}

void FileAudioRecorder::getDevices(QList<_KdCaptureDevInf>* devices)
{
    const QList<_KdCaptureDevInf> listed = m_take.listDevices(kdtMicrophone);
    if (devices) {
        *devices = listed;
    }
}
