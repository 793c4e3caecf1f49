#include "ExampleBuild.h"
#include "PkgConfig.h"
#include "ProgramLog.h"

#include <Support/ClipProbe.h>
#include <Support/KdTestCase.h>
#include <Support/MediaProbe.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

namespace {

constexpr int kRunMs = 90000;
constexpr int kMostLines = 100;

/** The countdown and a take of some seconds. */
constexpr char kPresses[] = "Record voice-over 0;"
                            "@USB Microphone 0;"
                            "KAudioCapture_RecorderButton 0;"
                            "KAudioCapture_RecorderButton 8000;"
                            "KPropertyPanel_Btn 0;"
                            "Record webcam 0;"
                            "@HD Webcam 0;"
                            "KProDlg_KCameraCptBtn 0;"
                            "KProDlg_KCameraCptBtn 8000;"
                            "KCameraCapture_OkButton 0";

struct Take
{
    QString path;
    QJsonObject fileInfo;
};

/** What the example says it was handed. */
QVector<Take> takesIn(const QString& output)
{
    QVector<Take> takes;
    const QStringList lines = output.split(QLatin1Char('\n'));
    for (int i = 0; i + 1 < lines.size(); ++i) {
        if (lines.at(i).startsWith(QLatin1String("finished "))) {
            takes.append(
                {lines.at(i).mid(9), QJsonDocument::fromJson(lines.at(i + 1).toUtf8()).object()});
        }
    }
    return takes;
}

} // namespace

/** The smallest host, built against the installed package and used. */
class tst_EmbedExample : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void itIsAsSmallAsItSays()
    {
        QFile file(QStringLiteral(KDRECORD_SOURCE_DIR "/examples/embed/main.cpp"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().count('\n') < kMostLines);
    }

    void builtOutsideTheTreeItRecordsWithBothDialogs()
    {
        ExampleBuild example(QStringLiteral("embed"), temporaryPath(QStringLiteral("embed")));
        const QString complaint = example.run();
        QVERIFY2(complaint.isEmpty(), qUtf8Printable(complaint));
        VirtualMicrophone microphone;
        VirtualCamera camera;
        QVERIFY(microphone.plug());
        QVERIFY(camera.plug());

        QProcess program;
        program.setProcessEnvironment(environment());
        program.setProcessChannelMode(QProcess::SeparateChannels);
        program.start(example.program(QStringLiteral("embed")), QStringList());
        const bool ended = program.waitForFinished(kRunMs);
        const QString output =
            ProgramLog::withoutProgress(QString::fromUtf8(program.readAllStandardOutput()));
        const QString errors =
            ProgramLog::withoutProgress(QString::fromUtf8(program.readAllStandardError()));
        if (!ended) {
            program.kill();
            program.waitForFinished();
        }
        QVERIFY2(ended, qUtf8Printable(output + errors));
        QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0,
                 qUtf8Printable(output + errors));

        const QVector<Take> takes = takesIn(output);
        QVERIFY2(takes.size() == 2, qUtf8Printable(output + errors));
        const MediaInfo voice = MediaProbe::probe(takes.at(0).path);
        QVERIFY2(voice.isReadable, qUtf8Printable(voice.complaint));
        QCOMPARE(voice.audioCodec, QStringLiteral("aac"));
        QCOMPARE(takes.at(0).fileInfo.value(QLatin1String("device_name")).toString(),
                 microphone.description());
        const ClipInfo clip = ClipProbe::probe(takes.at(1).path);
        QVERIFY(clip.pictures() > 1);
        QVERIFY(!ClipProbe::picture(takes.at(1).path, clip.pictures() - 1).isEmpty());
        QCOMPARE(takes.at(1).fileInfo.value(QLatin1String("device_name")).toString(),
                 camera.description());
    }

    void itBuildsByPkgConfigAlone()
    {
        const QString program = temporaryPath(QStringLiteral("embed-by-pkg-config"));
        const QString complaint = PkgConfig::compile(
            {QStringLiteral(KDRECORD_SOURCE_DIR "/examples/embed/main.cpp"), QStringLiteral("-o"),
             program, QStringLiteral("-Wl,-rpath," KD_PACKAGE_PREFIX "/" KD_PACKAGE_LIBDIR)});
        QVERIFY2(complaint.isEmpty(), qUtf8Printable(complaint));
        QVERIFY(QFile::exists(program));
    }

private:
    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), documentDir());
        environment.insert(QStringLiteral("KD_PRESS"), QLatin1String(kPresses));
        environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(KD_PLUGINS));
        environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("kdpresser"));
        return environment;
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_EmbedExample>(argc, argv);
}

#include "tst_EmbedExample.moc"
