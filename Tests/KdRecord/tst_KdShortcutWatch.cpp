#include <KdRecord/KdShortcutWatch.h>
#include <KdZentraCore/KdUtility.h>
#include <Support/KdTestCase.h>

#include <QKeyEvent>
#include <QPushButton>
#include <QSignalSpy>

namespace {

/** A panel as the recording panels are: its event filter asks the watch. */
class Panel : public QWidget
{
public:
    explicit Panel(QWidget* parent) : QWidget(parent), watch(new KdShortcutWatch(this)) {}
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        Q_UNUSED(watched)
        return watch->takes(event);
    }
    KdShortcutWatch* const watch;
};

bool ask(QWidget& window, int key, bool isRepeated = false)
{
    QKeyEvent event(QEvent::ShortcutOverride, key, Qt::NoModifier, QString(), isRepeated);
    event.ignore();
    QApplication::sendEvent(&window, &event);
    return event.isAccepted();
}

} // namespace

class tst_KdShortcutWatch : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void windowsAroundThePanelAreWatched();
    void parentThatIsTheMainWindowIsWatchedOnce();
    void stoppedWatchHearsNothing();
    void heldKeyIsOnePress();
    void pressReachesNoPanelThatHasGone();
    void fieldGivesUpTheShortcutOnly();
    void enterPressesTheFocusedButtonOfThePanel();
};

void tst_KdShortcutWatch::windowsAroundThePanelAreWatched()
{
    QWidget main;
    KdUtility::gSetMainWindow(&main);
    QWidget parent;
    Panel panel(&parent);
    panel.watch->start();
    QSignalSpy pressed(panel.watch, &KdShortcutWatch::sigPressed);
    QVERIFY(ask(parent, Qt::Key_Space));
    // Not from inside the question.
    QCOMPARE(pressed.count(), 0);
    QTRY_COMPARE(pressed.count(), 1);
    QVERIFY(ask(main, Qt::Key_Space));
    QTRY_COMPARE(pressed.count(), 2);
    QVERIFY(!ask(parent, Qt::Key_S));
    QVERIFY(!ask(main, Qt::Key_Escape));
    QCoreApplication::processEvents();
    QCOMPARE(pressed.count(), 2);
}

void tst_KdShortcutWatch::parentThatIsTheMainWindowIsWatchedOnce()
{
    QWidget main;
    KdUtility::gSetMainWindow(&main);
    Panel panel(&main);
    panel.watch->start();
    panel.watch->start();
    QSignalSpy pressed(panel.watch, &KdShortcutWatch::sigPressed);
    QVERIFY(ask(main, Qt::Key_Space));
    QTRY_COMPARE(pressed.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(pressed.count(), 1);
}

void tst_KdShortcutWatch::stoppedWatchHearsNothing()
{
    QWidget parent;
    QWidget later;
    Panel panel(&parent);
    panel.watch->start();
    // The window that was watched counts, not the one that the panel stands in by now.
    panel.setParent(&later);
    panel.watch->stop();
    QVERIFY(!ask(parent, Qt::Key_Space));
    QVERIFY(!ask(later, Qt::Key_Space));
}

void tst_KdShortcutWatch::heldKeyIsOnePress()
{
    QWidget parent;
    Panel panel(&parent);
    panel.watch->start();
    QSignalSpy pressed(panel.watch, &KdShortcutWatch::sigPressed);
    QVERIFY(ask(parent, Qt::Key_Space));
    QVERIFY(ask(parent, Qt::Key_Space, true));
    QVERIFY(ask(parent, Qt::Key_Space, true));
    QTRY_COMPARE(pressed.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(pressed.count(), 1);
}

void tst_KdShortcutWatch::pressReachesNoPanelThatHasGone()
{
    QWidget parent;
    auto* const panel = new Panel(&parent);
    panel->watch->start();
    int presses = 0;
    connect(panel->watch, &KdShortcutWatch::sigPressed, this, [&presses] { ++presses; });
    QVERIFY(ask(parent, Qt::Key_Space));
    delete panel;
    QCoreApplication::processEvents();
    QCOMPARE(presses, 0);
    QVERIFY(!ask(parent, Qt::Key_Space));
}

void tst_KdShortcutWatch::fieldGivesUpTheShortcutOnly()
{
    QWidget parent;
    const Panel panel(&parent);
    QSignalSpy pressed(panel.watch, &KdShortcutWatch::sigPressed);
    QKeyEvent space(QEvent::ShortcutOverride, Qt::Key_Space, Qt::NoModifier);
    QKeyEvent digit(QEvent::ShortcutOverride, Qt::Key_7, Qt::NoModifier);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    QVERIFY(panel.watch->takesShortcut(&space));
    QVERIFY(!panel.watch->takesShortcut(&digit));
    QVERIFY(!panel.watch->takesShortcut(&press));
    QTRY_COMPARE(pressed.count(), 1);
}

void tst_KdShortcutWatch::enterPressesTheFocusedButtonOfThePanel()
{
    QWidget parent;
    Panel panel(&parent);
    QPushButton inside(&panel);
    QPushButton outside(&parent);
    parent.show();
    QVERIFY(QTest::qWaitForWindowActive(&parent));
    QSignalSpy clicked(&inside, &QPushButton::clicked);
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    inside.setFocus();
    QVERIFY(panel.watch->pressedFocusedButton(&enter));
    QVERIFY(panel.watch->pressedFocusedButton(&repeat));
    QVERIFY(!panel.watch->pressedFocusedButton(&letter));
    outside.setFocus();
    QVERIFY(!panel.watch->pressedFocusedButton(&enter));
    QVERIFY(!panel.watch->pressedFocusedButton(&repeat));
    QCOMPARE(clicked.count(), 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdShortcutWatch>(argc, argv);
}

#include "tst_KdShortcutWatch.moc"
