#include <KdZentraCore/KdWindowsApi.h>
#include <Support/KdTestCase.h>

#include <QAction>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDropEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

namespace {

/** A host's window as far as input matters: a button, a text field, a menu and a shortcut of its
 * own. */
class HostWindow : public QMainWindow
{
public:
    HostWindow()
    {
        auto* const content = new QWidget(this);
        auto* const layout = new QVBoxLayout(content);
        layout->addWidget(&button);
        layout->addWidget(&edit);
        setCentralWidget(content);
        menu = menuBar()->addMenu(QStringLiteral("Edit"));
        action = menu->addAction(QStringLiteral("Cut"));
        addAction(action);
        action->setShortcut(QKeySequence(QStringLiteral("Ctrl+K")));
        button.setAcceptDrops(true);
    }

    void setUsable(bool isUsable) { KdWindowsApi::SetWindwosEnableApi(winId(), isUsable); }

    QPushButton button;
    QLineEdit edit;
    QMenu* menu = nullptr;
    QAction* action = nullptr;
};

/** Counts the events of one type that a widget handles. */
class EventCounter : public QObject
{
public:
    EventCounter(QObject* watched, QEvent::Type type) : m_type(type)
    {
        watched->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        count += event->type() == m_type ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
    int count = 0;

private:
    QEvent::Type m_type;
};

template <typename Window>
void showActive(Window& window)
{
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // QWindow::isActive() is already content when the window's transient parent is the active one.
    const auto activates = [&window] {
        window.activateWindow();
        return QApplication::activeWindow() == &window;
    };
    QVERIFY(QTest::qWaitFor(activates));
}

} // namespace

class tst_KdWindowsApi : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void windowWithoutInputIgnoresMouseAndKeys();
    void windowWithoutInputIgnoresWheelMenuAndDrop();
    void windowLooksAsUsual();
    void inputComesBack();
    void disablingTwiceIsUndoneByEnablingOnce();
    void enablingAnEnabledWindowIsHarmless();
    void dialogsOfTheWindowStayUsable();
    void otherWindowsStayUsable();
    void shortcutsOfTheWindowDoNotFire();
    void applicationShortcutsOfTheWindowDoNotFireFromADialog();
    void recordShortcutCanStillBeCaught();
    void openMenuOfTheWindowIsDead();
    void userCannotCloseButTheProgramCan();
    void unknownWindowsDoNothing();
    void destroyedWindowIsForgotten();
    void idIsThatOfTheWindowAlsoAfterItWasMadeAnew();
};

void tst_KdWindowsApi::windowWithoutInputIgnoresMouseAndKeys()
{
    HostWindow host;
    showActive(host);
    host.edit.setFocus();
    QSignalSpy clicked(&host.button, &QPushButton::clicked);
    host.setUsable(false);
    QVERIFY(!KdWindowsApi::IsWindowsEnableApi(host.winId()));
    QTest::mouseClick(&host.button, Qt::LeftButton);
    QTest::mouseDClick(&host.button, Qt::LeftButton);
    QTest::keyClicks(&host.edit, QStringLiteral("abc"));
    QTest::keyClick(host.windowHandle(), Qt::Key_A);
    QTest::mouseClick(host.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      host.button.mapTo(&host, host.button.rect().center()));
    QCOMPARE(clicked.count(), 0);
    QCOMPARE(host.edit.text(), QString());
}

void tst_KdWindowsApi::windowWithoutInputIgnoresWheelMenuAndDrop()
{
    HostWindow host;
    showActive(host);
    EventCounter wheels(&host.button, QEvent::Wheel);
    EventCounter menus(&host.button, QEvent::ContextMenu);
    EventCounter drops(&host.button, QEvent::DragEnter);
    const auto sendAll = [&host] {
        const QPoint point = host.button.rect().center();
        QWheelEvent wheel(point, host.button.mapToGlobal(point), QPoint(), QPoint(0, 120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, point, host.button.mapToGlobal(point));
        QMimeData data;
        QDragEnterEvent drag(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&host.button, &wheel);
        QCoreApplication::sendEvent(&host.button, &menu);
        QCoreApplication::sendEvent(&host.button, &drag);
        return drag.isAccepted();
    };
    host.setUsable(false);
    QVERIFY(!sendAll());
    QCOMPARE(wheels.count + menus.count + drops.count, 0);
    host.setUsable(true);
    sendAll();
    QCOMPARE(wheels.count + menus.count + drops.count, 3);
}

void tst_KdWindowsApi::windowLooksAsUsual()
{
    HostWindow host;
    showActive(host);
    host.setUsable(false);
    QVERIFY(host.isEnabled());
    QVERIFY(host.button.isEnabled());
    host.setUsable(true);
}

void tst_KdWindowsApi::inputComesBack()
{
    HostWindow host;
    showActive(host);
    host.edit.setFocus();
    QSignalSpy clicked(&host.button, &QPushButton::clicked);
    host.setUsable(false);
    host.setUsable(true);
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(host.winId()));
    QTest::mouseClick(&host.button, Qt::LeftButton);
    QTest::keyClicks(&host.edit, QStringLiteral("abc"));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(host.edit.text(), QStringLiteral("abc"));
}

void tst_KdWindowsApi::disablingTwiceIsUndoneByEnablingOnce()
{
    HostWindow host;
    host.setUsable(false);
    host.setUsable(false);
    QVERIFY(!KdWindowsApi::IsWindowsEnableApi(host.winId()));
    host.setUsable(true);
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(host.winId()));
}

void tst_KdWindowsApi::enablingAnEnabledWindowIsHarmless()
{
    HostWindow host;
    HostWindow other;
    other.setUsable(false);
    host.setUsable(true);
    host.setUsable(true);
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(host.winId()));
    QVERIFY(!KdWindowsApi::IsWindowsEnableApi(other.winId()));
    other.setUsable(true);
}

void tst_KdWindowsApi::dialogsOfTheWindowStayUsable()
{
    HostWindow host;
    showActive(host);
    QDialog dialog(&host);
    QPushButton button(&dialog);
    QSignalSpy clicked(&button, &QPushButton::clicked);
    host.setUsable(false);
    showActive(dialog);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 2);
    host.setUsable(true);
}

void tst_KdWindowsApi::otherWindowsStayUsable()
{
    HostWindow host;
    HostWindow other;
    showActive(other);
    QSignalSpy clicked(&other.button, &QPushButton::clicked);
    host.setUsable(false);
    QTest::mouseClick(&other.button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(other.winId()));
    host.setUsable(true);
}

void tst_KdWindowsApi::shortcutsOfTheWindowDoNotFire()
{
    HostWindow host;
    showActive(host);
    QShortcut shortcut(QKeySequence(QStringLiteral("Ctrl+J")), &host);
    QSignalSpy activated(&shortcut, &QShortcut::activated);
    QSignalSpy triggered(host.action, &QAction::triggered);
    const auto pressBoth = [&host] {
        QTest::keyClick(&host, Qt::Key_J, Qt::ControlModifier);
        QTest::keyClick(&host, Qt::Key_K, Qt::ControlModifier);
    };
    host.setUsable(false);
    pressBoth();
    QCOMPARE(activated.count() + triggered.count(), 0);
    host.setUsable(true);
    pressBoth();
    QCOMPARE(activated.count(), 1);
    QCOMPARE(triggered.count(), 1);
}

void tst_KdWindowsApi::applicationShortcutsOfTheWindowDoNotFireFromADialog()
{
    HostWindow host;
    showActive(host);
    host.action->setShortcutContext(Qt::ApplicationShortcut);
    QSignalSpy triggered(host.action, &QAction::triggered);
    QDialog dialog(&host);
    QShortcut own(QKeySequence(QStringLiteral("Ctrl+J")), &dialog);
    QSignalSpy activated(&own, &QShortcut::activated);
    showActive(dialog);
    host.setUsable(false);
    QTest::keyClick(&dialog, Qt::Key_K, Qt::ControlModifier);
    QTest::keyClick(&dialog, Qt::Key_J, Qt::ControlModifier);
    QCOMPARE(triggered.count(), 0);
    QCOMPARE(activated.count(), 1);
    host.setUsable(true);
}

void tst_KdWindowsApi::recordShortcutCanStillBeCaught()
{
    HostWindow host;
    showActive(host);
    EventCounter asked(&host, QEvent::ShortcutOverride);
    host.setUsable(false);
    QTest::keyClick(&host, Qt::Key_Space);
    QCOMPARE(asked.count, 1);
    host.setUsable(true);
}

void tst_KdWindowsApi::openMenuOfTheWindowIsDead()
{
    HostWindow host;
    showActive(host);
    QSignalSpy triggered(host.action, &QAction::triggered);
    host.menu->popup(host.mapToGlobal(QPoint(5, 5)));
    QVERIFY(QTest::qWaitForWindowExposed(host.menu));
    host.setUsable(false);
    QTest::mouseClick(host.menu, Qt::LeftButton, Qt::NoModifier,
                      host.menu->actionGeometry(host.action).center());
    QCOMPARE(triggered.count(), 0);
    host.setUsable(true);
    host.menu->close();
}

void tst_KdWindowsApi::userCannotCloseButTheProgramCan()
{
    HostWindow host;
    showActive(host);
    host.setUsable(false);
    QCloseEvent byUser;
    QSpontaneKeyEvent::setSpontaneous(&byUser);
    QCoreApplication::instance()->notify(&host, &byUser);
    QVERIFY(!byUser.isAccepted());
    QVERIFY(host.isVisible());
    QVERIFY(host.close());
    QVERIFY(!host.isVisible());
    host.setUsable(true);
}

void tst_KdWindowsApi::unknownWindowsDoNothing()
{
    for (const WId id : {WId(0), WId(123456789), ~WId(0)}) {
        KdWindowsApi::SetWindwosEnableApi(id, false);
        QVERIFY(KdWindowsApi::IsWindowsEnableApi(id));
        KdWindowsApi::SetWindwosEnableApi(id, true);
    }
}

void tst_KdWindowsApi::destroyedWindowIsForgotten()
{
    auto host = std::make_unique<HostWindow>();
    const WId id = host->winId();
    host->setUsable(false);
    host.reset();
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(id));
    HostWindow next;
    showActive(next);
    QSignalSpy clicked(&next.button, &QPushButton::clicked);
    QTest::mouseClick(&next.button, Qt::LeftButton);
    QCOMPARE(clicked.count(), 1);
}

void tst_KdWindowsApi::idIsThatOfTheWindowAlsoAfterItWasMadeAnew()
{
    HostWindow host;
    showActive(host);
    host.setUsable(false);
    host.setWindowFlag(Qt::FramelessWindowHint);
    host.show();
    QVERIFY(QTest::qWaitForWindowExposed(&host));
    QVERIFY(!KdWindowsApi::IsWindowsEnableApi(host.winId()));
    host.setUsable(true);
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(host.winId()));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWindowsApi>(argc, argv);
}

#include "tst_KdWindowsApi.moc"
