#include "MicrophoneFixture.h"

#include <Support/MediaProbe.h>

#include <QDir>

QString MicrophoneFixture::takePath(const QString& name) const
{
    const QDir folder(temporaryPath(QStringLiteral("takes")));
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(name);
}

bool MicrophoneFixture::plugMicrophone()
{
    if (!m_microphone) {
        m_microphone = std::make_unique<VirtualMicrophone>();
    }
    return m_microphone->isPlugged() || m_microphone->plug();
}

bool MicrophoneFixture::playTone(double decibel)
{
    const QString name = decibel < -20.0 ? QStringLiteral("quiet.wav") : QStringLiteral("tone.wav");
    return m_microphone->play(m_sounds.filePath(name));
}

double MicrophoneFixture::toneDecibel(const QString& path)
{
    return MediaProbe::steadyToneDecibel(path, kTone);
}

void MicrophoneFixture::initTestCase()
{
    QVERIFY(
        TestSound::writeTone(m_sounds.filePath(QStringLiteral("tone.wav")), kTone, -12.0, 60.0));
    QVERIFY(
        TestSound::writeTone(m_sounds.filePath(QStringLiteral("quiet.wav")), kTone, -30.0, 60.0));
}

void MicrophoneFixture::cleanup()
{
    if (m_microphone) {
        m_microphone->stopPlaying();
    }
    KdTestCase::cleanup();
}

void MicrophoneFixture::cleanupTestCase()
{
    m_microphone.reset();
}
