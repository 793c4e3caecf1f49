#include "AudioRecordFixture.h"

#include <KdRecord/KdAudioRecordView.h>

#include <Support/TestFiles.h>

#include <QAction>
#include <QDoubleSpinBox>
#include <QFile>
#include <QMenu>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <QWindow>

#include <functional>

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

/** Every way in which the dialog ends: closed, rejected, destroyed. */
class tst_KdAudioRecordViewEnd : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void everyWayOutClosesOnce_data();
    void everyWayOutClosesOnce();
    void closingInMidTakeStillDeliversTheTake_data();
    void closingInMidTakeStillDeliversTheTake();
    void closingTwiceIsHarmless();
    void closingInsideTheMessageOfItsOwnClosing();
    void escapeDuringTheCountdownEndsIt();

    void destroyedInAnyState_data();
    void destroyedInAnyState();
    void destroyedInsideAMessage_data();
    void destroyedInsideAMessage();
    void destroyedInsideTheFailureOfAStart_data();
    void destroyedInsideTheFailureOfAStart();
    void destroyedInsideASignal_data();
    void destroyedInsideASignal();
    void deletedLaterFromTheShowing();
    void destroyedWithItsParentInMidTake();
    void destroyedFromItsTrayMenu();

private:
    void leaveBy(const QString& way);
    /** Does what brings up a message. */
    void bringUp(const QString& message);
    void destroy(bool later);
    void verifyGone();
};

void tst_KdAudioRecordViewEnd::everyWayOutClosesOnce_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way :
         {"title bar", "escape", "tray", "OK", "close", "reject", "window system"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdAudioRecordViewEnd::everyWayOutClosesOnce()
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

void tst_KdAudioRecordViewEnd::closingInMidTakeStillDeliversTheTake_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"title bar", "escape", "tray", "close", "reject", "window system"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdAudioRecordViewEnd::closingInMidTakeStillDeliversTheTake()
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

void tst_KdAudioRecordViewEnd::closingTwiceIsHarmless()
{
    showView();
    const QSignalSpy closed(view, &KdAudioRecordView::sigClose);
    view->close();
    view->reject();
    view->close();
    QCOMPARE(closed.count(), 1);
    QTRY_VERIFY(!view);
}

void tst_KdAudioRecordViewEnd::closingInsideTheMessageOfItsOwnClosing()
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

void tst_KdAudioRecordViewEnd::escapeDuringTheCountdownEndsIt()
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

void tst_KdAudioRecordViewEnd::destroyedInAnyState_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("later");
    for (const char* const state : {"idle", "counting", "recording", "paused", "asking"}) {
        QTest::addRow("%s", state) << QString::fromLatin1(state) << false;
        QTest::addRow("%s, later", state) << QString::fromLatin1(state) << true;
    }
}

void tst_KdAudioRecordViewEnd::destroyedInAnyState()
{
    QFETCH(QString, state);
    QFETCH(bool, later);
    showView();
    reachState(state);
    // Reports that are on their way reach no one.
    engine->deliverTime(3000);
    engine->deliverVolume(50);
    if (!later) {
        engine->deliverDevice(fcdAudioInputRemoved, 0);
    }
    destroy(later);
    verifyGone();
}

void tst_KdAudioRecordViewEnd::destroyedInsideAMessage_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("later");
    for (const char* const message : {"no device", "refused", "failed start", "too short",
                                      "device lost", "too short to close", "failed re-record"}) {
        QTest::addRow("%s", message) << QString::fromLatin1(message) << false;
        QTest::addRow("%s, later", message) << QString::fromLatin1(message) << true;
    }
}

void tst_KdAudioRecordViewEnd::destroyedInsideAMessage()
{
    QFETCH(QString, message);
    QFETCH(bool, later);
    showView();
    bool hasCome = false;
    answers->handle(QStringLiteral("KOldMessageDialog"), [this, later, &hasCome](QWidget& box) {
        const QPointer<QWidget> shown = &box;
        hasCome = true;
        destroy(later);
        QTRY_VERIFY(!shown);
    });
    bringUp(message);
    QTRY_VERIFY(hasCome);
    verifyGone();
    QCOMPARE(answers->messages().size(), 1);
}

void tst_KdAudioRecordViewEnd::bringUp(const QString& message)
{
    if (message == QLatin1String("no device")) {
        setMicrophones({});
        click("KAudioCapture_ButtonRefresh");
        panel->startFromOutside();
        return;
    }
    if (message == QLatin1String("refused")) {
        const QString file = temporaryPath(QStringLiteral("file"));
        TestFiles::write(file, "no folder");
        setVoiceFolder(file);
        button(kStart)->click();
        return;
    }
    if (message == QLatin1String("failed start")) {
        engine->fail("start");
        button(kStart)->click();
        return;
    }
    startTake();
    if (message == QLatin1String("too short")) {
        button(kStart)->click();
    } else if (message == QLatin1String("too short to close")) {
        view->close();
    } else if (message == QLatin1String("device lost")) {
        passTime(3000);
        engine->deliverDevice(fcdAudioInputRemoved, 0);
    } else if (message == QLatin1String("failed re-record")) {
        engine->fail("start");
        answers->answerPopover(true);
        button(kReRecord)->click();
    } else {
        QFAIL(qPrintable(message));
    }
}

void tst_KdAudioRecordViewEnd::destroyedInsideTheFailureOfAStart_data()
{
    QTest::addColumn<bool>("isReRecord");
    QTest::addColumn<bool>("later");
    QTest::newRow("start") << false << false;
    QTest::newRow("start, later") << false << true;
    QTest::newRow("re-record") << true << false;
    QTest::newRow("re-record, later") << true << true;
}

void tst_KdAudioRecordViewEnd::destroyedInsideTheFailureOfAStart()
{
    QFETCH(bool, isReRecord);
    QFETCH(bool, later);
    showView();
    bool hasCome = false;
    connect(view, &KdAudioRecordView::sigStartCaptureFailed, this, [this, later, &hasCome] {
        hasCome = true;
        destroy(later);
    });
    if (later) {
        // Until then it goes on to tell its user.
        answers->answerMessage(QDialogButtonBox::Ok);
    }
    bringUp(isReRecord ? QStringLiteral("failed re-record") : QStringLiteral("failed start"));
    QTRY_VERIFY(hasCome);
    verifyGone();
}

void tst_KdAudioRecordViewEnd::destroy(bool later)
{
    if (later) {
        view->deleteLater();
    } else {
        delete view;
    }
}

void tst_KdAudioRecordViewEnd::verifyGone()
{
    QTRY_VERIFY(!view);
    drain();
    QCOMPARE(engine->alive(), 0);
    QVERIFY(!isLocked());
}

void tst_KdAudioRecordViewEnd::destroyedInsideASignal_data()
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

void tst_KdAudioRecordViewEnd::destroyedInsideASignal()
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
        destroy(later);
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
    verifyGone();
}

void tst_KdAudioRecordViewEnd::deletedLaterFromTheShowing()
{
    view = new KdAudioRecordView;
    connect(view, &KdAudioRecordView::sigMute, view, &QObject::deleteLater);
    QCOMPARE(view->doModal(), 1);
    QTRY_VERIFY(!view);
}

void tst_KdAudioRecordViewEnd::destroyedWithItsParentInMidTake()
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

void tst_KdAudioRecordViewEnd::destroyedFromItsTrayMenu()
{
    showView();
    QPointer<QMenu> menu = tray()->contextMenu();
    connect(view, &KdAudioRecordView::sigClose, this, [this] { delete view; });
    entry(2)->trigger();
    QVERIFY(!view);
    QTRY_VERIFY(!menu);
}

void tst_KdAudioRecordViewEnd::leaveBy(const QString& way)
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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordViewEnd>(argc, argv);
}

#include "tst_KdAudioRecordViewEnd.moc"
