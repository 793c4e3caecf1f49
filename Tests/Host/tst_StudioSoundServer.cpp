#include "Support/KdTestCase.h"

#include <Studio/StudioSoundServer.h>

#include <QLocalServer>

class tst_StudioSoundServer : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void socketsOfTheSessionAreKnown();
    void listeningServerIsReached();
    void nobodyListeningIsNotReached();
    void serverElsewhereCountsAsReachable();
};

void tst_StudioSoundServer::socketsOfTheSessionAreKnown()
{
    QProcessEnvironment environment;
    QVERIFY(StudioSoundServer::socketPaths(environment).isEmpty());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), QStringLiteral("/run/user/7"));
    QCOMPARE(StudioSoundServer::socketPaths(environment),
             (QStringList{QStringLiteral("/run/user/7/pipewire-0"),
                          QStringLiteral("/run/user/7/pulse/native")}));
    environment.insert(QStringLiteral("PIPEWIRE_REMOTE"), QStringLiteral("studio"));
    environment.insert(QStringLiteral("PULSE_SERVER"), QStringLiteral("unix:/run/pulse"));
    QCOMPARE(StudioSoundServer::socketPaths(environment),
             (QStringList{QStringLiteral("/run/pulse"), QStringLiteral("/run/user/7/studio"),
                          QStringLiteral("/run/user/7/pulse/native")}));
}

void tst_StudioSoundServer::listeningServerIsReached()
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), temporaryPath(QString()));
    QVERIFY(!StudioSoundServer::isReachable(environment));
    QLocalServer server;
    QVERIFY(server.listen(temporaryPath(QStringLiteral("pipewire-0"))));
    QVERIFY(StudioSoundServer::isReachable(environment));
}

void tst_StudioSoundServer::nobodyListeningIsNotReached()
{
    QVERIFY(!StudioSoundServer::isReachable(QProcessEnvironment()));
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PULSE_SERVER"), QStringLiteral("unix:/nowhere/native"));
    QVERIFY(!StudioSoundServer::isReachable(environment));
}

void tst_StudioSoundServer::serverElsewhereCountsAsReachable()
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PULSE_SERVER"), QStringLiteral("tcp:studio.example:4713"));
    QVERIFY(StudioSoundServer::isReachable(environment));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioSoundServer>(argc, argv);
}

#include "tst_StudioSoundServer.moc"
