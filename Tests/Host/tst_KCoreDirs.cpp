#include <KCore/KCoreDirs.h>
#include <Support/KdTestCase.h>

#include <QDir>
#include <QFileInfo>

class tst_KCoreDirs : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void chosenFolderIsMadeAndAnswered_data();
    void chosenFolderIsMadeAndAnswered();
    void folderThatWasDeletedIsThereAgain();
    void relativeChoiceBecomesAbsolute();
    void emptyChoiceReturnsToTheUsersData();
};

void tst_KCoreDirs::cleanup()
{
    qunsetenv("XDG_DATA_HOME");
    KdTestCase::cleanup();
}

void tst_KCoreDirs::chosenFolderIsMadeAndAnswered_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("answered");
    QTest::newRow("plain") << QStringLiteral("data") << QStringLiteral("data");
    QTest::newRow("nested") << QStringLiteral("a/b/c") << QStringLiteral("a/b/c");
    QTest::newRow("trailing separator") << QStringLiteral("data/") << QStringLiteral("data");
    QTest::newRow("detour") << QStringLiteral("x/../data//") << QStringLiteral("data");
    QTest::newRow("strange name") << QStringLiteral("a %1 b/设置") << QStringLiteral("a %1 b/设置");
}

void tst_KCoreDirs::chosenFolderIsMadeAndAnswered()
{
    QFETCH(QString, given);
    QFETCH(QString, answered);
    setZentraDocumentDir(temporaryPath(given));
    QCOMPARE(getZentraDocumentDir(), temporaryPath(answered));
    QVERIFY(QFileInfo(temporaryPath(answered)).isDir());
}

void tst_KCoreDirs::folderThatWasDeletedIsThereAgain()
{
    QVERIFY(QDir().rmdir(documentDir()));
    QCOMPARE(getZentraDocumentDir(), documentDir());
    QVERIFY(QFileInfo(documentDir()).isDir());
}

void tst_KCoreDirs::relativeChoiceBecomesAbsolute()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(temporaryPath(QString())));
    setZentraDocumentDir(QStringLiteral("relative"));
    const QString expected = QDir::currentPath() + QStringLiteral("/relative");
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(getZentraDocumentDir(), expected);
}

void tst_KCoreDirs::emptyChoiceReturnsToTheUsersData()
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(temporaryPath(QStringLiteral("share"))));
    setZentraDocumentDir(QString());
    QCOMPARE(getZentraDocumentDir(), temporaryPath(QStringLiteral("share/KdRecord")));
    QVERIFY(QFileInfo(getZentraDocumentDir()).isDir());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KCoreDirs>(argc, argv);
}

#include "tst_KCoreDirs.moc"
