#include "WebcamViewFixture.h"

#include <KdAppSettings/KdAppSettings.h>

#include <QDoubleSpinBox>
#include <QFile>
#include <QSignalSpy>
#include <QWindow>

using namespace KdVBLMODEL;

namespace {

using Action = std::function<void()>;
using Connector = std::function<void(KdWebcamRecordView*, const Action&)>;

template <typename Signal>
Connector onSignal(Signal signal)
{
    return [signal](KdWebcamRecordView* view, const Action& action) {
        QObject::connect(view, signal, view, [action] { action(); });
    };
}

} // namespace

Q_DECLARE_METATYPE(Connector)

/** Every way in which the dialog ends: as a modal one, closed, rejected, destroyed. */
class tst_KdWebcamRecordViewEnd : public WebcamViewFixture
{
    Q_OBJECT

private Q_SLOTS:
    void doModalRunsModallyUntilClosedAndReturnsOne();
    void doModalReturnsOneWhenRejected();
    void doModalTwiceIsOnce();
    void everyWayOutClosesOnce_data();
    void everyWayOutClosesOnce();
    void closingInMidTakeDeletesTheFileAndReportsNothing_data();
    void closingInMidTakeDeletesTheFileAndReportsNothing();
    void closingInTheCountdownEndsIt();
    void closingTwiceIsHarmless();
    void closingFromInsideItsClosing();
    void closingSavesSettingsAndGoesBackToTheParent();
    void dialogThatIsKeptCanBeUsedAgain();

    void destroyedInsideASignal_data();
    void destroyedInsideASignal();
    void destroyedInAnyState_data();
    void destroyedInAnyState();
    void destroyedWhileModal();
    void destroyedWithItsParentInMidTake();
    void contentTakenAwayIsNoCrash();

private:
    void leaveBy(const QString& way);
};

void tst_KdWebcamRecordViewEnd::doModalRunsModallyUntilClosedAndReturnsOne()
{
    mainWindow->show();
    makeView(mainWindow.get());
    view->initDevices();
    bool wasModal = false;
    QString path;
    QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    const int result = runModal([&] {
        wasModal = QApplication::activeModalWidget() == view;
        path = startTake();
        passTime(2000);
        stopTake();
    });
    QCOMPARE(result, 1);
    QVERIFY(wasModal);
    QVERIFY(!view);
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().first().toString(), path);
}

void tst_KdWebcamRecordViewEnd::doModalReturnsOneWhenRejected()
{
    makeView();
    QCOMPARE(runModal([this] { view->reject(); }), 1);
    QVERIFY(!view);
}

void tst_KdWebcamRecordViewEnd::doModalTwiceIsOnce()
{
    makeView();
    int inner = 0;
    QCOMPARE(runModal([&] { inner = view->doModal(); }), 1);
    QCOMPARE(inner, 1);
    QVERIFY(!view);
}

void tst_KdWebcamRecordViewEnd::everyWayOutClosesOnce_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("modal");
    for (const char* way : {"title bar", "escape", "OK", "close", "reject", "window system"}) {
        for (const bool modal : {true, false}) {
            QTest::addRow("%s%s", way, modal ? ", modal" : "") << QString::fromLatin1(way) << modal;
        }
    }
}

void tst_KdWebcamRecordViewEnd::everyWayOutClosesOnce()
{
    QFETCH(QString, way);
    QFETCH(bool, modal);
    if (modal) {
        makeView();
        view->initDevices();
    } else {
        showView();
    }
    const QSignalSpy closed(view, &KdWebcamRecordView::sigClose);
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    if (modal) {
        QCOMPARE(runModal([&] { leaveBy(way); }), 1);
    } else {
        leaveBy(way);
    }
    QTRY_VERIFY(!view);
    QCOMPARE(closed.count(), 1);
    QCOMPARE(finished.count(), 0);
    QVERIFY(!engine->isPreviewing());
}

void tst_KdWebcamRecordViewEnd::closingInMidTakeDeletesTheFileAndReportsNothing_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"title bar", "escape", "close", "reject", "window system"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdWebcamRecordViewEnd::closingInMidTakeDeletesTheFileAndReportsNothing()
{
    QFETCH(QString, way);
    showView();
    const QSignalSpy closed(view, &KdWebcamRecordView::sigClose);
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    const QString path = startTake();
    QVERIFY(QFile::exists(path));
    passTime(3000);
    leaveBy(way);
    QTRY_VERIFY(!view);
    QVERIFY(!QFile::exists(path));
    QCOMPARE(closed.count(), 1);
    QCOMPARE(finished.count(), 0);
    QVERIFY(!isLocked());
}

void tst_KdWebcamRecordViewEnd::closingInTheCountdownEndsIt()
{
    showView();
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    click(kStart);
    QVERIFY(isCountingDown());
    QVERIFY(isLocked());
    view->close();
    QTRY_VERIFY(!view);
    QCOMPARE(engine->count("start"), 0);
    QVERIFY(!isLocked());
}

void tst_KdWebcamRecordViewEnd::closingTwiceIsHarmless()
{
    showView();
    const QSignalSpy closed(view, &KdWebcamRecordView::sigClose);
    view->close();
    view->reject();
    view->close();
    QCOMPARE(closed.count(), 1);
    QTRY_VERIFY(!view);
}

void tst_KdWebcamRecordViewEnd::closingFromInsideItsClosing()
{
    showView();
    const QSignalSpy closed(view, &KdWebcamRecordView::sigClose);
    connect(view, &KdWebcamRecordView::sigClose, view, [this] {
        view->close();
        view->reject();
    });
    view->reject();
    QTRY_VERIFY(!view);
    QCOMPARE(closed.count(), 1);
}

void tst_KdWebcamRecordViewEnd::closingSavesSettingsAndGoesBackToTheParent()
{
    mainWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(mainWindow.get()));
    showView(mainWindow.get());
    QTRY_VERIFY(view->isActiveWindow());
    control<QDoubleSpinBox>(kSeconds)->setValue(7);
    view->close();
    QTRY_VERIFY(mainWindow->isActiveWindow());
    KdAppSettings::GetInstance()->Load();
    QCOMPARE(KdAppSettings::GetInstance()
                 ->GetSettings()
                 ->GetGeneralSettings()
                 ->GetRecordVideoCountdown(),
             7);
}

void tst_KdWebcamRecordViewEnd::dialogThatIsKeptCanBeUsedAgain()
{
    makeView();
    view->setAttribute(Qt::WA_DeleteOnClose, false);
    const QSignalSpy closed(view, &KdWebcamRecordView::sigClose);
    for (int round = 1; round <= 2; ++round) {
        view->initDevices();
        QCOMPARE(runModal([this] { QVERIFY(engine->isPreviewing()); }), 1);
        QVERIFY(view);
        QVERIFY(!engine->isPreviewing());
        QCOMPARE(closed.count(), round);
    }
}

void tst_KdWebcamRecordViewEnd::destroyedInsideASignal_data()
{
    using View = KdWebcamRecordView;
    QTest::addColumn<Connector>("connector");
    QTest::addColumn<QString>("signal");
    QTest::addColumn<bool>("later");
    QTest::addColumn<bool>("modal");
    const QList<QPair<const char*, Connector>> rows{
        {"sigStartRecordBtnClick", onSignal(&View::sigStartRecordBtnClick)},
        {"sigFinished", onSignal(&View::sigFinished)},
        {"sigClose", onSignal(&View::sigClose)},
    };
    for (const auto& row : rows) {
        for (const bool later : {false, true}) {
            for (const bool modal : {false, true}) {
                QTest::addRow("%s %s%s", row.first, later ? "later" : "at once",
                              modal ? ", modal" : "")
                    << row.second << QString::fromLatin1(row.first) << later << modal;
            }
        }
    }
}

void tst_KdWebcamRecordViewEnd::destroyedInsideASignal()
{
    QFETCH(Connector, connector);
    QFETCH(QString, signal);
    QFETCH(bool, later);
    QFETCH(bool, modal);
    makeView();
    view->initDevices();
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
        [this] { click(kStart); },
        [this] { QTRY_VERIFY(!view || panel->status() == fcsRecording); },
        [this] { engine->deliverTime(1000); },
        [this] { passTime(2000); },
        [this] { click(kStart); },
        [this] { DialogDriver::click(*view, QStringLiteral("KdTitleBar_Close")); },
    };
    const auto useIt = [&] {
        for (const auto& step : steps) {
            if (view) {
                step();
                drain();
            }
        }
    };
    if (modal) {
        QCOMPARE(runModal(useIt), 1);
    } else {
        view->show();
        QVERIFY(QTest::qWaitForWindowActive(view));
        useIt();
    }
    QVERIFY2(hasCome, qPrintable(signal));
    QTRY_VERIFY(!view);
    QCOMPARE(engine->observerCount(), 0);
    QVERIFY(!isLocked());
}

void tst_KdWebcamRecordViewEnd::destroyedInAnyState_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"made", "preview", "counting", "recording", "paused"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

void tst_KdWebcamRecordViewEnd::destroyedInAnyState()
{
    QFETCH(QString, state);
    if (state == QLatin1String("made")) {
        makeView();
    } else {
        showView();
    }
    QString path;
    if (state == QLatin1String("counting")) {
        control<QDoubleSpinBox>(kSeconds)->setValue(9);
        click(kStart);
    } else if (state == QLatin1String("recording") || state == QLatin1String("paused")) {
        path = startTake();
    }
    if (state == QLatin1String("paused")) {
        click(kPause);
    }
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    engine->startFlood(2);
    delete view;
    engine->stopFlood();
    drain();
    QCOMPARE(engine->observerCount(), 0);
    QVERIFY(!engine->isPreviewing());
    QVERIFY(path.isEmpty() || !QFile::exists(path));
    QCOMPARE(finished.count(), 0);
    QVERIFY(!isLocked());
}

void tst_KdWebcamRecordViewEnd::destroyedWhileModal()
{
    makeView();
    view->initDevices();
    QCOMPARE(runModal([this] {
                 startTake();
                 delete view;
             }),
             1);
    QVERIFY(!view);
    QVERIFY(takes().isEmpty());
}

void tst_KdWebcamRecordViewEnd::destroyedWithItsParentInMidTake()
{
    mainWindow->show();
    showView(mainWindow.get());
    startTake();
    engine->deliverTime(1000);
    mainWindow.reset();
    QVERIFY(!view);
    drain();
    QCOMPARE(engine->observerCount(), 0);
    QVERIFY(takes().isEmpty());
    mainWindow = std::make_unique<QWidget>();
}

void tst_KdWebcamRecordViewEnd::contentTakenAwayIsNoCrash()
{
    showView();
    view->setContentWidget(nullptr);
    QVERIFY(!panel);
    QVERIFY(!view->isRecordPreview());
    view->initDevices();
    view->move(50, 50);
    const QSignalSpy closed(view, &KdWebcamRecordView::sigClose);
    view->close();
    QTRY_VERIFY(!view);
    QCOMPARE(closed.count(), 1);
}

void tst_KdWebcamRecordViewEnd::leaveBy(const QString& way)
{
    if (way == QLatin1String("title bar")) {
        DialogDriver::click(*view, QStringLiteral("KdTitleBar_Close"));
    } else if (way == QLatin1String("escape")) {
        QTest::keyClick(view, Qt::Key_Escape);
    } else if (way == QLatin1String("OK")) {
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
    return KdTest::run<tst_KdWebcamRecordViewEnd>(argc, argv);
}

#include "tst_KdWebcamRecordViewEnd.moc"
