#include "AudioRecordFixture.h"

#include <QAction>
#include <QDoubleSpinBox>
#include <QMenu>
#include <QSystemTrayIcon>

using namespace KdVBLMODEL;

/** The voice-over dialog in the tray. */
class tst_KdAudioRecordViewTray : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void trayShowsTheState();
    void trayEntriesStartAndStop();
    void trayEntryResumesAPausedTake();
    void trayStartDuringTheCountdownChangesNothing();
    void trayQuitClosesUnlessRecording();
    void minimiseGoesToTheTrayAndBack();
    void clickOnTheTrayBringsTheDialogBack_data();
    void clickOnTheTrayBringsTheDialogBack();
    void comingBackByItselfTakesTheTrayIconAway();
    void countdownRunsOnWhileMinimised();
};

void tst_KdAudioRecordViewTray::trayShowsTheState()
{
    showView();
    const auto picture = [this] { return tray()->icon().pixmap(16, 16).toImage(); };
    const QImage idle = picture();
    QVERIFY(!idle.isNull());
    QCOMPARE(entry(1)->text(), QStringLiteral("Start recording"));
    QVERIFY(entry(2)->isEnabled());
    startTake();
    QVERIFY(picture() != idle);
    QCOMPARE(entry(1)->text(), QStringLiteral("Stop recording"));
    QVERIFY(!entry(2)->isEnabled());
    passTime(2000);
    stopTake();
    QVERIFY(picture() == idle);
    QVERIFY(entry(2)->isEnabled());
}

void tst_KdAudioRecordViewTray::trayEntriesStartAndStop()
{
    showView();
    entry(1)->trigger();
    QTRY_COMPARE(panel->status(), fcsRecording);
    QVERIFY(button(kStart)->isChecked());
    passTime(2000);
    entry(1)->trigger();
    QTRY_COMPARE(panel->status(), fcsNoStart);
    QVERIFY(!finishedPath.isEmpty());
    const QString log = logLines().join(QLatin1Char('\n'));
    QVERIFY(log.contains(QStringLiteral("audioRecording m_pActStartOrStop, &QAction::triggered")));
}

void tst_KdAudioRecordViewTray::trayEntryResumesAPausedTake()
{
    showView();
    const QString path = startTake();
    click(kPause);
    Q_EMIT tray()->contextMenu()->aboutToShow();
    QCOMPARE(entry(1)->text(), QStringLiteral("Resume recording"));
    entry(1)->trigger();
    QCOMPARE(panel->status(), fcsRecording);
    QCOMPARE(engine->count("start"), 1);
    passTime(2000);
    stopTake();
    QCOMPARE(finishedPath, path);
}

void tst_KdAudioRecordViewTray::trayStartDuringTheCountdownChangesNothing()
{
    showView();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    click(kStart);
    signalTexts.clear();
    entry(1)->trigger();
    QVERIFY(isCountingDown());
    QCOMPARE(signalTexts, QStringList());
}

void tst_KdAudioRecordViewTray::trayQuitClosesUnlessRecording()
{
    showView();
    startTake();
    QVERIFY(!entry(2)->isEnabled());
    passTime(2000);
    stopTake();
    entry(2)->trigger();
    QTRY_VERIFY(!view);
    const QString log = logLines().join(QLatin1Char('\n'));
    QVERIFY(log.contains(QStringLiteral("audioRecording m_pActQuit, &QAction::triggered")));
}

void tst_KdAudioRecordViewTray::minimiseGoesToTheTrayAndBack()
{
    showView();
    DialogDriver::click(*view, QStringLiteral("KdTitleBar_Minimize"));
    QTRY_VERIFY(view->isMinimized());
    QVERIFY(tray()->isVisible());

    entry(0)->trigger();
    QTRY_VERIFY(!view->isMinimized());
    QVERIFY(view->isVisible());
    QVERIFY(!tray()->isVisible());

    view->showOrHiddenViewMinimized(true);
    QTRY_VERIFY(view->isMinimized());
    QVERIFY(tray()->isVisible());
    view->showOrHiddenViewMinimized(false);
    QTRY_VERIFY(!view->isMinimized());
    QVERIFY(!tray()->isVisible());
}

void tst_KdAudioRecordViewTray::clickOnTheTrayBringsTheDialogBack_data()
{
    QTest::addColumn<int>("reason");
    QTest::addColumn<bool>("comesBack");
    QTest::newRow("click") << int(QSystemTrayIcon::Trigger) << true;
    QTest::newRow("double click") << int(QSystemTrayIcon::DoubleClick) << false;
    QTest::newRow("menu") << int(QSystemTrayIcon::Context) << false;
    QTest::newRow("middle button") << int(QSystemTrayIcon::MiddleClick) << false;
}

void tst_KdAudioRecordViewTray::clickOnTheTrayBringsTheDialogBack()
{
    QFETCH(int, reason);
    QFETCH(bool, comesBack);
    showView();
    view->showOrHiddenViewMinimized(true);
    QTRY_VERIFY(view->isMinimized());
    Q_EMIT tray()->activated(static_cast<QSystemTrayIcon::ActivationReason>(reason));
    drain();
    QTRY_COMPARE(!view->isMinimized(), comesBack);
    QCOMPARE(!tray()->isVisible(), comesBack);
    if (comesBack) {
        // No toggle: once more changes nothing but the place.
        view->move(0, 0);
        Q_EMIT tray()->activated(QSystemTrayIcon::Trigger);
        QVERIFY(view->isVisible());
        QTRY_VERIFY(view->pos() != QPoint(0, 0));
    }
}

void tst_KdAudioRecordViewTray::comingBackByItselfTakesTheTrayIconAway()
{
    showView();
    view->showOrHiddenViewMinimized(true);
    QTRY_VERIFY(view->isMinimized());
    view->showNormal();
    QTRY_VERIFY(!tray()->isVisible());
}

void tst_KdAudioRecordViewTray::countdownRunsOnWhileMinimised()
{
    showView();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(1);
    click(kStart);
    view->showOrHiddenViewMinimized(true);
    QTRY_COMPARE(panel->status(), fcsRecording);
    passTime(2000);
    entry(1)->trigger();
    QTRY_COMPARE(panel->status(), fcsNoStart);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordViewTray>(argc, argv);
}

#include "tst_KdAudioRecordViewTray.moc"
