#include "AudioRecordFixture.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KAdvanceSettings.h>
#include <KdVBLModel/KdTrackEventLog.h>

namespace {

constexpr const char* kAdvanced = "KAudioCapture_ButtonAdvance";

KSettings* settings()
{
    return KdAppSettings::GetInstance()->GetSettings();
}

} // namespace

/** The voice-over panel's dialog of advanced settings. */
class tst_KdAudioRecordPanelAdvanced : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void choiceIsReportedAndApplied();
    void dialogIsLoadedOnceWhenItIsFirstShown();
    void dialogIsShownAgain_data();
    void dialogIsShownAgain();
    void everyShowingBeginsWithoutAChange();
    void ownerHearsOfAChange();
    void dialogFollowsTheLanguageBetweenItsShowings();
    void panelLeavesWhileTheDialogIsOpen_data();
    void panelLeavesWhileTheDialogIsOpen();
    void dialogGoesWithThePanel();

private:
    void answerAdvanced(const std::function<void(KAdvanceSettings&)>& action);
    /** Opens the dialog, and comes back when it is closed. */
    void openAdvanced(const std::function<void(KAdvanceSettings&)>& action);
};

void tst_KdAudioRecordPanelAdvanced::answerAdvanced(
    const std::function<void(KAdvanceSettings&)>& action)
{
    answers->handle(QStringLiteral("KAdvanceSettings"), [action](QWidget& shown) {
        auto* const dialog = qobject_cast<KAdvanceSettings*>(&shown);
        QVERIFY(dialog);
        action(*dialog);
    });
}

void tst_KdAudioRecordPanelAdvanced::openAdvanced(
    const std::function<void(KAdvanceSettings&)>& action)
{
    answerAdvanced(action);
    click(kAdvanced);
    QTRY_COMPARE(answers->pending(), 0);
}

void tst_KdAudioRecordPanelAdvanced::choiceIsReportedAndApplied()
{
    showPanel();
    answerAdvanced([](KAdvanceSettings& dialog) {
        QCOMPARE(dialog.size(), QSize(480, 473));
        _AudioAdvanceData data = dialog.data();
        QCOMPARE(data.bitrate, 128);
        data.bitrate = 256;
        data.channels = 1;
        data.sampleRate = 48000;
        data.bitrateMode = 2;
        dialog.loadData(data);
        dialog.slotApply();
    });
    click("KAudioCapture_ButtonAdvance");
    QTRY_COMPARE(answers->pending(), 0);
    const KAudioAdvanceSettings* const advance = settings()->GetAudioAdvanceSettings();
    QTRY_COMPARE(advance->GetBitrate(), 256);
    QCOMPARE(advance->GetChannels(), 1);
    QCOMPARE(advance->GetSampleRate(), 48000);
    QCOMPARE(advance->GetBitrateMode(), 2U);
    const auto records = KdTrackEventLog::records();
    QVERIFY(!records.isEmpty());
    QCOMPARE(records.first().name, QStringLiteral("record_video_advanced_setting_expose"));
}

void tst_KdAudioRecordPanelAdvanced::dialogIsLoadedOnceWhenItIsFirstShown()
{
    showPanel();
    QVERIFY(!panel->findChild<KAdvanceSettings*>());
    settings()->GetAudioAdvanceSettings()->SetBitrate(96);
    openAdvanced([](KAdvanceSettings& dialog) {
        QCOMPARE(dialog.data().bitrate, 96);
        dialog.slotCancel();
    });
    settings()->GetAudioAdvanceSettings()->SetBitrate(256);
    openAdvanced([](KAdvanceSettings& dialog) {
        QCOMPARE(dialog.data().bitrate, 96);
        dialog.slotCancel();
    });
    QCOMPARE(settings()->GetAudioAdvanceSettings()->GetBitrate(), 256);
}

void tst_KdAudioRecordPanelAdvanced::dialogIsShownAgain_data()
{
    QTest::addColumn<QString>("way");
    for (const char* const way : {"apply", "cancel", "close"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdAudioRecordPanelAdvanced::dialogIsShownAgain()
{
    QFETCH(QString, way);
    showPanel();
    QPointer<KAdvanceSettings> first;
    openAdvanced([&first, way](KAdvanceSettings& dialog) {
        first = &dialog;
        _AudioAdvanceData data = dialog.data();
        data.bitrate = 320;
        dialog.loadData(data);
        if (way == QLatin1String("apply")) {
            dialog.slotApply();
        } else if (way == QLatin1String("cancel")) {
            dialog.slotCancel();
        } else {
            dialog.close();
        }
    });
    const int stored = way == QLatin1String("apply") ? 320 : 128;
    QCOMPARE(settings()->GetAudioAdvanceSettings()->GetBitrate(), stored);
    drain();
    QVERIFY(first);
    openAdvanced([&first](KAdvanceSettings& dialog) {
        QCOMPARE(&dialog, first.data());
        QCOMPARE(dialog.data().bitrate, 320);
        QCOMPARE(dialog.size(), QSize(480, 473));
        dialog.slotCancel();
    });
    QCOMPARE(settings()->GetAudioAdvanceSettings()->GetBitrate(), stored);
    QCOMPARE(panel->findChildren<KAdvanceSettings*>().size(), 1);
}

void tst_KdAudioRecordPanelAdvanced::everyShowingBeginsWithoutAChange()
{
    showPanel();
    for (int showing = 0; showing < 3; ++showing) {
        openAdvanced([](KAdvanceSettings& dialog) {
            QVERIFY(!dialog.isParaChanged());
            dialog.slotAudioParaChange();
            QVERIFY(dialog.isParaChanged());
            dialog.slotCancel();
        });
    }
}

void tst_KdAudioRecordPanelAdvanced::ownerHearsOfAChange()
{
    showPanel();
    openAdvanced([](KAdvanceSettings& dialog) { dialog.slotCancel(); });
    openAdvanced([this](KAdvanceSettings& dialog) {
        QVERIFY(disconnect(&dialog, &KAdvanceSettings::sigParaChange, panel, nullptr));
        QVERIFY2(!disconnect(&dialog, &KAdvanceSettings::sigParaChange, panel, nullptr),
                 "Connected once for each showing");
        dialog.slotCancel();
    });
}

void tst_KdAudioRecordPanelAdvanced::dialogFollowsTheLanguageBetweenItsShowings()
{
    showPanel();
    openAdvanced([](KAdvanceSettings& dialog) { dialog.slotCancel(); });
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    openAdvanced([](KAdvanceSettings& dialog) {
        QCOMPARE(dialog.windowTitle(), QStringLiteral("[Advanced]"));
        auto* const cancel =
            dialog.findChild<QAbstractButton*>(QStringLiteral("KAdvanceSettings_Cancel"));
        QCOMPARE(cancel->text(), QStringLiteral("[Cancel]"));
        QCOMPARE(dialog.data().bitrate, 128);
        dialog.slotCancel();
    });
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdAudioRecordPanelAdvanced::panelLeavesWhileTheDialogIsOpen_data()
{
    QTest::addColumn<QString>("way");
    for (const char* const way : {"destroyed", "deleted later", "closed"}) {
        QTest::newRow(way) << QString::fromLatin1(way);
    }
}

void tst_KdAudioRecordPanelAdvanced::panelLeavesWhileTheDialogIsOpen()
{
    QFETCH(QString, way);
    showPanel();
    answerAdvanced([this, way](KAdvanceSettings& shown) {
        const QPointer<KAdvanceSettings> dialog = &shown;
        if (way == QLatin1String("destroyed")) {
            delete window;
        } else if (way == QLatin1String("deleted later")) {
            window->deleteLater();
            QTRY_VERIFY(!window);
        } else {
            panel->close();
            dialog->slotApply();
        }
        QCOMPARE(dialog.isNull(), way != QLatin1String("closed"));
    });
    button(kAdvanced)->click();
    QTRY_COMPARE(answers->pending(), 0);
    drain();
    QCOMPARE(panel.isNull(), way != QLatin1String("closed"));
    QCOMPARE(engine->alive(), 0);
}

void tst_KdAudioRecordPanelAdvanced::dialogGoesWithThePanel()
{
    showPanel();
    QPointer<KAdvanceSettings> kept;
    openAdvanced([&kept](KAdvanceSettings& dialog) {
        kept = &dialog;
        dialog.slotCancel();
    });
    QVERIFY(kept);
    delete window;
    QVERIFY(!kept);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioRecordPanelAdvanced>(argc, argv);
}

#include "tst_KdAudioRecordPanelAdvanced.moc"
