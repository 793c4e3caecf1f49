#include "Support/DialogDriver.h"
#include "Support/KdTestCase.h"
#include "Support/ScriptedEngine.h"
#include "Support/WindowAnswers.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioVoiceOverSession.h>

#include <QDoubleSpinBox>
#include <QPointer>
#include <QSignalSpy>

#include <memory>

/** A host's window with a session, and spies on all that it tells. */
struct SessionDesk
{
    SessionDesk()
    {
        KdUtility::gSetMainWindow(&window);
        window.resize(400, 300);
        window.show();
    }

    QWidget window;
    StudioVoiceOverSession session{&window};
    QSignalSpy opened{&session, &StudioRecordSession::opened};
    QSignalSpy closed{&session, &StudioRecordSession::closed};
    QSignalSpy started{&session, &StudioRecordSession::takeStarted};
    QSignalSpy runs{&session, &StudioRecordSession::takeRuns};
    QSignalSpy finished{&session, &StudioRecordSession::takeFinished};
    QSignalSpy mute{&session, &StudioRecordSession::mute};
    QSignalSpy lock{&session, &StudioRecordSession::lockChanged};

    void press(const char* name)
    {
        DialogDriver::click(*session.view(), QString::fromLatin1(name));
    }
    bool isLocked() const { return !lock.isEmpty() && lock.last().at(0).toBool(); }
};

class tst_StudioRecordSession : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void thereIsOneDialogAtATime();
    void takeIsToldFromStartToEnd();
    void lockIsToldFromTheCountdownToTheEnd();
    void abortedCountdownUnlocks();
    void closingInMidTakeStillReportsIt();
    void closingEndsTheMute();
    void windowGoesWithAnOpenDialog();
};

void tst_StudioRecordSession::init()
{
    KdTestCase::init();
    KdAppSettings::GetInstance()->Load();
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(
        temporaryPath(QStringLiteral("takes")));
}

void tst_StudioRecordSession::thereIsOneDialogAtATime()
{
    ScriptedEngine engine;
    SessionDesk desk;
    QVERIFY(!desk.session.isOpen());
    desk.session.open();
    const QPointer<KdFramelessDialog> view = desk.session.view();
    QVERIFY(view);
    desk.session.open();
    QCOMPARE(desk.session.view(), view.data());
    QCOMPARE(desk.opened.count(), 1);
    QCOMPARE(engine.created(), 1);
    desk.session.close();
    QTRY_COMPARE(desk.closed.count(), 1);
    QVERIFY(!view);
    QVERIFY(!desk.session.isOpen());
    desk.session.close();
    desk.session.open();
    QCOMPARE(desk.opened.count(), 2);
    desk.session.close();
    QTRY_COMPARE(desk.closed.count(), 2);
}

void tst_StudioRecordSession::takeIsToldFromStartToEnd()
{
    ScriptedEngine engine;
    engine.script().take = "sound";
    SessionDesk desk;
    desk.session.open();
    desk.press("KAudioCapture_RecorderButton");
    QTRY_COMPARE(desk.started.count(), 1);
    QCOMPARE(desk.started.at(0).at(0).toBool(), false);
    engine.deliverTime(2000);
    QTRY_COMPARE(desk.runs.count(), 1);
    QCOMPARE(desk.runs.at(0).at(0).toLongLong(), 60);
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    desk.press("KAudioCapture_RecorderButton");
    QTRY_COMPARE(desk.finished.count(), 1);
    QVERIFY(desk.finished.at(0).at(1).toString().contains(QStringLiteral("\"file_duration\": 2")));
    desk.session.close();
    QTRY_COMPARE(desk.closed.count(), 1);
}

void tst_StudioRecordSession::lockIsToldFromTheCountdownToTheEnd()
{
    ScriptedEngine engine;
    SessionDesk desk;
    desk.session.open();
    desk.press("KAudioCapture_RecorderButton");
    QTRY_VERIFY(desk.isLocked());
    QTRY_COMPARE(desk.started.count(), 1);
    QVERIFY(desk.isLocked());
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    desk.press("KAudioCapture_RecorderButton");
    QTRY_VERIFY(!desk.isLocked());
    QCOMPARE(desk.lock.count(), 2);
    desk.session.close();
    QTRY_COMPARE(desk.closed.count(), 1);
}

void tst_StudioRecordSession::abortedCountdownUnlocks()
{
    ScriptedEngine engine;
    SessionDesk desk;
    desk.session.open();
    auto* const countdown = desk.session.view()->findChild<QDoubleSpinBox*>();
    QVERIFY(countdown);
    countdown->setValue(9);
    desk.press("KAudioCapture_RecorderButton");
    QTRY_VERIFY(desk.isLocked());
    desk.press("KAudioCapture_pButtonStop");
    QTRY_VERIFY(!desk.isLocked());
    QVERIFY(desk.started.isEmpty());
    desk.session.close();
    QTRY_COMPARE(desk.closed.count(), 1);
}

void tst_StudioRecordSession::closingInMidTakeStillReportsIt()
{
    ScriptedEngine engine;
    SessionDesk desk;
    desk.session.open();
    desk.press("KAudioCapture_RecorderButton");
    QTRY_COMPARE(desk.started.count(), 1);
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    desk.session.close();
    QTRY_COMPARE(desk.closed.count(), 1);
    QCOMPARE(desk.finished.count(), 1);
    QVERIFY(!desk.isLocked());
}

void tst_StudioRecordSession::closingEndsTheMute()
{
    ScriptedEngine engine;
    KdAppSettings::GetInstance()->GetSettings()->GetGeneralSettings()->setIsAudioRecordingCheckMult(
        true);
    SessionDesk desk;
    desk.session.open();
    QTRY_VERIFY(!desk.mute.isEmpty());
    QCOMPARE(desk.mute.last().at(0).toBool(), true);
    desk.session.close();
    QTRY_COMPARE(desk.closed.count(), 1);
    QCOMPARE(desk.mute.last().at(0).toBool(), false);
}

void tst_StudioRecordSession::windowGoesWithAnOpenDialog()
{
    ScriptedEngine engine;
    auto desk = std::make_unique<SessionDesk>();
    desk->session.open();
    desk.reset();
    QCOMPARE(engine.alive(), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioRecordSession>(argc, argv);
}

#include "tst_StudioRecordSession.moc"
