#include "Support/FileFaults.h"
#include "Support/KdTestCase.h"
#include "Support/TestFiles.h"

#include <Studio/StudioTakeLibrary.h>

#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>

class tst_StudioTakeLibrary : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void newFolderIsMadeAndEmpty();
    void takesAreListedAgainAfterARestart();
    void takeAtTheSamePathIsReplaced();
    void removedTakeStaysOnDisk();
    void deletedFileIsMissingAndComesBack();
    void fileDeletedWhileNobodyLookedIsMissingAtTheStart();
    void unreadableFileIsSaidToBe();
    void damagedListIsPutAside_data();
    void damagedListIsPutAside();
    void listThatCannotBeSavedIsReported();
    void folderThatCannotBeMadeIsReported();
    void lookingIntoUnlistedFilesChangesNothing();

private:
    StudioTake makeTake(const QString& name) const;
    QString folder() const { return temporaryPath(QStringLiteral("my takes %1")); }
};

StudioTake tst_StudioTakeLibrary::makeTake(const QString& name) const
{
    StudioTake take;
    take.path = folder() + QLatin1Char('/') + name;
    TestFiles::write(take.path, "sound");
    take.deviceName = QStringLiteral("Mic");
    take.durationMs = 2000;
    take.state = StudioTake::State::Good;
    return take;
}

void tst_StudioTakeLibrary::newFolderIsMadeAndEmpty()
{
    StudioTakeLibrary library;
    library.open(folder());
    QVERIFY(QFileInfo(folder()).isDir());
    QCOMPARE(library.count(), 0);
    QVERIFY(!QFileInfo::exists(library.indexPath()));
}

void tst_StudioTakeLibrary::takesAreListedAgainAfterARestart()
{
    {
        StudioTakeLibrary library;
        library.open(folder());
        library.add(makeTake(QStringLiteral("b.m4a")));
        library.add(makeTake(QStringLiteral("a.m4a")));
    }
    StudioTakeLibrary library;
    QSignalSpy checks(&library, &StudioTakeLibrary::needsCheck);
    library.open(folder());
    QCOMPARE(library.count(), 2);
    QCOMPARE(library.takes().at(0).name(), QStringLiteral("b"));
    QCOMPARE(library.takes().at(1).deviceName, QStringLiteral("Mic"));
    QVERIFY(library.takes().at(0).state == StudioTake::State::Checking);
    QCOMPARE(checks.count(), 2);
}

void tst_StudioTakeLibrary::takeAtTheSamePathIsReplaced()
{
    StudioTakeLibrary library;
    library.open(folder());
    library.add(makeTake(QStringLiteral("a.m4a")));
    StudioTake again = makeTake(QStringLiteral("a.m4a"));
    again.deviceName = QStringLiteral("Other");
    QSignalSpy inserted(&library, &StudioTakeLibrary::inserted);
    library.add(again);
    QCOMPARE(library.count(), 1);
    QCOMPARE(library.takes().first().deviceName, QStringLiteral("Other"));
    QVERIFY(inserted.isEmpty());
}

void tst_StudioTakeLibrary::removedTakeStaysOnDisk()
{
    StudioTakeLibrary library;
    library.open(folder());
    const StudioTake take = makeTake(QStringLiteral("a.m4a"));
    library.add(take);
    library.remove(take.path);
    library.remove(QStringLiteral("/nowhere"));
    QCOMPARE(library.count(), 0);
    QVERIFY(QFileInfo::exists(take.path));
    StudioTakeLibrary restarted;
    restarted.open(folder());
    QCOMPARE(restarted.count(), 0);
}

void tst_StudioTakeLibrary::deletedFileIsMissingAndComesBack()
{
    StudioTakeLibrary library;
    library.open(folder());
    const StudioTake take = makeTake(QStringLiteral("a.m4a"));
    library.add(take);
    QVERIFY(library.takes().first().state == StudioTake::State::Good);

    QVERIFY(QFile::remove(take.path));
    QTRY_VERIFY(library.takes().first().state == StudioTake::State::Missing);

    QSignalSpy checks(&library, &StudioTakeLibrary::needsCheck);
    TestFiles::write(take.path, "sound");
    QTRY_VERIFY(library.takes().first().state == StudioTake::State::Checking);
    QCOMPARE(checks.value(0).value(0).toString(), take.path);
    library.setGood(take.path, 2000);
    QVERIFY(library.takes().first().state == StudioTake::State::Good);
}

void tst_StudioTakeLibrary::fileDeletedWhileNobodyLookedIsMissingAtTheStart()
{
    const StudioTake take = makeTake(QStringLiteral("a.m4a"));
    {
        StudioTakeLibrary library;
        library.open(folder());
        library.add(take);
    }
    QVERIFY(QFile::remove(take.path));
    StudioTakeLibrary library;
    QSignalSpy checks(&library, &StudioTakeLibrary::needsCheck);
    library.open(folder());
    QCOMPARE(library.count(), 1);
    QVERIFY(library.takes().first().state == StudioTake::State::Missing);
    QVERIFY(checks.isEmpty());
}

void tst_StudioTakeLibrary::unreadableFileIsSaidToBe()
{
    StudioTakeLibrary library;
    library.open(folder());
    const StudioTake take = makeTake(QStringLiteral("a.m4a"));
    library.add(take);
    QSignalSpy changed(&library, &StudioTakeLibrary::changed);
    library.setUnreadable(take.path, QStringLiteral("Not a sound file."));
    QVERIFY(library.takes().first().state == StudioTake::State::Unreadable);
    QCOMPARE(library.takes().first().problem, QStringLiteral("Not a sound file."));
    QCOMPARE(changed.count(), 1);
}

void tst_StudioTakeLibrary::damagedListIsPutAside_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("truncated") << QByteArray("{\"version\": 1, \"takes\": [{\"file\"");
    QTest::newRow("something else") << QByteArray("<xml/>");
}

void tst_StudioTakeLibrary::damagedListIsPutAside()
{
    QFETCH(QByteArray, content);
    expectLog(QStringLiteral("The take list cannot be read"));
    TestFiles::write(folder() + QStringLiteral("/Takes.json"), content);
    TestFiles::write(folder() + QStringLiteral("/Takes.json.damaged"), "an older one");
    StudioTakeLibrary library;
    QSignalSpy problems(&library, &StudioTakeLibrary::problem);
    library.open(folder());
    QCOMPARE(library.count(), 0);
    QCOMPARE(problems.count(), 1);
    QVERIFY(!QFileInfo::exists(library.indexPath()));
    QCOMPARE(TestFiles::read(folder() + QStringLiteral("/Takes.json.damaged")), content);
}

void tst_StudioTakeLibrary::listThatCannotBeSavedIsReported()
{
    expectLog(QStringLiteral("cannot be written"));
    allowLog(QStringLiteral("KdSafeFile"));
    StudioTakeLibrary library;
    library.open(folder());
    library.add(makeTake(QStringLiteral("a.m4a")));
    const QByteArray before = TestFiles::read(library.indexPath());
    QSignalSpy problems(&library, &StudioTakeLibrary::problem);
    const StudioTake second = makeTake(QStringLiteral("b.m4a"));
    {
        const FileFaults::FileSizeLimit limit(100);
        library.add(second);
    }
    QCOMPARE(problems.count(), 1);
    QCOMPARE(library.count(), 2);
    QCOMPARE(TestFiles::read(library.indexPath()), before);
}

void tst_StudioTakeLibrary::folderThatCannotBeMadeIsReported()
{
    TestFiles::write(temporaryPath(QStringLiteral("file")), "x");
    StudioTakeLibrary library;
    QSignalSpy problems(&library, &StudioTakeLibrary::problem);
    library.open(temporaryPath(QStringLiteral("file/takes")));
    QCOMPARE(library.count(), 0);
    QCOMPARE(problems.count(), 1);
}

void tst_StudioTakeLibrary::lookingIntoUnlistedFilesChangesNothing()
{
    StudioTakeLibrary library;
    library.open(folder());
    QSignalSpy changed(&library, &StudioTakeLibrary::changed);
    library.setGood(QStringLiteral("/nowhere.m4a"), 5);
    library.setUnreadable(QStringLiteral("/nowhere.m4a"), QStringLiteral("x"));
    QVERIFY(changed.isEmpty());
    QCOMPARE(library.count(), 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTakeLibrary>(argc, argv);
}

#include "tst_StudioTakeLibrary.moc"
