#include "Support/KdTestCase.h"
#include "Support/TestFiles.h"

#include <Studio/StudioPlayer.h>
#include <Studio/StudioSpeech.h>

#include <QSignalSpy>

class tst_StudioPlayer : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAFileNothingPlays();
    void playingAdvancesAndEndsByItself();
    void pauseKeepsThePlaceAndPlayGoesOn();
    void stopGoesBackToTheBeginning();
    void anotherFileEndsTheFirst();
    void seekWhileStoppedIsWherePlayBegins();
    void seekWhilePlayingJumps();
    void muteHoldsForWhatIsPlayedLater();
    void missingFileIsAFailure();
    void brokenFileIsAFailure();
    void missingOutputIsAFailure();
    void goingWhilePlayingIsSafe();

private:
    QString makeSound(double seconds) const
    {
        QString path = temporaryPath(QStringLiteral("%1 s %1.wav").arg(seconds));
        TestFiles::write(path, StudioSpeech::synthesise(seconds));
        return path;
    }
    /** Plays in real time without a sound server: the test's sink waits for the clock. */
    static QString sink() { return QStringLiteral("fakeaudiosink"); }
};

using State = StudioPlayer::State;

void tst_StudioPlayer::withoutAFileNothingPlays()
{
    StudioPlayer player(nullptr, sink());
    QSignalSpy failed(&player, &StudioPlayer::failed);
    player.play();
    player.pause();
    player.stop();
    QVERIFY(player.state() == State::Stopped);
    QVERIFY(failed.isEmpty());
}

void tst_StudioPlayer::playingAdvancesAndEndsByItself()
{
    StudioPlayer player(nullptr, sink());
    QSignalSpy positions(&player, &StudioPlayer::positionChanged);
    QSignalSpy failed(&player, &StudioPlayer::failed);
    player.setFile(makeSound(0.6));
    player.play();
    QVERIFY(player.state() == State::Playing);
    QTRY_VERIFY(player.positionMs() > 100);
    QTRY_VERIFY(player.state() == State::Stopped);
    QCOMPARE(positions.last().at(0).toLongLong(), 0);
    QVERIFY(failed.isEmpty());
}

void tst_StudioPlayer::pauseKeepsThePlaceAndPlayGoesOn()
{
    StudioPlayer player(nullptr, sink());
    player.setFile(makeSound(10.0));
    player.play();
    QTRY_VERIFY(player.positionMs() > 200);
    player.pause();
    QVERIFY(player.state() == State::Paused);
    const qint64 paused = player.positionMs();
    player.play();
    QVERIFY(player.state() == State::Playing);
    QTRY_VERIFY(player.positionMs() > paused + 100);
}

void tst_StudioPlayer::stopGoesBackToTheBeginning()
{
    StudioPlayer player(nullptr, sink());
    player.setFile(makeSound(10.0));
    player.play();
    QTRY_VERIFY(player.positionMs() > 100);
    player.stop();
    QVERIFY(player.state() == State::Stopped);
    QCOMPARE(player.positionMs(), 0);
}

void tst_StudioPlayer::anotherFileEndsTheFirst()
{
    StudioPlayer player(nullptr, sink());
    player.setFile(makeSound(10.0));
    player.play();
    QTRY_VERIFY(player.positionMs() > 100);
    player.setFile(makeSound(5.0));
    QVERIFY(player.state() == State::Stopped);
    QCOMPARE(player.positionMs(), 0);
}

void tst_StudioPlayer::seekWhileStoppedIsWherePlayBegins()
{
    StudioPlayer player(nullptr, sink());
    player.setFile(makeSound(10.0));
    player.seek(5000);
    QCOMPARE(player.positionMs(), 5000);
    player.play();
    QTRY_VERIFY(player.positionMs() > 5100);
    QVERIFY(player.positionMs() < 9000);
}

void tst_StudioPlayer::seekWhilePlayingJumps()
{
    StudioPlayer player(nullptr, sink());
    player.setFile(makeSound(20.0));
    player.play();
    QTRY_VERIFY(player.positionMs() > 50);
    player.seek(15000);
    QTRY_VERIFY(player.positionMs() > 15050);
    player.seek(-7);
    QTRY_VERIFY(player.positionMs() < 5000);
}

void tst_StudioPlayer::muteHoldsForWhatIsPlayedLater()
{
    StudioPlayer player(nullptr, sink());
    QSignalSpy changed(&player, &StudioPlayer::mutedChanged);
    player.setMuted(true);
    player.setMuted(true);
    QCOMPARE(changed.count(), 1);
    player.setFile(makeSound(3.0));
    player.play();
    QTRY_VERIFY(player.positionMs() > 50);
    QVERIFY(player.isMuted());
    player.setMuted(false);
    QVERIFY(!player.isMuted());
    QVERIFY(player.state() == State::Playing);
}

void tst_StudioPlayer::missingFileIsAFailure()
{
    StudioPlayer player(nullptr, sink());
    QSignalSpy failed(&player, &StudioPlayer::failed);
    player.setFile(temporaryPath(QStringLiteral("gone.m4a")));
    player.play();
    QTRY_COMPARE(failed.count(), 1);
    QVERIFY(!failed.at(0).at(0).toString().isEmpty());
    QVERIFY(player.state() == State::Stopped);
}

void tst_StudioPlayer::brokenFileIsAFailure()
{
    TestFiles::write(temporaryPath(QStringLiteral("a.m4a")), QByteArray(4000, 'x'));
    StudioPlayer player(nullptr, sink());
    QSignalSpy failed(&player, &StudioPlayer::failed);
    player.setFile(temporaryPath(QStringLiteral("a.m4a")));
    player.play();
    QTRY_COMPARE(failed.count(), 1);
    QVERIFY(player.state() == State::Stopped);
}

void tst_StudioPlayer::missingOutputIsAFailure()
{
    StudioPlayer player(nullptr, QStringLiteral("nosuchsink"));
    QSignalSpy failed(&player, &StudioPlayer::failed);
    player.setFile(makeSound(1.0));
    player.play();
    QCOMPARE(failed.count(), 1);
    QVERIFY(failed.at(0).at(0).toString().contains(QStringLiteral("nosuchsink")));
    QVERIFY(player.state() == State::Stopped);
}

void tst_StudioPlayer::goingWhilePlayingIsSafe()
{
    for (int i = 0; i < 5; ++i) {
        StudioPlayer player(nullptr, sink());
        player.setFile(makeSound(3.0));
        player.play();
        QTRY_VERIFY(player.positionMs() > 0 || player.state() == State::Stopped);
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioPlayer>(argc, argv);
}

#include "tst_StudioPlayer.moc"
