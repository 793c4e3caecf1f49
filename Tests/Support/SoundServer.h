#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/**
 * A sound server of the test's own, in the place of the session's, to be killed, held and started
 * again. Each operation waits until it is done and answers false when it is not within seconds.
 */
class SoundServer
{
public:
    /** Not running yet; the message bus stays the session's. From now on this process and its
     * children look for their server here; make it before anything asks for one. */
    SoundServer();
    ~SoundServer();

    bool isValid() const { return m_folder.isValid(); }
    bool start();
    /** Without a chance to say goodbye. */
    void kill();

    /** Stops its processes where they are: it is there, and answers nobody. */
    void hold();
    void letGo();

private:
    Q_DISABLE_COPY(SoundServer)

    bool startDaemon(const QString& program);
    void signalAll(int number);

    QTemporaryDir m_folder;
    std::vector<std::unique_ptr<QProcess>> m_daemons;
};
