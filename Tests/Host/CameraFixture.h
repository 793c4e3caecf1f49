#pragma once

#include "WebcamFixture.h"

#include <Support/KdTestCase.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <memory>

/** Base of the tests of webcam takes: a camera and a microphone for each, and a place for files. */
class CameraFixture : public KdTestCase
{
    Q_OBJECT

protected:
    static constexpr QSize kVga{640, 480};
    static constexpr QSize kSmall{320, 240};

    QString takePath(const QString& name = QStringLiteral("take.mp4")) const;
    bool plugBoth();
    void allowCameraTrouble() { allowLog(QStringLiteral("KdCapturePipeline::handle")); }
    /** A recorder that shows the camera and has the microphone chosen. */
    bool prepare(WebcamFixture& recorder, QSize size = kVga);

    QTemporaryDir m_sounds;
    std::unique_ptr<VirtualCamera> m_camera;
    std::unique_ptr<VirtualMicrophone> m_microphone;

protected Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
};
