#include <Support/KdTestCase.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

namespace {

constexpr int kRunMs = 90000;

/** "./dev run" without what it does first: nothing is installed or built. */
constexpr char kScript[] = "source " KDRECORD_SOURCE_DIR "/dev\n"
                           "ensure_packages() { :; }\n"
                           "build() { :; }\n"
                           "studio=" STUDIO_PROGRAM "\n"
                           "command_run \"$@\"\n";

struct Run
{
    int status = -1;
    QString output;
    QString errors;
};

} // namespace

/** The command that a newcomer begins with, on a machine that has nothing. */
class tst_DevRun : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsMissingIsSaid()
    {
        const Run told = run({QStringLiteral("--voice-over"), QStringLiteral("5")});
        QVERIFY2(told.errors.contains(
                     QStringLiteral("dev: this machine has no display, sound server, microphone")),
                 qUtf8Printable(told.errors));
        QVERIFY(told.errors.contains(QStringLiteral("--demo brings what is missing")));
        QVERIFY(told.errors.contains(QStringLiteral("There is no display")));
        QCOMPARE(told.status, 1);
        QCOMPARE(told.output, QString());
    }

    void theDemonstrationBringsIt()
    {
        const Run shown = run(demo(1.5));
        QVERIFY2(shown.status == 0, qUtf8Printable(shown.errors));
        QVERIFY(QFile::exists(shown.output.section(QLatin1Char('\n'), 0, 0)));
    }

    void theDemonstrationsFailureIsTheCommands()
    {
        const Run failed = run(demo(0.4));
        QCOMPARE(failed.status, 1);
        QVERIFY2(failed.errors.contains(QStringLiteral("The recording is too short")),
                 qUtf8Printable(failed.errors));
    }

private:
    QStringList demo(double seconds) const
    {
        return {QStringLiteral("--demo"), QStringLiteral("--takes"),
                temporaryPath(QStringLiteral("takes")), QStringLiteral("--voice-over"),
                QString::number(seconds)};
    }

    Run run(const QStringList& arguments) const
    {
        QProcessEnvironment bare = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            bare.remove(QString::fromLatin1(name));
        }
        bare.insert(QStringLiteral("HOME"), documentDir());
        bare.insert(QStringLiteral("XDG_RUNTIME_DIR"), temporaryPath(QStringLiteral("runtime")));
        QProcess shell;
        shell.setProcessEnvironment(bare);
        shell.start(
            QStringLiteral("bash"),
            QStringList{QStringLiteral("-c"), QLatin1String(kScript), QStringLiteral("dev")} +
                arguments);
        const bool ended = shell.waitForFinished(kRunMs);
        Run result{ended && shell.exitStatus() == QProcess::NormalExit ? shell.exitCode() : -1,
                   QString::fromUtf8(shell.readAllStandardOutput()),
                   QString::fromUtf8(shell.readAllStandardError())};
        if (!ended) {
            shell.kill();
            shell.waitForFinished();
        }
        return result;
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_DevRun>(argc, argv);
}

#include "tst_DevRun.moc"
