#include "WebcamRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdCountCtrlVideo.h>
#include <KdRecord/KdWebcamRecordView.h>
#include <KdRecord/KdWebcamRecorderHelper.h>
#include <KdVBLModel/KdTrackEventLog.h>
#include <KdWidgets/KdTitleBar.h>

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScreen>
#include <QSignalSpy>
#include <QTimer>
#include <QWindow>

#include <functional>

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

class tst_KdWebcamRecordView : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void isWhatHostsExpect();
    void sizeIsThatOfItsScreen();
    void initDevicesFillsTheListsAndShowsThePicture();
    void previewSwitchIsAnswered();
    void showingIsReportedAsAUsageEvent();

    void finishedTakeComesWithItsDescription();
    void optionsOfTheTakeAreDescribed();
    void zoomIsToldOnceTheDialogGotASize();
    void tooShortTakeIsReportedWithoutAPathAndInFull();
    void startIsToldWhenItIsAskedFor();

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

    void countdownFollowsTheWindow();
    void languageChangeKeepsTheTake();
    void destroyedInsideASignal_data();
    void destroyedInsideASignal();
    void destroyedInAnyState_data();
    void destroyedInAnyState();
    void destroyedWhileModal();
    void destroyedWithItsParentInMidTake();
    void contentTakenAwayIsNoCrash();

private:
    void makeView(QWidget* parent = nullptr);
    /** On the screen, without a loop of its own. */
    void showView(QWidget* parent = nullptr);
    /** Lets the dialog run as hosts do; step happens in it, and the dialog is closed at its end. */
    int runModal(const std::function<void()>& step);
    void leaveBy(const QString& way);
    static QJsonObject object(const QVariant& text)
    {
        return QJsonDocument::fromJson(text.toString().toUtf8()).object();
    }

    QPointer<KdWebcamRecordView> view;
};

void tst_KdWebcamRecordView::makeView(QWidget* parent)
{
    view = new KdWebcamRecordView(parent);
    window = view;
    adopt(view->findChild<KdWebcamRecordPanel*>());
}

void tst_KdWebcamRecordView::showView(QWidget* parent)
{
    makeView(parent);
    view->initDevices();
    view->show();
    QVERIFY(QTest::qWaitForWindowActive(view));
    signalTexts.clear();
}

int tst_KdWebcamRecordView::runModal(const std::function<void()>& step)
{
    QTimer::singleShot(0, this, [this, step] {
        DialogDriver::waitUntil(
            [this] { return view->windowHandle() && view->windowHandle()->isExposed(); },
            QStringLiteral("the dialog"));
        step();
        if (view) {
            view->close();
        }
    });
    return view->doModal();
}

void tst_KdWebcamRecordView::isWhatHostsExpect()
{
    showView();
    QCOMPARE(view->objectName(), QStringLiteral("KdWebcamRecordView"));
    QCOMPARE(view->windowTitle(), QStringLiteral("Capture Video"));
    QVERIFY(view->testAttribute(Qt::WA_DeleteOnClose));
    QVERIFY(view->windowFlags() & Qt::FramelessWindowHint);
    QCOMPARE(view->contentWidget(), panel.data());
    QVERIFY(view->titleBar()->isVisible());
    QVERIFY(view->titleBar()->isResizeble());
    QVERIFY(view->findChild<QWidget*>(QStringLiteral("KdResizeGrip_Right"))->isVisible());
    QCOMPARE(panel->height(), view->height() - view->titleBar()->height());
    QCOMPARE(view->property("bgColorType").toInt(), 18);
    QCOMPARE(panel->property("bgColorType").toInt(), 18);
}

void tst_KdWebcamRecordView::sizeIsThatOfItsScreen()
{
    QVERIFY(QGuiApplication::primaryScreen()->availableSize().height() >= 900);
    makeView();
    QCOMPARE(view->size(), QSize(800, 900));
}

void tst_KdWebcamRecordView::initDevicesFillsTheListsAndShowsThePicture()
{
    makeView();
    QVERIFY(!engine->isPreviewing());
    view->initDevices();
    QVERIFY(engine->isPreviewing());
    QCOMPARE(choices(kCamera), texts({"Cam A", "Cam B"}));
}

void tst_KdWebcamRecordView::previewSwitchIsAnswered()
{
    makeView();
    auto* const box = control<QCheckBox>(kPreview);
    for (const bool on : {true, false}) {
        box->setChecked(on);
        QCOMPARE(view->isRecordPreview(), on);
    }
}

void tst_KdWebcamRecordView::showingIsReportedAsAUsageEvent()
{
    KdTrackEventLog::clear();
    makeView();
    QVERIFY(KdTrackEventLog::records().isEmpty());
    view->show();
    QCOMPARE(KdTrackEventLog::records().size(), 1);
    const KdTrackEventRecord record = KdTrackEventLog::records().first();
    QCOMPARE(record.name, QStringLiteral("record_video_screen_tool_bar_expose"));
    QCOMPARE(record.properties.size(), 1);
    QCOMPARE(record.properties.first().first, QStringLiteral("record_type"));
    QCOMPARE(record.properties.first().second.toString(), QStringLiteral("camera_record"));
}

void tst_KdWebcamRecordView::finishedTakeComesWithItsDescription()
{
    showView();
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    const QString path = startTake();
    engine->deliverTime(10400);
    drain();
    passTime(10400);
    stopTake();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().at(0).toString(), path);
    QCOMPARE(finished.first().at(1).toString(),
             QStringLiteral("{\n"
                            "    \"camera_record_backgroud\": \"\",\n"
                            "    \"camera_record_shape\": \"square\",\n"
                            "    \"device_name\": \"Cam A\",\n"
                            "    \"file_duration\": 10,\n"
                            "    \"frame_rate\": \"30fps\",\n"
                            "    \"is_camera_zoom\": true,\n"
                            "    \"is_use_mirror\": false,\n"
                            "    \"record_type\": \"camera_record\",\n"
                            "    \"video_resolution\": \"1920x1080\"\n"
                            "}\n"));
    QCOMPARE(finished.first().at(2).toString(), QStringLiteral("{\n"
                                                               "    \"file_format\": \"MP4\",\n"
                                                               "    \"file_type\": \"video\",\n"
                                                               "    \"video_codec\": \"H264\",\n"
                                                               "    \"video_muxer\": \"MP4\"\n"
                                                               "}\n"));
}

void tst_KdWebcamRecordView::optionsOfTheTakeAreDescribed()
{
    engine->script().frameRates = {29.97};
    showView();
    auto* const helper = panel->findChild<KdWebcamRecorderHelper*>();
    helper->setRecordDisplayShape(fcrsCircle);
    helper->setRecordFlip(true);
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    startTake();
    passTime(2000);
    stopTake();
    const QJsonObject info = object(finished.first().at(1));
    QCOMPARE(info.value(QLatin1String("frame_rate")).toString(), QStringLiteral("29.97fps"));
    QCOMPARE(info.value(QLatin1String("camera_record_shape")).toString(), QStringLiteral("circle"));
    QCOMPARE(info.value(QLatin1String("is_use_mirror")).toBool(), true);
}

void tst_KdWebcamRecordView::zoomIsToldOnceTheDialogGotASize()
{
    makeView();
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    const auto zoomed = [&] {
        Q_EMIT panel->sigCaptureFinished(QString(), QSize(1, 1), 1, 1, QString());
        return object(finished.last().at(1)).value(QLatin1String("is_camera_zoom")).toBool();
    };
    QVERIFY(!zoomed());
    QResizeEvent nothing(QSize(0, 0), QSize());
    QApplication::sendEvent(view, &nothing);
    QVERIFY(!zoomed());
    QResizeEvent something(QSize(1, 1), QSize());
    QApplication::sendEvent(view, &something);
    QVERIFY(zoomed());
    QApplication::sendEvent(view, &nothing);
    QVERIFY(zoomed());
}

void tst_KdWebcamRecordView::tooShortTakeIsReportedWithoutAPathAndInFull()
{
    showView();
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    startTake();
    answers->answerMessage(QDialogButtonBox::Ok);
    stopTake();
    QCOMPARE(finished.count(), 1);
    QCOMPARE(finished.first().at(0).toString(), QString());
    QCOMPARE(object(finished.first().at(1)).size(), 9);
    QCOMPARE(object(finished.first().at(2)).size(), 4);
}

void tst_KdWebcamRecordView::startIsToldWhenItIsAskedFor()
{
    showView();
    const QSignalSpy pressed(view, &KdWebcamRecordView::sigStartRecordBtnClick);
    startTake();
    QCOMPARE(pressed.count(), 1);
}

void tst_KdWebcamRecordView::doModalRunsModallyUntilClosedAndReturnsOne()
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

void tst_KdWebcamRecordView::doModalReturnsOneWhenRejected()
{
    makeView();
    QCOMPARE(runModal([this] { view->reject(); }), 1);
    QVERIFY(!view);
}

void tst_KdWebcamRecordView::doModalTwiceIsOnce()
{
    makeView();
    int inner = 0;
    QCOMPARE(runModal([&] { inner = view->doModal(); }), 1);
    QCOMPARE(inner, 1);
    QVERIFY(!view);
}

void tst_KdWebcamRecordView::leaveBy(const QString& way)
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

void tst_KdWebcamRecordView::everyWayOutClosesOnce_data()
{
    QTest::addColumn<QString>("way");
    QTest::addColumn<bool>("modal");
    for (const char* way : {"title bar", "escape", "OK", "close", "reject", "window system"}) {
        for (const bool modal : {true, false}) {
            QTest::addRow("%s%s", way, modal ? ", modal" : "") << QString::fromLatin1(way) << modal;
        }
    }
}

void tst_KdWebcamRecordView::everyWayOutClosesOnce()
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

void tst_KdWebcamRecordView::closingInMidTakeDeletesTheFileAndReportsNothing_data()
{
    QTest::addColumn<QString>("way");
    for (const char* way : {"title bar", "escape", "close", "reject", "window system"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdWebcamRecordView::closingInMidTakeDeletesTheFileAndReportsNothing()
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

void tst_KdWebcamRecordView::closingInTheCountdownEndsIt()
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

void tst_KdWebcamRecordView::closingTwiceIsHarmless()
{
    showView();
    const QSignalSpy closed(view, &KdWebcamRecordView::sigClose);
    view->close();
    view->reject();
    view->close();
    QCOMPARE(closed.count(), 1);
    QTRY_VERIFY(!view);
}

void tst_KdWebcamRecordView::closingFromInsideItsClosing()
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

void tst_KdWebcamRecordView::closingSavesSettingsAndGoesBackToTheParent()
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

void tst_KdWebcamRecordView::dialogThatIsKeptCanBeUsedAgain()
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

void tst_KdWebcamRecordView::countdownFollowsTheWindow()
{
    showView();
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    click(kStart);
    auto* const overlay = control<KdCountCtrlVideo>(kCountdown);
    QVERIFY(overlay->isVisible());
    const auto isCentred = [this, overlay] {
        const auto* const display = control<QWidget>(kDisplay);
        const QPoint middle = display->mapToGlobal(display->rect().center());
        return (overlay->geometry().center() - middle).manhattanLength() <= 2;
    };
    QTRY_VERIFY(isCentred());
    view->move(view->pos() + QPoint(-90, -40));
    QTRY_VERIFY(isCentred());
    view->resize(view->size() - QSize(0, 60));
    QTRY_VERIFY(isCentred());
    view->close();
    QTRY_VERIFY(!view);
}

void tst_KdWebcamRecordView::languageChangeKeepsTheTake()
{
    showView();
    const QSignalSpy finished(view, &KdWebcamRecordView::sigFinished);
    const QString path = startTake();
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    QCOMPARE(view->windowTitle(), QStringLiteral("[Capture Video]"));
    passTime(2000);
    stopTake();
    QCOMPARE(finished.first().at(0).toString(), path);
    QCOMPARE(object(finished.first().at(1)).value(QLatin1String("camera_record_shape")).toString(),
             QStringLiteral("[square]"));
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdWebcamRecordView::destroyedInsideASignal_data()
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

void tst_KdWebcamRecordView::destroyedInsideASignal()
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

void tst_KdWebcamRecordView::destroyedInAnyState_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"made", "preview", "counting", "recording", "paused"}) {
        QTest::newRow(state) << QString::fromLatin1(state);
    }
}

void tst_KdWebcamRecordView::destroyedInAnyState()
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

void tst_KdWebcamRecordView::destroyedWhileModal()
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

void tst_KdWebcamRecordView::destroyedWithItsParentInMidTake()
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

void tst_KdWebcamRecordView::contentTakenAwayIsNoCrash()
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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordView>(argc, argv);
}

#include "tst_KdWebcamRecordView.moc"
