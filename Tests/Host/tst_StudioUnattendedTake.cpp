#include "Support/KdTestCase.h"
#include "Support/ScriptedEngine.h"
#include "Support/TestFiles.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioUnattendedTake.h>
#include <Studio/StudioVoiceOverSession.h>

#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QLocalServer>

/** A session and a run over it, as the program has them; the test says what the import makes of the
 * file. */
struct RunDesk
{
    explicit RunDesk(double seconds, const StudioUnattendedTake::Patience& patience =
                                         StudioUnattendedTake::Patience())
        : run(&session, StudioRecorderManual::voiceOver(), seconds, patience)
    {
        KdUtility::gSetMainWindow(&window);
        window.show();
        QObject::connect(&run, &StudioUnattendedTake::finished, &run,
                         [this](const StudioTakeResult& end) {
                             result = end;
                             ++ends;
                         });
        QObject::connect(&session, &StudioRecordSession::takeFinished, &run,
                         [this](const QString& path) { import(path); });
    }

    void import(const QString& path)
    {
        if (path.isEmpty()) {
            return;
        }
        if (importProblem.isEmpty()) {
            run.noteImported(path);
        } else if (importProblem != QLatin1String("never")) {
            run.noteImportFailed(path, importProblem);
        }
    }

    QWidget window;
    StudioVoiceOverSession session{&window};
    StudioUnattendedTake run;
    QString importProblem;
    StudioTakeResult result;
    int ends = 0;
};

class tst_StudioUnattendedTake : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void recordsThroughTheDialogAndReports();
    void dialogIsClosedBeforeTheEndIsTold();
    void tooShortTakeFailsWithTheRecordersWords();
    void deviceThatCannotStartFailsWithTheRecordersWords();
    void forbiddenFolderFailsWithTheRecordersWords();
    void lostDeviceFailsWithTheRecordersWords();
    void noSoundServerIsSaid();
    void noMicrophoneIsSaid();
    void microphoneThatComesLateIsUsed();
    void importThatFailsIsSaid();
    void importThatNeverEndsIsSaid();
    void dialogClosedByTheUserIsSaid();
    void startThatNeverComesIsSaid();

private:
    /** Gives up soon where nothing is to come. */
    static StudioUnattendedTake::Patience hasty();
    static StudioUnattendedTake::Patience hastyAboutTheMicrophone();
    QString takes() const { return temporaryPath(QStringLiteral("takes")); }
};

void tst_StudioUnattendedTake::init()
{
    KdTestCase::init();
    KdAppSettings::GetInstance()->Load();
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(
        takes());
}

StudioUnattendedTake::Patience tst_StudioUnattendedTake::hasty()
{
    StudioUnattendedTake::Patience patience;
    patience.countdown = 600;
    patience.import = 300;
    return patience;
}

StudioUnattendedTake::Patience tst_StudioUnattendedTake::hastyAboutTheMicrophone()
{
    StudioUnattendedTake::Patience patience;
    patience.device = 300;
    patience.withoutServer = 300;
    return patience;
}

void tst_StudioUnattendedTake::recordsThroughTheDialogAndReports()
{
    ScriptedEngine engine;
    engine.script().take = "sound";
    RunDesk desk(1.2);
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(engine.count("start"), 1, 20000);
    engine.deliverTime(1000);
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QCOMPARE(desk.result.error, QString());
    QVERIFY(QFileInfo::exists(desk.result.path));
    QVERIFY(desk.result.fileInfo.contains(QStringLiteral("\"file_duration\": 1")));
    QCOMPARE(desk.result.fileExportInfo, QStringLiteral("{\n}\n"));
    QCOMPARE(engine.count("stop"), 1);
}

void tst_StudioUnattendedTake::dialogIsClosedBeforeTheEndIsTold()
{
    ScriptedEngine engine;
    engine.script().take = "sound";
    RunDesk desk(1.1);
    bool open = true;
    connect(&desk.run, &StudioUnattendedTake::finished, this,
            [&] { open = desk.session.isOpen(); });
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY(!open);
    QCOMPARE(engine.alive(), 0);
}

void tst_StudioUnattendedTake::tooShortTakeFailsWithTheRecordersWords()
{
    ScriptedEngine engine;
    RunDesk desk(0.3);
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QCOMPARE(desk.result.error,
             QStringLiteral("The recording is too short. Data cannot be saved."));
    QCOMPARE(desk.result.path, QString());
}

void tst_StudioUnattendedTake::deviceThatCannotStartFailsWithTheRecordersWords()
{
    ScriptedEngine engine;
    engine.fail("start");
    RunDesk desk(2.0);
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QCOMPARE(desk.result.error,
             QStringLiteral("Unable to record due to an issue with the device."));
    QCOMPARE(engine.alive(), 0);
}

void tst_StudioUnattendedTake::forbiddenFolderFailsWithTheRecordersWords()
{
    allowLog(QStringLiteral("."));
    TestFiles::write(takes(), "a file where a folder should be");
    ScriptedEngine engine;
    RunDesk desk(2.0);
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(
        desk.result.error.startsWith(QStringLiteral("Please check whether you have permission")),
        qPrintable(desk.result.error));
    QCOMPARE(engine.count("start"), 0);
}

void tst_StudioUnattendedTake::lostDeviceFailsWithTheRecordersWords()
{
    ScriptedEngine engine;
    engine.script().take = "sound";
    RunDesk desk(30.0);
    desk.importProblem = QStringLiteral("never");
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(engine.count("start"), 1, 20000);
    engine.deliverTime(5000);
    engine.deliverDevice(4, 0);
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.contains(QStringLiteral("connection lost")) ||
                 desk.result.error.contains(QStringLiteral("too short")),
             qPrintable(desk.result.error));
}

void tst_StudioUnattendedTake::noSoundServerIsSaid()
{
    ScriptedEngine engine;
    engine.script().microphones.clear();
    qputenv("XDG_RUNTIME_DIR", temporaryPath(QStringLiteral("nowhere")).toLocal8Bit());
    RunDesk desk(2.0, hastyAboutTheMicrophone());
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.startsWith(QStringLiteral("There is no sound server")),
             qPrintable(desk.result.error));
}

void tst_StudioUnattendedTake::noMicrophoneIsSaid()
{
    ScriptedEngine engine;
    engine.script().microphones.clear();
    qputenv("XDG_RUNTIME_DIR", temporaryPath(QString()).toLocal8Bit());
    QLocalServer server;
    QVERIFY(server.listen(temporaryPath(QStringLiteral("pipewire-0"))));
    RunDesk desk(2.0, hastyAboutTheMicrophone());
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.startsWith(QStringLiteral("There is no microphone")),
             qPrintable(desk.result.error));
}

void tst_StudioUnattendedTake::microphoneThatComesLateIsUsed()
{
    ScriptedEngine engine;
    engine.script().take = "sound";
    const auto microphones = engine.script().microphones;
    engine.script().microphones.clear();
    RunDesk desk(1.1);
    desk.run.run();
    QTRY_VERIFY(desk.session.isOpen());
    engine.script().microphones = microphones;
    engine.deliverDevice(3, 0);
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QCOMPARE(desk.result.error, QString());
}

void tst_StudioUnattendedTake::importThatFailsIsSaid()
{
    ScriptedEngine engine;
    engine.script().take = "sound";
    RunDesk desk(1.1);
    desk.importProblem = QStringLiteral("It is empty.");
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.endsWith(QStringLiteral("could not be imported. It is empty.")),
             qPrintable(desk.result.error));
}

void tst_StudioUnattendedTake::importThatNeverEndsIsSaid()
{
    ScriptedEngine engine;
    engine.script().take = "sound";
    RunDesk desk(1.1, hasty());
    desk.importProblem = QStringLiteral("never");
    desk.run.run();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.contains(QStringLiteral("not imported")),
             qPrintable(desk.result.error));
}

void tst_StudioUnattendedTake::dialogClosedByTheUserIsSaid()
{
    ScriptedEngine engine;
    engine.script().microphones.clear();
    RunDesk desk(2.0);
    desk.run.run();
    QTRY_VERIFY(desk.session.isOpen());
    desk.session.close();
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.startsWith(QStringLiteral("The recorder was closed")),
             qPrintable(desk.result.error));
}

void tst_StudioUnattendedTake::startThatNeverComesIsSaid()
{
    ScriptedEngine engine;
    RunDesk desk(2.0, hasty());
    desk.run.run();
    QTRY_VERIFY(desk.session.isOpen());
    auto* const countdown = desk.session.view()->findChild<QDoubleSpinBox*>();
    QVERIFY(countdown);
    countdown->setValue(9);
    QTRY_COMPARE_WITH_TIMEOUT(desk.ends, 1, 20000);
    QVERIFY2(desk.result.error.startsWith(QStringLiteral("The recording did not begin")),
             qPrintable(desk.result.error));
    QCOMPARE(engine.count("start"), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioUnattendedTake>(argc, argv);
}

#include "tst_StudioUnattendedTake.moc"
