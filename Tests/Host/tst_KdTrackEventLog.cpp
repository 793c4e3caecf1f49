#include <KCore/KCoreDirs.h>
#include <KdVBLModel/KdTrackEvent.h>
#include <KdVBLModel/KdTrackEventLog.h>

#include <Support/KdTestCase.h>

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
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTrackEventLog>(argc, argv);
}

#include "tst_KdTrackEventLog.moc"
