#include "Support/KdTestCase.h"

#include <Studio/StudioOptions.h>

#include <QDir>
#include <QFile>

using Outcome = StudioCommandLine::Outcome;

class tst_StudioOptions : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void emptyCommandLineRunsWithDefaults();
    void everyOptionIsRead();
    void frameRates_data();
    void frameRates();
    void badCommandLines_data();
    void badCommandLines();
    void relativeTakesFolderBecomesAbsolute();
    void takesFolderThatIsAFileIsRefused();
    void helpNamesEveryOption();

private:
    static StudioCommandLine parse(const QStringList& arguments);
};

StudioCommandLine tst_StudioOptions::parse(const QStringList& arguments)
{
    return parseStudioCommandLine(QStringList{QStringLiteral("studio")} + arguments);
}

void tst_StudioOptions::emptyCommandLineRunsWithDefaults()
{
    const StudioCommandLine line = parse({});
    QVERIFY(line.outcome == Outcome::Run);
    QVERIFY(line.options.takesFolder.isEmpty());
    QVERIFY(line.options.frameRate == KdVBLMODEL::KdFrameRate::Fps30);
    QVERIFY(!line.options.demo);
    QVERIFY(line.options.skin.isEmpty());
    QVERIFY(line.options.language.isEmpty());
    QCOMPARE(line.options.voiceOverSeconds, 0.0);
    QCOMPARE(line.options.webcamSeconds, 0.0);
    QVERIFY(line.options.screenshots.isEmpty());
}

void tst_StudioOptions::everyOptionIsRead()
{
    const StudioCommandLine line = parse(
        {QStringLiteral("--takes"), QStringLiteral("/tmp/a takes %1 folder"),
         QStringLiteral("--fps=24000/1001"), QStringLiteral("--demo"), QStringLiteral("--skin"),
         QStringLiteral("light"), QStringLiteral("--lang"), QStringLiteral("zh_CN"),
         QStringLiteral("--voice-over"), QStringLiteral("2.5"), QStringLiteral("--webcam=4"),
         QStringLiteral("--screenshots"), QStringLiteral("/tmp/pictures")});
    QVERIFY2(line.outcome == Outcome::Run, qPrintable(line.text));
    QCOMPARE(line.options.takesFolder, QStringLiteral("/tmp/a takes %1 folder"));
    QVERIFY(line.options.frameRate == KdVBLMODEL::KdFrameRate::Fps23_976);
    QVERIFY(line.options.demo);
    QCOMPARE(line.options.skin, QStringLiteral("light"));
    QCOMPARE(line.options.language, QStringLiteral("zh_CN"));
    QCOMPARE(line.options.voiceOverSeconds, 2.5);
    QCOMPARE(line.options.webcamSeconds, 4.0);
    QCOMPARE(line.options.screenshots, QStringLiteral("/tmp/pictures"));
}

void tst_StudioOptions::frameRates_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("rate");
    using Rate = KdVBLMODEL::KdFrameRate;
    const auto row = [](const char* text, Rate rate) {
        QTest::newRow(text) << QString::fromLatin1(text) << static_cast<int>(rate);
    };
    row("24/1", Rate::Fps24);
    row("25", Rate::Fps25);
    row("50/2", Rate::Fps25);
    row("30000/1001", Rate::Fps29_97);
    row("60/1", Rate::Fps60);
    row("120/1", Rate::Fps120);
}

void tst_StudioOptions::frameRates()
{
    QFETCH(QString, text);
    QFETCH(int, rate);
    const StudioCommandLine line = parse({QStringLiteral("--fps"), text});
    QVERIFY2(line.outcome == Outcome::Run, qPrintable(line.text));
    QCOMPARE(static_cast<int>(line.options.frameRate), rate);
}

void tst_StudioOptions::badCommandLines_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("complaint");
    const auto row = [](const char* name, const QStringList& arguments, const char* complaint) {
        QTest::newRow(name) << arguments << QString::fromLatin1(complaint);
    };
    const QString fps = QStringLiteral("--fps");
    const QString voiceOver = QStringLiteral("--voice-over");
    row("unknown option", {QStringLiteral("--record")}, "record");
    row("option without its value", {voiceOver}, "voice-over");
    row("argument", {QStringLiteral("take.m4a")}, "take.m4a");
    row("empty folder", {QStringLiteral("--takes"), QString()}, "--takes");
    row("rate in words", {fps, QStringLiteral("fast")}, "fast");
    row("rate of nothing", {fps, QString()}, "--fps");
    row("zero rate", {fps, QStringLiteral("0/1")}, "0/1");
    row("negative rate", {fps, QStringLiteral("-25/1")}, "-25/1");
    row("rate over zero", {fps, QStringLiteral("25/0")}, "25/0");
    row("three numbers", {fps, QStringLiteral("25/1/1")}, "25/1/1");
    row("overflow", {fps, QStringLiteral("99999999999999999999/1")}, "99999999999999999999/1");
    row("rate that no project has", {fps, QStringLiteral("17/1")}, "17/1");
    row("unknown skin", {QStringLiteral("--skin"), QStringLiteral("Dark")}, "Dark");
    row("unknown language", {QStringLiteral("--lang"), QStringLiteral("fr")}, "fr");
    row("seconds in words", {voiceOver, QStringLiteral("five")}, "five");
    row("no seconds", {voiceOver, QStringLiteral("0")}, "--voice-over");
    row("negative seconds", {voiceOver, QStringLiteral("-3")}, "-3");
    row("endless", {voiceOver, QStringLiteral("inf")}, "inf");
    row("not a number", {voiceOver, QStringLiteral("nan")}, "nan");
    row("more than a day", {voiceOver, QStringLiteral("86401")}, "86401");
    row("webcam seconds in words", {QStringLiteral("--webcam"), QStringLiteral("%1 %2")}, "%1 %2");
    row("no webcam seconds", {QStringLiteral("--webcam"), QStringLiteral("0")}, "--webcam");
    row("empty folder for pictures", {QStringLiteral("--screenshots"), QString()}, "--screenshots");
}

void tst_StudioOptions::badCommandLines()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, complaint);
    const StudioCommandLine line = parse(arguments);
    QVERIFY(line.outcome == Outcome::Bad);
    QVERIFY2(line.text.contains(complaint), qPrintable(line.text));
    QVERIFY2(line.text.endsWith(QLatin1Char('.')), qPrintable(line.text));
}

void tst_StudioOptions::relativeTakesFolderBecomesAbsolute()
{
    const StudioCommandLine line =
        parse({QStringLiteral("--takes"), QStringLiteral("some/../takes")});
    QVERIFY(line.outcome == Outcome::Run);
    QCOMPARE(line.options.takesFolder, QDir::current().absoluteFilePath(QStringLiteral("takes")));
}

void tst_StudioOptions::takesFolderThatIsAFileIsRefused()
{
    QFile file(temporaryPath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const StudioCommandLine line = parse({QStringLiteral("--takes"), file.fileName()});
    QVERIFY(line.outcome == Outcome::Bad);
    QVERIFY2(line.text.contains(QStringLiteral("is not a folder")), qPrintable(line.text));
}

void tst_StudioOptions::helpNamesEveryOption()
{
    const StudioCommandLine line = parse({QStringLiteral("--help")});
    QVERIFY(line.outcome == Outcome::ShowHelp);
    for (const char* option :
         {"takes", "fps", "demo", "skin", "lang", "voice-over", "webcam", "screenshots"}) {
        QVERIFY2(line.text.contains(QStringLiteral("--") + QString::fromLatin1(option)), option);
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioOptions>(argc, argv);
}

#include "tst_StudioOptions.moc"
