#include "Support/KdTestCase.h"
#include "Support/ScriptedEngine.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioUnattendedTake.h>
#include <Studio/StudioWebcamSession.h>

#include <QFileInfo>
#include <QTimer>

/** A session and a run over it, as the program has them; the test says what the import makes of the
 * file. */
struct WebcamRun
{
    explicit WebcamRun(double seconds, bool cameraExpected = true)
        : run(&session, manual(cameraExpected), seconds, patience())
    {
        KdUtility::gSetMainWindow(&window);
        window.show();
        QObject::connect(&run, &StudioUnattendedTake::finished, &run,
                         [this](const StudioTakeResult& end) {
                             result = end;
                             wasOpenAtTheEnd = session.isOpen();
                             ++ends;
                         });
        QObject::connect(&run, &StudioUnattendedTake::halfRecorded, &run,
                         [this] { wasOpenHalfway = session.isOpen(); });
        QObject::connect(&session, &StudioRecordSession::takeFinished, &run,
                         [this](const QString& path) { import(path); });
    }

    static StudioRecorderManual manual(bool cameraExpected)
    {
        StudioRecorderManual manual = StudioRecorderManual::webcam();
        manual.canHaveDevice = [cameraExpected] { return cameraExpected; };
        return manual;
    }
    static StudioUnattendedTake::Patience patience()
    {
        StudioUnattendedTake::Patience patience;
        patience.withoutServer = 300;
        return patience;
    }
    void import(const QString& path)
    {
        if (!path.isEmpty() && importProblem.isEmpty()) {
            run.noteImported(path);
        } else if (!path.isEmpty()) {
            run.noteImportFailed(path, importProblem);
        }
    }

    QWidget window;
    StudioWebcamSession session{&window};
    StudioUnattendedTake run;
    QString importProblem;
    StudioTakeResult result;
    int ends = 0;
    bool wasOpenHalfway = false;
    bool wasOpenAtTheEnd = true;
};

class tst_StudioUnattendedWebcam : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void recordsThroughTheDialogAndReports();
    void noCameraIsSaid();
    void tooShortTakeFailsWithTheRecordersWords();
    void importThatFailsIsSaid();
    void engineThatCannotStartIsAFailure();
    void lostCameraFailsWithTheRecordersWords();
    void dialogClosedByTheUserIsSaid();
};

void tst_StudioUnattendedWebcam::init()
{
    KdTestCase::init();
    KdAppSettings::GetInstance()->Load();
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetCaptureFileFolder(
        temporaryPath(QStringLiteral("clips")));
}

void tst_StudioUnattendedWebcam::recordsThroughTheDialogAndReports()
{
    ScriptedEngine engine;
    engine.script().take = "clip";
    WebcamRun desk(1.2);
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QCOMPARE(desk.result.error, QString());
    QVERIFY(QFileInfo::exists(desk.result.path));
    QVERIFY(desk.result.path.endsWith(QStringLiteral(".mp4")));
    QVERIFY(desk.result.fileInfo.contains(QStringLiteral("\"record_type\": \"camera_record\"")));
    QVERIFY(desk.result.fileExportInfo.contains(QStringLiteral("\"video_codec\": \"H264\"")));
    QVERIFY(desk.wasOpenHalfway);
    QVERIFY(!desk.wasOpenAtTheEnd);
    QCOMPARE(engine.count("start"), 1);
    QCOMPARE(engine.count("stop"), 1);
}

void tst_StudioUnattendedWebcam::noCameraIsSaid()
{
    ScriptedEngine engine;
    engine.script().webcams.clear();
    WebcamRun desk(2.0, false);
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.startsWith(QStringLiteral("There is no camera")),
             qPrintable(desk.result.error));
    QVERIFY(!desk.wasOpenAtTheEnd);
    QCOMPARE(engine.count("start"), 0);
}

void tst_StudioUnattendedWebcam::tooShortTakeFailsWithTheRecordersWords()
{
    ScriptedEngine engine;
    engine.script().take = "clip";
    WebcamRun desk(0.3);
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QCOMPARE(desk.result.error,
             QStringLiteral("The recording is too short. Data cannot be saved."));
}

void tst_StudioUnattendedWebcam::importThatFailsIsSaid()
{
    ScriptedEngine engine;
    engine.script().take = "clip";
    WebcamRun desk(1.1);
    desk.importProblem = QStringLiteral("It is empty.");
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.endsWith(QStringLiteral("could not be imported. It is empty.")),
             qPrintable(desk.result.error));
}

void tst_StudioUnattendedWebcam::engineThatCannotStartIsAFailure()
{
    allowLog(QStringLiteral("Failed to start the webcam record process"));
    ScriptedEngine engine;
    engine.fail("start");
    WebcamRun desk(1.1);
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY(!desk.result.error.isEmpty());
    QCOMPARE(desk.result.path, QString());
    QVERIFY(!desk.wasOpenAtTheEnd);
}

void tst_StudioUnattendedWebcam::lostCameraFailsWithTheRecordersWords()
{
    ScriptedEngine engine;
    engine.script().take = "clip";
    WebcamRun desk(30.0);
    QTimer once;
    once.setInterval(50);
    connect(&once, &QTimer::timeout, this, [&] {
        if (engine.count("start") == 1) {
            once.stop();
            engine.script().webcams.clear();
            engine.deliverDevice(2, 0);
        }
    });
    once.start();
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.contains(QStringLiteral("is lost")), qPrintable(desk.result.error));
}

void tst_StudioUnattendedWebcam::dialogClosedByTheUserIsSaid()
{
    ScriptedEngine engine;
    engine.script().webcams.clear();
    WebcamRun desk(2.0);
    QTimer::singleShot(0, &desk.session, [&desk] { desk.session.close(); });
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.startsWith(QStringLiteral("The recorder was closed")),
             qPrintable(desk.result.error));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioUnattendedWebcam>(argc, argv);
}

#include "tst_StudioUnattendedWebcam.moc"
