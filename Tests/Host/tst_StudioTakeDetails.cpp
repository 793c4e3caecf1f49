#include "Support/KdTestCase.h"
#include "Support/TestClip.h"
#include "Support/TestFiles.h"

#include <Studio/StudioPictureView.h>
#include <Studio/StudioPlayer.h>
#include <Studio/StudioSpeech.h>
#include <Studio/StudioTakeDetails.h>
#include <Studio/StudioTransport.h>

#include <QLabel>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QToolButton>

class tst_StudioTakeDetails : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everythingAboutATakeIsShown();
    void bothJsonTextsAreShownAsTheyCame();
    void takeWithoutAReportSaysWhy();
    void brokenTakeCannotBePlayed_data();
    void brokenTakeCannotBePlayed();
    void playButtonPlaysPausesAndGoesOn();
    void stopButtonWorksOnlyWhilePlaying();
    void muteIsSeen();
    void sameTakeShownAgainGoesOnPlaying();
    void otherTakeEndsPlaying();
    void clipShowsItsPictureAndAsksForAPosterOnce();
    void everyControlHasAnAccessibleName();

private:
    StudioTake makeTake(const QString& name = QStringLiteral("REC_1.wav")) const
    {
        StudioTake take;
        take.path = temporaryPath(name);
        TestFiles::write(take.path, StudioSpeech::synthesise(5.0));
        take.durationMs = 5000;
        take.deviceName = QStringLiteral("<b>Mic</b> %1");
        take.fileInfo = QStringLiteral("{\n    \"device_name\": \"<b>Mic</b> %1\"\n}\n");
        take.fileExportInfo = QStringLiteral("{\n}\n");
        take.state = StudioTake::State::Good;
        return take;
    }

    template <typename Widget>
    static Widget* child(const StudioTakeDetails& details, const char* name)
    {
        return details.findChild<Widget*>(QString::fromLatin1(name));
    }
};

void tst_StudioTakeDetails::everythingAboutATakeIsShown()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    details.showTake(makeTake(), {});
    QCOMPARE(child<QLabel>(details, "Studio_TakeName")->text(), QStringLiteral("REC_1"));
    const QLabel* const origin = child<QLabel>(details, "Studio_TakeOrigin");
    QCOMPARE(origin->textFormat(), Qt::PlainText);
    QVERIFY2(origin->text().startsWith(QStringLiteral("0:05  \u00b7  <b>Mic</b> %1  \u00b7  ")),
             qPrintable(origin->text()));
    QCOMPARE(child<QLabel>(details, "Studio_Time")->text(), QStringLiteral("0:00 / 0:05"));
}

void tst_StudioTakeDetails::bothJsonTextsAreShownAsTheyCame()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    const StudioTake take = makeTake();
    details.showTake(take, {});
    const QString shown = child<QPlainTextEdit>(details, "Studio_Report")->toPlainText();
    QVERIFY(shown.contains(take.fileInfo));
    QVERIFY(shown.endsWith(take.fileExportInfo.trimmed()));
}

void tst_StudioTakeDetails::takeWithoutAReportSaysWhy()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    StudioTake take = makeTake();
    take.fileInfo.clear();
    take.fileExportInfo.clear();
    details.showTake(take, {});
    QVERIFY(child<QPlainTextEdit>(details, "Studio_Report")
                ->toPlainText()
                .contains(QStringLiteral("recovered")));
}

void tst_StudioTakeDetails::brokenTakeCannotBePlayed_data()
{
    QTest::addColumn<int>("state");
    using State = StudioTake::State;
    QTest::newRow("missing") << static_cast<int>(State::Missing);
    QTest::newRow("unreadable") << static_cast<int>(State::Unreadable);
    QTest::newRow("checking") << static_cast<int>(State::Checking);
}

void tst_StudioTakeDetails::brokenTakeCannotBePlayed()
{
    QFETCH(int, state);
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    StudioTake take = makeTake();
    take.state = static_cast<StudioTake::State>(state);
    details.showTake(take, {});
    QVERIFY(!child<QToolButton>(details, "Studio_Play")->isEnabled());
    details.transport()->togglePlay();
    QVERIFY(player.state() == StudioPlayer::State::Stopped);
}

void tst_StudioTakeDetails::playButtonPlaysPausesAndGoesOn()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    details.showTake(makeTake(), {});
    auto* const play = child<QToolButton>(details, "Studio_Play");
    QCOMPARE(play->toolTip(), QStringLiteral("Play"));
    QTest::mouseClick(play, Qt::LeftButton);
    QVERIFY(player.state() == StudioPlayer::State::Playing);
    QCOMPARE(play->accessibleName(), QStringLiteral("Pause"));
    QTest::mouseClick(play, Qt::LeftButton);
    QVERIFY(player.state() == StudioPlayer::State::Paused);
    QTest::keyClick(play, Qt::Key_Space);
    QVERIFY(player.state() == StudioPlayer::State::Playing);
    QTRY_COMPARE(child<QLabel>(details, "Studio_Time")->text(), QStringLiteral("0:01 / 0:05"));
}

void tst_StudioTakeDetails::stopButtonWorksOnlyWhilePlaying()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    details.showTake(makeTake(), {});
    auto* const stop = child<QToolButton>(details, "Studio_Stop");
    QVERIFY(!stop->isEnabled());
    player.play();
    QVERIFY(stop->isEnabled());
    QTest::mouseClick(stop, Qt::LeftButton);
    QVERIFY(player.state() == StudioPlayer::State::Stopped);
    QVERIFY(!stop->isEnabled());
}

void tst_StudioTakeDetails::muteIsSeen()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    const auto* const muted = child<QWidget>(details, "Studio_Muted");
    QVERIFY(muted->isHidden());
    player.setMuted(true);
    QVERIFY(!muted->isHidden());
    player.setMuted(false);
    QVERIFY(muted->isHidden());
}

void tst_StudioTakeDetails::sameTakeShownAgainGoesOnPlaying()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    const StudioTake take = makeTake();
    details.showTake(take, {});
    player.play();
    details.showTake(take, StudioPeaks(10));
    QVERIFY(player.state() == StudioPlayer::State::Playing);
}

void tst_StudioTakeDetails::otherTakeEndsPlaying()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    details.showTake(makeTake(), {});
    player.play();
    details.showTake(makeTake(QStringLiteral("REC_2.wav")), {});
    QVERIFY(player.state() == StudioPlayer::State::Stopped);
    QCOMPARE(player.file(), temporaryPath(QStringLiteral("REC_2.wav")));
}

void tst_StudioTakeDetails::clipShowsItsPictureAndAsksForAPosterOnce()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    StudioTakeDetails details(&player);
    QSignalSpy wanted(&details, &StudioTakeDetails::posterWanted);
    auto* const picture = child<StudioPictureView>(details, "Studio_Picture");
    details.showTake(makeTake(), {});
    QVERIFY(!picture->isVisibleTo(&details));
    StudioTake clip = makeTake(QStringLiteral("VID_1.mp4"));
    TestClip::write(clip.path, {{Qt::red, 2.0}});
    clip.picture = QSize(320, 180);
    details.showTake(clip, {});
    details.showTake(clip, {});
    QVERIFY(picture->isVisibleTo(&details));
    QCOMPARE(wanted.count(), 1);
    QVERIFY(child<QLabel>(details, "Studio_TakeOrigin")
                ->text()
                .contains(QStringLiteral("320 \u00d7 180")));
    QImage poster(32, 18, QImage::Format_RGB32);
    details.setPoster(QStringLiteral("/another.mp4"), poster);
    QVERIFY(picture->shown().isNull());
    details.setPoster(clip.path, poster);
    QCOMPARE(picture->shown().size(), QSize(32, 18));
    player.play();
    QTRY_COMPARE(picture->shown().size(), QSize(320, 180));
    player.stop();
    QCOMPARE(picture->shown().size(), QSize(32, 18));
}

void tst_StudioTakeDetails::everyControlHasAnAccessibleName()
{
    StudioPlayer player(nullptr, QStringLiteral("fakeaudiosink"));
    const StudioTakeDetails details(&player);
    for (const char* name : {"Studio_Play", "Studio_Stop", "Studio_Waveform", "Studio_Report"}) {
        QVERIFY2(!child<QWidget>(details, name)->accessibleName().isEmpty(), name);
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTakeDetails>(argc, argv);
}

#include "tst_StudioTakeDetails.moc"
