#include "AudioRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdWidgets/KdTitleBar.h>

#include <QAction>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QSignalSpy>
#include <QSystemTrayIcon>

using namespace KdVBLMODEL;

/** What hosts see of the dialog while it is open, and what a take tells them. */
class tst_KdAudioRecordView : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void declaresItsSignalsAndSlotsInOrder();
    void isWhatHostsExpect();
    void doModalReturnsAtOnce();
    void nothingBlocksTheHostWhileIdle();
    void panelsSignalsReachTheHost();
    void finishedTakeComesWithItsDescription();
    void anyDeviceNameReachesTheHost_data();
    void anyDeviceNameReachesTheHost();
    void tooShortTakeIsReportedWithoutAPath();
    void pauseAndFailureReachTheHost();
    void muteIsToldAtEveryShowing();

    void languageChangeKeepsEverything();
    void hostCallsInAnyOrder();
    void twoDialogsAtOnce();
};

void tst_KdAudioRecordView::declaresItsSignalsAndSlotsInOrder()
{
    const QStringList expected = texts(
        {"sigFinished(QString,QString,QString)", "sigStartCapture(bool)", "sigStartCaptureFailed()",
         "sigEndCapture()", "sigMute(bool)", "sigCaptureDoing(qlonglong)", "sigClose()",
         "sigStartRecordBtnClick()", "sigPause()", "sigResume()"});
    QCOMPARE(methodsOf(KdAudioRecordView::staticMetaObject), expected);
}

void tst_KdAudioRecordView::isWhatHostsExpect()
{
    showView();
    QCOMPARE(view->objectName(), QStringLiteral("KdAudioRecordView"));
    QCOMPARE(view->windowTitle(), QStringLiteral("Record Audio"));
    QCOMPARE(view->size(), QSize(480, 448));
    QVERIFY(view->testAttribute(Qt::WA_DeleteOnClose));
    QVERIFY(view->windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(view->contentWidget(), panel.data());
    QCOMPARE(view->titleBar()->height(), 40);
    QVERIFY(panel->height() >= 406);
    QVERIFY(view->findChild<QWidget*>(QStringLiteral("KdTitleBar_Minimize"))->isVisible());
    QVERIFY(view->findChild<QWidget*>(QStringLiteral("KdTitleBar_Close"))->isVisible());
    QCOMPARE(tray()->toolTip(), QStringLiteral("Piprop Download and Installation"));
    QVERIFY(!tray()->isVisible());
    QCOMPARE(tray()->contextMenu()->width(), 240);
    QCOMPARE(tray()->contextMenu()->actions().size(), 3);
    QCOMPARE(entry(0)->text(), QStringLiteral("Open recorder"));
    QCOMPARE(entry(2)->text(), QStringLiteral("Quit recorder"));
}

void tst_KdAudioRecordView::doModalReturnsAtOnce()
{
    view = new KdAudioRecordView;
    window = view;
    QCOMPARE(view->doModal(), 1);
    QVERIFY(view->isVisible());
    QCOMPARE(view->windowModality(), Qt::NonModal);
    QCOMPARE(engine->count("start"), 0);
}

void tst_KdAudioRecordView::nothingBlocksTheHostWhileIdle()
{
    showView(mainWindow.get());
    QVERIFY(!isLocked());
    QVERIFY(mainWindow->isEnabled());
}

void tst_KdAudioRecordView::panelsSignalsReachTheHost()
{
    showView();
    const QSignalSpy pressed(view, &KdAudioRecordView::sigStartRecordBtnClick);
    const QSignalSpy started(view, &KdAudioRecordView::sigStartCapture);
    const QSignalSpy doing(view, &KdAudioRecordView::sigCaptureDoing);
    const QSignalSpy muted(view, &KdAudioRecordView::sigMute);
    const QSignalSpy ended(view, &KdAudioRecordView::sigEndCapture);
    startTake();
    engine->deliverTime(2000);
    drain();
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(started.count(), 1);
    QCOMPARE(started.first().first().toBool(), false);
    QCOMPARE(doing.count(), 1);
    QCOMPARE(doing.first().first().toLongLong(), 50);
    passTime(2000);
    stopTake();
    QCOMPARE(ended.count(), 0);
    click("KAudioCapture_MuteBox");
    QCOMPARE(muted.count(), 1);
    QVERIFY(view->isMuted());
}

void tst_KdAudioRecordView::finishedTakeComesWithItsDescription()
{
    setMicrophones({QStringLiteral("Mic 1")});
    showView();
    const QSignalSpy finished(view, &KdAudioRecordView::sigFinished);
    const QString path = startTake();
    engine->deliverTime(10400);
    drain();
    passTime(10400);
    stopTake();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().at(0).toString(), path);
    QCOMPARE(finished.first().at(1).toString(), QStringLiteral("{\n"
                                                               "    \"audio_channels\": 2,\n"
                                                               "    \"device_name\": \"Mic 1\",\n"
                                                               "    \"file_duration\": 10,\n"
                                                               "    \"sampling_rate\": 16\n"
                                                               "}\n"));
    QCOMPARE(finished.first().at(2).toString(), QStringLiteral("{\n}\n"));
}

void tst_KdAudioRecordView::anyDeviceNameReachesTheHost_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("long") << QString(3000, QLatin1Char('m'));
    QTest::newRow("right to left") << QStringLiteral("ميكروفون");
    QTest::newRow("place markers") << QStringLiteral("%1 %2 %n");
    QTest::newRow("quotes") << QStringLiteral("\"'\\");
    QTest::newRow("markup") << QStringLiteral("<b>Mic</b>");
    QTest::newRow("line breaks") << QStringLiteral("Mic\n1");
}

void tst_KdAudioRecordView::anyDeviceNameReachesTheHost()
{
    QFETCH(QString, name);
    setMicrophones({name});
    showView();
    const QSignalSpy finished(view, &KdAudioRecordView::sigFinished);
    startTake();
    passTime(2000);
    stopTake();
    const QByteArray json = finished.first().at(1).toString().toUtf8();
    QCOMPARE(QJsonDocument::fromJson(json).object().value(QLatin1String("device_name")).toString(),
             name);
}

void tst_KdAudioRecordView::tooShortTakeIsReportedWithoutAPath()
{
    showView();
    const QSignalSpy finished(view, &KdAudioRecordView::sigFinished);
    startTake();
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toString(), QString());
}

void tst_KdAudioRecordView::pauseAndFailureReachTheHost()
{
    showView();
    const QSignalSpy paused(view, &KdAudioRecordView::sigPause);
    const QSignalSpy resumed(view, &KdAudioRecordView::sigResume);
    const QSignalSpy failed(view, &KdAudioRecordView::sigStartCaptureFailed);
    startTake();
    click(kPause);
    click(kPause);
    QCOMPARE(paused.count(), 1);
    QCOMPARE(resumed.count(), 1);
    passTime(2000);
    stopTake();
    engine->fail("start");
    answers->answerMessage(QDialogButtonBox::Ok);
    click(kStart);
    QTRY_COMPARE(failed.count(), 1);
    QTRY_COMPARE(answers->pending(), 0);
}

void tst_KdAudioRecordView::muteIsToldAtEveryShowing()
{
    KdAppSettings::GetInstance()->GetSettings()->GetGeneralSettings()->setIsAudioRecordingCheckMult(
        true);
    view = new KdAudioRecordView;
    window = view;
    const QSignalSpy muted(view, &KdAudioRecordView::sigMute);
    view->doModal();
    QCOMPARE(muted.count(), 1);
    QCOMPARE(muted.first().first().toBool(), true);
    QVERIFY(view->isMuted());
}

void tst_KdAudioRecordView::languageChangeKeepsEverything()
{
    showView();
    const QString path = startTake();
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    QCOMPARE(view->windowTitle(), QStringLiteral("[Record Audio]"));
    QCOMPARE(entry(0)->text(), QStringLiteral("[Open recorder]"));
    QCOMPARE(entry(1)->text(), QStringLiteral("[Stop recording]"));
    QCOMPARE(entry(2)->text(), QStringLiteral("[Quit recorder]"));
    QCOMPARE(panel->status(), fcsRecording);
    passTime(2000);
    stopTake();
    QCOMPARE(finishedPath, path);
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdAudioRecordView::hostCallsInAnyOrder()
{
    view = new KdAudioRecordView(nullptr);
    window = view;
    adopt(view->findChild<KdAudioRecordPanel*>());
    QVERIFY(!view->isMuted());
    view->showOrHiddenViewMinimized(false);
    view->showOrHiddenViewMinimized(true);
    view->RetranslateUi();
    view->doModal();
    view->doModal();
    view->showOrHiddenViewMinimized(false);
    const QSignalSpy closed(view, &KdAudioRecordView::sigClose);
    view->close();
    view->doModal();
    QVERIFY(!view->isMuted());
    QTRY_VERIFY(!view);
    QCOMPARE(closed.count(), 1);
}

void tst_KdAudioRecordView::twoDialogsAtOnce()
{
    showView();
    const QString path = startTake();
    passTime(2000);
    {
        KdAudioRecordView other;
        other.setAttribute(Qt::WA_DeleteOnClose, false);
        other.doModal();
        other.close();
    }
    QCOMPARE(panel->status(), fcsRecording);
    view->raise();
    view->activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), static_cast<QWidget*>(view));
    stopTake();
    QCOMPARE(finishedPath, path);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordView>(argc, argv);
}

#include "tst_KdAudioRecordView.moc"
