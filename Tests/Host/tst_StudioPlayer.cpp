#include "Support/KdTestCase.h"
#include "Support/TestClip.h"
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
    void clipShowsItsPictureInStep_data();
    void clipShowsItsPictureInStep();
    void jumpInThePauseShowsThePictureThere();
    void stopTakesThePictureAway();
    void soundShowsNoPicture();
    void goingWhilePlayingIsSafe();

private:
    QString makeSound(double seconds) const
    {
        QString path = temporaryPath(QStringLiteral("%1 s %1.wav").arg(seconds));
        TestFiles::write(path, StudioSpeech::synthesise(seconds));
        return path;
    }
    QString makeClip(bool sound = true) const
    {
        QString path = temporaryPath(QStringLiteral("clip.mp4"));
        TestClip::write(path, {{Qt::red, 1.0}, {Qt::blue, 3.0}}, sound);
        return path;
    }
    static bool isLast(const QSignalSpy& pictures, const QColor& color)
    {
        const QImage picture =
            pictures.isEmpty() ? QImage() : pictures.last().at(0).value<QImage>();
        return !picture.isNull() && TestClip::isLike(picture.pixelColor(160, 90), color);
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
    QVERIFY(!failed.at(0).at(0).value<KdLiveText>().now().isEmpty());
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
    QVERIFY(failed.at(0).at(0).value<KdLiveText>().now().contains(QStringLiteral("nosuchsink")));
    QVERIFY(player.state() == State::Stopped);
}

void tst_StudioPlayer::clipShowsItsPictureInStep_data()
{
    QTest::addColumn<bool>("sound");
    QTest::newRow("with sound") << true;
    QTest::newRow("without sound") << false;
}

void tst_StudioPlayer::clipShowsItsPictureInStep()
{
    QFETCH(bool, sound);
    StudioPlayer player(nullptr, sink());
    QSignalSpy pictures(&player, &StudioPlayer::pictureChanged);
    QSignalSpy failed(&player, &StudioPlayer::failed);
    player.setFile(makeClip(sound));
    player.play();
    QTRY_VERIFY(isLast(pictures, Qt::red));
    QVERIFY2(player.positionMs() < 1500, qPrintable(QString::number(player.positionMs())));
    QTRY_VERIFY(isLast(pictures, Qt::blue));
    QVERIFY2(player.positionMs() >= 900, qPrintable(QString::number(player.positionMs())));
    // Moving, and not a picture now and then.
    QVERIFY2(pictures.count() >= 15, qPrintable(QString::number(pictures.count())));
    QVERIFY(failed.isEmpty());
}

void tst_StudioPlayer::jumpInThePauseShowsThePictureThere()
{
    StudioPlayer player(nullptr, sink());
    QSignalSpy pictures(&player, &StudioPlayer::pictureChanged);
    player.setFile(makeClip());
    player.play();
    QTRY_VERIFY(isLast(pictures, Qt::red));
    player.pause();
    player.seek(2500);
    QTRY_VERIFY(isLast(pictures, Qt::blue));
    QVERIFY(player.state() == State::Paused);
}

void tst_StudioPlayer::stopTakesThePictureAway()
{
    StudioPlayer player(nullptr, sink());
    QSignalSpy pictures(&player, &StudioPlayer::pictureChanged);
    player.setFile(makeClip());
    player.play();
    QTRY_VERIFY(isLast(pictures, Qt::red));
    player.stop();
    QVERIFY(pictures.last().at(0).value<QImage>().isNull());
}

void tst_StudioPlayer::soundShowsNoPicture()
{
    StudioPlayer player(nullptr, sink());
    QSignalSpy pictures(&player, &StudioPlayer::pictureChanged);
    player.setFile(makeSound(0.5));
    player.play();
    QTRY_VERIFY(player.state() == State::Stopped);
    QCOMPARE(pictures.count(), 1);
    QVERIFY(pictures.at(0).at(0).value<QImage>().isNull());
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
