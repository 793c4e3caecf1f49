#include "Support/DialogDriver.h"
#include "Support/KdTestCase.h"
#include "Support/ScriptedEngine.h"
#include "Support/TestFiles.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdVBLModel/KdProcessIdentity.h>
#include <KdVBLModel/KdTakeJournal.h>
#include <KdZentraCore/KdConfigEngine.h>
#include <Studio/StudioLanguages.h>
#include <Studio/StudioRecordSession.h>
#include <Studio/StudioRecoveryBar.h>
#include <Studio/StudioTakeFolders.h>
#include <Studio/StudioTimeline.h>
#include <Studio/StudioWindow.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>

namespace {

KFolderSettings* folderSettings()
{
    return KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings();
}

} // namespace

class tst_StudioTakeFolders : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theLastOneComesFirstAndEachOnce()
    {
        QCOMPARE(StudioTakeFolders::remembered(), QStringList());
        for (const char* folder : {"/a", "/b \"1\"\n", "/录", "/a"}) {
            StudioTakeFolders::remember(QString::fromUtf8(folder));
        }
        QCOMPARE(StudioTakeFolders::remembered(),
                 QStringList(
                     {QStringLiteral("/a"), QStringLiteral("/录"), QStringLiteral("/b \"1\"\n")}));
    }

    void onlySomeAreRemembered()
    {
        for (int i = 0; i < 100; ++i) {
            StudioTakeFolders::remember(QStringLiteral("/%1").arg(i));
        }
        const QStringList folders = StudioTakeFolders::remembered();
        QCOMPARE(folders.first(), QStringLiteral("/99"));
        QCOMPARE(folders.size(), 8);
    }

    void damagedNotesCountAsNone()
    {
        for (const char* text : {"", "{}", "[1, null, \"\"]", "[\"/a\""}) {
            KdConfigEngine::instance()->setValue(1, QStringLiteral("Studio"),
                                                 QStringLiteral("TakeFolders"),
                                                 QString::fromLatin1(text));
            QCOMPARE(StudioTakeFolders::remembered(), QStringList());
        }
    }

    void takeThatWasCutOffInAnotherFolderIsFound();
};

// The recorder stores the folder when it is closed, which a crash spares it.
void tst_StudioTakeFolders::takeThatWasCutOffInAnotherFolderIsFound()
{
    ScriptedEngine engine;
    engine.script().take = "take";
    const QString stored = temporaryPath(QStringLiteral("takes"));
    const QString chosen = temporaryPath(QStringLiteral("chosen in the dialog"));
    KdAppSettings::GetInstance()->Load();
    folderSettings()->SetRecoderVoiceFolder(stored);
    QVERIFY(KdAppSettings::GetInstance()->Save());
    StudioLanguages languages;
    {
        StudioWindow window(&languages);
        window.show();
        window.openTakes();
        window.voiceOver()->open();
        QWidget* const dialog = window.voiceOver()->view();
        DialogDriver::child(*dialog, QStringLiteral("KAudioCapture_FolderEdit"))
            ->findChild<QLineEdit*>()
            ->setText(chosen);
        DialogDriver::click(*dialog, QStringLiteral("KAudioCapture_RecorderButton"));
        QTRY_VERIFY(window.timeline()->isRecording());
    }
    KdAppSettings::GetInstance()->Load();
    QCOMPARE(folderSettings()->GetRecorderVoiceFolder(), stored);

    const QString take = chosen + QStringLiteral("/REC_cut_off.m4a");
    TestFiles::write(take, "what was written by then");
    QJsonObject journal;
    journal[QStringLiteral("file")] = QStringLiteral("REC_cut_off.m4a");
    journal[QStringLiteral("processId")] = QString::number(KdProcessIdentity::current().id);
    journal[QStringLiteral("processStarted")] = QStringLiteral("long ago");
    journal[QStringLiteral("processScope")] = KdProcessIdentity::scope();
    TestFiles::write(KdTakeJournal::pathFor(take), QJsonDocument(journal).toJson());
    StudioWindow restarted(&languages);
    restarted.show();
    restarted.openTakes();
    QTRY_VERIFY(restarted.recoveryBar()->isVisible());
    QVERIFY(restarted.recoveryBar()->sentence().contains(QStringLiteral("REC_cut_off.m4a")));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioTakeFolders>(argc, argv);
}

#include "tst_StudioTakeFolders.moc"
