#include <KdVBLModel/KdProcessIdentity.h>
#include <KdVBLModel/KdTakeJournal.h>
#include <Support/KdTestCase.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>

class tst_KdTakeJournal : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void journalTellsAllOfItsTake();
    void journalIsFoundByFolderAndGoesWithRemove();
    void journalOutlivesItsObject();
    void takesOfAllNamesHaveAJournal_data();
    void takesOfAllNamesHaveAJournal();
    void staleJournalOfThatNameIsReplaced();
    void missingFolderIsAnError();
    void movedFolderLeadsToTheMovedTake();
    void nonsenseIsNoJournal_data();
    void nonsenseIsNoJournal();
    void runningWriterIsThisProcess();
    void deadWriterDoesNotRun();
    void writerElsewhereRunsWhileItsTakeGrows();

private:
    QString folder() const { return temporaryPath(QStringLiteral("takes")); }
    QString take(const QString& name) const { return QDir(folder()).filePath(name); }
    void makeFolder() { QVERIFY(QDir().mkpath(folder())); }
    KdTakeRecord recordFor(const QString& name) const;
    static bool write(const QString& path, const QByteArray& content);
};

KdTakeRecord tst_KdTakeJournal::recordFor(const QString& name) const
{
    KdTakeRecord record;
    record.takePath = take(name);
    record.kind = KdTakeRecord::Kind::Webcam;
    record.format = QStringLiteral("H.264 1280x720, AAC");
    return record;
}

bool tst_KdTakeJournal::write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

void tst_KdTakeJournal::journalTellsAllOfItsTake()
{
    makeFolder();
    const QDateTime before = QDateTime::currentDateTimeUtc();
    KdTakeJournal journal;
    QString error;
    QVERIFY2(journal.begin(recordFor(QStringLiteral("VID_1.mp4")), &error), qPrintable(error));
    KdTakeRecord read;
    QVERIFY(KdTakeJournal::read(journal.path(), &read));
    QCOMPARE(read.takePath, take(QStringLiteral("VID_1.mp4")));
    QCOMPARE(read.kind, KdTakeRecord::Kind::Webcam);
    QCOMPARE(read.format, QStringLiteral("H.264 1280x720, AAC"));
    QVERIFY(read.started >= before.addMSecs(-1) && read.started <= QDateTime::currentDateTimeUtc());
    QCOMPARE(read.processId, KdProcessIdentity::current().id);
    QCOMPARE(read.processStarted, KdProcessIdentity::current().started);
    QCOMPARE(read.processScope, KdProcessIdentity::scope());
}

void tst_KdTakeJournal::journalIsFoundByFolderAndGoesWithRemove()
{
    makeFolder();
    KdTakeJournal first;
    KdTakeJournal second;
    QVERIFY(first.begin(recordFor(QStringLiteral("1.m4a")), nullptr));
    QVERIFY(second.begin(recordFor(QStringLiteral("2.m4a")), nullptr));
    QCOMPARE(KdTakeJournal::findIn(folder()), QStringList({first.path(), second.path()}));
    QVERIFY(QDir(folder()).entryList(QDir::Files).isEmpty());
    first.remove();
    first.remove();
    QCOMPARE(KdTakeJournal::findIn(folder()), QStringList({second.path()}));
    QVERIFY(KdTakeJournal::findIn(temporaryPath(QStringLiteral("missing"))).isEmpty());
    QVERIFY(KdTakeJournal::findIn(QString()).isEmpty());
}

void tst_KdTakeJournal::journalOutlivesItsObject()
{
    makeFolder();
    {
        KdTakeJournal journal;
        QVERIFY(journal.begin(recordFor(QStringLiteral("1.m4a")), nullptr));
    }
    QCOMPARE(KdTakeJournal::findIn(folder()).size(), 1);
}

void tst_KdTakeJournal::takesOfAllNamesHaveAJournal_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("longest") << QString(255, QLatin1Char('n'));
    QTest::newRow("longest in bytes") << QString(85, QChar(0x9332));
    QTest::newRow("odd") << QStringLiteral("\u5F55\u97F3 %1 \"x\" \n<b>.m4a");
}

void tst_KdTakeJournal::takesOfAllNamesHaveAJournal()
{
    QFETCH(QString, name);
    makeFolder();
    KdTakeJournal journal;
    QString error;
    QVERIFY2(journal.begin(recordFor(name), &error), qPrintable(error));
    QCOMPARE(KdTakeJournal::findIn(folder()), QStringList({journal.path()}));
    KdTakeRecord read;
    QVERIFY(KdTakeJournal::read(journal.path(), &read));
    QCOMPARE(read.takePath, take(name));
}

void tst_KdTakeJournal::staleJournalOfThatNameIsReplaced()
{
    makeFolder();
    const KdTakeRecord record = recordFor(QStringLiteral("1.m4a"));
    QVERIFY(write(KdTakeJournal::pathFor(record.takePath), "left by a crash"));
    KdTakeJournal journal;
    QVERIFY(journal.begin(record, nullptr));
    KdTakeRecord read;
    QVERIFY(KdTakeJournal::read(journal.path(), &read));
}

void tst_KdTakeJournal::missingFolderIsAnError()
{
    KdTakeJournal journal;
    QString error;
    QVERIFY(!journal.begin(recordFor(QStringLiteral("1.m4a")), &error));
    QCOMPARE(error, QStringLiteral("The folder %1 does not exist.").arg(folder()));
    QVERIFY(journal.path().isEmpty());
    journal.remove();
}

void tst_KdTakeJournal::movedFolderLeadsToTheMovedTake()
{
    makeFolder();
    KdTakeJournal journal;
    QVERIFY(journal.begin(recordFor(QStringLiteral("1.m4a")), nullptr));
    const QString moved = temporaryPath(QStringLiteral("moved"));
    QVERIFY(QDir().rename(folder(), moved));
    const QStringList found = KdTakeJournal::findIn(moved);
    QCOMPARE(found.size(), 1);
    KdTakeRecord read;
    QVERIFY(KdTakeJournal::read(found.first(), &read));
    QCOMPARE(read.takePath, QDir(moved).filePath(QStringLiteral("1.m4a")));
}

void tst_KdTakeJournal::nonsenseIsNoJournal_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut") << QByteArray("{\"file\": \"1.m");
    QTest::newRow("array") << QByteArray("[1, 2]");
    QTest::newRow("no file") << QByteArray("{}");
    QTest::newRow("wrong type") << QByteArray("{\"file\": 5}");
    QTest::newRow("another take") << QByteArray("{\"file\": \"2.m4a\"}");
    QTest::newRow("outside") << QByteArray("{\"file\": \"../../etc/passwd\"}");
    QTest::newRow("absolute") << QByteArray("{\"file\": \"/etc/passwd\"}");
    QTest::newRow("parent") << QByteArray("{\"file\": \"..\"}");
    QTest::newRow("null bytes") << QByteArray(100, '\0');
    QTest::newRow("huge") << "{\"file\": \"1.m4a\", \"x\": \"" + QByteArray(70000, 'x') + "\"}";
    QTest::newRow("deep") << QByteArray(30000, '[');
}

void tst_KdTakeJournal::nonsenseIsNoJournal()
{
    QFETCH(QByteArray, content);
    makeFolder();
    const QString path = KdTakeJournal::pathFor(take(QStringLiteral("1.m4a")));
    QVERIFY(write(path, content));
    KdTakeRecord read;
    read.format = QStringLiteral("as before");
    QVERIFY(!KdTakeJournal::read(path, &read));
    QCOMPARE(read.format, QStringLiteral("as before"));
    QVERIFY(!KdTakeJournal::read(take(QStringLiteral("missing")), &read));
}

void tst_KdTakeJournal::runningWriterIsThisProcess()
{
    makeFolder();
    KdTakeJournal journal;
    QVERIFY(journal.begin(recordFor(QStringLiteral("1.m4a")), nullptr));
    KdTakeRecord read;
    QVERIFY(KdTakeJournal::read(journal.path(), &read));
    QVERIFY(KdTakeJournal::isWriterRunning(read));
}

void tst_KdTakeJournal::deadWriterDoesNotRun()
{
    KdTakeRecord record;
    record.processScope = KdProcessIdentity::scope();
    record.processId = KdProcessIdentity::current().id;
    record.processStarted = QStringLiteral("long ago");
    QVERIFY(!KdTakeJournal::isWriterRunning(record));
    QVERIFY(!KdTakeJournal::isWriterRunning(KdTakeRecord()));
}

void tst_KdTakeJournal::writerElsewhereRunsWhileItsTakeGrows()
{
    makeFolder();
    KdTakeRecord record = recordFor(QStringLiteral("1.m4a"));
    record.processScope = QStringLiteral("another machine");
    record.processId = KdProcessIdentity::current().id;
    record.processStarted = KdProcessIdentity::current().started;
    QVERIFY(!KdTakeJournal::isWriterRunning(record));
    QVERIFY(write(record.takePath, "media"));
    QVERIFY(KdTakeJournal::isWriterRunning(record));
    QFile file(record.takePath);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-61),
                             QFileDevice::FileModificationTime));
    QVERIFY(!KdTakeJournal::isWriterRunning(record));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeJournal>(argc, argv);
}

#include "tst_KdTakeJournal.moc"
