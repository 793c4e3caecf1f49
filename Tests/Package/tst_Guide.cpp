#include "GuideBlocks.h"
#include "PkgConfig.h"
#include "ProgramLog.h"
#include "Sanitizer.h"

#include <KdRecord/KdWebcamTakeReport.h>
#include <Support/Command.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>
#include <Support/VirtualCamera.h>
#include <Support/VirtualMicrophone.h>

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>

namespace {

constexpr int kBuildMs = 240000;
constexpr int kRunMs = 90000;

/** The countdown and a take of some seconds, with each dialog. */
constexpr char kPresses[] = "Record voice-over 0;"
                            "@USB Microphone 0;"
                            "KAudioCapture_RecorderButton 0;"
                            "KAudioCapture_RecorderButton 6000;"
                            "KPropertyPanel_Btn 0;"
                            "Record webcam 0;"
                            "@HD Webcam 0;"
                            "KProDlg_KCameraCptBtn 0;"
                            "KProDlg_KCameraCptBtn 6000;"
                            "KCameraCapture_OkButton 0";

QString sourceText(const QString& file)
{
    return QString::fromUtf8(TestFiles::read(QStringLiteral(KDRECORD_SOURCE_DIR "/") + file));
}

QString guide()
{
    return sourceText(QStringLiteral("docs/embedding.md"));
}

/** The JSON objects in a text that holds other lines as well, each from "{" to "}" on lines of
 * their own. */
QVector<QJsonObject> objectsIn(const QString& output)
{
    static const QRegularExpression object(QStringLiteral("^\\{\\n.*?^\\}$"),
                                           QRegularExpression::MultilineOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    QVector<QJsonObject> objects;
    QRegularExpressionMatchIterator it = object.globalMatch(output);
    while (it.hasNext()) {
        objects.append(QJsonDocument::fromJson(it.next().captured().toUtf8()).object());
    }
    return objects;
}

QStringList symbols(const char* library, const char* which)
{
    const Command::Result result = Command::run(
        QStringLiteral("nm"), {QStringLiteral("-DC"), QLatin1String(which),
                               QStringLiteral(KD_PACKAGE_PREFIX "/" KD_PACKAGE_LIBDIR "/lib%1.so")
                                   .arg(QLatin1String(library))});
    static const QRegularExpression line(QStringLiteral("^[0-9a-f ]*[A-Za-z] (.*)$"),
                                         QRegularExpression::MultilineOption);
    QStringList names;
    QRegularExpressionMatchIterator it = line.globalMatch(QString::fromUtf8(result.output));
    while (it.hasNext()) {
        names.append(it.next().captured(1));
    }
    return names;
}

/** "KdTipWidget" and "setText" of "KdTipWidget::setText(QString const&)". */
struct Operation
{
    QString owner;
    QString name;
};

Operation operationOf(QString symbol)
{
    symbol.remove(QStringLiteral("KdSkin::")).remove(QStringLiteral("KdVBLMODEL::"));
    static const QRegularExpression parts(QStringLiteral("^(?:(\\w+)::)?(~?\\w+)(?:\\[.*\\])?\\("));
    const QRegularExpressionMatch match = parts.match(symbol);
    return {match.captured(1), match.captured(2)};
}

/** What comes with a class that is derived from or made, and what Qt's classes have already. */
bool isPartOfItsClass(const Operation& operation)
{
    static const QSet<QString> inherited{
        QStringLiteral("qt_metacall"),     QStringLiteral("qt_metacast"),
        QStringLiteral("event"),           QStringLiteral("changeEvent"),
        QStringLiteral("hideEvent"),       QStringLiteral("keyPressEvent"),
        QStringLiteral("moveEvent"),       QStringLiteral("paintEvent"),
        QStringLiteral("resizeEvent"),     QStringLiteral("showEvent"),
        QStringLiteral("minimumSizeHint"), QStringLiteral("sizeHint")};
    return operation.name == operation.owner || operation.name.startsWith(QLatin1Char('~')) ||
           inherited.contains(operation.name);
}

} // namespace

/** docs/embedding.md, followed by the letter. */
class tst_Guide : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyBlockIsOfAKindThatIsFollowed()
    {
        const QVector<GuideBlock> blocks = GuideBlocks::of(guide());
        QVERIFY(blocks.size() > 5);
        QCOMPARE(guide().count(QStringLiteral("```")), 2 * blocks.size());
        for (const GuideBlock& block : blocks) {
            const bool isCommands = block.language == QLatin1String("sh");
            QVERIFY2(isCommands || !block.name.isEmpty(), qUtf8Printable(block.text));
        }
    }

    void whatItQuotesStandsThere()
    {
        int quoted = 0;
        const QVector<GuideBlock> blocks = GuideBlocks::of(guide());
        for (const GuideBlock& block : blocks) {
            if (block.name.contains(QLatin1Char('/'))) {
                QVERIFY2(GuideBlocks::quotes(block.text, sourceText(block.name)),
                         qUtf8Printable(block.name + QLatin1String(":\n") + block.text));
                ++quoted;
            }
        }
        QVERIFY(quoted >= 2);
    }

    void itsCommandsForPackagesExist()
    {
        const Command::Result help =
            Command::run(QStringLiteral(KDRECORD_SOURCE_DIR "/dev"), {QStringLiteral("help")});
        QVERIFY2(help.ok, help.errors.constData());
        static const QRegularExpression command(QStringLiteral("\\./dev (\\w+)"));
        QRegularExpressionMatchIterator it = command.globalMatch(guide());
        QVERIFY(it.hasNext());
        while (it.hasNext()) {
            const QString name = it.next().captured();
            QVERIFY2(help.output.contains(name.toUtf8()), qUtf8Printable(name));
        }
    }

    void itNamesEveryOperationThatTheModuleTakesOfItsHost_data()
    {
        QTest::addColumn<QString>("library");
        for (const char* library :
             {"KdCore", "KCore", "KdAppSettings", "KdWidgets", "KdZentraCore", "KdVBLModel"}) {
            QTest::newRow(library) << QString::fromLatin1(library);
        }
    }

    void itNamesEveryOperationThatTheModuleTakesOfItsHost()
    {
        QFETCH(QString, library);
        const QString heading = QStringLiteral("### ") + library + QLatin1Char('\n');
        const QString table = guide().section(heading, 1).section(QStringLiteral("\n#"), 0, 0);
        QVERIFY(!table.isEmpty());
        const QStringList offered = symbols(qUtf8Printable(library), "--defined-only");
        const QStringList wanted = symbols("KdRecord", "--undefined-only");
        int taken = 0;
        QStringList missing;
        for (const QString& symbol : wanted) {
            const Operation operation = operationOf(symbol);
            if (operation.name.isEmpty() || !offered.contains(symbol)) {
                continue;
            }
            ++taken;
            const auto isNamed = [&table](const QString& name) {
                return name.isEmpty() ||
                       table.contains(QRegularExpression(QStringLiteral("\\b%1\\b").arg(name)));
            };
            if (!isNamed(operation.owner) ||
                !(isPartOfItsClass(operation) || isNamed(operation.name))) {
                missing.append(symbol);
            }
        }
        QVERIFY(taken > 0);
        QVERIFY2(missing.isEmpty(), qUtf8Printable(missing.join(QLatin1Char('\n'))));
    }

    void itsFirstHostBuildsAndRecords()
    {
        const QDir folder(temporaryPath(QStringLiteral("editor")));
        const QVector<GuideBlock> blocks = GuideBlocks::of(guide());
        QString commands = QStringLiteral("set -e\n");
        for (const GuideBlock& block : blocks) {
            if (block.language == QLatin1String("sh") && block.name.isEmpty()) {
                commands += block.text;
            } else if (block.name.contains(QLatin1Char('.')) &&
                       !block.name.contains(QLatin1Char('/'))) {
                TestFiles::write(folder.filePath(block.name), block.text.toUtf8());
            }
        }
        VirtualMicrophone microphone;
        VirtualCamera camera;
        QVERIFY(microphone.plug());
        QVERIFY(camera.plug());

        QProcess shell;
        shell.setProcessEnvironment(environment());
        shell.setWorkingDirectory(folder.path());
        shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), commands});
        const bool ended = shell.waitForFinished(kBuildMs + kRunMs);
        const QString output = QString::fromUtf8(shell.readAllStandardOutput());
        const QByteArray errors =
            ProgramLog::withoutProgress(QString::fromUtf8(shell.readAllStandardError())).toUtf8();
        if (!ended) {
            shell.kill();
            shell.waitForFinished();
        }
        QVERIFY2(ended && shell.exitStatus() == QProcess::NormalExit && shell.exitCode() == 0,
                 errors + output.toUtf8());

        const QVector<QJsonObject> told = objectsIn(output);
        QVERIFY2(told.size() == 2, errors + output.toUtf8());
        QCOMPARE(told.at(0).keys(), exampleOf("voice-over").keys());
        QCOMPARE(told.at(1).keys(), exampleOf("webcam").keys());
        QCOMPARE(told.at(0).value(QLatin1String("device_name")).toString(),
                 microphone.description());
    }

    void whatIsAlsoForHostsCompiles()
    {
        const QString file = temporaryPath(QStringLiteral("also.cpp"));
        const QVector<GuideBlock> blocks = GuideBlocks::of(guide());
        for (const GuideBlock& block : blocks) {
            if (block.name == QLatin1String("also.cpp")) {
                TestFiles::write(file, block.text.toUtf8());
            }
        }
        QVERIFY(QFile::exists(file));
        const QString complaint =
            PkgConfig::compile({QStringLiteral("-fsyntax-only"), QStringLiteral("-Wall"),
                                QStringLiteral("-Wextra"), QStringLiteral("-Werror"), file});
        QVERIFY2(complaint.isEmpty(), qUtf8Printable(complaint));
    }

    void itTellsWhatComesWithAClipForTheExport()
    {
        const QByteArray told = KdWebcamTakeReport::fileExportInfo().toUtf8();
        QVERIFY(!told.isEmpty());
        QCOMPARE(exampleOf("webcam-export"), QJsonDocument::fromJson(told).object());
    }

    void itSaysHowLongTheExampleOfAnEngineIs()
    {
        static const QRegularExpression said(QStringLiteral("in about (\\d+) lines"));
        const int lines = said.match(guide()).captured(1).toInt();
        const QDir folder(QStringLiteral(KDRECORD_SOURCE_DIR "/examples/own-engine"));
        const QStringList files = folder.entryList({QStringLiteral("File*")}, QDir::Files);
        int there = 0;
        for (const QString& file : files) {
            there += TestFiles::read(folder.filePath(file)).count('\n');
        }
        QVERIFY2(qAbs(there - lines) <= 50, qUtf8Printable(QString::number(there)));
    }

private:
    static QJsonObject exampleOf(const char* name)
    {
        const QVector<GuideBlock> blocks = GuideBlocks::of(guide());
        for (const GuideBlock& block : blocks) {
            if (block.language == QLatin1String("json") && block.name == QLatin1String(name)) {
                return QJsonDocument::fromJson(block.text.toUtf8()).object();
            }
        }
        return {};
    }

    /** As a stranger's: the package is found, and a person sits at the windows. */
    QProcessEnvironment environment() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), documentDir());
        environment.insert(QStringLiteral("CMAKE_PREFIX_PATH"), QStringLiteral(KD_PACKAGE_PREFIX));
        environment.insert(QStringLiteral("CXX"), QStringLiteral(KD_CXX));
        environment.insert(QStringLiteral("CXXFLAGS"), Sanitizer::compilerFlag());
        environment.insert(QStringLiteral("KD_PRESS"), QLatin1String(kPresses));
        environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(KD_PLUGINS));
        environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("kdpresser"));
        return environment;
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_Guide>(argc, argv);
}

#include "tst_Guide.moc"
