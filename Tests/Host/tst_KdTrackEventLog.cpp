#include <KCore/KCoreDirs.h>
#include <KdVBLModel/KdTrackEvent.h>
#include <KdVBLModel/KdTrackEventLog.h>

#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

class Event : public KdTrackEvent
{
public:
    Event(const QString& name, const QVector<Property>& properties = {}) : KdTrackEvent(name)
    {
        for (const Property& property : properties) {
            setProperty(property.first, property.second);
        }
    }
};

void send(const QString& name)
{
    Event(name).sendEvent();
}

/** One long line, as big as a file may become. */
QByteArray fullFile(char letter)
{
    return QByteArray(4 * 1024 * 1024 - 1, letter) + '\n';
}

void fillFile(char letter)
{
    TestFiles::write(KdTrackEventLog::filePath(), fullFile(letter));
}

QList<QByteArray> fileLines()
{
    QFile file(KdTrackEventLog::filePath());
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QByteArray content = file.readAll();
    return content.endsWith('\n') ? content.chopped(1).split('\n') : QList<QByteArray>{content};
}

} // namespace

class tst_KdTrackEventLog : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        KdTestCase::init();
        KdTrackEventLog::clear();
    }

    void liesInTheDocumentFolder()
    {
        QCOMPARE(KdTrackEventLog::filePath(), documentDir() + QStringLiteral("/UsageEvents.jsonl"));
    }

    void writesOneJsonLineForEachReport()
    {
        send(QStringLiteral("first"));
        send(QStringLiteral("second"));
        const QList<QByteArray> lines = fileLines();
        QCOMPARE(lines.size(), 2);
        const QJsonObject second = QJsonDocument::fromJson(lines.at(1)).object();
        QCOMPARE(second.value(QStringLiteral("name")).toString(), QStringLiteral("second"));
        QVERIFY(QDateTime::fromString(second.value(QStringLiteral("time")).toString(),
                                      Qt::ISODateWithMs)
                    .isValid());
        QCOMPARE(second.value(QStringLiteral("properties")).toObject(), QJsonObject());
    }

    void writesPropertiesInTheirOrder()
    {
        Event(QStringLiteral("e"), {{QStringLiteral("b"), 1}, {QStringLiteral("a"), true}})
            .sendEvent();
        QVERIFY2(fileLines().value(0).endsWith("\"properties\":{\"b\":1,\"a\":true}}"),
                 fileLines().value(0).constData());
    }

    void writesAnyTextSoThatItReadsBackUnchanged_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("quotes") << QStringLiteral("\"a\" \\ 'b'");
        QTest::newRow("line breaks") << QStringLiteral("a\r\nb\tc");
        QTest::newRow("placeholders") << QStringLiteral("%1 %2 %99 %s");
        QTest::newRow("markup") << QStringLiteral("<b>a</b>&amp;");
        QTest::newRow("right to left") << QString::fromUtf8("\u05de\u05d9\u05e7\u202e\u05e8");
        QTest::newRow("brackets") << QStringLiteral("]},{[");
        QTest::newRow("long") << QString(100000, QLatin1Char('x'));
    }

    void writesAnyTextSoThatItReadsBackUnchanged()
    {
        QFETCH(QString, text);
        Event(text, {{text, text}}).sendEvent();
        QCOMPARE(fileLines().size(), 1);
        const QJsonObject line = QJsonDocument::fromJson(fileLines().at(0)).object();
        QCOMPARE(line.value(QStringLiteral("name")).toString(), text);
        const QJsonObject properties = line.value(QStringLiteral("properties")).toObject();
        QCOMPARE(properties.value(text).toString(), text);
    }

    void keepsTheLastThousandInMemory()
    {
        for (int i = 0; i < 1003; ++i) {
            send(QString::number(i));
        }
        QCOMPARE(KdTrackEventLog::records().size(), 1000);
        QCOMPARE(KdTrackEventLog::records().first().name, QStringLiteral("3"));
        QCOMPARE(KdTrackEventLog::records().last().name, QStringLiteral("1002"));
        QCOMPARE(fileLines().size(), 1003);
    }

    void aFullFileIsSetAsideAndANewOneBegun()
    {
        fillFile('a');
        send(QStringLiteral("new"));
        QCOMPARE(fileLines().size(), 1);
        QVERIFY(fileLines().at(0).contains("\"new\""));
        QCOMPARE(TestFiles::read(olderPath()), fullFile('a'));
    }

    void aFileThatIsNotQuiteFullGoesOn()
    {
        TestFiles::write(KdTrackEventLog::filePath(), fullFile('a').mid(1));
        send(QStringLiteral("last"));
        QCOMPARE(fileLines().size(), 2);
        QVERIFY(!QFile::exists(olderPath()));
    }

    void ofTheFilesSetAsideTheLastIsKept()
    {
        TestFiles::write(olderPath(), "long ago\n");
        fillFile('b');
        send(QStringLiteral("new"));
        QCOMPARE(TestFiles::read(olderPath()), fullFile('b'));
        QCOMPARE(QDir(documentDir()).entryList(QDir::Files).size(), 2);
    }

    void aFullFileThatCannotBeSetAsideTakesNoMore()
    {
        QVERIFY(QDir().mkpath(olderPath() + QStringLiteral("/in the way")));
        fillFile('a');
        expectLog(QStringLiteral("^KdTrackEventLog::append: Usage reports cannot be written to "));
        send(QStringLiteral("one"));
        send(QStringLiteral("two"));
        QCOMPARE(TestFiles::read(KdTrackEventLog::filePath()), fullFile('a'));
        QCOMPARE(KdTrackEventLog::records().size(), 2);
    }

    void clearForgetsWhatIsInMemoryOnly()
    {
        send(QStringLiteral("kept in the file"));
        KdTrackEventLog::clear();
        QVERIFY(KdTrackEventLog::records().isEmpty());
        QCOMPARE(fileLines().size(), 1);
    }

    void aFileThatCannotBeWrittenIsLoggedOnceAndTheReportsKept()
    {
        QVERIFY(QDir().mkpath(KdTrackEventLog::filePath()));
        expectLog(QStringLiteral(
            "^KdTrackEventLog::append: Usage reports cannot be written to .*jsonl$"));
        send(QStringLiteral("one"));
        send(QStringLiteral("two"));
        QCOMPARE(KdTrackEventLog::records().size(), 2);
        QCOMPARE(logLines().filter(QStringLiteral("cannot be written")).size(), 1);

        QVERIFY(QDir().rmdir(KdTrackEventLog::filePath()));
        send(QStringLiteral("three"));
        QCOMPARE(fileLines().size(), 1);
        QVERIFY(QFile::remove(KdTrackEventLog::filePath()));
        QVERIFY(QDir().mkpath(KdTrackEventLog::filePath()));
        send(QStringLiteral("four"));
        QCOMPARE(logLines().filter(QStringLiteral("cannot be written")).size(), 2);
    }

private:
    QString olderPath() const { return documentDir() + QStringLiteral("/UsageEvents.old.jsonl"); }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTrackEventLog>(argc, argv);
}

#include "tst_KdTrackEventLog.moc"
