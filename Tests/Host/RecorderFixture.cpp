#include "RecorderFixture.h"

#include <Support/Patience.h>

#include <QTest>

using namespace KdVBLMODEL;

namespace {

int timeoutMs()
{
    return KdTest::patience(10000);
}

} // namespace

RecorderFixture::RecorderFixture() : m_recorder(createAudioRecorder(nullptr))
{
    m_recorder->addEventObserver(&m_events);
    m_recorder->setCallbackSwitch3(true);
    m_recorder->setCallbackSwitch2(true);
    m_recorder->setCallbackSwitch1(true);
}

RecorderFixture::~RecorderFixture()
{
    m_recorder->removeEventObserver(&m_events);
    m_recorder->release();
}

QStringList RecorderFixture::deviceNames()
{
    QList<_KdCaptureDevInf> devices;
    m_recorder->getDevices(&devices);
    QStringList names;
    for (const _KdCaptureDevInf& device : devices) {
        names.append(device.name);
    }
    return names;
}

bool RecorderFixture::choose(const QString& name)
{
    const auto isListed = [&] {
        m_chosen = deviceNames().indexOf(name);
        return m_chosen >= 0;
    };
    if (!QTest::qWaitFor(isListed, timeoutMs())) {
        return false;
    }
    m_recorder->setDevice(m_chosen);
    return true;
}

bool RecorderFixture::hearsDevice()
{
    m_events.clear();
    return QTest::qWaitFor([this] { return m_events.levels().size() > 1; }, timeoutMs());
}

bool RecorderFixture::record(const QString& path, const KdAudioFormat& format)
{
    m_events.clear();
    m_recorder->setOutputFile(path);
    m_recorder->setDevice(m_chosen);
    m_recorder->setInterval(50);
    m_recorder->setAudioFormat(&format);
    return m_recorder->start();
}

bool RecorderFixture::waitForTime(qint64 msec)
{
    return QTest::qWaitFor([&] { return m_events.lastTime() >= msec; },
                           timeoutMs() + static_cast<int>(msec));
}

KdAudioFormat RecorderFixture::format(int samplerate, int channels, int bitrate)
{
    KdAudioFormat format;
    format.samplerate = samplerate;
    format.channels = channels;
    format.bitrate = bitrate;
    return format;
}
