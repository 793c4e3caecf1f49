#include "Support/AccessibleEvents.h"
#include "Support/ClippedTexts.h"
#include "Support/DialogDriver.h"
#include "Support/KdTestCase.h"
#include "Support/ScriptedEngine.h"
#include "Support/TestClip.h"
#include "Support/TestFiles.h"
#include "Support/WindowAnswers.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdVBLModel/KdProject.h>
#include <KdVBLModel/KdTrackEventLog.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioImporter.h>
#include <Studio/StudioLanguages.h>
#include <Studio/StudioPictureView.h>
#include <Studio/StudioPlayer.h>
#include <Studio/StudioRecordSession.h>
#include <Studio/StudioRecovery.h>
#include <Studio/StudioSpeech.h>
#include <Studio/StudioTakeAnalyser.h>
#include <Studio/StudioTakeLibrary.h>
#include <Studio/StudioTimeline.h>
#include <Studio/StudioUsageView.h>
#include <Studio/StudioWindow.h>

#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTimer>
#include <QWindow>

#include <functional>
#include <memory>

namespace {

using Happen = std::function<void(StudioWindow& window)>;

void discard(StudioWindow& window)
{
    UnfinishedTake take;
    take.record.takePath = QStringLiteral("REC.m4a");
    auto* const recovery = window.findChild<StudioRecovery*>();
    Q_EMIT recovery->found({take});
    Q_EMIT recovery->discarded(take, true);
}

void findNothingIn(StudioWindow& window)
{
    UnfinishedTake take;
    take.record.takePath = QStringLiteral("REC.m4a");
    RepairResult nothing;
    nothing.outcome = RepairResult::Outcome::NothingRecoverable;
    auto* const recovery = window.findChild<StudioRecovery*>();
    Q_EMIT recovery->found({take});
    Q_EMIT recovery->repaired(take, nothing);
}

void putOff(StudioWindow& window)
{
    Q_EMIT window.findChild<StudioRecovery*>()->found({UnfinishedTake()});
    window.findChild<QPushButton*>(QStringLiteral("Studio_RecoveryLater"))->click();
}

void openDamagedList(StudioWindow& window)
{
    const QString folder = window.library()->folder();
    TestFiles::write(folder + QStringLiteral("/Takes.json"), "damaged");
    window.library()->open(folder);
}

void playThroughNothing(StudioWindow& window)
{
    Q_EMIT window.player()->failed(
        [] { return StudioPlayer::tr("The sound output cannot be opened."); });
}

} // namespace

Q_DECLARE_METATYPE(Happen)

class tst_StudioWindow : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void emptyWindowSaysWhatToDo();
    void recordingIsListedPlayedAndOnTheTimeline();
    void playheadFollowsTheTakeInProjectFrames_data();
    void playheadFollowsTheTakeInProjectFrames();
    void windowIsLockedWhileATakeRuns();
    void muteOfTheRecorderMutesPlaying();
    void takeThatWasNotKeptIsSaid();
    void fileThatIsNoTakeIsNotListed();
    void takesFolderFollowsTheRecorder();
    void closingInMidTakeLosesNothing();
    void takesAreThereAfterARestart();
    void removedTakeLeavesListAndTimeline();
    void bothSkinsAndAllLanguagesFit_data();
    void bothSkinsAndAllLanguagesFit();
    void recordButtonsWorkByKeyboard_data();
    void recordButtonsWorkByKeyboard();
    void webcamClipIsListedWithItsPicture();
    void nothingIsLookedIntoWhileTheCameraStarts();
    void whatTheWebcamRecorderReportsIsListed();
    void openRecorderComesToTheFrontInsteadOfAnother();
    void clipInAnotherFolderIsWatchedToo();
    void newsAreSpokenAndFollowTheLanguage_data();
    void newsAreSpokenAndFollowTheLanguage();
    void barsAreSpoken();

private:
    std::unique_ptr<StudioWindow> openWindow();
    /** Records through the dialog until the engine has been asked to stop. */
    void record(StudioWindow& window, ScriptedEngine& engine, qint64 milliseconds);
    /** Opens the webcam's recorder; step happens while it runs, and it is closed at its end. */
    static void useWebcam(const StudioWindow& window, const std::function<void()>& step);
    QString takes() const { return temporaryPath(QStringLiteral("takes")); }
    static QWidget* child(const StudioWindow& window, const char* name)
    {
        return DialogDriver::child(window, QString::fromLatin1(name));
    }

    StudioLanguages m_languages;
};

void tst_StudioWindow::init()
{
    KdTestCase::init();
    KdAppSettings::GetInstance()->Load();
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(
        takes());
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetCaptureFileFolder(
        temporaryPath(QStringLiteral("clips")));
    IKdProjectManager::getInstance()->setFrameRate(KdVBLMODEL::KdFrameRate::Fps30);
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    m_languages.use(QStringLiteral("en"));
}

std::unique_ptr<StudioWindow> tst_StudioWindow::openWindow()
{
    auto window = std::make_unique<StudioWindow>(&m_languages);
    window->show();
    window->openTakes();
    DialogDriver::waitUntil([&] { return window->isActiveWindow(); }, QStringLiteral("The window"));
    return window;
}

void tst_StudioWindow::record(StudioWindow& window, ScriptedEngine& engine, qint64 milliseconds)
{
    const int before = engine.count("start");
    DialogDriver::click(window, QStringLiteral("Studio_RecordVoiceOver"));
    QTRY_VERIFY(window.voiceOver()->isOpen());
    DialogDriver::click(*window.voiceOver()->view(),
                        QStringLiteral("KAudioCapture_RecorderButton"));
    QTRY_COMPARE(engine.count("start"), before + 1);
    QTRY_VERIFY(window.timeline()->isRecording());
    engine.deliverTime(milliseconds);
    // The recorder's own clock decides what is too short.
    QTest::qWait(1050);
    DialogDriver::click(*window.voiceOver()->view(),
                        QStringLiteral("KAudioCapture_RecorderButton"));
    QTRY_VERIFY(!window.timeline()->isRecording());
}

void tst_StudioWindow::emptyWindowSaysWhatToDo()
{
    const auto window = openWindow();
    QCOMPARE(KdUtility::gGetMainWindow(), static_cast<QWidget*>(window.get()));
    QVERIFY(child(*window, "Studio_EmptyState")->isVisible());
    QVERIFY(child(*window, "Studio_RecordVoiceOver")->isEnabled());
    QVERIFY2(window->statusText().contains(QStringLiteral("takes")),
             qPrintable(window->statusText()));
}

void tst_StudioWindow::recordingIsListedPlayedAndOnTheTimeline()
{
    ScriptedEngine engine;
    engine.script().take = StudioSpeech::synthesise(2.0);
    const auto window = openWindow();
    record(*window, engine, 2000);
    QTRY_COMPARE(window->library()->count(), 1);
    const StudioTake take = window->library()->takes().first();
    QVERIFY(take.state == StudioTake::State::Good);
    QCOMPARE(take.durationMs, 2000);
    QVERIFY(take.fileInfo.contains(QStringLiteral("\"file_duration\": 2")));
    QTRY_COMPARE(window->timeline()->clips().size(), 1);
    QCOMPARE(window->timeline()->clips().first().frames, 60);
    QCOMPARE(window->player()->file(), take.path);
    QCOMPARE(window->findChild<QListView*>(QStringLiteral("Studio_TakeList"))->currentIndex().row(),
             0);
    QTRY_VERIFY(!window->timeline()->clips().first().peaks.isEmpty());
    window->voiceOver()->close();
    QTRY_VERIFY(!window->voiceOver()->isOpen());
}

void tst_StudioWindow::playheadFollowsTheTakeInProjectFrames_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<qint64>("frames");
    using Rate = KdVBLMODEL::KdFrameRate;
    QTest::newRow("23.976") << static_cast<int>(Rate::Fps23_976) << qint64(240);
    QTest::newRow("25") << static_cast<int>(Rate::Fps25) << qint64(250);
    QTest::newRow("120") << static_cast<int>(Rate::Fps120) << qint64(600);
}

void tst_StudioWindow::playheadFollowsTheTakeInProjectFrames()
{
    QFETCH(int, rate);
    QFETCH(qint64, frames);
    IKdProjectManager::getInstance()->setFrameRate(static_cast<KdVBLMODEL::KdFrameRate>(rate));
    ScriptedEngine engine;
    const auto window = openWindow();
    window->voiceOver()->open();
    DialogDriver::click(*window->voiceOver()->view(),
                        QStringLiteral("KAudioCapture_RecorderButton"));
    QTRY_VERIFY(window->timeline()->isRecording());
    engine.deliverTime(10000);
    QTRY_COMPARE(window->timeline()->playhead(), frames);
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    window->voiceOver()->close();
    QTRY_VERIFY(!window->timeline()->isRecording());
    QTRY_VERIFY(!window->voiceOver()->isOpen());
}

void tst_StudioWindow::windowIsLockedWhileATakeRuns()
{
    ScriptedEngine engine;
    engine.script().take = StudioSpeech::synthesise(1.0);
    const auto window = openWindow();
    window->voiceOver()->open();
    QVERIFY(child(*window, "Studio_LockBar")->isHidden());
    DialogDriver::click(*window->voiceOver()->view(),
                        QStringLiteral("KAudioCapture_RecorderButton"));
    QTRY_VERIFY(child(*window, "Studio_LockBar")->isVisible());
    QVERIFY(!child(*window, "Studio_RecordVoiceOver")->isEnabled());
    QVERIFY(!child(*window, "Studio_Skin")->isEnabled());
    QTRY_VERIFY(window->timeline()->isRecording());
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    DialogDriver::click(*window->voiceOver()->view(),
                        QStringLiteral("KAudioCapture_RecorderButton"));
    QTRY_VERIFY(child(*window, "Studio_LockBar")->isHidden());
    QVERIFY(child(*window, "Studio_RecordVoiceOver")->isEnabled());
    window->voiceOver()->close();
    QTRY_VERIFY(!window->voiceOver()->isOpen());
}

void tst_StudioWindow::muteOfTheRecorderMutesPlaying()
{
    ScriptedEngine engine;
    KdAppSettings::GetInstance()->GetSettings()->GetGeneralSettings()->setIsAudioRecordingCheckMult(
        true);
    const auto window = openWindow();
    QVERIFY(!window->player()->isMuted());
    window->voiceOver()->open();
    QTRY_VERIFY(window->player()->isMuted());
    QVERIFY(child(*window, "Studio_Muted")
                ->isVisibleTo(child(*window, "Studio_Muted")->parentWidget()));
    window->voiceOver()->close();
    QTRY_VERIFY(!window->player()->isMuted());
}

void tst_StudioWindow::takeThatWasNotKeptIsSaid()
{
    ScriptedEngine engine;
    const auto window = openWindow();
    window->voiceOver()->open();
    Q_EMIT window->voiceOver()->takeFinished(QString(), QStringLiteral("{}"), QStringLiteral("{}"));
    QVERIFY2(window->statusText().contains(QStringLiteral("not kept")),
             qPrintable(window->statusText()));
    QCOMPARE(window->library()->count(), 0);
    window->voiceOver()->close();
    QTRY_VERIFY(!window->voiceOver()->isOpen());
}

void tst_StudioWindow::fileThatIsNoTakeIsNotListed()
{
    ScriptedEngine engine;
    engine.script().take = "no sound at all";
    const auto window = openWindow();
    record(*window, engine, 2000);
    QTRY_VERIFY2(window->statusText().contains(QStringLiteral("was not added")),
                 qPrintable(window->statusText()));
    QCOMPARE(window->library()->count(), 0);
    window->voiceOver()->close();
    QTRY_VERIFY(!window->voiceOver()->isOpen());
}

void tst_StudioWindow::takesFolderFollowsTheRecorder()
{
    ScriptedEngine engine;
    engine.script().take = StudioSpeech::synthesise(1.5);
    const auto window = openWindow();
    const QString other = temporaryPath(QStringLiteral("other takes"));
    KdAppSettings::GetInstance()->GetSettings()->GetFolderSettings()->SetRecoderVoiceFolder(other);
    record(*window, engine, 1500);
    QTRY_COMPARE(window->library()->count(), 1);
    QCOMPARE(window->library()->folder(), other);
    QVERIFY(window->library()->takes().first().path.startsWith(other + QLatin1Char('/')));
    window->voiceOver()->close();
    QTRY_VERIFY(!window->voiceOver()->isOpen());
}

void tst_StudioWindow::closingInMidTakeLosesNothing()
{
    ScriptedEngine engine;
    engine.script().take = StudioSpeech::synthesise(1.5);
    auto window = openWindow();
    window->voiceOver()->open();
    DialogDriver::click(*window->voiceOver()->view(),
                        QStringLiteral("KAudioCapture_RecorderButton"));
    QTRY_VERIFY(window->timeline()->isRecording());
    QTest::qWait(1050);
    window->close();
    window.reset();
    QCOMPARE(engine.alive(), 0);
    const auto restarted = openWindow();
    QCOMPARE(restarted->library()->count(), 1);
    QTRY_VERIFY(restarted->library()->takes().first().state == StudioTake::State::Good);
}

void tst_StudioWindow::takesAreThereAfterARestart()
{
    ScriptedEngine engine;
    engine.script().take = StudioSpeech::synthesise(1.5);
    {
        const auto window = openWindow();
        record(*window, engine, 1500);
        QTRY_COMPARE(window->library()->count(), 1);
    }
    const auto window = openWindow();
    QCOMPARE(window->library()->count(), 1);
    QTRY_COMPARE(window->timeline()->clips().size(), 1);
    const QString path = window->library()->takes().first().path;
    QVERIFY(QFile::remove(path));
    QTRY_VERIFY(window->library()->takes().first().state == StudioTake::State::Missing);
    QTRY_VERIFY(window->timeline()->clips().isEmpty());
}

void tst_StudioWindow::removedTakeLeavesListAndTimeline()
{
    const QString path = takes() + QStringLiteral("/a.wav");
    TestFiles::write(path, StudioSpeech::synthesise(1.0));
    const auto window = openWindow();
    StudioTake take = takeFromReport(path, QString(), QString());
    window->library()->add(take);
    QTRY_COMPARE(window->timeline()->clips().size(), 1);
    auto* const list = window->findChild<QListView*>(QStringLiteral("Studio_TakeList"));
    DialogDriver::click(*list->viewport());
    list->setCurrentIndex(list->model()->index(0, 0));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(window->library()->count(), 0);
    QTRY_VERIFY(window->timeline()->clips().isEmpty());
    QVERIFY(child(*window, "Studio_EmptyState")->isVisible());
    QVERIFY(QFile::exists(path));
}

void tst_StudioWindow::bothSkinsAndAllLanguagesFit_data()
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<QString>("language");
    for (const char* skin : {"dark", "light"}) {
        for (const StudioLanguages::Language& language : StudioLanguages::all()) {
            QTest::newRow(qPrintable(QString::fromLatin1(skin) + QLatin1Char(' ') + language.code))
                << QString::fromLatin1(skin) << language.code;
        }
    }
}

void tst_StudioWindow::bothSkinsAndAllLanguagesFit()
{
    QFETCH(QString, skin);
    QFETCH(QString, language);
    const auto window = openWindow();
    const QImage before = window->grab().toImage();
    KdSkin::KdSkinManager::instance()->setSkin(skin);
    m_languages.use(language);
    QCoreApplication::processEvents();
    QCOMPARE(window->grab().toImage() != before,
             skin != QLatin1String("dark") || language != QLatin1String("en"));
    // A change of language lays the window out anew, one event later.
    QTRY_VERIFY2(KdTest::clippedTexts(*window).isEmpty(),
                 qPrintable(KdTest::clippedTexts(*window).join(QLatin1Char('\n'))));
}

void tst_StudioWindow::recordButtonsWorkByKeyboard_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("voice-over") << QStringLiteral("Studio_RecordVoiceOver");
    QTest::newRow("webcam") << QStringLiteral("Studio_RecordWebcam");
}

void tst_StudioWindow::recordButtonsWorkByKeyboard()
{
    QFETCH(QString, button);
    ScriptedEngine engine;
    const auto window = openWindow();
    auto* const control = DialogDriver::child(*window, button);
    for (int i = 0; i < 20 && !control->hasFocus(); ++i) {
        QTest::keyClick(window.get(), Qt::Key_Tab);
    }
    QVERIFY(control->hasFocus());
    bool wasOpen = false;
    QTimer::singleShot(0, window.get(), [&] {
        StudioRecordSession* const session =
            window->webcam()->isOpen() ? window->webcam() : window->voiceOver();
        wasOpen = session->isOpen();
        session->close();
    });
    QTest::keyClick(control, Qt::Key_Space);
    QTRY_VERIFY(wasOpen);
    QTRY_VERIFY(!window->voiceOver()->isOpen() && !window->webcam()->isOpen());
}

void tst_StudioWindow::useWebcam(const StudioWindow& window, const std::function<void()>& step)
{
    QTimer::singleShot(0, window.webcam(), [&window, step] {
        DialogDriver::waitUntil(
            [&window] {
                const QWindow* const handle = window.webcam()->view()->windowHandle();
                return handle && handle->isExposed();
            },
            QStringLiteral("the recorder"));
        step();
        window.webcam()->close();
    });
    DialogDriver::click(window, QStringLiteral("Studio_RecordWebcam"));
}

void tst_StudioWindow::webcamClipIsListedWithItsPicture()
{
    const QString model = temporaryPath(QStringLiteral("model.mp4"));
    TestClip::write(model, {{Qt::green, 2.0}}, true, QSize(640, 360));
    ScriptedEngine engine;
    engine.script().take = TestFiles::read(model);
    const auto window = openWindow();
    useWebcam(*window, [&] {
        const auto press = [&] {
            DialogDriver::click(*window->webcam()->view(), QStringLiteral("KProDlg_KCameraCptBtn"));
        };
        press();
        QTRY_COMPARE(engine.count("start"), 1);
        // The recorder's own clock decides what is too short.
        QTest::qWait(1050);
        press();
        QTRY_COMPARE(engine.count("stop"), 1);
    });
    QTRY_COMPARE(window->library()->count(), 1);
    const StudioTake take = window->library()->takes().first();
    QVERIFY(take.state == StudioTake::State::Good);
    QCOMPARE(take.picture, QSize(640, 360));
    QVERIFY(take.fileInfo.contains(QStringLiteral("camera_record_backgroud")));
    QTRY_COMPARE(window->timeline()->clips().size(), 1);
    QTRY_VERIFY(!window->timeline()->clips().first().thumbnail.isNull());
    auto* const picture = window->findChild<StudioPictureView*>();
    QVERIFY(picture->isVisible());
    QTRY_COMPARE(picture->shown().size(), QSize(640, 360));
    QVERIFY(TestClip::isLike(picture->shown().pixelColor(320, 180), QColor(Qt::green)));
    // Also where there is only the least room, as on a small screen.
    QVERIFY(window->minimumSizeHint().height() < 600);
    window->resize(window->minimumSizeHint());
    QTRY_COMPARE(window->size(), window->minimumSizeHint());
    const auto* const waveform = window->findChild<QWidget*>(QStringLiteral("Studio_Waveform"));
    QTRY_VERIFY(waveform->isVisible());
    QTRY_VERIFY(picture->geometry().bottom() < waveform->geometry().top());
}

void tst_StudioWindow::nothingIsLookedIntoWhileTheCameraStarts()
{
    TestFiles::write(takes() + QStringLiteral("/a.wav"), StudioSpeech::synthesise(1.0));
    ScriptedEngine engine;
    const auto window = openWindow();
    StudioTakeAnalyser* const analyser = window->analyser();
    QSignalSpy probed(analyser, &StudioTakeAnalyser::probed);
    bool wasHeld = false;
    bool wasBusy = false;
    engine.during("start", [&] {
        wasHeld = analyser->isHeld();
        // Work that comes about just now, as a take that appears in the folder makes it.
        analyser->analyse(takes() + QStringLiteral("/a.wav"));
        wasBusy = analyser->isBusy();
    });
    useWebcam(*window, [&] {
        DialogDriver::click(*window->webcam()->view(), QStringLiteral("KProDlg_KCameraCptBtn"));
        QTRY_COMPARE(engine.count("start"), 1);
        QVERIFY(!analyser->isHeld());
        QTRY_COMPARE(probed.count(), 1);
    });
    QVERIFY(wasHeld);
    QVERIFY(wasBusy);
}

void tst_StudioWindow::whatTheWebcamRecorderReportsIsListed()
{
    KdTrackEventLog::clear();
    ScriptedEngine engine;
    const auto window = openWindow();
    useWebcam(*window, [] {});
    window->findChild<QTabWidget*>(QStringLiteral("Studio_Tabs"))->setCurrentIndex(1);
    const auto* const list = window->findChild<StudioUsageView*>();
    QVERIFY(list->isVisible());
    QCOMPARE(list->count(), 1);
    QVERIFY2(list->item(0)->text().endsWith(
                 QStringLiteral("record_video_screen_tool_bar_expose record_type=camera_record")),
             qPrintable(list->item(0)->text()));
}

void tst_StudioWindow::openRecorderComesToTheFrontInsteadOfAnother()
{
    ScriptedEngine engine;
    const auto window = openWindow();
    DialogDriver::click(*window, QStringLiteral("Studio_RecordVoiceOver"));
    QTRY_VERIFY(window->voiceOver()->isOpen());
    DialogDriver::click(*window, QStringLiteral("Studio_RecordWebcam"));
    QVERIFY(!window->webcam()->isOpen());
    QTRY_VERIFY(window->voiceOver()->view()->isActiveWindow());
    window->voiceOver()->close();
    QTRY_VERIFY(!window->voiceOver()->isOpen());
}

void tst_StudioWindow::clipInAnotherFolderIsWatchedToo()
{
    const QString path = temporaryPath(QStringLiteral("clips/a.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(1.0));
    const auto window = openWindow();
    window->library()->add(takeFromReport(path, QString(), QString()));
    QTRY_VERIFY(window->library()->takes().first().state == StudioTake::State::Good);
    QVERIFY(QFile::remove(path));
    QTRY_VERIFY(window->library()->takes().first().state == StudioTake::State::Missing);
}

void tst_StudioWindow::newsAreSpokenAndFollowTheLanguage_data()
{
    QTest::addColumn<Happen>("happen");
    const auto row = [](const char* name, const Happen& happen) { QTest::newRow(name) << happen; };
    row("takes folder", [](StudioWindow& w) { w.openTakes(); });
    row("folder that cannot be made",
        [](StudioWindow& w) { w.library()->open(QStringLiteral("/proc/nowhere")); });
    row("damaged list", openDamagedList);
    row("added", [](StudioWindow& w) { Q_EMIT w.importer()->imported(QStringLiteral("a")); });
    row("not kept", [](StudioWindow& w) { Q_EMIT w.importer()->skipped(); });
    row("not added", [](StudioWindow& w) {
        Q_EMIT w.importer()->failed(QStringLiteral("a"), QStringLiteral("It is empty."));
    });
    row("begun", [](StudioWindow& w) { Q_EMIT w.voiceOver()->takeStarted(false); });
    row("not begun", [](StudioWindow& w) { Q_EMIT w.voiceOver()->takeStartFailed(); });
    row("not played", playThroughNothing);
    row("discarded", discard);
    row("nothing to repair", findNothingIn);
    row("put off", putOff);
}

void tst_StudioWindow::newsAreSpokenAndFollowTheLanguage()
{
    QFETCH(Happen, happen);
    allowLog(QStringLiteral("put aside"));
    const auto window = openWindow();
    AccessibleEvents spoken;
    happen(*window);
    const QString english = window->statusText();
    QVERIFY(!english.isEmpty());
    QVERIFY2(spoken.alerts().contains(english), qPrintable(spoken.alerts().join(QLatin1Char(';'))));
    QStringList said{english};
    for (const char* language : {"de", "zh_CN"}) {
        QVERIFY(m_languages.use(QString::fromLatin1(language)));
        QCoreApplication::processEvents();
        QVERIFY2(!said.contains(window->statusText()), qPrintable(window->statusText()));
        said.append(window->statusText());
    }
    QVERIFY(m_languages.use(QStringLiteral("en")));
    QCoreApplication::processEvents();
    QCOMPARE(window->statusText(), english);
}

void tst_StudioWindow::barsAreSpoken()
{
    const auto window = openWindow();
    AccessibleEvents spoken;
    Q_EMIT window->voiceOver()->lockChanged(true);
    QCOMPARE(spoken.takeAlerts(),
             QStringList(QStringLiteral("The recorder is at work: The project is locked until the "
                                        "take is over.")));
    Q_EMIT window->voiceOver()->lockChanged(false);
    UnfinishedTake take;
    take.record.takePath = QStringLiteral("REC.m4a");
    Q_EMIT window->findChild<StudioRecovery*>()->found({take});
    const QStringList alerts = spoken.takeAlerts();
    QCOMPARE(alerts.size(), 1);
    QVERIFY2(alerts.first().startsWith(QLatin1String("An unfinished recording was found: REC")),
             qPrintable(alerts.first()));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioWindow>(argc, argv);
}

#include "tst_StudioWindow.moc"
