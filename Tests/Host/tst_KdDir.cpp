#include <KdCore/KdDir.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>

#include <sys/statvfs.h>

class tst_KdDir : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void writableFolderIsAndStaysEmpty_data();
    void writableFolderIsAndStaysEmpty();
    void whatIsNoFolderIsNot_data();
    void whatIsNoFolderIsNot();
    void forbiddenFolderIsNot();
    void folderOnAFullDiskIs();
    void freeSpaceIsInMegabytes();
    void nearestExistingParentCounts();
    void unknownSpaceIsMinusOne();
};

void tst_KdDir::writableFolderIsAndStaysEmpty_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("takes");
    QTest::newRow("blank and percent") << QStringLiteral("my takes %1 100%");
    QTest::newRow("non-Latin") << QStringLiteral("录音 تسجيل");
    QTest::newRow("template characters") << QStringLiteral("XXXXXX");
    QTest::newRow("255 bytes") << QString(255, QLatin1Char('n'));
}

void tst_KdDir::writableFolderIsAndStaysEmpty()
{
    QFETCH(QString, name);
    const QString path = temporaryPath(name);
    QVERIFY(QDir().mkpath(path));
    QVERIFY(KdDir::IsPathWriteAndReadable(path));
    QVERIFY(KdDir::IsPathWriteAndReadable(path + QLatin1Char('/')));
    QVERIFY(QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).isEmpty());
}

void tst_KdDir::whatIsNoFolderIsNot_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a file") << QStringLiteral("file");
    QTest::newRow("beneath a file") << QStringLiteral("file/sub");
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("too long") << QString(300, QLatin1Char('n'));
    QTest::newRow("dangling link") << QStringLiteral("link");
}

void tst_KdDir::whatIsNoFolderIsNot()
{
    QFETCH(QString, name);
    TestFiles::write(temporaryPath(QStringLiteral("file")), "x");
    QVERIFY(QFile::link(temporaryPath(QStringLiteral("nowhere")),
                        temporaryPath(QStringLiteral("link"))));
    QVERIFY(!KdDir::IsPathWriteAndReadable(temporaryPath(name)));
    QVERIFY(!KdDir::IsPathWriteAndReadable(QString()));
}

void tst_KdDir::forbiddenFolderIsNot()
{
    const QString path = documentDir();
    QVERIFY(QFile::setPermissions(temporaryPath(QString()), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x5555)));
    {
        const FileFaults::WithoutPrivileges nobody;
        QVERIFY(!KdDir::IsPathWriteAndReadable(path));
    }
    QVERIFY(QFile::setPermissions(path, QFile::Permissions(0x7755)));
}

void tst_KdDir::folderOnAFullDiskIs()
{
    const FileFaults::FileSizeLimit limit(0);
    QVERIFY(KdDir::IsPathWriteAndReadable(documentDir()));
}

void tst_KdDir::freeSpaceIsInMegabytes()
{
    struct statvfs space
    {
    };
    QCOMPARE(statvfs(QFile::encodeName(documentDir()).constData(), &space), 0);
    const qint64 expected = static_cast<qint64>(space.f_bavail * space.f_frsize) / (1024LL * 1024);
    const qint64 answered = KdDir::getDiskFreeSpace(documentDir(), 0);
    // Others may be writing to the same disk meanwhile.
    QVERIFY2(qAbs(answered - expected) <= 1024, qPrintable(QString::number(answered - expected)));
}

void tst_KdDir::nearestExistingParentCounts()
{
    QCOMPARE(KdDir::getDiskFreeSpace(QStringLiteral("/proc"), 0), qint64(0));
    QCOMPARE(KdDir::getDiskFreeSpace(QStringLiteral("/proc/not/there/yet"), 0), qint64(0));
    TestFiles::write(temporaryPath(QStringLiteral("file")), "x");
    QVERIFY(KdDir::getDiskFreeSpace(temporaryPath(QStringLiteral("file/beneath")), 0) > 0);
    QVERIFY(KdDir::getDiskFreeSpace(temporaryPath(QStringLiteral("not/there/yet")), 0) > 0);
    QVERIFY(KdDir::getDiskFreeSpace(QStringLiteral("relative/not there"), 0) >= 0);
}

void tst_KdDir::unknownSpaceIsMinusOne()
{
    QCOMPARE(KdDir::getDiskFreeSpace(QString(), 0), qint64(-1));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDir>(argc, argv);
}

#include "tst_KdDir.moc"
