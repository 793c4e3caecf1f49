#include "FileRecorder.h"

#include <chrono>
#include <utility>

using namespace KdVBLMODEL;

namespace {

constexpr int kLevel = 50;
constexpr int kBytesPerTick = 4096;
constexpr int kOwnInterval = 100;

} // namespace

FileTake::~FileTake()
{
    stop();
    m_observers.clear();
    keepThreadAsNeeded();
}

QList<_KdCaptureDevInf> FileTake::listDevices(_KdDevType type)
{
    m_listed[type] = FileDevices::list(type);
    return m_listed.value(type);
}

bool FileTake::select(_KdDevType type, int index)
{
    const _KdCaptureDevInf wanted = m_listed.value(type).value(index);
    if (!FileDevices::isThere(wanted)) {
        return false;
    }
    m_selected[type] = wanted;
    return true;
}

_KdCaptureDevInf FileTake::device(_KdDevType type) const
{
    return m_selected.value(type);
}

bool FileTake::start(const QByteArray& content)
{
    stop();
    if (content.isEmpty() || !openFile()) {
        return false;
    }
    if (m_file.write(content) != content.size()) {
        m_file.remove();
        return false;
    }
    m_takePath = m_nextPath;
    m_interval = m_nextInterval;
    m_elapsed = 0;
    m_isWhole = true;
    m_content = content;
    m_status = fcsRecording;
    keepThreadAsNeeded();
    return true;
}

/** A file that is there already is somebody else's, unless it is the last take. */
bool FileTake::openFile()
{
    m_file.setFileName(m_nextPath);
    const bool isOwn = m_nextPath == m_takePath;
    return m_file.open(isOwn ? QIODevice::WriteOnly : QIODevice::NewOnly);
}

bool FileTake::pause()
{
    auto expected = fcsRecording;
    return m_status.compare_exchange_strong(expected, fcsPaused);
}

bool FileTake::resume()
{
    auto expected = fcsPaused;
    return m_status.compare_exchange_strong(expected, fcsRecording);
}

bool FileTake::stop()
{
    if (m_status == fcsNoStart) {
        return true;
    }
    bool finished = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_status = fcsNoStart;
        m_interval = m_nextInterval;
        finished = m_file.flush() && m_isWhole;
        m_file.close();
    }
    keepThreadAsNeeded();
    return finished;
}

void FileTake::setContent(const QByteArray& content)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_content = content;
}

void FileTake::setPreview(const QImage& picture)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_preview = picture;
}

void FileTake::setInterval(int msec)
{
    m_nextInterval = msec > 0 ? qBound(10, msec, 1000) : kOwnInterval;
    if (m_status == fcsNoStart) {
        m_interval = m_nextInterval;
    }
}

void FileTake::addObserver(Observer* observer)
{
    m_observers.add(observer);
    keepThreadAsNeeded();
}

void FileTake::removeObserver(Observer* observer)
{
    m_observers.remove(observer); // the barrier
    keepThreadAsNeeded();
}

void FileTake::keepThreadAsNeeded()
{
    const bool isNeeded = m_status != fcsNoStart || !m_observers.isEmpty();
    if (isNeeded == m_thread.joinable()) {
        return;
    }
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_quit = !isNeeded;
    }
    if (isNeeded) {
        m_thread = std::thread([this] { run(); });
        return;
    }
    m_wake.notify_all();
    std::exchange(m_thread, std::thread()).join();
}

void FileTake::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_quit) {
        const int msec = m_interval;
        if (m_wake.wait_for(lock, std::chrono::milliseconds(msec), [this] { return m_quit; })) {
            return;
        }
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
            const QByteArray part = m_content.left(kBytesPerTick);
            m_isWhole = m_file.write(part) == part.size() && m_isWhole;
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
    return m_take.start(FileDevices::sound(m_take.device(kdtMicrophone)));
}

void FileAudioRecorder::getDevices(QList<_KdCaptureDevInf>* devices)
{
    const QList<_KdCaptureDevInf> listed = m_take.listDevices(kdtMicrophone);
    if (devices) {
        *devices = listed;
    }
}

void FileAudioRecorder::setDevice(int index)
{
    if (!m_take.select(kdtMicrophone, index)) {
        m_take.deselect(kdtMicrophone);
    }
}
