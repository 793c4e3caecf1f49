#include <KdVBLModel/KdTakeRecovery.h>
#include <Studio/StudioRecovery.h>
#include <Studio/StudioRecoveryBar.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/TestFiles.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <QAbstractButton>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSignalSpy>

#include <signal.h>

/** The reference editor as a script runs it, and what a kill in mid-take leaves behind. */
class tst_StudioCommand : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void voiceOverIsRecordedImportedAndPrinted();
    void webcamClipIsRecordedImportedAndPrinted();
    void demonstrationNeedsNoMicrophone();
    void demonstrationNeedsNoCamera();
    void whatIsMissingIsSaid_data();
    void whatIsMissingIsSaid();
    void killInMidTakeLosesASecondAtMost_data();
    void killInMidTakeLosesASecondAtMost();

private:
    QString takesFolder() const { return temporaryPath(QStringLiteral("takes")); }
    QProcessEnvironment environment() const;
    void start(QProcess& studio, const QStringList& arguments) const;
    /** The only file that such a take leaves; empty when there is none, or another. */
    QString onlyTake(const QString& pattern = QStringLiteral("REC_*.m4a")) const;
    QString onlyClip() const { return onlyTake(QStringLiteral("VID_*.mp4")); }
    void waitForEnd(QProcess& studio) const;
};

QProcessEnvironment tst_StudioCommand::environment() const
{
    QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    own.insert(QStringLiteral("HOME"), temporaryPath(QStringLiteral("home")));
    const QStringList folders = {QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("XDG_DATA_HOME"),
                                 QStringLiteral("XDG_CACHE_HOME"),
                                 QStringLiteral("XDG_STATE_HOME")};
    for (const QString& folder : folders) {
        own.remove(folder);
    }
    return own;
}

void tst_StudioCommand::start(QProcess& studio, const QStringList& arguments) const
{
    QDir().mkpath(temporaryPath(QStringLiteral("home")));
    studio.setProcessEnvironment(environment());
    studio.start(QStringLiteral(STUDIO_PROGRAM),
                 QStringList{QStringLiteral("--takes"), takesFolder()} + arguments);
}

QString tst_StudioCommand::onlyTake(const QString& pattern) const
{
    const QStringList files = QDir(takesFolder()).entryList({pattern}, QDir::Files);
    return files.size() == 1 ? QDir(takesFolder()).filePath(files.first()) : QString();
}

void tst_StudioCommand::voiceOverIsRecordedImportedAndPrinted()
{
    VirtualMicrophone microphone;
    QVERIFY(microphone.plug());
    const QString speech = temporaryPath(QStringLiteral("speech.wav"));
    QVERIFY(
        TestSound::writeSpeech(speech, QStringLiteral("One two three four five six seven."), 40.0));
    QVERIFY(microphone.play(speech));
    QProcess studio;
    start(studio, {QStringLiteral("--voice-over"), QStringLiteral("3")});
    QVERIFY(DialogDriver::waitUntil([&] { return studio.state() == QProcess::NotRunning; },
                                    QStringLiteral("the end of the command"), 60000));
    const QString output = QString::fromUtf8(studio.readAllStandardOutput());
    QVERIFY2(studio.exitStatus() == QProcess::NormalExit && studio.exitCode() == 0,
             studio.readAllStandardError().constData());

    const QString take = onlyTake();
    QVERIFY(!take.isEmpty());
    QVERIFY2(output.contains(take), qPrintable(output));
    QVERIFY2(output.contains(QStringLiteral("\"device_name\": \"USB Microphone\"")),
             qPrintable(output));
    const MediaInfo media = MediaProbe::probe(take);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY(media.seconds >= 2.8 && media.seconds <= 4.0);
    QVERIFY(MediaProbe::meanDecibel(take) > -50.0);

    const QJsonDocument index =
        QJsonDocument::fromJson(TestFiles::read(takesFolder() + QStringLiteral("/Takes.json")));
    QVERIFY2(index.toJson().contains(QFileInfo(take).fileName().toUtf8()),
             index.toJson().constData());
}

void tst_StudioCommand::waitForEnd(QProcess& studio) const
{
    DialogDriver::waitUntil([&] { return studio.state() == QProcess::NotRunning; },
                            QStringLiteral("the end of the command"), 90000);
}

void tst_StudioCommand::webcamClipIsRecordedImportedAndPrinted()
{
    VirtualCamera camera;
    VirtualMicrophone microphone;
    QVERIFY(camera.plug());
    QVERIFY(microphone.plug());
    const QString tone = temporaryPath(QStringLiteral("tone.wav"));
    QVERIFY(TestSound::writeTone(tone, 1000.0, -12.0, 60.0));
    QVERIFY(microphone.play(tone));
    QProcess studio;
    start(studio, {QStringLiteral("--webcam"), QStringLiteral("3"), QStringLiteral("--screenshots"),
                   temporaryPath(QStringLiteral("pictures"))});
    waitForEnd(studio);
    const QString output = QString::fromUtf8(studio.readAllStandardOutput());
    QVERIFY2(studio.exitStatus() == QProcess::NormalExit && studio.exitCode() == 0,
             studio.readAllStandardError().constData());

    const QString clip = onlyClip();
    QVERIFY(!clip.isEmpty());
    QVERIFY2(output.contains(clip), qPrintable(output));
    QVERIFY2(output.contains(QStringLiteral("\"device_name\": \"HD Webcam\"")), qPrintable(output));
    QVERIFY2(output.contains(QStringLiteral("\"video_codec\": \"H264\"")), qPrintable(output));
    const MediaInfo media = MediaProbe::probe(clip);
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QCOMPARE(media.videoCodec, QStringLiteral("h264"));
    QVERIFY2(media.seconds >= 2.6 && media.seconds <= 4.0,
             qPrintable(QString::number(media.seconds)));
    QVERIFY(MediaProbe::meanDecibel(clip) > -30.0);
    QVERIFY(TestFiles::read(takesFolder() + QStringLiteral("/Takes.json"))
                .contains(QFileInfo(clip).fileName().toUtf8()));
    for (const char* name : {"studio.png", "webcam.png"}) {
        const QImage picture(temporaryPath(QStringLiteral("pictures/") + QLatin1String(name)));
        QVERIFY2(!picture.isNull(), name);
    }
}

void tst_StudioCommand::demonstrationNeedsNoCamera()
{
    QProcess studio;
    start(studio, {QStringLiteral("--demo"), QStringLiteral("--webcam"), QStringLiteral("2")});
    waitForEnd(studio);
    QVERIFY2(studio.exitStatus() == QProcess::NormalExit && studio.exitCode() == 0,
             studio.readAllStandardError().constData());
    const MediaInfo media = MediaProbe::probe(onlyClip());
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QCOMPARE(QSize(media.width, media.height), QSize(1280, 720));
    QVERIFY2(MediaProbe::meanDecibel(onlyClip()) > -50.0, "The demonstration recorded silence");
}

void tst_StudioCommand::demonstrationNeedsNoMicrophone()
{
    QProcess studio;
    start(studio, {QStringLiteral("--demo"), QStringLiteral("--voice-over"), QStringLiteral("2")});
    QVERIFY(DialogDriver::waitUntil([&] { return studio.state() == QProcess::NotRunning; },
                                    QStringLiteral("the end of the command"), 60000));
    QVERIFY2(studio.exitStatus() == QProcess::NormalExit && studio.exitCode() == 0,
             studio.readAllStandardError().constData());
    const QString take = onlyTake();
    QVERIFY(!take.isEmpty());
    QVERIFY2(MediaProbe::meanDecibel(take) > -50.0, "The demonstration recorded silence");
}

void tst_StudioCommand::whatIsMissingIsSaid_data()
{
    QTest::addColumn<QStringList>("without");
    QTest::addColumn<QStringList>("said");
    QTest::addColumn<QString>("take");
    const QStringList display = {QStringLiteral("DISPLAY"), QStringLiteral("WAYLAND_DISPLAY")};
    const QStringList sound = {QStringLiteral("XDG_RUNTIME_DIR"), QStringLiteral("PULSE_SERVER"),
                               QStringLiteral("DBUS_SESSION_BUS_ADDRESS")};
    const QString voiceOver = QStringLiteral("--voice-over");
    const QString webcam = QStringLiteral("--webcam");
    const auto row = [](const char* name, const QStringList& without, const char* said,
                        const QString& take) {
        QTest::newRow(name) << without << QStringList(QString::fromLatin1(said)) << take;
    };
    row("microphone", {}, "microphone", voiceOver);
    row("sound server", sound, "sound server", voiceOver);
    row("display", display, "display", voiceOver);
    row("all of it", display + sound, "display", voiceOver);
    row("camera", {}, "There is no camera", webcam);
    row("camera and its server", sound, "There is no camera", webcam);
}

void tst_StudioCommand::whatIsMissingIsSaid()
{
    QFETCH(QStringList, without);
    QFETCH(QStringList, said);
    QFETCH(QString, take);
    QProcess studio;
    QDir().mkpath(temporaryPath(QStringLiteral("home")));
    QProcessEnvironment bare = environment();
    for (const QString& name : qAsConst(without)) {
        bare.remove(name);
    }
    if (without.contains(QStringLiteral("DISPLAY"))) {
        bare.remove(QStringLiteral("QT_QPA_PLATFORM"));
    }
    studio.setProcessEnvironment(bare);
    studio.start(QStringLiteral(STUDIO_PROGRAM),
                 {QStringLiteral("--takes"), takesFolder(), take, QStringLiteral("2")});
    QVERIFY(DialogDriver::waitUntil([&] { return studio.state() == QProcess::NotRunning; },
                                    QStringLiteral("the end of the command"), 60000));
    QCOMPARE(studio.exitStatus(), QProcess::NormalExit);
    QVERIFY(studio.exitCode() != 0);
    const QString errors = QString::fromUtf8(studio.readAllStandardError());
    for (const QString& part : qAsConst(said)) {
        QVERIFY2(errors.contains(part), qPrintable(errors));
    }
}

void tst_StudioCommand::killInMidTakeLosesASecondAtMost_data()
{
    QTest::addColumn<QString>("take");
    QTest::addColumn<int>("afterMs");
    const QString voiceOver = QStringLiteral("--voice-over");
    const QString webcam = QStringLiteral("--webcam");
    QTest::newRow("voice-over, early") << voiceOver << 1700;
    QTest::newRow("voice-over, between fragments") << voiceOver << 3250;
    QTest::newRow("voice-over, late") << voiceOver << 5010;
    QTest::newRow("webcam, early") << webcam << 2100;
    QTest::newRow("webcam, late") << webcam << 4730;
}

void tst_StudioCommand::killInMidTakeLosesASecondAtMost()
{
    QFETCH(QString, take);
    QFETCH(int, afterMs);
    const bool isClip = take == QLatin1String("--webcam");
    const auto file = [&] { return isClip ? onlyClip() : onlyTake(); };
    VirtualCamera camera;
    VirtualMicrophone microphone;
    QVERIFY(!isClip || camera.plug());
    QVERIFY(microphone.plug());
    const QString tone = temporaryPath(QStringLiteral("tone.wav"));
    QVERIFY(TestSound::writeTone(tone, 1000.0, -12.0, 60.0));
    QVERIFY(microphone.play(tone));
    QProcess studio;
    start(studio, {take, QStringLiteral("30")});
    // The claim of the name is the beginning of the take.
    QVERIFY(DialogDriver::waitUntil([&] { return !file().isEmpty(); },
                                    QStringLiteral("the take's file"), 40000));
    QElapsedTimer running;
    running.start();
    QVERIFY(DialogDriver::waitUntil([&] { return running.elapsed() >= afterMs; },
                                    QStringLiteral("time"), 10000));
    const double recorded = static_cast<double>(running.elapsed()) / 1000.0;
    // Without it the number is 0, and everything around this test would be killed.
    QVERIFY2(studio.processId() > 0, studio.readAllStandardError().constData());
    kill(static_cast<pid_t>(studio.processId()), SIGKILL);
    QVERIFY(studio.waitForFinished(10000));

    StudioRecovery recovery;
    StudioRecoveryBar bar(&recovery);
    QSignalSpy found(&recovery, &StudioRecovery::found);
    QSignalSpy recovered(&bar, &StudioRecoveryBar::recovered);
    recovery.find({takesFolder()});
    QVERIFY(found.wait(10000));
    QTRY_VERIFY_WITH_TIMEOUT(!bar.isHidden(), 5000);
    bar.show();
    DialogDriver::click(bar, QStringLiteral("Studio_RecoveryRepair"));
    QVERIFY(recovered.wait(20000));

    const MediaInfo media = MediaProbe::probe(file());
    QVERIFY2(media.isReadable, qPrintable(media.complaint));
    QVERIFY2(media.seconds >= recorded - 1.0,
             qPrintable(QStringLiteral("%1 s of %2 s kept").arg(media.seconds).arg(recorded)));
    QCOMPARE(media.videoCodec.isEmpty(), !isClip);
    QVERIFY(KdTakeRecovery::find(takesFolder()).isEmpty());
    QVERIFY(QTest::qWaitFor([&] { return bar.isHidden(); }));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioCommand>(argc, argv);
}

#include "tst_StudioCommand.moc"
