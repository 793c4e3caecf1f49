#include "Support/KdTestCase.h"

#include <Studio/StudioTakeIndex.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

class tst_StudioTakeIndex : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void listSurvivesWritingAndReading();
    void folderCanBeMoved();
    void fileElsewhereKeepsItsPlace();
    void foldersWithACommonBeginningAreNotMixedUp();
    void badTextsAreNoLists_data();
    void badTextsAreNoLists();
    void badEntriesAreLeftOut();
    void wrongTypesCountAsAbsent();
};

namespace {

StudioTake makeTake(const QString& path)
{
    StudioTake take;
    take.path = path;
    take.deviceName = QString::fromUtf8("\"Mikrofon\" %1 \u05d0\u05d1 <i>x</i>\n2");
    take.durationMs = 5123;
    take.recorded = QDateTime(QDate(2026, 5, 3), QTime(12, 0, 1, 250), Qt::UTC);
    take.fileInfo = QStringLiteral("{\n    \"device_name\": \"\\\"\"\n}\n");
    take.fileExportInfo = QStringLiteral("{\n}\n");
    return take;
}

QString folder()
{
    return QStringLiteral("/home/anna/takes");
}

} // namespace

void tst_StudioTakeIndex::listSurvivesWritingAndReading()
{
    const QVector<StudioTake> takes{
        makeTake(folder() + QStringLiteral("/REC_1.m4a")),
        makeTake(folder() + QString::fromUtf8("/sub folder/\u58f0\u97f3 %1.m4a"))};
    const StudioTakeIndex::Content content =
        StudioTakeIndex::read(StudioTakeIndex::write(takes, folder()), folder());
    QVERIFY(content.valid);
    QCOMPARE(content.skipped, 0);
    QCOMPARE(content.takes, takes);
}

void tst_StudioTakeIndex::folderCanBeMoved()
{
    const QByteArray text =
        StudioTakeIndex::write({makeTake(folder() + QStringLiteral("/REC_1.m4a"))}, folder());
    const StudioTakeIndex::Content content =
        StudioTakeIndex::read(text, QStringLiteral("/mnt/usb"));
    QCOMPARE(content.takes.size(), 1);
    QCOMPARE(content.takes.first().path, QStringLiteral("/mnt/usb/REC_1.m4a"));
}

void tst_StudioTakeIndex::fileElsewhereKeepsItsPlace()
{
    const QByteArray text =
        StudioTakeIndex::write({makeTake(QStringLiteral("/other/REC_1.m4a"))}, folder());
    QCOMPARE(StudioTakeIndex::read(text, QStringLiteral("/mnt")).takes.value(0).path,
             QStringLiteral("/other/REC_1.m4a"));
}

void tst_StudioTakeIndex::foldersWithACommonBeginningAreNotMixedUp()
{
    const QString path = QStringLiteral("/home/anna/takes2/REC_1.m4a");
    const QByteArray text = StudioTakeIndex::write({makeTake(path)}, folder());
    QCOMPARE(StudioTakeIndex::read(text, folder()).takes.value(0).path, path);
}

void tst_StudioTakeIndex::badTextsAreNoLists_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("truncated")
        << StudioTakeIndex::write({makeTake(QStringLiteral("/a"))}, folder()).left(60);
    QTest::newRow("a list") << QByteArray("[]");
    QTest::newRow("no takes") << QByteArray("{\"version\": 1}");
    QTest::newRow("takes of a wrong type") << QByteArray("{\"takes\": {\"file\": \"x\"}}");
    QTest::newRow("binary") << QByteArray("\0\xff\xfe{}", 5);
    QTest::newRow("deeply nested") << QByteArray(200000, '[');
}

void tst_StudioTakeIndex::badTextsAreNoLists()
{
    QFETCH(QByteArray, text);
    const StudioTakeIndex::Content content = StudioTakeIndex::read(text, folder());
    QVERIFY(!content.valid);
    QVERIFY(content.takes.isEmpty());
}

void tst_StudioTakeIndex::badEntriesAreLeftOut()
{
    const QByteArray text =
        "{\"takes\": [3, {}, {\"file\": \"\"}, {\"file\": 7}, {\"file\": \"good.m4a\"}, "
        "{\"file\": \"./good.m4a\"}]}";
    const StudioTakeIndex::Content content = StudioTakeIndex::read(text, folder());
    QVERIFY(content.valid);
    QCOMPARE(content.skipped, 5);
    QCOMPARE(content.takes.size(), 1);
    QCOMPARE(content.takes.first().path, folder() + QStringLiteral("/good.m4a"));
}

void tst_StudioTakeIndex::wrongTypesCountAsAbsent()
{
    const QByteArray text =
        "{\"takes\": [{\"file\": \"a.m4a\", \"device\": [], \"duration_ms\": -1e300, "
        "\"recorded\": \"yesterday\", \"file_info\": 3}]}";
    const StudioTake take = StudioTakeIndex::read(text, folder()).takes.value(0);
    QCOMPARE(take.deviceName, QString());
    QCOMPARE(take.durationMs, 0);
    QVERIFY(!take.recorded.isValid());
    QCOMPARE(take.fileInfo, QString());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTakeIndex>(argc, argv);
}

#include "tst_StudioTakeIndex.moc"
