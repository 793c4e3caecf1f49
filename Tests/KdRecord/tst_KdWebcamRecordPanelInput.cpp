#include "WebcamRecordFixture.h"

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/AccessibleEvents.h>
#include <Support/ClippedTexts.h>
#include <Support/WidgetLooks.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHash>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextDocumentFragment>

using namespace KdVBLMODEL;

/** The webcam panel under the keyboard, in other languages, and for those who cannot see it. */
class tst_KdWebcamRecordPanelInput : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void shortcutStartsAndStops();
    void shortcutOfTheHostIsFollowed();
    void shortcutDoesNothingWithoutACamera();
    void shortcutDoesNotPressTheFocusedControl();
    void shortcutIsNotTypedIntoTheCountdown();
    void shortcutDuringAMessageIsIgnored();
    void mainWindowsKeyStartsToo();
    void everyOtherShortcutQuestionIsSwallowed_data();
    void everyOtherShortcutQuestionIsSwallowed();
    void otherEventsAreLeftAlone();
    void enterPressesTheFocusedControl();
    void listsAndTakeButtonsTakeNoFocus();
    void tabReachesWhatIsLeft();

    void textsAreAsRequired();
    void tipsFollowTheState();
    void previewSwitchSaysWhatItDoes();
    void everyControlHasAName();
    void keysReachWhatTakesNoFocus();
    void keysOfDisabledControlsDoNothing();
    void tipsNameTheKeys();
    void whatHappensToATakeIsSpoken();
    void endOfTheCountdownIsSpoken();
    void lossOfTheLastCameraIsSpoken();
    void languageChangeInMidTakeKeepsTheTake();
    void languageChangeTranslatesTheEmptyState();
    void everythingFits_data();
    void everythingFits();
    void recordButtonStandsInTheMiddle();

private:
    bool isActivated() { return isCountingDown() || panel->status() == fcsRecording; }
};

void tst_KdWebcamRecordPanelInput::shortcutStartsAndStops()
{
    showPanel();
    pressKey(Qt::Key_Space);
    QTRY_COMPARE(panel->status(), fcsRecording);
    passTime(2000);
    pressKey(Qt::Key_Space);
    QTRY_COMPARE(panel->status(), fcsNoStart);
    QVERIFY(!finishedPath.isEmpty());
}

void tst_KdWebcamRecordPanelInput::shortcutOfTheHostIsFollowed()
{
    showPanel();
    setShortcut(QKeySequence(QStringLiteral("Ctrl+R")));
    window->setFocus();
    pressKey(Qt::Key_Space);
    QVERIFY(!isActivated());
    pressKey(Qt::Key_R, Qt::ControlModifier);
    QVERIFY(isActivated());
}

void tst_KdWebcamRecordPanelInput::shortcutDoesNothingWithoutACamera()
{
    setCameras({});
    showPanel();
    QCOMPARE(choice(kCamera), QStringLiteral("No Device"));
    pressKey(Qt::Key_Space);
    QVERIFY(!button(kStart)->isChecked());
    QVERIFY(!isActivated());
    QCOMPARE(signalTexts, QStringList());
}

void tst_KdWebcamRecordPanelInput::shortcutDoesNotPressTheFocusedControl()
{
    showPanel();
    auto* const preview = control<QCheckBox>(kPreview);
    preview->setFocus(Qt::TabFocusReason);
    QVERIFY(preview->hasFocus());
    const bool wasChecked = preview->isChecked();
    pressKey(Qt::Key_Space);
    QVERIFY(isActivated());
    QCOMPARE(preview->isChecked(), wasChecked);
}

void tst_KdWebcamRecordPanelInput::shortcutIsNotTypedIntoTheCountdown()
{
    showPanel();
    auto* const seconds = control<QDoubleSpinBox>(kSeconds);
    seconds->setValue(9);
    seconds->setFocus(Qt::MouseFocusReason);
    QVERIFY(seconds->hasFocus());
    // Every other key is for the field.
    seconds->selectAll();
    pressKey(Qt::Key_7);
    QCOMPARE(seconds->value(), 7.0);
    QVERIFY(!isActivated());
    pressKey(Qt::Key_Space);
    QVERIFY(isActivated());
    QCOMPARE(seconds->value(), 7.0);
}

void tst_KdWebcamRecordPanelInput::shortcutDuringAMessageIsIgnored()
{
    showPanel();
    panel->setFolderCheck(withFreeSpace(1));
    answers->handle(QStringLiteral("KOldMessageDialog"), [this](QWidget& box) {
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Space, Qt::NoModifier);
        QApplication::sendEvent(mainWindow.get(), &event);
        drain();
        box.close();
    });
    click(kStart);
    QTRY_COMPARE(answers->pending(), 0);
    QTRY_VERIFY(!button(kStart)->isChecked());
    QCOMPARE(answers->messages().size(), 1);
}

void tst_KdWebcamRecordPanelInput::mainWindowsKeyStartsToo()
{
    showPanel();
    mainWindow->show();
    QVERIFY(QTest::qWaitForWindowActive(mainWindow.get()));
    QTest::keyClick(mainWindow.get(), Qt::Key_Space);
    drain();
    QTRY_COMPARE(panel->status(), fcsRecording);
    // Locked, it still ends the take.
    passTime(2000);
    QTest::keyClick(mainWindow.get(), Qt::Key_Space);
    drain();
    QTRY_COMPARE(panel->status(), fcsNoStart);
}

void tst_KdWebcamRecordPanelInput::everyOtherShortcutQuestionIsSwallowed_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("isRecordShortcut");
    QTest::newRow("record shortcut") << int(Qt::Key_Space) << true;
    QTest::newRow("a letter") << int(Qt::Key_S) << false;
    QTest::newRow("escape") << int(Qt::Key_Escape) << false;
    QTest::newRow("a modifier alone") << int(Qt::Key_Shift) << false;
}

void tst_KdWebcamRecordPanelInput::everyOtherShortcutQuestionIsSwallowed()
{
    QFETCH(int, key);
    QFETCH(bool, isRecordShortcut);
    showPanel();
    for (QObject* const watched :
         {static_cast<QObject*>(window), static_cast<QObject*>(mainWindow.get())}) {
        QKeyEvent event(QEvent::ShortcutOverride, key, Qt::NoModifier);
        event.ignore();
        QVERIFY(static_cast<QObject*>(panel)->eventFilter(watched, &event));
        QCOMPARE(event.isAccepted(), isRecordShortcut);
    }
}

void tst_KdWebcamRecordPanelInput::otherEventsAreLeftAlone()
{
    showPanel();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier);
    QEvent move(QEvent::Move);
    for (QEvent* const event :
         {static_cast<QEvent*>(&press), static_cast<QEvent*>(&release), &move}) {
        QVERIFY(!static_cast<QObject*>(panel)->eventFilter(window, event));
    }
    QVERIFY(!isActivated());
}

void tst_KdWebcamRecordPanelInput::enterPressesTheFocusedControl()
{
    showPanel();
    auto* const preview = control<QCheckBox>(kPreview);
    const bool wasChecked = preview->isChecked();
    preview->setFocus(Qt::TabFocusReason);
    pressKey(Qt::Key_Return);
    QCOMPARE(preview->isChecked(), !wasChecked);
    startTake();
    button(kPause)->setFocus(Qt::TabFocusReason);
    pressKey(Qt::Key_Enter);
    QCOMPARE(panel->status(), fcsPaused);
}

void tst_KdWebcamRecordPanelInput::listsAndTakeButtonsTakeNoFocus()
{
    showPanel();
    for (const char* name : {kCamera, kMicrophone, kResolution, kFrameRate, kOk, kStart}) {
        QCOMPARE(control<QWidget>(name)->focusPolicy(), Qt::NoFocus);
    }
    QCOMPARE(control<QWidget>(kSeconds)->focusPolicy(), Qt::ClickFocus);
}

void tst_KdWebcamRecordPanelInput::tabReachesWhatIsLeft()
{
    showPanel();
    startTake();
    button(kReRecord)->setFocus(Qt::TabFocusReason);
    for (const char* name : {kPause, kPreview, kReRecord}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY2(control<QWidget>(name)->hasFocus(),
                 qPrintable(QApplication::focusWidget()->objectName()));
    }
}

void tst_KdWebcamRecordPanelInput::textsAreAsRequired()
{
    showPanel();
    QStringList captions;
    for (const KdLabel* const label : panel->findChildren<KdLabel*>()) {
        const QString name = label->objectName();
        if (!label->isWindow() && label->isVisible() && name != QLatin1String(kStatus) &&
            name != QLatin1String("KInputLine")) {
            captions.append(label->text());
        }
    }
    captions.sort();
    QCOMPARE(captions, texts({" 00:00:00", "Audio:", "Count Down:", "Frame Rate:", "Record Time:",
                              "Resolution:", "Video Device:", "sec"}));
    QCOMPARE(button(kOk)->text(), QStringLiteral("OK"));
    QCOMPARE(button(kReRecord)->toolTip(), QStringLiteral("Re-record"));
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));
    const auto backs = panel->findChildren<QLabel*>(QStringLiteral("KCameraCapture_LabelBack"));
    QCOMPARE(backs.size(), 4);
    for (const QLabel* const label : backs) {
        const bool isRight = label->text() == QLatin1String("Audio:") ||
                             label->text() == QLatin1String("Frame Rate:");
        QCOMPARE(label->alignment().testFlag(Qt::AlignRight), isRight);
        QVERIFY(!isRight || label->size() == QSize(150, 16));
    }
}

void tst_KdWebcamRecordPanelInput::tipsFollowTheState()
{
    setShortcut(QKeySequence(QStringLiteral("Ctrl+R")));
    showPanel();
    const QString key = QKeySequence(QStringLiteral("Ctrl+R")).toString(QKeySequence::NativeText);
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("Start (%1)").arg(key));
    QCOMPARE(button(kStart)->property("WITH_SHORTCUT").toBool(), true);
    startTake();
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("Stop (%1)").arg(key));
    passTime(1000);
    stopTake();
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("Start (%1)").arg(key));
}

void tst_KdWebcamRecordPanelInput::previewSwitchSaysWhatItDoes()
{
    showPanel();
    auto* const preview = control<QCheckBox>(kPreview);
    QVERIFY(preview->isChecked());
    QVERIFY(panel->isRecordPreview());
    QCOMPARE(preview->text(), QStringLiteral("Close the Recording Preview Window"));
    click(kPreview);
    QVERIFY(!panel->isRecordPreview());
    QCOMPARE(preview->text(), QStringLiteral("Close the Recording Preview Window"));
    click(kPreview);
    QCOMPARE(preview->text(), QStringLiteral("Open the Recording Preview Window"));
    click(kPreview);
    startTake();
    QCOMPARE(stored().recordPreview, false);
    delete window;
    showPanel();
    QVERIFY(!panel->isRecordPreview());
}

void tst_KdWebcamRecordPanelInput::everyControlHasAName()
{
    showPanel();
    startTake();
    QStringList nameless;
    for (const QWidget* const widget : panel->findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<const QAbstractButton*>(widget) ||
                               qobject_cast<const QComboBox*>(widget) ||
                               qobject_cast<const QAbstractSpinBox*>(widget);
        if (!isControl || !widget->isVisibleTo(panel)) {
            continue;
        }
        const auto* const shown = qobject_cast<const QAbstractButton*>(widget);
        const bool hasText = shown && !shown->text().isEmpty();
        if (widget->accessibleName().isEmpty() && !hasText && widget->toolTip().isEmpty()) {
            nameless.append(widget->objectName());
        }
    }
    QCOMPARE(nameless, QStringList());
    QCOMPARE(button(kStart)->accessibleName(), QStringLiteral("Stop"));
    QCOMPARE(control<QWidget>(kCamera)->accessibleName(), QStringLiteral("Video Device:"));
}

void tst_KdWebcamRecordPanelInput::keysReachWhatTakesNoFocus()
{
    showPanel();
    const QHash<int, const char*> lists{{Qt::Key_V, kCamera},
                                        {Qt::Key_A, kMicrophone},
                                        {Qt::Key_R, kResolution},
                                        {Qt::Key_F, kFrameRate}};
    for (auto list = lists.cbegin(); list != lists.cend(); ++list) {
        auto* const box = control<QComboBox>(list.value());
        const int former = box->currentIndex();
        pressKey(list.key(), Qt::AltModifier);
        QTRY_VERIFY(box->view()->isVisible());
        QTest::keyClick(box->view(), former == 0 ? Qt::Key_Down : Qt::Key_Up);
        QTest::keyClick(box->view(), Qt::Key_Return);
        QTRY_VERIFY(!box->view()->isVisible());
        QVERIFY(box->currentIndex() != former);
    }
    pressKey(Qt::Key_C, Qt::AltModifier);
    QVERIFY(control<QWidget>(kSeconds)->hasFocus());
    QTest::keyClicks(control<QDoubleSpinBox>(kSeconds), QStringLiteral("7"));
    QCOMPARE(control<QDoubleSpinBox>(kSeconds)->value(), 7.0);
    signalTexts.clear();
    pressKey(Qt::Key_O, Qt::AltModifier);
    QCOMPARE(signalTexts, QStringList(QStringLiteral("sigClose")));
}

void tst_KdWebcamRecordPanelInput::keysOfDisabledControlsDoNothing()
{
    showPanel();
    startTake();
    pressKey(Qt::Key_V, Qt::AltModifier);
    QVERIFY(!control<QComboBox>(kCamera)->view()->isVisible());
    pressKey(Qt::Key_C, Qt::AltModifier);
    QVERIFY(!control<QWidget>(kSeconds)->hasFocus());
}

void tst_KdWebcamRecordPanelInput::tipsNameTheKeys()
{
    showPanel();
    const auto tip = [this](const char* name) {
        const QString html = WidgetLooks::toolTip(*control<QWidget>(name));
        return QTextDocumentFragment::fromHtml(html).toPlainText();
    };
    QCOMPARE(tip(kCamera), QStringLiteral("Cam A (Alt+V)"));
    QCOMPARE(tip(kMicrophone), QStringLiteral("Mic A (Alt+A)"));
    QCOMPARE(tip(kResolution), QStringLiteral("Resolution (Alt+R)"));
    QCOMPARE(tip(kFrameRate), QStringLiteral("Frame Rate (Alt+F)"));
    QCOMPARE(tip(kSeconds), QStringLiteral("Count Down (Alt+C)"));
    QCOMPARE(tip(kOk), QStringLiteral("OK (Alt+O)"));
    QCOMPARE(control<QWidget>(kOk)->accessibleDescription(), QStringLiteral("Alt+O"));
}

void tst_KdWebcamRecordPanelInput::whatHappensToATakeIsSpoken()
{
    showPanel();
    control<QDoubleSpinBox>(kSeconds)->setValue(2);
    AccessibleEvents heard;
    startTake();
    QCOMPARE(heard.takeAlerts(),
             texts({"Recording starts in 2", "Recording starts in 1", "Recording started"}));
    click(kPause);
    click(kPause);
    QCOMPARE(heard.takeAlerts(), texts({"Recording is paused. Click Resume to continue recording.",
                                        "Recording resumed"}));
    passTime(2000);
    stopTake();
    QCOMPARE(heard.takeAlerts(), QStringList(QStringLiteral("Recording stopped")));
}

void tst_KdWebcamRecordPanelInput::endOfTheCountdownIsSpoken()
{
    showPanel();
    const AccessibleEvents heard;
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    click(kStart);
    QCOMPARE(heard.alerts().value(0), QStringLiteral("Recording starts in 9"));
    click(kStart);
    QCOMPARE(heard.alerts().last(), QStringLiteral("Countdown stopped"));
}

void tst_KdWebcamRecordPanelInput::lossOfTheLastCameraIsSpoken()
{
    showPanel();
    AccessibleEvents heard;
    setCameras({});
    answers->answerMessage(QDialogButtonBox::Ok);
    lookAtDevices(fcdWebcamRemoved);
    fire(kDeviceLostTimer);
    QTRY_COMPARE(answers->pending(), 0);
    const QStringList spoken = heard.alerts();
    QCOMPARE(spoken.size(), 2);
    QVERIFY(spoken.first().endsWith(QLatin1String(": The Camera Cam A is lost.")));
    QCOMPARE(spoken.last(), QStringLiteral("No device is connected"));
}

void tst_KdWebcamRecordPanelInput::languageChangeInMidTakeKeepsTheTake()
{
    showPanel();
    const QString path = startTake();
    engine->deliverTime(7000);
    drain();
    click(kPause);
    signalTexts.clear();
    engine->clearCalls();
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("[Stop ([Space])]"));
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("[Resume]"));
    QCOMPARE(button(kOk)->text(), QStringLiteral("[OK]"));
    QCOMPARE(button(kPreview)->text(), QStringLiteral("[Close the Recording Preview Window]"));
    QCOMPARE(statusText(), QStringLiteral("[Recording]"));
    QCOMPARE(timeText(), QStringLiteral(" 00:00:07"));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    QVERIFY(isLocked());
    QCOMPARE(engine->commands(), QStringList());
    QCOMPARE(signalTexts, QStringList());
    passTime(7000);
    stopTake();
    QCOMPARE(finishedPath, path);
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdWebcamRecordPanelInput::languageChangeTranslatesTheEmptyState()
{
    setCameras({});
    showPanel();
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    QCOMPARE(choice(kCamera), QStringLiteral("[No Device]"));
    QCOMPARE(statusText(), QStringLiteral("[No Device]"));
    QVERIFY(textOf(kHint).startsWith(QLatin1String("[Connect")));
    setCameras({QStringLiteral("Cam A")});
    lookAtDevices(fcdWebcamListChanged);
    QVERIFY(button(kStart)->isEnabled());
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdWebcamRecordPanelInput::everythingFits_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("skin");
    for (const char* language : {"", "de", "zh_CN"}) {
        for (const char* skin : {"dark", "light"}) {
            QTest::addRow("%s %s", *language ? language : "source", skin)
                << QString::fromLatin1(language) << QString::fromLatin1(skin);
        }
    }
}

void tst_KdWebcamRecordPanelInput::everythingFits()
{
    QFETCH(QString, language);
    QFETCH(QString, skin);
    QTranslator translator;
    if (!language.isEmpty()) {
        QVERIFY(translator.load(QStringLiteral(":/translations/KdRecord_%1.qm").arg(language)));
        QCoreApplication::installTranslator(&translator);
    }
    KdSkin::KdSkinManager::instance()->setSkin(skin);
    showPanel();
    // The dialog on the smallest usual screen, less its title bar.
    window->resize(798, 614);
    QVERIFY2(panel->minimumSizeHint().height() <= 614 && panel->minimumSizeHint().width() <= 798,
             qPrintable(QStringLiteral("%1x%2")
                            .arg(panel->minimumSizeHint().width())
                            .arg(panel->minimumSizeHint().height())));
    QCOMPARE(KdTest::clippedTexts(*window), QStringList());
    startTake();
    QCOMPARE(KdTest::clippedTexts(*window), QStringList());
    passTime(1000);
    stopTake();
    delete window;
    setCameras({});
    showPanel();
    QCOMPARE(KdTest::clippedTexts(*window), QStringList());
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdWebcamRecordPanelInput::recordButtonStandsInTheMiddle()
{
    showPanel();
    const auto middle = [this] {
        return button(kStart)->mapTo(panel, button(kStart)->rect().center()).x();
    };
    QVERIFY(qAbs(middle() - panel->width() / 2) <= 1);
    const int idle = middle();
    startTake();
    QCOMPARE(middle(), idle);
    QCOMPARE(button(kStart)->size(), QSize(72, 72));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelInput>(argc, argv);
}

#include "tst_KdWebcamRecordPanelInput.moc"
