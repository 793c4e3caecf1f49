#include "WebcamRecordFixture.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QKeyEvent>

using namespace KdVBLMODEL;

/** The webcam panel under the keyboard, its shortcut above all. */
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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelInput>(argc, argv);
}

#include "tst_KdWebcamRecordPanelInput.moc"
