#pragma once

#include <Support/KdTestCase.h>
#include <Support/VirtualMicrophone.h>

#include <memory>

/** Base of the tests of audio takes that go well: a microphone that stays, and sounds for it. */
class MicrophoneFixture : public KdTestCase
{
    Q_OBJECT

protected:
    QString takePath(const QString& name = QStringLiteral("take.m4a")) const;
    bool plugMicrophone();
    /** @param decibel -12 or -30 */
    bool playTone(double decibel);
    /** @return how loud that tone is in a file. */
    static double toneDecibel(const QString& path);

    std::unique_ptr<VirtualMicrophone> m_microphone; ///< stays plugged
    QTemporaryDir m_sounds;

protected Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

private:
    static constexpr double kTone = 997.0;
};
