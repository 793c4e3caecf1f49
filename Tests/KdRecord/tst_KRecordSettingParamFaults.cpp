#include "RecordSettingFixture.h"

#include <KdCore/KdBaseLog.h>
#include <Support/FileFaults.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>

/** Files that are broken, and files that cannot be written. */
class tst_KRecordSettingParamFaults : public RecordSettingFixture
{
    Q_OBJECT

private Q_SLOTS:
    void badFileLeavesValuesAsTheyAre_data();
    void badFileLeavesValuesAsTheyAre();
    void badFileIsReplacedOnSaving_data();
    void badFileIsReplacedOnSaving();
    void brokenUtf8IsReadAsFarAsItGoesAndReplacedOnSaving();
    void saveMessagesComeFromTheStoreAtInfoLevel();
    void folderInPlaceOfTheFileDropsTheSave();
    void fullDiskKeepsOldFileAndNewValues();
    void fullDiskWithoutAFileDropsTheSave();
    void forbiddenFolderKeepsOldFileAndNewValues();
    void readOnlyFileIsReplaced();
    void linkedFileStaysALink();
};

void tst_KRecordSettingParamFaults::badFileLeavesValuesAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray inner =
        "<RecorderData><RecordScreenCountdown>9</RecordScreenCountdown></RecorderData>";
    const QVector<TestFiles::BadXml> bad = TestFiles::badXml("SettingDatas", inner);
    for (const TestFiles::BadXml& one : bad) {
        QTest::newRow(one.name) << one.content;
    }
}

void tst_KRecordSettingParamFaults::badFileLeavesValuesAsTheyAre()
{
    QFETCH(QByteArray, content);
    edit(content, 1);
    QCOMPARE(store()->data().countdown, 0);
    restart();
    edit(recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"), 2);
    QCOMPARE(store()->data().countdown, 4);
    edit(content, 3);
    QCOMPARE(store()->data().countdown, 4);
    QCOMPARE(TestFiles::read(path()), content);
    QCOMPARE(logLines(), QStringList());
}

void tst_KRecordSettingParamFaults::badFileIsReplacedOnSaving_data()
{
    badFileLeavesValuesAsTheyAre_data();
}

void tst_KRecordSettingParamFaults::badFileIsReplacedOnSaving()
{
    QFETCH(QByteArray, content);
    edit(content, 1);
    store()->setData(microphone(QStringLiteral("Mic")));
    QCOMPARE(
        outline(file().documentElement()),
        QStringLiteral("SettingDatas(RecorderData(RecordScreenCountdown(0)Camera()"
                       "Audio(m_sSelectedAudioDeviceName(Mic))WebRecordRecordPreview(true)))"));
    QCOMPARE(logLines(), QStringList(QStringLiteral(
                             "KRecordSettingParam::saveXml: SettingDatas remove filepath")));
}

void tst_KRecordSettingParamFaults::brokenUtf8IsReadAsFarAsItGoesAndReplacedOnSaving()
{
    edit(
        recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown><Other>\xC3\x28\xFF</Other>"),
        1);
    QCOMPARE(store()->data().countdown, 4);
    store()->setData(nothingBut(true));
    QCOMPARE(logLines(), QStringList(QStringLiteral(
                             "KRecordSettingParam::saveXml: SettingDatas remove filepath")));
    QVERIFY(!TestFiles::read(path()).contains("Other"));
    QVERIFY(TestFiles::read(path()).contains("<RecordScreenCountdown>4<"));
}

void tst_KRecordSettingParamFaults::saveMessagesComeFromTheStoreAtInfoLevel()
{
    edit("broken", 1);
    QVector<KdLogRecord> records;
    KdBaseLog::defaultLogger()->setObserver(
        [&records](const KdLogRecord& logged) { records.append(logged); });
    store()->setData(nothingBut(true));
    KdBaseLog::defaultLogger()->setObserver(nullptr);
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.first().level, 4);
    QCOMPARE(records.first().file, QByteArray("Src/KdRecord/KRecordSettingParam"));
    QCOMPARE(records.first().function, QByteArray("KRecordSettingParam::saveXml"));
    QCOMPARE(records.first().message, QStringLiteral("SettingDatas remove filepath"));
}

void tst_KRecordSettingParamFaults::folderInPlaceOfTheFileDropsTheSave()
{
    QVERIFY(QDir().mkpath(path()));
    expectLog(QStringLiteral("could not be written"));
    store()->setData(everything());
    QCOMPARE(logLines().first(),
             QStringLiteral("KRecordSettingParam::saveXml: SettingDatas remove filepath"));
    QCOMPARE(logLines().last(), QStringLiteral("KRecordSettingParam::saveXml: SettingDatas Error"));
    compare(store()->data(), everything());
    QVERIFY(QFileInfo(path()).isDir());
}

void tst_KRecordSettingParamFaults::fullDiskKeepsOldFileAndNewValues()
{
    edit(recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 4);
    const QByteArray before = TestFiles::read(path());
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::FileSizeLimit limit(100);
        store()->setData(everything());
    }
    QCOMPARE(TestFiles::read(path()), before);
    compare(store()->data(), everything());
}

void tst_KRecordSettingParamFaults::fullDiskWithoutAFileDropsTheSave()
{
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::FileSizeLimit limit(0);
        store()->setData(everything());
    }
    QVERIFY(!QFileInfo::exists(path()));
    QCOMPARE(logLines().last(), QStringLiteral("KRecordSettingParam::saveXml: SettingDatas Error"));
    compare(store()->data(), everything());
}

void tst_KRecordSettingParamFaults::forbiddenFolderKeepsOldFileAndNewValues()
{
    edit(recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"), 1);
    const QByteArray before = TestFiles::read(path());
    QCOMPARE(store()->data().countdown, 4);
    QVERIFY(QFile::setPermissions(temporaryPath(QString()), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x5555)));
    QVERIFY(QFile::setPermissions(path(), QFile::Permissions(0x4444)));
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::WithoutPrivileges nobody;
        store()->setData(everything());
    }
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x7755)));
    QCOMPARE(TestFiles::read(path()), before);
    QCOMPARE(logLines().last(), QStringLiteral("KRecordSettingParam::saveXml: SettingDatas Error"));
    compare(store()->data(), everything());
}

void tst_KRecordSettingParamFaults::readOnlyFileIsReplaced()
{
    edit(recorderFile("<Other>x</Other>"), 1);
    QVERIFY(QFile::setPermissions(path(), QFile::Permissions(0x4444)));
    QVERIFY(QFile::setPermissions(temporaryPath(QString()), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x7777)));
    {
        const FileFaults::WithoutPrivileges nobody;
        store()->setData(microphone(QStringLiteral("Mic")));
    }
    QVERIFY(!TestFiles::read(path()).contains("Other"));
    QVERIFY(TestFiles::read(path()).contains(">Mic<"));
    QCOMPARE(logLines(), QStringList(QStringLiteral(
                             "KRecordSettingParam::saveXml: SettingDatas remove filepath")));
}

void tst_KRecordSettingParamFaults::linkedFileStaysALink()
{
    const QString target = temporaryPath(QStringLiteral("target.xml"));
    TestFiles::write(target, recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"));
    QVERIFY(QFile::link(target, path()));
    QCOMPARE(store()->data().countdown, 4);
    store()->setData(microphone(QStringLiteral("Mic")));
    QVERIFY(QFileInfo(path()).isSymLink());
    QVERIFY(TestFiles::read(target).contains(">Mic<"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordSettingParamFaults>(argc, argv);
}

#include "tst_KRecordSettingParamFaults.moc"
