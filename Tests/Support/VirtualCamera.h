#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

/**
 * A webcam that exists only in the video server of the test's private session. It can be plugged
 * and unplugged. Its picture is a red, a green and a blue third, with a white square that moves
 * along the lower edge. Needs a test of label engine or e2e.
 *
 * Every operation waits until the server has done it, and answers false when it does not within
 * some seconds.
 */
class VirtualCamera
{
public:
    /**
     * Not plugged yet.
     * @param nodeName its identity, letters, digits, '_' @param description the name that people
     * see @param modes what it offers, each as in "YUY2:1280x720@30", "MJPG:640x480@30000/1001" or,
     * for ranges, "YUY2:160x120-1920x1080@5-60". Formats: YUY2, I420, NV12, BGRx, GRAY8, MJPG. One
     * more, "flash", makes it flash once a second, and beep, see FlashBeepSource.
     */
    explicit VirtualCamera(const QString& nodeName = QStringLiteral("hd_webcam"),
                           const QString& description = QStringLiteral("HD Webcam"),
                           const QStringList& modes = {QStringLiteral("YUY2:1280x720@30"),
                                                       QStringLiteral("YUY2:640x480@30"),
                                                       QStringLiteral("YUY2:640x480@15"),
                                                       QStringLiteral("YUY2:320x240@30")});
    /** Unplugs it. */
    ~VirtualCamera();

    bool plug();
    /** Pulls the plug, whoever watches. */
    bool unplug();
    bool isPlugged() const;
    /** Of the program that gives its picture; 0 while it is not plugged. */
    qint64 processId() const { return m_process.processId(); }

    /** It stays plugged, and answers nobody any more until letGo(). */
    void hold();
    void letGo();

    /** It can be seen, and gives no picture, as one that another program has opened. */
    void occupy();
    void free();

    QString nodeName() const { return m_nodeName; }
    QString description() const { return m_description; }

private:
    Q_DISABLE_COPY(VirtualCamera)

    void signal(int number);

    const QString m_nodeName;
    const QString m_description;
    const QStringList m_modes;
    QProcess m_process;
};
