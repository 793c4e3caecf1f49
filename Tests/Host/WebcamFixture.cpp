#include "WebcamFixture.h"

#include <Support/Patience.h>

#include <QTest>

using namespace KdVBLMODEL;

namespace {

int timeoutMs()
{
    return KdTest::patience(10000);
}

} // namespace

void WebcamEvents::onFrameChangedCallback(int width, int height, uint8_t* pixels)
{
    const QImage frame = QImage(pixels, width, height, 4 * width, QImage::Format_ARGB32).copy();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_lastFrame = frame;
        ++m_frameCount;
    }
    if (m_slownessMs > 0) {
        // Being slow is what this observer is asked for: frames must be dropped, not queued.
        QTest::qSleep(m_slownessMs);
    }
}

int WebcamEvents::frameCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_frameCount;
}

QImage WebcamEvents::lastFrame() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_lastFrame.copy();
}

void WebcamEvents::clearFrames()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lastFrame = QImage();
    m_frameCount = 0;
}

WebcamFixture::WebcamFixture() : m_recorder(createWebcamRecorder())
{
    m_recorder->addEventObserver(&m_events);
    m_recorder->setCallbackSwitch3(true);
    m_recorder->setCallbackSwitch2(true);
    m_recorder->setCallbackSwitch1(true);
}

WebcamFixture::~WebcamFixture()
{
    m_recorder->removeEventObserver(&m_events);
    m_recorder->release();
}

QStringList WebcamFixture::deviceNames(_KdDevType type)
{
    QList<_KdCaptureDevInf> devices;
    m_recorder->getDevices(type, &devices);
    QStringList names;
    for (const _KdCaptureDevInf& device : devices) {
        names.append(device.name);
    }
    return names;
}

bool WebcamFixture::choose(_KdDevType type, const QString& name)
{
    int index = -1;
    const auto isListed = [&] {
        index = deviceNames(type).indexOf(name);
        return index >= 0;
    };
    return QTest::qWaitFor(isListed, timeoutMs()) && m_recorder->setDevice(type, index);
}

bool WebcamFixture::showAt(QSize size, double frameRate)
{
    if (!m_recorder->setResolution(size)) {
        return false;
    }
    QList<double> rates;
    m_recorder->getFrameRates(&rates);
    KdVideoFormat format;
    format.frameRate = frameRate > 0.0 ? frameRate : rates.value(0);
    return m_recorder->setVideoFormat(&format) && m_recorder->startPreview() &&
           m_recorder->startPreview();
}

bool WebcamFixture::showsFrame(QSize size)
{
    m_events.clearFrames();
    return QTest::qWaitFor([&] { return m_events.lastSize() == size; }, timeoutMs());
}

bool WebcamFixture::open(const QString& name, QSize size)
{
    return choose(kdtWebcam, name) && showAt(size) && showsFrame(size);
}

bool WebcamFixture::record(const QString& path, bool withSound)
{
    m_events.clear();
    m_recorder->setRecordAudio(withSound);
    m_recorder->setInterval(100);
    m_recorder->setOutputFile(path);
    return m_recorder->start();
}

bool WebcamFixture::waitForTime(qint64 msec)
{
    return QTest::qWaitFor([&] { return m_events.lastTime() >= msec; },
                           timeoutMs() + static_cast<int>(msec));
}

bool WebcamFixture::hears(int deviceStatus)
{
    return QTest::qWaitFor([&] { return countOf(deviceStatus) > 0; }, timeoutMs());
}

int WebcamFixture::countOf(int deviceStatus) const
{
    const RecorderEvents::DeviceEvents events = m_events.deviceEvents();
    return static_cast<int>(std::count_if(events.begin(), events.end(), [&](const auto& event) {
        return event.first == deviceStatus;
    }));
}
