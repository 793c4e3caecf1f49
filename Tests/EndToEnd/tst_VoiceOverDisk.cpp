#include "VoiceOverStage.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdWidgets/KdToolButton.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>
#include <Support/WindowAnswers.h>

#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace {

const QString kNoPermission =
    QStringLiteral("Please check whether you have permission to write or read on the path, or "
                   "choose other path to create.");

} // namespace

/** Folders that fail before and during a take: the right message or a kept take, never a false
 * success. */
class tst_VoiceOverDisk : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void unusableFolderIsRefused_data();
    void unusableFolderIsRefused();
    void missingFolderIsMade();
    void folderDeletedInMidTakeIsNoSuccess();

private:
    std::unique_ptr<VoiceOverStage> m_stage;
    QString m_folder;
};

void tst_VoiceOverDisk::init()
{
    KdTestCase::init();
    m_folder = temporaryPath(QStringLiteral("takes"));
    m_stage = std::make_unique<VoiceOverStage>(m_folder);
    QVERIFY(m_stage->microphone().plug());
}

void tst_VoiceOverDisk::cleanup()
{
    m_stage.reset();
    KdTestCase::cleanup();
}

void tst_VoiceOverDisk::unusableFolderIsRefused_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a file") << QStringLiteral("file");
    QTest::newRow("a folder below a file") << QStringLiteral("below");
    QTest::newRow("not writable") << QStringLiteral("unwritable");
    QTest::newRow("a name too long") << QStringLiteral("long");
}

void tst_VoiceOverDisk::unusableFolderIsRefused()
{
    QFETCH(QString, kind);
    std::unique_ptr<FileFaults::WithoutPrivileges> unprivileged;
    QString folder = m_folder;
    if (kind == QLatin1String("file")) {
        TestFiles::write(folder, "not a folder");
    } else if (kind == QLatin1String("below")) {
        TestFiles::write(folder, "not a folder");
        folder += QStringLiteral("/below");
    } else if (kind == QLatin1String("long")) {
        folder = temporaryPath(QString(300, QLatin1Char('n')));
    } else {
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
    }
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(folder);
    QVERIFY(m_stage->open());
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    if (kind == QLatin1String("unwritable")) {
        unprivileged = std::make_unique<FileFaults::WithoutPrivileges>();
    }
    m_stage->pressRecord();
    QTRY_COMPARE_WITH_TIMEOUT(answers.messages(), QStringList(kNoPermission), 5000);
    unprivileged.reset();

    QTRY_VERIFY(!m_stage->control<KdToolButton>(QStringLiteral("KAudioCapture_RecorderButton"))
                     ->isChecked());
    QCOMPARE(m_stage->starts(), 0);
    QVERIFY(m_stage->reports().isEmpty() || m_stage->lastReport().path.isEmpty());
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void tst_VoiceOverDisk::missingFolderIsMade()
{
    const QString folder = m_folder + QStringLiteral("/a/b/c/");
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(folder);
    QVERIFY(m_stage->open());
    QVERIFY(m_stage->startTake());
    QVERIFY(m_stage->waitForElapsed(1200));
    QVERIFY(m_stage->stopTake());
    QCOMPARE(QFileInfo(m_stage->lastReport().path).absolutePath(),
             m_folder + QStringLiteral("/a/b/c"));
    QVERIFY(MediaProbe::probe(m_stage->lastReport().path).isReadable);
}

void tst_VoiceOverDisk::folderDeletedInMidTakeIsNoSuccess()
{
    allowLog(QStringLiteral(".*"));
    QVERIFY(m_stage->open());
    QVERIFY(m_stage->startTake());
    QVERIFY(m_stage->waitForElapsed(1500));
    QVERIFY(QDir(m_folder).removeRecursively());
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    QVERIFY(m_stage->stopTake());
    QCOMPARE(answers.messages().size(), 1);
    QVERIFY2(m_stage->lastReport().path.isEmpty(), qPrintable(m_stage->lastReport().path));
    QVERIFY(
        !logLines().filter(QStringLiteral("Failed to stop the audio record process")).isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_VoiceOverDisk>(argc, argv);
}

#include "tst_VoiceOverDisk.moc"
