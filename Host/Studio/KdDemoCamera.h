#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QProcess;

/**
 * A virtual camera with a moving picture, for a machine without one. It is a device of the
 * session's video server like any other and goes with this object, or with the process. Needs
 * PipeWire, one of its tools, and the program kd_virtual_camera beside this one. GUI thread.
 */
class KdDemoCamera : public QObject
{
    Q_OBJECT

public:
    explicit KdDemoCamera(QObject* parent = nullptr);
    ~KdDemoCamera() override;

    /** @return whether this machine, or the session's video server, has a camera already. Blocks
     * shortly. */
    static bool isCameraThere();

    /**
     * Makes the device and looks whether it gives pictures. Blocks, for 15 s at most; for the time
     * before a window is shown.
     * @return a sentence that says what failed; empty: the camera works
     */
    QString start();

    /** Its name at the video server, and the one that people see. */
    static QString nodeName();
    static QString displayName();

private:
    QString makeDevice();

    std::unique_ptr<QProcess> m_device;
};
