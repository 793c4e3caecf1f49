#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>
#include <Support/WindowAnswers.h>

#include <KdRecord/KdOutputFolderCheck.h>

#include <QFileInfo>
#include <QPointer>
#include <QWidget>

namespace {

KdOutputFolderCheck withFreeSpace(qint64 megabytes)
{
    return KdOutputFolderCheck([megabytes](const QString&) { return megabytes; });
}

} // namespace

class tst_KdOutputFolderCheck : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void missingFolderIsMadeWithItsParents();
    void folderThatCannotBeMadeHasNoPermission();
    void folderWithoutRightsHasNoPermission_data();
    void folderWithoutRightsHasNoPermission();
    void spaceIsLowBelowFiveHundredMegabytes_data();
    void spaceIsLowBelowFiveHundredMegabytes();
    void theFileSystemIsAskedUnlessToldOtherwise();

    void missingPermissionIsTold_data();
    void missingPermissionIsTold();
    void questionNamesTheSpaceAndOnlyNoGoesOn_data();
    void questionNamesTheSpaceAndOnlyNoGoesOn();
    void ownerDestroyedInsideTheQuestionDoesNotRecord();
};

void tst_KdOutputFolderCheck::missingFolderIsMadeWithItsParents()
{
    const QString folder = temporaryPath(QStringLiteral("a/%1 b/ç"));
    QCOMPARE(withFreeSpace(1000).examine(folder), KdOutputFolderCheck::Usable);
    QVERIFY(QFileInfo(folder).isDir());
}

void tst_KdOutputFolderCheck::folderThatCannotBeMadeHasNoPermission()
{
    const QString file = temporaryPath(QStringLiteral("file"));
    TestFiles::write(file, "no folder");
    QCOMPARE(withFreeSpace(1000).examine(file), KdOutputFolderCheck::NoPermission);
    QCOMPARE(withFreeSpace(1000).examine(file + QStringLiteral("/below")),
             KdOutputFolderCheck::NoPermission);
    QCOMPARE(withFreeSpace(1000).examine(QString()), KdOutputFolderCheck::NoPermission);
}

void tst_KdOutputFolderCheck::folderWithoutRightsHasNoPermission_data()
{
    QTest::addColumn<int>("permissions");
    QTest::newRow("not writable") << int(QFile::ReadOwner | QFile::ExeOwner);
    QTest::newRow("nothing") << 0;
}

void tst_KdOutputFolderCheck::folderWithoutRightsHasNoPermission()
{
    QFETCH(int, permissions);
    const QString folder = temporaryPath(QStringLiteral("locked"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::setPermissions(folder, QFile::Permissions(permissions)));
    {
        const FileFaults::WithoutPrivileges nobody;
        QCOMPARE(withFreeSpace(1000).examine(folder), KdOutputFolderCheck::NoPermission);
    }
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void tst_KdOutputFolderCheck::spaceIsLowBelowFiveHundredMegabytes_data()
{
    QTest::addColumn<qint64>("megabytes");
    QTest::addColumn<int>("verdict");
    QTest::newRow("none") << qint64(0) << int(KdOutputFolderCheck::LowSpace);
    QTest::newRow("too little") << qint64(499) << int(KdOutputFolderCheck::LowSpace);
    QTest::newRow("just enough") << qint64(500) << int(KdOutputFolderCheck::Usable);
    QTest::newRow("unknown") << qint64(-1) << int(KdOutputFolderCheck::Usable);
}

void tst_KdOutputFolderCheck::spaceIsLowBelowFiveHundredMegabytes()
{
    QFETCH(qint64, megabytes);
    QFETCH(int, verdict);
    const QString folder = temporaryPath(QStringLiteral("takes"));
    QCOMPARE(withFreeSpace(megabytes).isShortOfSpace(folder),
             verdict == KdOutputFolderCheck::LowSpace);
    QVERIFY(!QFileInfo::exists(folder));
    QCOMPARE(int(withFreeSpace(megabytes).examine(folder)), verdict);
}

void tst_KdOutputFolderCheck::theFileSystemIsAskedUnlessToldOtherwise()
{
    const auto verdict = KdOutputFolderCheck().examine(temporaryPath(QStringLiteral("takes")));
    QVERIFY(verdict != KdOutputFolderCheck::NoPermission);
}

void tst_KdOutputFolderCheck::missingPermissionIsTold_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("shown");
    const QString application = QGuiApplication::applicationDisplayName();
    QTest::newRow("without a title") << QString() << application;
    QTest::newRow("with a title") << QStringLiteral("A <b>Product")
                                  << QStringLiteral("A <b>Product");
}

void tst_KdOutputFolderCheck::missingPermissionIsTold()
{
    QFETCH(QString, given);
    QFETCH(QString, shown);
    QWidget panel;
    const QString file = temporaryPath(QStringLiteral("file"));
    TestFiles::write(file, "no folder");
    WindowAnswers answers;
    QString title;
    answers.handle(QStringLiteral("KOldMessageDialog"), [&title](QWidget& box) {
        title = box.windowTitle();
        box.close();
    });
    QVERIFY(!withFreeSpace(1000).mayRecordInto(file, &panel, given));
    QCOMPARE(title, shown);
    QCOMPARE(answers.messages(),
             QStringList{QStringLiteral("Please check whether you have permission to write or read "
                                        "on the path, or choose other path to create.")});
}

void tst_KdOutputFolderCheck::questionNamesTheSpaceAndOnlyNoGoesOn_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("goesOn");
    QTest::newRow("yes") << QStringLiteral("yes") << false;
    QTest::newRow("no") << QStringLiteral("no") << true;
    QTest::newRow("closed") << QStringLiteral("close") << false;
}

void tst_KdOutputFolderCheck::questionNamesTheSpaceAndOnlyNoGoesOn()
{
    QFETCH(QString, answer);
    QFETCH(bool, goesOn);
    QWidget panel;
    WindowAnswers answers;
    if (answer == QLatin1String("close")) {
        answers.handle(QStringLiteral("KOldMessageDialog"), [](QWidget& box) { box.close(); });
    } else {
        answers.answerMessage(answer == QLatin1String("yes") ? QDialogButtonBox::Yes
                                                             : QDialogButtonBox::No);
    }
    QCOMPARE(withFreeSpace(7).mayRecordInto(temporaryPath(QStringLiteral("takes")), &panel),
             goesOn);
    QCOMPARE(answers.messages(),
             QStringList{QStringLiteral("There is only 7MB space in the specified output "
                                        "directory, Would you choose another directory?")});
}

void tst_KdOutputFolderCheck::ownerDestroyedInsideTheQuestionDoesNotRecord()
{
    auto* const panel = new QWidget;
    WindowAnswers answers;
    answers.handle(QStringLiteral("KOldMessageDialog"), [panel](QWidget&) { delete panel; });
    QVERIFY(!withFreeSpace(7).mayRecordInto(temporaryPath(QStringLiteral("takes")), panel));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdOutputFolderCheck>(argc, argv);
}

#include "tst_KdOutputFolderCheck.moc"
