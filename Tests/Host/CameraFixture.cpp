#include "CameraFixture.h"

#include <QDir>

QString CameraFixture::takePath(const QString& name) const
{
    const QDir folder(temporaryPath(QStringLiteral("takes")));
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(name);
}

bool CameraFixture::plugBoth()
{
    return m_camera->plug() && m_microphone->plug() &&
           m_microphone->play(m_sounds.filePath(QStringLiteral("tone.wav")));
}

bool CameraFixture::prepare(WebcamFixture& recorder, QSize size)
{
    const auto isHeard = [&recorder] { return recorder.events().lastLevel() > 70; };
    return recorder.open(m_camera->description(), size) &&
           recorder.choose(KdVBLMODEL::kdtMicrophone, m_microphone->description()) &&
           QTest::qWaitFor(isHeard, 10000);
}

void CameraFixture::initTestCase()
{
    QVERIFY(
        TestSound::writeTone(m_sounds.filePath(QStringLiteral("tone.wav")), 997.0, -12.0, 60.0));
}

void CameraFixture::init()
{
    KdTestCase::init();
    m_camera = std::make_unique<VirtualCamera>();
    m_microphone = std::make_unique<VirtualMicrophone>();
}

void CameraFixture::cleanup()
{
    m_microphone.reset();
    m_camera.reset();
    KdTestCase::cleanup();
}
