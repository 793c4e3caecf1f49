#include <KdVBLModel/KdTakeFile.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <array>

class tst_KdTakeFile : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void claimMakesAnEmptyFile();
    void existingFileIsRefusedAndUntouched();
    void linkToNowhereIsRefused();
    void badPathsAreRefusedWithASentence_data();
    void badPathsAreRefusedWithASentence();
    void unwritableFolderIsRefused();
    void longestNameIsAcceptedAndOneMoreByteIsNot();
    void nonLatinNamesAreKept();
    void secondClaimOfOneObjectIsRefused();
    void sameNameCannotBeClaimedTwice();
    void processesThatRaceForANameGetItOnce();
    void unusedClaimIsTakenBack();
    void begunClaimIsKept();
    void finishConfirmsAFileThatWasWritten();
    void folderThatCannotBeListedIsGoodEnough();
    void finishFailsWhenTheFileIsGone();
    void finishFailsWhenTheFolderIsGone();
    void finishFailsWhenAnotherFileTookItsPlace();
    void finishFailsWhenNothingWasWritten();
    void finishWithoutClaimFails();
    void releaseLeavesAForeignFileAlone();
    void reRecordKeepsTheOldTakeUntilTheNewOneHasBegun();
    void reRecordThatNeverBeganBringsTheOldTakeBack();
    void reRecordOfAMissingTakeIsAnOrdinaryClaim();
    void reRecordRefusesWhileAnOlderTakeWaits();
    void hiddenNamesFitIntoTheFileSystem_data();
    void hiddenNamesFitIntoTheFileSystem();

private:
    QString folder() const { return temporaryPath(QStringLiteral("takes")); }
    QString inFolder(const QString& name) const { return QDir(folder()).filePath(name); }
    void makeFolder() { QVERIFY(QDir().mkpath(folder())); }
};

void tst_KdTakeFile::claimMakesAnEmptyFile()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("REC_1.m4a"));
    KdTakeFile take;
    QString error;
    QVERIFY2(take.claim(path, &error), qPrintable(error));
    QVERIFY(take.isClaimed());
    QCOMPARE(take.path(), path);
    QVERIFY(QFileInfo::exists(path));
    QCOMPARE(QFileInfo(path).size(), qint64(0));
}

void tst_KdTakeFile::existingFileIsRefusedAndUntouched()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("REC_1.m4a"));
    TestFiles::write(path, "somebody's work");
    KdTakeFile take;
    QString error;
    QVERIFY(!take.claim(path, &error));
    QCOMPARE(error, QStringLiteral("The file %1 exists already.").arg(path));
    QVERIFY(!take.isClaimed());
    take.release();
    QCOMPARE(TestFiles::read(path), QByteArray("somebody's work"));
}

void tst_KdTakeFile::linkToNowhereIsRefused()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("link.m4a"));
    const QString target = temporaryPath(QStringLiteral("elsewhere.m4a"));
    QVERIFY(QFile::link(target, path));
    KdTakeFile take;
    QVERIFY(!take.claim(path, nullptr));
    QVERIFY(!QFileInfo::exists(target));
}

void tst_KdTakeFile::badPathsAreRefusedWithASentence_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("sentence");
    const QString full = QStringLiteral("/");
    QTest::newRow("empty") << QString() << QStringLiteral("No output file is set.");
    QTest::newRow("relative") << QStringLiteral("REC_1.m4a")
                              << QStringLiteral("The output file REC_1.m4a is not a full path.");
    QTest::newRow("only a folder")
        << QStringLiteral("/tmp/") << QStringLiteral("The output file /tmp/ has no name.");
    QTest::newRow("missing folder") << QStringLiteral("/nowhere at all/REC_1.m4a")
                                    << QStringLiteral("The folder /nowhere at all does not exist.");
    QTest::newRow("folder is a file") << QStringLiteral("/etc/passwd/REC_1.m4a")
                                      << QStringLiteral("/etc/passwd is not a folder.");
    QTest::newRow("folder of the kernel's")
        << QStringLiteral("/proc/REC_1.m4a") << QStringLiteral("The folder /proc does not exist.");
    QTest::newRow("a folder of that name")
        << QStringLiteral("/usr/bin") << QStringLiteral("The file /usr/bin exists already.");
    QString withNull = QStringLiteral("/tmp/REC_1.m4a");
    withNull[8] = QChar(QChar::Null);
    QTest::newRow("null character")
        << withNull
        << QStringLiteral("The path %1 cannot be expressed in this system's file names.")
               .arg(withNull);
}

void tst_KdTakeFile::badPathsAreRefusedWithASentence()
{
    QFETCH(QString, path);
    QFETCH(QString, sentence);
    KdTakeFile take;
    QString error;
    QVERIFY(!take.claim(path, &error));
    QCOMPARE(error, sentence);
    QVERIFY(!take.claim(path, nullptr));
    QVERIFY(!take.claimAgain(path, &error) || path == QStringLiteral("/usr/bin"));
    QCOMPARE(error, sentence);
    QVERIFY(!take.isClaimed());
}

void tst_KdTakeFile::unwritableFolderIsRefused()
{
    makeFolder();
    QVERIFY(QFile::setPermissions(QFileInfo(folder()).path(), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(folder(), QFile::Permissions(0x5555)));
    const FileFaults::WithoutPrivileges nobody;
    KdTakeFile take;
    QString error;
    QVERIFY(!take.claim(inFolder(QStringLiteral("REC_1.m4a")), &error));
    QCOMPARE(error, QStringLiteral("The folder %1 is not writable.").arg(folder()));
}

void tst_KdTakeFile::longestNameIsAcceptedAndOneMoreByteIsNot()
{
    makeFolder();
    const QString longest = QString(251, QLatin1Char('n')) + QStringLiteral(".m4a");
    KdTakeFile take;
    QString error;
    QVERIFY2(take.claim(inFolder(longest), &error), qPrintable(error));
    take.release();
    const QString tooLong = QLatin1Char('n') + longest;
    QVERIFY(!take.claim(inFolder(tooLong), &error));
    QCOMPARE(error, QStringLiteral("The file name %1 is too long.").arg(tooLong));
    const QString fewCharactersManyBytes = QString(100, QChar(0x9332)) + QStringLiteral(".m4a");
    QVERIFY(!take.claim(inFolder(fewCharactersManyBytes), &error));
    QCOMPARE(error, QStringLiteral("The file name %1 is too long.").arg(fewCharactersManyBytes));
}

void tst_KdTakeFile::nonLatinNamesAreKept()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("\u5F55\u97F3 %1 \u00FC\".m4a"));
    KdTakeFile take;
    QString error;
    QVERIFY2(take.claim(path, &error), qPrintable(error));
    QVERIFY(QFileInfo::exists(path));
    QCOMPARE(QFile::decodeName(KdTakeFile::locationFor(path)), path);
}

void tst_KdTakeFile::secondClaimOfOneObjectIsRefused()
{
    makeFolder();
    const QString first = inFolder(QStringLiteral("1.m4a"));
    KdTakeFile take;
    QString error;
    QVERIFY(take.claim(first, nullptr));
    QVERIFY(!take.claim(inFolder(QStringLiteral("2.m4a")), &error));
    QCOMPARE(error, QStringLiteral("The file %1 is still claimed.").arg(first));
    QCOMPARE(take.path(), first);
}

void tst_KdTakeFile::sameNameCannotBeClaimedTwice()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("1.m4a"));
    KdTakeFile first;
    KdTakeFile second;
    QVERIFY(first.claim(path, nullptr));
    QVERIFY(!second.claim(path, nullptr));
    first.release();
    QVERIFY(second.claim(path, nullptr));
}

void tst_KdTakeFile::processesThatRaceForANameGetItOnce()
{
    constexpr int kProcesses = 4;
    constexpr int kRounds = 5;
    makeFolder();
    for (int round = 0; round < kRounds; ++round) {
        const QString path = inFolder(QString::number(round));
        std::array<QProcess, kProcesses> children;
        for (QProcess& child : children) {
            child.start(QStringLiteral(KD_TAKE_CHILD), {QStringLiteral("claim"), path});
        }
        for (QProcess& child : children) {
            QVERIFY(child.waitForReadyRead());
            QCOMPARE(child.readLine(), QByteArray("ready\n"));
        }
        for (QProcess& child : children) {
            child.write("go\n");
            QVERIFY(child.waitForBytesWritten());
        }
        int claims = 0;
        for (QProcess& child : children) {
            QVERIFY(child.waitForFinished());
            claims += child.readAllStandardOutput() == "claimed\n" ? 1 : 0;
        }
        QCOMPARE(claims, 1);
        QVERIFY(QFileInfo::exists(path));
    }
}

void tst_KdTakeFile::unusedClaimIsTakenBack()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("1.m4a"));
    {
        KdTakeFile take;
        QVERIFY(take.claim(path, nullptr));
    }
    QVERIFY(!QFileInfo::exists(path));
}

void tst_KdTakeFile::begunClaimIsKept()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("1.m4a"));
    {
        KdTakeFile take;
        QVERIFY(take.claim(path, nullptr));
        TestFiles::write(path, "media");
        take.begun();
    }
    QCOMPARE(TestFiles::read(path), QByteArray("media"));
}

void tst_KdTakeFile::finishConfirmsAFileThatWasWritten()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("1.m4a"));
    KdTakeFile take;
    QString error;
    QVERIFY(take.claim(path, nullptr));
    take.begun();
    TestFiles::write(path, "media");
    QVERIFY2(take.finish(&error), qPrintable(error));
    QVERIFY(!take.isClaimed());
    QCOMPARE(TestFiles::read(path), QByteArray("media"));
}

void tst_KdTakeFile::folderThatCannotBeListedIsGoodEnough()
{
    makeFolder();
    QVERIFY(QFile::setPermissions(QFileInfo(folder()).path(), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(folder(), QFile::Permissions(0x3333)));
    const FileFaults::WithoutPrivileges nobody;
    const QString path = inFolder(QStringLiteral("1.m4a"));
    KdTakeFile take;
    QString error;
    QVERIFY2(take.claim(path, &error), qPrintable(error));
    take.begun();
    TestFiles::write(path, "media");
    QVERIFY2(take.finish(&error), qPrintable(error));
}

void tst_KdTakeFile::finishFailsWhenTheFileIsGone()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("1.m4a"));
    KdTakeFile take;
    QString error;
    QVERIFY(take.claim(path, nullptr));
    take.begun();
    QVERIFY(QFile::remove(path));
    QVERIFY(!take.finish(&error));
    QCOMPARE(error, QStringLiteral("The file %1 is no longer there.").arg(path));
    QVERIFY(!take.isClaimed());
}

void tst_KdTakeFile::finishFailsWhenTheFolderIsGone()
{
    makeFolder();
    KdTakeFile take;
    QVERIFY(take.claim(inFolder(QStringLiteral("1.m4a")), nullptr));
    take.begun();
    QVERIFY(QDir(folder()).removeRecursively());
    QVERIFY(!take.finish(nullptr));
}

void tst_KdTakeFile::finishFailsWhenAnotherFileTookItsPlace()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("1.m4a"));
    KdTakeFile take;
    QVERIFY(take.claim(path, nullptr));
    take.begun();
    QVERIFY(QFile::remove(path));
    TestFiles::write(path, "a stranger's");
    QVERIFY(!take.isInPlace());
    QVERIFY(!take.finish(nullptr));
    QCOMPARE(TestFiles::read(path), QByteArray("a stranger's"));
}

void tst_KdTakeFile::finishFailsWhenNothingWasWritten()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("1.m4a"));
    KdTakeFile take;
    QString error;
    QVERIFY(take.claim(path, nullptr));
    QVERIFY(!take.finish(&error));
    QCOMPARE(error, QStringLiteral("Nothing was written to the file %1.").arg(path));
    QVERIFY(!QFileInfo::exists(path));
    QVERIFY(take.claim(path, nullptr));
    take.begun();
    QVERIFY(!take.finish(nullptr));
    QVERIFY(!QFileInfo::exists(path));
}

void tst_KdTakeFile::finishWithoutClaimFails()
{
    KdTakeFile take;
    QString error;
    QVERIFY(!take.finish(&error));
    QCOMPARE(error, QStringLiteral("No file is claimed."));
    take.begun();
    take.release();
    take.release();
    QVERIFY(!take.isClaimed());
}

void tst_KdTakeFile::releaseLeavesAForeignFileAlone()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("1.m4a"));
    KdTakeFile take;
    QVERIFY(take.claim(path, nullptr));
    QVERIFY(QFile::remove(path));
    TestFiles::write(path, "a stranger's");
    take.release();
    QCOMPARE(TestFiles::read(path), QByteArray("a stranger's"));
}

void tst_KdTakeFile::reRecordKeepsTheOldTakeUntilTheNewOneHasBegun()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("VID_1.mp4"));
    TestFiles::write(path, "old take");
    KdTakeFile take;
    QString error;
    QVERIFY2(take.claimAgain(path, &error), qPrintable(error));
    QVERIFY(QFileInfo::exists(path));
    QCOMPARE(QFileInfo(path).size(), qint64(0));
    QCOMPARE(TestFiles::read(KdTakeFile::previousPath(path)), QByteArray("old take"));
    take.begun();
    QVERIFY(!QFileInfo::exists(KdTakeFile::previousPath(path)));
    TestFiles::write(path, "new take");
    QVERIFY(take.finish(nullptr));
    QCOMPARE(TestFiles::read(path), QByteArray("new take"));
}

void tst_KdTakeFile::reRecordThatNeverBeganBringsTheOldTakeBack()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("VID_1.mp4"));
    TestFiles::write(path, "old take");
    KdTakeFile take;
    QVERIFY(take.claimAgain(path, nullptr));
    take.release();
    QCOMPARE(TestFiles::read(path), QByteArray("old take"));
    QVERIFY(!QFileInfo::exists(KdTakeFile::previousPath(path)));
}

void tst_KdTakeFile::reRecordOfAMissingTakeIsAnOrdinaryClaim()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("VID_1.mp4"));
    KdTakeFile take;
    QVERIFY(take.claimAgain(path, nullptr));
    take.release();
    QVERIFY(!QFileInfo::exists(path));
}

void tst_KdTakeFile::reRecordRefusesWhileAnOlderTakeWaits()
{
    makeFolder();
    const QString path = inFolder(QStringLiteral("VID_1.mp4"));
    TestFiles::write(path, "old take");
    TestFiles::write(KdTakeFile::previousPath(path), "older take");
    KdTakeFile take;
    QVERIFY(!take.claimAgain(path, nullptr));
    QCOMPARE(TestFiles::read(path), QByteArray("old take"));
    QCOMPARE(TestFiles::read(KdTakeFile::previousPath(path)), QByteArray("older take"));
}

void tst_KdTakeFile::hiddenNamesFitIntoTheFileSystem_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("short") << QStringLiteral("REC_1.m4a");
    QTest::newRow("longest") << QString(255, QLatin1Char('n'));
    QTest::newRow("longest in bytes") << QString(85, QChar(0x9332));
}

void tst_KdTakeFile::hiddenNamesFitIntoTheFileSystem()
{
    QFETCH(QString, name);
    makeFolder();
    const QString path = KdTakeFile::hiddenPathBeside(inFolder(name), QStringLiteral(".kdtake"));
    QCOMPARE(QFileInfo(path).path(), folder());
    QVERIFY(QFileInfo(path).fileName().startsWith(QLatin1Char('.')));
    QVERIFY(path.endsWith(QStringLiteral(".kdtake")));
    TestFiles::write(path, "fits");
    QCOMPARE(KdTakeFile::hiddenPathBeside(inFolder(name), QStringLiteral(".kdtake")), path);
    QVERIFY(KdTakeFile::hiddenPathBeside(inFolder(name + QLatin1Char('x')),
                                         QStringLiteral(".kdtake")) != path);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeFile>(argc, argv);
}

#include "tst_KdTakeFile.moc"
