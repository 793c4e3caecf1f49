#include "Support/DialogDriver.h"
#include "Support/KdTestCase.h"
#include "Support/ScriptedEngine.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdWebcamRecordView.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioWebcamSession.h>

#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTimer>
#include <QWindow>

#include <functional>
#include <memory>

/** A host's window with a session, and spies on all that it tells. */
struct WebcamDesk
{
    WebcamDesk()
    {
        KdUtility::gSetMainWindow(&window);
        window.resize(400, 300);
        window.show();
    }

    QWidget window;
    StudioWebcamSession session{&window};
    QSignalSpy opened{&session, &StudioRecordSession::opened};
    QSignalSpy closed{&session, &StudioRecordSession::closed};
    QSignalSpy started{&session, &StudioRecordSession::takeStarted};
    QSignalSpy finished{&session, &StudioRecordSession::takeFinished};
    QSignalSpy mute{&session, &StudioRecordSession::mute};
    QSignalSpy lock{&session, &StudioRecordSession::lockChanged};

    void press(const char* name)
    {
        DialogDriver::click(*session.view(), QString::fromLatin1(name));
    }
    bool isLocked() const { return !lock.isEmpty() && lock.last().at(0).toBool(); }
    bool isMuted() const { return !mute.isEmpty() && mute.last().at(0).toBool(); }
};

class tst_StudioWebcamSession : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void openRunsUntilTheDialogIsClosed();
    void takeIsToldFromStartToEnd();
    void closingInMidTakeReportsNothing();
    void finishingInMidTakeKeepsTheClip();
    void finishingATakeThatIsNotKeptAsksNobody();
    void projectIsMuteWhileTheDialogIsOpen();
    void lockIsToldFromTheCountdownToTheEnd();
    void windowGoesWithAnOpenDialog();

private:
    /** Opens the dialog; step happens while it runs, and the dialog is closed at its end. */
    static void use(WebcamDesk& desk, const std::function<void()>& step);
};

void tst_StudioWebcamSession::init()
{
    KdTestCase::init();
    KdAppSettings::GetInstance()->Load();
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetCaptureFileFolder(
        temporaryPath(QStringLiteral("clips")));
}

void tst_StudioWebcamSession::use(WebcamDesk& desk, const std::function<void()>& step)
{
    QTimer::singleShot(0, &desk.session, [&desk, step] {
        DialogDriver::waitUntil(
            [&desk] {
                const QWindow* const window = desk.session.view()->windowHandle();
                return window && window->isExposed();
            },
            QStringLiteral("the dialog"));
        step();
        desk.session.close();
    });
    desk.session.open();
}

void tst_StudioWebcamSession::openRunsUntilTheDialogIsClosed()
{
    const ScriptedEngine engine;
    WebcamDesk desk;
    bool wasOpen = false;
    use(desk, [&] {
        wasOpen = desk.session.isOpen() && engine.isPreviewing();
        // Only brings it to the front.
        desk.session.open();
        QCOMPARE(engine.created(), 1);
    });
    QVERIFY(wasOpen);
    QVERIFY(!desk.session.isOpen());
    QVERIFY(!engine.isPreviewing());
    QCOMPARE(desk.opened.count(), 1);
    QCOMPARE(desk.closed.count(), 1);
}

void tst_StudioWebcamSession::takeIsToldFromStartToEnd()
{
    ScriptedEngine engine;
    engine.script().take = "clip";
    WebcamDesk desk;
    use(desk, [&] {
        desk.press("KProDlg_KCameraCptBtn");
        QTRY_COMPARE(desk.started.count(), 1);
        QCOMPARE(desk.started.at(0).at(0).toBool(), false);
        engine.deliverTime(2000);
        // The recorder's own clock decides what is too short.
        QTest::qWait(1050);
        desk.press("KProDlg_KCameraCptBtn");
        QTRY_COMPARE(desk.finished.count(), 1);
    });
    QCOMPARE(desk.finished.count(), 1);
    QVERIFY(QFileInfo::exists(desk.finished.at(0).at(0).toString()));
    QVERIFY(desk.finished.at(0).at(1).toString().contains(QStringLiteral("\"file_duration\": 2")));
    QCOMPARE(desk.closed.count(), 1);
}

void tst_StudioWebcamSession::closingInMidTakeReportsNothing()
{
    ScriptedEngine engine;
    engine.script().take = "clip";
    WebcamDesk desk;
    use(desk, [&] {
        desk.press("KProDlg_KCameraCptBtn");
        QTRY_COMPARE(desk.started.count(), 1);
    });
    QCOMPARE(desk.closed.count(), 1);
    QCOMPARE(desk.finished.count(), 0);
    QVERIFY(!desk.isLocked());
}

void tst_StudioWebcamSession::finishingInMidTakeKeepsTheClip()
{
    ScriptedEngine engine;
    engine.script().take = "clip";
    WebcamDesk desk;
    use(desk, [&] {
        desk.press("KProDlg_KCameraCptBtn");
        QTRY_COMPARE(desk.started.count(), 1);
        engine.deliverTime(2000);
        // The recorder's own clock decides what is too short.
        QTest::qWait(1050);
        desk.session.finish();
    });
    QCOMPARE(desk.finished.count(), 1);
    QVERIFY(QFileInfo::exists(desk.finished.at(0).at(0).toString()));
    QCOMPARE(desk.closed.count(), 1);
    QVERIFY(!desk.isLocked());
}

void tst_StudioWebcamSession::finishingATakeThatIsNotKeptAsksNobody()
{
    ScriptedEngine engine;
    engine.script().take = "clip";
    WebcamDesk desk;
    use(desk, [&] {
        desk.press("KProDlg_KCameraCptBtn");
        QTRY_COMPARE(desk.started.count(), 1);
        desk.session.finish();
    });
    QCOMPARE(desk.finished.count(), 1);
    QCOMPARE(desk.finished.at(0).at(0).toString(), QString());
    QCOMPARE(desk.closed.count(), 1);
}

void tst_StudioWebcamSession::projectIsMuteWhileTheDialogIsOpen()
{
    const ScriptedEngine engine;
    WebcamDesk desk;
    bool wasMuted = false;
    use(desk, [&] { wasMuted = desk.isMuted(); });
    QVERIFY(wasMuted);
    QVERIFY(!desk.isMuted());
}

void tst_StudioWebcamSession::lockIsToldFromTheCountdownToTheEnd()
{
    const ScriptedEngine engine;
    WebcamDesk desk;
    use(desk, [&] {
        auto* const countdown = desk.session.view()->findChild<QDoubleSpinBox*>();
        QVERIFY(countdown);
        countdown->setValue(9);
        desk.press("KProDlg_KCameraCptBtn");
        QTRY_VERIFY(desk.isLocked());
        QVERIFY(desk.started.isEmpty());
    });
    QTRY_VERIFY(!desk.isLocked());
}

void tst_StudioWebcamSession::windowGoesWithAnOpenDialog()
{
    const ScriptedEngine engine;
    auto desk = std::make_unique<WebcamDesk>();
    QTimer::singleShot(0, &desk->session, [&desk] {
        DialogDriver::waitUntil([&desk] { return desk->session.view()->isVisible(); },
                                QStringLiteral("the dialog"));
        QTimer::singleShot(0, [&desk] { desk.reset(); });
    });
    desk->session.open();
    QVERIFY(!desk);
    QCOMPARE(engine.observerCount(), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioWebcamSession>(argc, argv);
}

#include "tst_StudioWebcamSession.moc"
