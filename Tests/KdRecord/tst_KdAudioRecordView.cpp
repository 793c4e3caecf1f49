#include "AudioRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdAudioRecordView.h>
#include <KdWidgets/KdTitleBar.h>

#include <QAction>
#include <QDoubleSpinBox>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QSignalSpy>
#include <QSystemTrayIcon>

using namespace KdVBLMODEL;

namespace {

using Action = std::function<void()>;
using Connector = std::function<void(KdAudioRecordView*, const Action&)>;

template <typename Signal>
Connector onSignal(Signal signal)
{
    return [signal](KdAudioRecordView* view, const Action& action) {
        QObject::connect(view, signal, view, [action] { action(); });
    };
}

} // namespace

Q_DECLARE_METATYPE(Connector)

class tst_KdAudioRecordView : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
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

    void everyWayOutClosesOnce_data();
    void everyWayOutClosesOnce();
    void closingInMidTakeStillDeliversTheTake_data();
    void closingInMidTakeStillDeliversTheTake();
    void closingTwiceIsHarmless();
    void closingInsideTheMessageOfItsOwnClosing();
    void escapeDuringTheCountdownEndsIt();

    void languageChangeKeepsEverything();
    void hostCallsInAnyOrder();
    void twoDialogsAtOnce();
    void destroyedInsideASignal_data();
    void destroyedInsideASignal();
    void deletedLaterFromTheShowing();
    void destroyedWithItsParentInMidTake();
    void destroyedFromItsTrayMenu();

private:
    void leaveBy(const QString& way);
};

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

void tst_KdAudioRecordView::leaveBy(const QString& way)
{
    if (way == QLatin1String("title bar")) {
        DialogDriver::click(*view, QStringLiteral("KdTitleBar_Close"));
    } else if (way == QLatin1String("escape")) {
        QTest::keyClick(view, Qt::Key_Escape);
    } else if (way == QLatin1String("tray")) {
        entry(2)->setEnabled(true);
        entry(2)->trigger();
    } else if (way == QLatin1String("OK")) {
        button(kOk)->setEnabled(true);
        click(kOk);
    } else if (way == QLatin1String("close")) {
        view->close();
    } else if (way == QLatin1String("reject")) {
        view->reject();
    } else if (way == QLatin1String("window system")) {
        QCloseEvent event;
        QApplication::sendEvent(view->windowHandle(), &event);
    } else {
        QFAIL(qPrintable(way));
    }
}

void tst_KdAudioRecordView::everyWayOutClosesOnce_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way :
         {"title bar", "escape", "tray", "OK", "close", "reject", "window system"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdAudioRecordView::everyWayOutClosesOnce()
{
    QFETCH(QString, way);
    showView();
    const QSignalSpy closed(view, &KdAudioRecordView::sigClose);
    const QSignalSpy finished(view, &KdAudioRecordView::sigFinished);
    leaveBy(way);
    QTRY_VERIFY(!view);
    QCOMPARE(closed.count(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toString(), QString());
    QCOMPARE(engine->alive(), 0);
}

void tst_KdAudioRecordView::closingInMidTakeStillDeliversTheTake_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"title bar", "escape", "tray", "close", "reject", "window system"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdAudioRecordView::closingInMidTakeStillDeliversTheTake()
{
    QFETCH(QString, way);
    showView();
    const QSignalSpy closed(view, &KdAudioRecordView::sigClose);
    const QSignalSpy finished(view, &KdAudioRecordView::sigFinished);
    const QSignalSpy ended(view, &KdAudioRecordView::sigEndCapture);
    const QString path = startTake();
    passTime(3000);
    leaveBy(way);
    QTRY_VERIFY(!view);
    QCOMPARE(closed.count(), 1);
    QCOMPARE(ended.count(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toString(), path);
    QVERIFY(QFile::exists(path));
    QVERIFY(!isLocked());
}

void tst_KdAudioRecordView::closingTwiceIsHarmless()
{
    showView();
    const QSignalSpy closed(view, &KdAudioRecordView::sigClose);
    view->close();
    view->reject();
    view->close();
    QCOMPARE(closed.count(), 1);
    QTRY_VERIFY(!view);
}

void tst_KdAudioRecordView::closingInsideTheMessageOfItsOwnClosing()
{
    showView();
    const QSignalSpy closed(view, &KdAudioRecordView::sigClose);
    const QSignalSpy finished(view, &KdAudioRecordView::sigFinished);
    startTake();
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        view->close();
        view->reject();
        QVERIFY(view);
        drain();
        box.close();
    });
    view->reject();
    QTRY_VERIFY(!view);
    QCOMPARE(closed.count(), 1);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toString(), QString());
}

void tst_KdAudioRecordView::escapeDuringTheCountdownEndsIt()
{
    showView();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    click(kStart);
    QVERIFY(isCountingDown());
    pressKey(Qt::Key_Escape);
    QTRY_VERIFY(!view);
    QCOMPARE(engine->count("start"), 0);
    QVERIFY(!isLocked());
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

void tst_KdAudioRecordView::destroyedInsideASignal_data()
{
    using View = KdAudioRecordView;
    QTest::addColumn<Connector>("connector");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<bool>("later");
    const QList<QPair<const char*, Connector>> rows{
        {"sigStartRecordBtnClick", onSignal(&View::sigStartRecordBtnClick)},
        {"sigStartCapture", onSignal(&View::sigStartCapture)},
        {"sigCaptureDoing", onSignal(&View::sigCaptureDoing)},
        {"sigPause", onSignal(&View::sigPause)},
        {"sigResume", onSignal(&View::sigResume)},
        {"sigMute", onSignal(&View::sigMute)},
        {"sigClose", onSignal(&View::sigClose)},
        {"sigEndCapture", onSignal(&View::sigEndCapture)},
        {"sigFinished", onSignal(&View::sigFinished)},
    };
    for (const auto& row : rows) {
        for (const bool later : {false, true}) {
            QTest::addRow("%s %s", row.first, later ? "later" : "at once")
                << row.second << QString::fromLatin1(row.first) << later;
        }
    }
}

void tst_KdAudioRecordView::destroyedInsideASignal()
{
    QFETCH(Connector, connector);
    QFETCH(QString, signal);
    QFETCH(bool, later);
    showView();
    bool hasCome = false;
    connector(view, [this, later, &hasCome] {
        if (hasCome) {
            return;
        }
        hasCome = true;
        if (later) {
            view->deleteLater();
        } else {
            delete view;
        }
    });
    // Everything that a user can do, until the dialog has gone.
    const QList<std::function<void()>> steps{
        [this] { click("KAudioCapture_MuteBox"); },
        [this] { click(kStart); },
        [this] { QTRY_VERIFY(!view || panel->status() == fcsRecording); },
        [this] {
            engine->deliverTime(1000);
            drain();
        },
        [this] { click(kPause); },
        [this] { click(kPause); },
        [this] { passTime(2000); },
        [this] { DialogDriver::click(*view, QStringLiteral("KdTitleBar_Close")); },
    };
    for (const auto& step : steps) {
        if (view) {
            step();
            drain();
        }
    }
    QVERIFY2(hasCome, qPrintable(signal));
    QTRY_VERIFY(!view);
    QCOMPARE(engine->alive(), 0);
    QVERIFY(!isLocked());
}

void tst_KdAudioRecordView::deletedLaterFromTheShowing()
{
    view = new KdAudioRecordView;
    connect(view, &KdAudioRecordView::sigMute, view, &QObject::deleteLater);
    QCOMPARE(view->doModal(), 1);
    QTRY_VERIFY(!view);
}

void tst_KdAudioRecordView::destroyedWithItsParentInMidTake()
{
    mainWindow->show();
    showView(mainWindow.get());
    startTake();
    engine->deliverTime(1000);
    mainWindow.reset();
    QVERIFY(!view);
    drain();
    QCOMPARE(engine->alive(), 0);
    mainWindow = std::make_unique<QWidget>();
}

void tst_KdAudioRecordView::destroyedFromItsTrayMenu()
{
    showView();
    QPointer<QMenu> menu = tray()->contextMenu();
    connect(view, &KdAudioRecordView::sigClose, this, [this] { delete view; });
    entry(2)->trigger();
    QVERIFY(!view);
    QTRY_VERIFY(!menu);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordView>(argc, argv);
}

#include "tst_KdAudioRecordView.moc"
