#include "AudioRecordFixture.h"

#include <KdRecord/KdAudioRecordPanelUi.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdOpenFileLineEdit.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>
#include <KdZentraCore/IKdShortcutEditManager.h>

#include <Support/AccessibleEvents.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTranslator>

using namespace KdVBLMODEL;

/** The voice-over panel under the keyboard, in other languages, and for those who cannot see it. */
class tst_KdAudioRecordPanelInput : public AudioRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void shortcutStartsAndStops();
    void shortcutOfTheHostIsFollowed();
    void everyShortcutOverrideIsConsumed_data();
    void everyShortcutOverrideIsConsumed();
    void otherEventsAreLeftAlone();
    void mainWindowsKeyStartsToo();
    void spaceIsTypedIntoTheFolder();
    void spaceDoesNotPressTheFocusedControl_data();
    void spaceDoesNotPressTheFocusedControl();
    void heldShortcutStartsOnce();
    void shortcutDuringAMessageIsIgnored();
    void enterPressesTheFocusedControl();
    void heldEnterPressesOnce();
    void wholePanelCanBeReachedByTab();
    void twoQuickClicksEndWhereTheyBegan();

    void textsAreAsRequired();
    void tipsFollowTheState();
    void everyControlHasAName();
    void captionsBelongToTheirControls();
    void whatHappensToATakeIsSpoken();
    void endOfTheCountdownIsSpoken();
    void lossOfTheLastDeviceIsSpoken();
    void languageChangeInMidTakeKeepsTheTake();
    void languageChangeTranslatesTheEmptyState();
    void everythingFits_data();
    void everythingFits();
    void recordButtonStandsInTheMiddle();

private:
    bool isActivated() { return isCountingDown() || panel->status() == fcsRecording; }
};

void tst_KdAudioRecordPanelInput::shortcutStartsAndStops()
{
    showPanel();
    pressKey(Qt::Key_Space);
    QTRY_COMPARE(panel->status(), fcsRecording);
    passTime(2000);
    pressKey(Qt::Key_Space);
    QTRY_COMPARE(panel->status(), fcsNoStart);
    QVERIFY(!finishedPath.isEmpty());
}

void tst_KdAudioRecordPanelInput::shortcutOfTheHostIsFollowed()
{
    showPanel();
    setShortcut(QKeySequence(QStringLiteral("Ctrl+R")));
    window->setFocus();
    pressKey(Qt::Key_Space);
    QVERIFY(!isActivated());
    pressKey(Qt::Key_R, Qt::ControlModifier);
    QVERIFY(isActivated());
}

void tst_KdAudioRecordPanelInput::everyShortcutOverrideIsConsumed_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("isRecordShortcut");
    QTest::newRow("record shortcut") << int(Qt::Key_Space) << true;
    QTest::newRow("a letter") << int(Qt::Key_S) << false;
    QTest::newRow("escape") << int(Qt::Key_Escape) << false;
    QTest::newRow("a modifier alone") << int(Qt::Key_Shift) << false;
}

void tst_KdAudioRecordPanelInput::everyShortcutOverrideIsConsumed()
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

void tst_KdAudioRecordPanelInput::otherEventsAreLeftAlone()
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

void tst_KdAudioRecordPanelInput::mainWindowsKeyStartsToo()
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

void tst_KdAudioRecordPanelInput::spaceIsTypedIntoTheFolder()
{
    showPanel();
    QLineEdit* const edit = control<KdOpenFileLineEdit>("KAudioCapture_FolderEdit")->lineEdit();
    edit->setFocus();
    edit->end(false);
    const QString before = edit->text();
    pressKey(Qt::Key_Space);
    QCOMPARE(edit->text(), before + QLatin1Char(' '));
    QVERIFY(!isActivated());
}

void tst_KdAudioRecordPanelInput::spaceDoesNotPressTheFocusedControl_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {kStart, kDevice, "KAudioCapture_ButtonRefresh",
                             "KAudioCapture_MuteBox", "KAudioCapture_ButtonAdvance", kOk}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_KdAudioRecordPanelInput::spaceDoesNotPressTheFocusedControl()
{
    QFETCH(QString, name);
    showPanel();
    auto* const focused = panel->findChild<QWidget*>(name);
    focused->setFocus(Qt::TabFocusReason);
    QVERIFY(focused->hasFocus());
    signalTexts.clear();
    const int formerCount = engine->count("getDevices");
    pressKey(Qt::Key_Space);
    QVERIFY(isActivated());
    QVERIFY(button(kStart)->isChecked());
    QVERIFY(!panel->isMuted());
    QCOMPARE(engine->count("getDevices"), formerCount);
    QVERIFY(!QApplication::activePopupWidget());
    QCOMPARE(signalTexts, QStringList{QStringLiteral("sigStartRecordBtnClick")});
}

void tst_KdAudioRecordPanelInput::heldShortcutStartsOnce()
{
    showPanel();
    signalTexts.clear();
    for (const bool isRepeated : {false, true, true, true}) {
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Space, Qt::NoModifier,
                        QStringLiteral(" "), isRepeated);
        QApplication::sendEvent(window, &event);
        drain();
    }
    QCOMPARE(signalTexts.count(QStringLiteral("sigStartRecordBtnClick")), 1);
    QVERIFY(button(kStart)->isChecked());
}

void tst_KdAudioRecordPanelInput::shortcutDuringAMessageIsIgnored()
{
    showPanel();
    panel->setFolderCheck(KdOutputFolderCheck([](const QString&) { return qint64(1); }));
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

void tst_KdAudioRecordPanelInput::enterPressesTheFocusedControl()
{
    showPanel();
    button("KAudioCapture_MuteBox")->setFocus(Qt::TabFocusReason);
    pressKey(Qt::Key_Return);
    QVERIFY(panel->isMuted());
    const int formerCount = engine->count("getDevices");
    button("KAudioCapture_ButtonRefresh")->setFocus(Qt::TabFocusReason);
    pressKey(Qt::Key_Enter);
    QCOMPARE(engine->count("getDevices"), formerCount + 1);
    button(kStart)->setFocus(Qt::TabFocusReason);
    pressKey(Qt::Key_Return);
    QVERIFY(isActivated());
}

void tst_KdAudioRecordPanelInput::heldEnterPressesOnce()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    button(kStart)->setFocus(Qt::TabFocusReason);
    for (const bool isRepeat : {false, true, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), isRepeat);
        QApplication::sendEvent(button(kStart), &press);
        QVERIFY(isCountingDown());
    }
    QCOMPARE(signalTexts.count(QStringLiteral("sigStartRecordBtnClick")), 1);
}

void tst_KdAudioRecordPanelInput::wholePanelCanBeReachedByTab()
{
    showPanel();
    button(kStart)->setFocus(Qt::TabFocusReason);
    const auto* const folder = control<KdOpenFileLineEdit>("KAudioCapture_FolderEdit");
    const QList<QWidget*> expected{
        control<QWidget>(kDevice),
        button("KAudioCapture_ButtonRefresh"),
        control<QWidget>("KAudioCapture_InputBox"),
        button("KAudioCapture_ButtonAdvance"),
        folder->lineEdit(),
        folder->browseButton(),
        control<QWidget>("KAudioCapture_CountdownBox"),
        button("KAudioCapture_MuteBox"),
        button(kOk),
        button(kStart),
    };
    for (QWidget* const widget : expected) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY2(widget->hasFocus(),
                 qPrintable(widget->objectName() + QStringLiteral(" was expected, not ") +
                            QApplication::focusWidget()->objectName()));
    }
}

void tst_KdAudioRecordPanelInput::twoQuickClicksEndWhereTheyBegan()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(9);
    const QPoint place = button(kStart)->mapTo(window, button(kStart)->rect().center());
    QTest::mouseDClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    drain();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
    drain();
    QCOMPARE(button(kStart)->isChecked(), isCountingDown());
    QCOMPARE(isLocked(), isCountingDown());
}

void tst_KdAudioRecordPanelInput::textsAreAsRequired()
{
    showPanel();
    QStringList captions;
    for (const KdLabel* const label : panel->findChildren<KdLabel*>()) {
        if (!label->isWindow()) {
            captions.append(label->text());
        }
    }
    captions.sort();
    const QStringList expected{
        QStringLiteral(" 00:00:00"), QStringLiteral("Audio Device"), QStringLiteral("Count Down"),
        QStringLiteral("Input"),     QStringLiteral("Record Time"),  QStringLiteral("Save to"),
        QStringLiteral("sec"),
    };
    QCOMPARE(captions, expected);
    QCOMPARE(button(kOk)->text(), QStringLiteral("OK"));
    QCOMPARE(button("KAudioCapture_ButtonAdvance")->text(), QStringLiteral("Advanced"));
    QCOMPARE(button("KAudioCapture_MuteBox")->text(), QStringLiteral("Mute Project"));
    QCOMPARE(button("KAudioCapture_ButtonRefresh")->toolTip(), QStringLiteral("Refresh Device"));
    QCOMPARE(button(kReRecord)->toolTip(), QStringLiteral("Re-record"));
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));
    QCOMPARE(button(kPause)->property("WITH_SHORTCUT").toBool(), true);
    QCOMPARE(control<QComboBox>("KAudioCapture_InputBox")->currentText(),
             QStringLiteral("Input Audio"));
}

void tst_KdAudioRecordPanelInput::tipsFollowTheState()
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

void tst_KdAudioRecordPanelInput::everyControlHasAName()
{
    showPanel();
    startTake();
    QStringList nameless;
    for (const QWidget* const widget : panel->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisibleTo(panel) ||
            widget->isWindow() || widget->objectName().startsWith(QLatin1String("qt_"))) {
            continue;
        }
        const auto* const control = qobject_cast<const QAbstractButton*>(widget);
        const bool hasText = control && !control->text().isEmpty();
        if (widget->accessibleName().isEmpty() && !hasText && widget->toolTip().isEmpty()) {
            nameless.append(widget->objectName() + QLatin1Char(' ') +
                            QString::fromLatin1(widget->metaObject()->className()));
        }
        if (widget->objectName().isEmpty() && !qobject_cast<const QLineEdit*>(widget)) {
            nameless.append(QString::fromLatin1(widget->metaObject()->className()) +
                            QStringLiteral(" without an object name"));
        }
    }
    QCOMPARE(nameless, QStringList());
    QCOMPARE(button(kStart)->accessibleName(), QStringLiteral("Stop"));
}

void tst_KdAudioRecordPanelInput::captionsBelongToTheirControls()
{
    showPanel();
    QHash<QString, QString> names;
    for (const KdLabel* const label : panel->findChildren<KdLabel*>()) {
        if (label->buddy()) {
            names.insert(label->text(), label->buddy()->objectName());
        }
    }
    QCOMPARE(names.value(QStringLiteral("Audio Device")), QLatin1String(kDevice));
    QCOMPARE(names.value(QStringLiteral("Input")), QStringLiteral("KAudioCapture_InputBox"));
    QCOMPARE(names.value(QStringLiteral("Save to")), QStringLiteral("KAudioCapture_FolderEdit"));
    QCOMPARE(names.value(QStringLiteral("Count Down")),
             QStringLiteral("KAudioCapture_CountdownBox"));
}

void tst_KdAudioRecordPanelInput::whatHappensToATakeIsSpoken()
{
    showPanel();
    control<QDoubleSpinBox>("KAudioCapture_CountdownBox")->setValue(2);
    AccessibleEvents heard;
    startTake();
    QCOMPARE(heard.takeAlerts(),
             texts({"Recording starts in 2", "Recording starts in 1", "Recording started"}));
    click(kPause);
    click(kPause);
    QCOMPARE(heard.takeAlerts(), texts({"Recording is paused. Click Resume to continue recording.",
                                        "Recording resumed"}));
    passTime(2000);
    answers->answerMessage(QDialogButtonBox::Ok);
    engine->deliverDevice(fcdAudioInputRemoved, 0);
    QTRY_COMPARE(answers->pending(), 0);
    const QStringList spoken = heard.takeAlerts();
    QCOMPARE(spoken.size(), 2);
    QCOMPARE(spoken.first(), QStringLiteral("Recording stopped"));
    QVERIFY(spoken.last().endsWith(QLatin1String(": Audio device Mic A connection lost.")));
}

void tst_KdAudioRecordPanelInput::endOfTheCountdownIsSpoken()
{
    showPanel();
    const AccessibleEvents heard;
    reachState(QStringLiteral("counting"));
    QCOMPARE(heard.alerts().value(0), QStringLiteral("Recording starts in 9"));
    click(kStop);
    QCOMPARE(heard.alerts().last(), QStringLiteral("Countdown stopped"));
}

void tst_KdAudioRecordPanelInput::lossOfTheLastDeviceIsSpoken()
{
    showPanel();
    const AccessibleEvents heard;
    setMicrophones({});
    click("KAudioCapture_ButtonRefresh");
    QCOMPARE(heard.alerts(), QStringList(QStringLiteral("No device is connected")));
}

void tst_KdAudioRecordPanelInput::languageChangeInMidTakeKeepsTheTake()
{
    showPanel();
    control<QComboBox>(kDevice)->setCurrentIndex(1);
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
    QCOMPARE(timeText(), QStringLiteral(" 00:00:07"));
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("Mic B"));
    QCOMPARE(control<QComboBox>("KAudioCapture_InputBox")->currentText(),
             QStringLiteral("[Input Audio]"));
    QVERIFY(isLocked());
    QCOMPARE(engine->commands(), QStringList());
    QCOMPARE(signalTexts, QStringList());
    passTime(7000);
    stopTake();
    QCOMPARE(finishedPath, path);
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdAudioRecordPanelInput::languageChangeTranslatesTheEmptyState()
{
    setMicrophones({});
    showPanel();
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("[No Device]"));
    setMicrophones({QStringLiteral("Mic A")});
    click("KAudioCapture_ButtonRefresh");
    QVERIFY(button(kStart)->isEnabled());
    QCOMPARE(control<QComboBox>(kDevice)->currentText(), QStringLiteral("Mic A"));
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdAudioRecordPanelInput::everythingFits_data()
{
    QTest::addColumn<QString>("language");
    for (const char* language : {"", "de", "zh_CN"}) {
        QTest::newRow(*language ? language : "source") << QString::fromLatin1(language);
    }
}

void tst_KdAudioRecordPanelInput::everythingFits()
{
    QFETCH(QString, language);
    QTranslator translator;
    if (!language.isEmpty()) {
        QVERIFY(translator.load(QStringLiteral(":/translations/KdRecord_%1.qm").arg(language)));
        QCoreApplication::installTranslator(&translator);
    }
    showPanel();
    startTake();
    QStringList cut;
    for (const KdLabel* const label : panel->findChildren<KdLabel*>()) {
        if (!label->overflowText().isEmpty()) {
            cut.append(label->overflowText());
        }
    }
    for (const QAbstractButton* const shown : panel->findChildren<QAbstractButton*>()) {
        const bool isOut =
            !panel->rect().contains(QRect(shown->mapTo(panel, QPoint(0, 0)), shown->size()));
        const int textWidth = shown->fontMetrics().horizontalAdvance(shown->text());
        if (isOut || (!shown->text().isEmpty() && textWidth > shown->width())) {
            cut.append(shown->objectName());
        }
    }
    QCOMPARE(cut, QStringList());
    QVERIFY(panel->minimumSizeHint().width() <= 478);
    QVERIFY2(panel->minimumSizeHint().height() <= 406,
             qPrintable(QString::number(panel->minimumSizeHint().height())));
    if (!language.isEmpty()) {
        QCoreApplication::removeTranslator(&translator);
    }
}

void tst_KdAudioRecordPanelInput::recordButtonStandsInTheMiddle()
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
    return KdTest::run<tst_KdAudioRecordPanelInput>(argc, argv);
}

#include "tst_KdAudioRecordPanelInput.moc"
