#pragma once

#include <QObject>
#include <QString>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

class QProcess;

/**
 * A virtual microphone in which somebody speaks, for a machine without one. It is a device of the
 * sound server like any other and goes with this object, or with the process. Needs PipeWire and
 * its command line tools. GUI thread.
 */
class KdDemoMicrophone : public QObject
{
    Q_OBJECT

public:
    explicit KdDemoMicrophone(QObject* parent = nullptr);
    ~KdDemoMicrophone() override;

    /** @return whether the sound server knows a recording device already. Blocks shortly. */
    static bool isMicrophoneThere();

    /**
     * Makes the device, lets somebody speak into it, and listens whether that can be heard. Blocks,
     * for 20 s at most; for the time before a window is shown.
     * @return a sentence that says what failed; empty: the microphone works
     */
    QString start();

    /** Its name at the sound server, and the one that people see. */
    static QString nodeName();
    static QString displayName();

private:
    QString checkTools();
    QString makeDevice();
    QString speak();
    /** Connects the voice with the device. @return whether all of its channels are */
    bool link();
    void speakAgain();

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_device;
    std::unique_ptr<QProcess> m_voice;
    QTimer m_relink;
};
