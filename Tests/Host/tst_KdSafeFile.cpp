#include <KdCore/KdSafeFile.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>

class tst_KdSafeFile : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsWholeFilesUpToALimit();
    void readsOrdinaryFilesOnly();
    void makesAFileThatWasNotThere();
    void replacesTheWholeContent();
    void keepsThePermissions();
    void followsALinkAndLeavesItALink();
    void outOfSpaceKeepsTheOldFile_data();
    void outOfSpaceKeepsTheOldFile();
    void outOfSpaceMakesNoFile();
    void forbiddenFolderKeepsTheOldFile();
    void impossiblePathsAreRefused_data();
    void impossiblePathsAreRefused();

private:
    QStringList folderEntries() const;
    const QString m_name = QStringLiteral("settings %1 设置.xml");
};

QStringList tst_KdSafeFile::folderEntries() const
{
    return QDir(documentDir()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

void tst_KdSafeFile::readsWholeFilesUpToALimit()
{
    const QString path = temporaryPath(m_name);
    TestFiles::write(path, QByteArray("1234\0"
                                      "6",
                                      6));
    QCOMPARE(KdSafeFile::read(path, 6).value(), QByteArray("1234\0"
                                                           "6",
                                                           6));
    QVERIFY(!KdSafeFile::read(path, 5));
    TestFiles::write(path, QByteArray());
    QCOMPARE(KdSafeFile::read(path, 0).value(), QByteArray());
}

void tst_KdSafeFile::readsOrdinaryFilesOnly()
{
    const QString pipe = temporaryPath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QStringList paths{QString(), documentDir(), pipe, QStringLiteral("/dev/zero"),
                            temporaryPath(m_name)};
    for (const QString& path : paths) {
        QVERIFY2(!KdSafeFile::read(path, 100), qPrintable(path));
    }
}

void tst_KdSafeFile::makesAFileThatWasNotThere()
{
    const QString path = documentDir() + QLatin1Char('/') + m_name;
    QVERIFY(KdSafeFile::replace(path, "new"));
    QCOMPARE(TestFiles::read(path), QByteArray("new"));
    QCOMPARE(folderEntries(), QStringList(m_name));
}

void tst_KdSafeFile::replacesTheWholeContent()
{
    const QString path = documentDir() + QLatin1Char('/') + m_name;
    TestFiles::write(path, QByteArray(100000, 'o'));
    QVERIFY(KdSafeFile::replace(path, "short"));
    QCOMPARE(TestFiles::read(path), QByteArray("short"));
    QVERIFY(KdSafeFile::replace(path, QByteArray()));
    QCOMPARE(QFileInfo(path).size(), qint64(0));
    QCOMPARE(folderEntries(), QStringList(m_name));
}

void tst_KdSafeFile::keepsThePermissions()
{
    const QString path = documentDir() + QLatin1Char('/') + m_name;
    TestFiles::write(path, "old");
    const QFile::Permissions own = QFile::ReadOwner | QFile::WriteOwner;
    QVERIFY(QFile::setPermissions(path, own));
    QVERIFY(KdSafeFile::replace(path, "new"));
    QCOMPARE(QFileInfo(path).permissions(), own | QFile::ReadUser | QFile::WriteUser);
}

void tst_KdSafeFile::followsALinkAndLeavesItALink()
{
    const QString target = temporaryPath(QStringLiteral("elsewhere.xml"));
    const QString link = documentDir() + QLatin1Char('/') + m_name;
    TestFiles::write(target, "old");
    QVERIFY(QFile::link(target, link));
    QVERIFY(KdSafeFile::replace(link, "new"));
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(TestFiles::read(target), QByteArray("new"));
}

void tst_KdSafeFile::outOfSpaceKeepsTheOldFile_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("within Qt's buffer") << 3000;
    QTest::newRow("beyond Qt's buffer") << 300000;
}

void tst_KdSafeFile::outOfSpaceKeepsTheOldFile()
{
    QFETCH(int, size);
    const QString path = documentDir() + QLatin1Char('/') + m_name;
    TestFiles::write(path, "old");
    expectLog(QStringLiteral("could not be written"));
    bool isReplaced = true;
    {
        const FileFaults::FileSizeLimit limit(2048);
        isReplaced = KdSafeFile::replace(path, QByteArray(size, 'n'));
    }
    QVERIFY(!isReplaced);
    QCOMPARE(TestFiles::read(path), QByteArray("old"));
    QCOMPARE(folderEntries(), QStringList(m_name));
}

void tst_KdSafeFile::outOfSpaceMakesNoFile()
{
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::FileSizeLimit limit(0);
        QVERIFY(!KdSafeFile::replace(documentDir() + QLatin1Char('/') + m_name, "x"));
    }
    QCOMPARE(folderEntries(), QStringList());
}

void tst_KdSafeFile::forbiddenFolderKeepsTheOldFile()
{
    const QString path = documentDir() + QLatin1Char('/') + m_name;
    TestFiles::write(path, "old");
    QVERIFY(QFile::setPermissions(temporaryPath(QString()), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x5555)));
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::WithoutPrivileges nobody;
        QVERIFY(!KdSafeFile::replace(path, "new"));
        QCOMPARE(TestFiles::read(path), QByteArray("old"));
    }
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x7755)));
}

void tst_KdSafeFile::impossiblePathsAreRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty") << QString();
    QTest::newRow("a folder") << QStringLiteral("documents");
    QTest::newRow("beneath a file") << QStringLiteral("file/settings.xml");
    QTest::newRow("in a missing folder") << QStringLiteral("missing/settings.xml");
    QTest::newRow("a name that is too long") << QString(300, QLatin1Char('n'));
}

void tst_KdSafeFile::impossiblePathsAreRefused()
{
    QFETCH(QString, path);
    TestFiles::write(temporaryPath(QStringLiteral("file")), "x");
    expectLog(QStringLiteral("could not be written"));
    allowLog(QStringLiteral("QFSFileEngine::open: No file name specified"));
    QVERIFY(!KdSafeFile::replace(path.isEmpty() ? path : temporaryPath(path), "new"));
    QVERIFY(QFileInfo(documentDir()).isDir());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdSafeFile>(argc, argv);
}

#include "tst_KdSafeFile.moc"
