#include "Support/DialogDriver.h"
#include "Support/KdTestCase.h"
#include "Support/TestFiles.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdVBLModel/KdTakeRecovery.h>
#include <Studio/KdDemoMicrophone.h>
#include <Studio/StudioLanguages.h>
#include <Studio/StudioMediaProbe.h>
#include <Studio/StudioRecoveryBar.h>
#include <Studio/StudioTakeIndex.h>
#include <Studio/StudioTakeLibrary.h>
#include <Studio/StudioWaveformReader.h>
#include <Studio/StudioWindow.h>
#include <Studio/StudioWorkGate.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <algorithm>
#include <csignal>
#include <memory>

namespace {

constexpr int kRunMs = 60000;

/** The program with its output, as a script sees it. */
struct Program
{
    QProcess process;

    explicit Program(const QStringList& arguments, const QProcessEnvironment& environment =
                                                       QProcessEnvironment::systemEnvironment())
    {
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(STUDIO_PROGRAM), arguments);
    }

    /** @return the exit status, -1 when it did not end by itself */
    int exitStatus()
    {
        const bool ended =
            process.state() == QProcess::NotRunning || process.waitForFinished(kRunMs);
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QString output() { return QString::fromUtf8(process.readAllStandardOutput()); }
    QString errors() { return QString::fromUtf8(process.readAllStandardError()); }
};

float loudest(const QString& path)
{
    StudioWorkGate gate;
    const StudioPeaks peaks = readWaveform(path, gate);
    float peak = 0.0F;
    for (const StudioPeak& stretch : peaks) {
        peak = std::max(peak, stretch.peak);
    }
    return peak;
}

} // namespace

/** The program as scripts and newcomers run it, on machines that lack this or that. */
class tst_StudioProgram : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void itTellsItsArgumentsWithoutADisplay();
    void badCommandLineIsAnsweredWithoutADisplay();
    void missingDisplayIsSaid();
    void unreachableDisplayIsSaid();
    void missingSoundServerIsSaid();
    void missingMicrophoneIsSaid();
    void demonstrationRecordsSpeechThroughTheDialog();
    void tooShortTakeIsSaidInTheRecordersWords();
    void unusableFolderIsSaidInTheRecordersWords();
    void endOfTheSessionKeepsTheRunningTake_data();
    void endOfTheSessionKeepsTheRunningTake();
    void takeOfAKilledProgramIsOfferedRepairedAndListed();

private:
    QString takes() const { return temporaryPath(QStringLiteral("takes of %1")); }
    QStringList demo(double seconds, const QString& recorder = QStringLiteral("voice-over")) const
    {
        return {QStringLiteral("--demo"), QStringLiteral("--takes"), takes(),
                QStringLiteral("--") + recorder, QString::number(seconds)};
    }
    /** The take that is being written; empty until there is one with something in it. */
    QString runningTake() const;
    QVector<StudioTake> listedTakes() const;
};

QString tst_StudioProgram::runningTake() const
{
    const QFileInfoList files = QDir(takes()).entryInfoList(
        {QStringLiteral("REC_*.m4a"), QStringLiteral("VID_*.mp4")}, QDir::Files, QDir::Name);
    return files.isEmpty() || files.first().size() < 20000 ? QString() : files.first().filePath();
}

QVector<StudioTake> tst_StudioProgram::listedTakes() const
{
    const QByteArray index = TestFiles::read(takes() + QStringLiteral("/Takes.json"));
    return StudioTakeIndex::read(index, takes()).takes;
}

void tst_StudioProgram::itTellsItsArgumentsWithoutADisplay()
{
    QProcessEnvironment bare = QProcessEnvironment::systemEnvironment();
    bare.remove(QStringLiteral("DISPLAY"));
    Program program({QStringLiteral("--help")}, bare);
    QCOMPARE(program.exitStatus(), 0);
    QVERIFY(program.output().contains(QLatin1String("--voice-over")));
}

void tst_StudioProgram::badCommandLineIsAnsweredWithoutADisplay()
{
    Program program({QStringLiteral("--fps"), QStringLiteral("0/0")}, QProcessEnvironment());
    QCOMPARE(program.exitStatus(), 2);
    QVERIFY(program.errors().contains(QStringLiteral("--fps")));
    QCOMPARE(program.output(), QString());
}

void tst_StudioProgram::missingDisplayIsSaid()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        environment.remove(QString::fromLatin1(name));
    }
    Program program({QStringLiteral("--voice-over"), QStringLiteral("5")}, environment);
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(program.errors().contains(QStringLiteral("There is no display")));
}

void tst_StudioProgram::unreachableDisplayIsSaid()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":54321"));
    Program program({QStringLiteral("--voice-over"), QStringLiteral("5")}, environment);
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(program.errors().contains(QStringLiteral("the display cannot be opened")));
}

void tst_StudioProgram::missingSoundServerIsSaid()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), temporaryPath(QString()));
    Program program(
        {QStringLiteral("--takes"), takes(), QStringLiteral("--voice-over"), QStringLiteral("5")},
        environment);
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(program.errors().contains(QStringLiteral("There is no sound server")));
    QCOMPARE(program.output(), QString());
}

void tst_StudioProgram::missingMicrophoneIsSaid()
{
    Program program(
        {QStringLiteral("--takes"), takes(), QStringLiteral("--voice-over"), QStringLiteral("5")});
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(program.errors().contains(QStringLiteral("There is no microphone")));
}

void tst_StudioProgram::demonstrationRecordsSpeechThroughTheDialog()
{
    Program program(demo(3.0));
    QCOMPARE(program.exitStatus(), 0);
    const QString output = program.output();
    const QString path = output.section(QLatin1Char('\n'), 0, 0);
    QVERIFY2(path.startsWith(takes()), qPrintable(output));
    QVERIFY2(output.endsWith(QStringLiteral("\n{\n}\n")), qPrintable(output));
    const QString info =
        output.section(QLatin1Char('\n'), 1).section(QStringLiteral("\n{\n}"), 0, 0);
    const QJsonObject report = QJsonDocument::fromJson(info.toUtf8()).object();
    QCOMPARE(report.value(QStringLiteral("device_name")).toString(),
             KdDemoMicrophone::displayName());
    QCOMPARE(report.value(QStringLiteral("file_duration")).toInt(), 3);

    const StudioMediaInfo media = probeMedia(path);
    QVERIFY2(media.readable, qPrintable(media.problem));
    QVERIFY2(qAbs(media.durationMs - 3000) < 500, qPrintable(QString::number(media.durationMs)));
    QVERIFY(loudest(path) > 0.1F);
    QCOMPARE(listedTakes().size(), 1);
    QCOMPARE(listedTakes().first().path, path);
    QTRY_VERIFY(!KdDemoMicrophone::isMicrophoneThere());
}

void tst_StudioProgram::tooShortTakeIsSaidInTheRecordersWords()
{
    Program program(demo(0.4));
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(program.errors().contains(
        QStringLiteral("The recording is too short. Data cannot be saved.")));
    QCOMPARE(program.output(), QString());
    QVERIFY(listedTakes().isEmpty());
}

void tst_StudioProgram::unusableFolderIsSaidInTheRecordersWords()
{
    TestFiles::write(temporaryPath(QStringLiteral("file")), "x");
    Program program({QStringLiteral("--demo"), QStringLiteral("--takes"),
                     temporaryPath(QStringLiteral("file/takes")), QStringLiteral("--voice-over"),
                     QStringLiteral("3")});
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(program.errors().contains(QStringLiteral("Please check whether you have permission")));
}

void tst_StudioProgram::endOfTheSessionKeepsTheRunningTake_data()
{
    QTest::addColumn<QString>("recorder");
    QTest::newRow("voice-over") << QStringLiteral("voice-over");
    QTest::newRow("webcam") << QStringLiteral("webcam");
}

void tst_StudioProgram::endOfTheSessionKeepsTheRunningTake()
{
    QFETCH(QString, recorder);
    Program program(demo(60.0, recorder));
    QTRY_VERIFY_WITH_TIMEOUT(!runningTake().isEmpty(), 30000);
    const QString path = runningTake();
    // A shorter one would not be kept.
    QElapsedTimer running;
    running.start();
    QTRY_VERIFY(running.elapsed() > 1500);
    program.process.terminate();
    QCOMPARE(program.exitStatus(), 128 + SIGTERM);
    const StudioMediaInfo media = probeMedia(path);
    QVERIFY2(media.readable, qPrintable(media.problem));
    QVERIFY(media.durationMs > 800);
    QCOMPARE(listedTakes().size(), 1);
    QVERIFY(KdTakeRecovery::find(takes()).isEmpty());
}

void tst_StudioProgram::takeOfAKilledProgramIsOfferedRepairedAndListed()
{
    Program program(demo(60.0));
    QTRY_VERIFY_WITH_TIMEOUT(!runningTake().isEmpty(), 30000);
    QElapsedTimer running;
    running.start();
    const QString path = runningTake();
    QTRY_VERIFY(running.elapsed() > 2000);
    program.process.kill();
    program.process.waitForFinished();
    const qint64 leastMs = running.elapsed() - 1000;
    QTRY_VERIFY(!KdDemoMicrophone::isMicrophoneThere());

    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(
        takes());
    StudioLanguages languages;
    StudioWindow window(&languages);
    window.show();
    window.openTakes();
    QTRY_VERIFY(window.recoveryBar()->isVisible());
    QVERIFY(window.recoveryBar()->sentence().contains(QFileInfo(path).fileName()));
    DialogDriver::click(window, QStringLiteral("Studio_RecoveryRepair"));
    QTRY_COMPARE_WITH_TIMEOUT(window.library()->count(), 1, 20000);
    QCOMPARE(window.library()->takes().first().path, path);
    QVERIFY2(window.library()->takes().first().durationMs >= leastMs,
             qPrintable(QString::number(window.library()->takes().first().durationMs)));
    QVERIFY(window.recoveryBar()->isHidden());
    QVERIFY(loudest(path) > 0.1F);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioProgram>(argc, argv);
}

#include "tst_StudioProgram.moc"
