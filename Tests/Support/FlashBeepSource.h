#pragma once

#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <QString>
#include <QStringList>

/**
 * A camera that flashes once a second and a microphone that hears each flash, in the test's private
 * session; FlashBeep finds both in what was recorded of them. Needs a test of label engine or e2e.
 */
class FlashBeepSource
{
public:
    /** Not plugged yet. @param modes of the camera, as VirtualCamera has them */
    explicit FlashBeepSource(const QStringList& modes = {QStringLiteral("YUY2:640x480@30")});

    /** @return whether both are there within some seconds. */
    bool plug();

    QString cameraDescription() const { return m_camera.description(); }
    QString microphoneDescription() const
    {
        return m_camera.description() + QStringLiteral(" Microphone");
    }

private:
    VirtualMicrophone m_clock; ///< a sound device, whose pace the microphone follows
    VirtualCamera m_camera;
};
