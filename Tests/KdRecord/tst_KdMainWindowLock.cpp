#include "Support/KdTestCase.h"

#include <KdRecord/KdMainWindowLock.h>
#include <KdZentraCore/KdUtility.h>
#include <KdZentraCore/KdWindowsApi.h>

#include <QWidget>

class tst_KdMainWindowLock : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void windowIsLockedUntilItIsUnlocked();
    void goingAwayUnlocks();
    void unlockingWhatWasNeverLockedEnablesTheWindow();
    void hostWithoutMainWindowIsFine();
    void mainWindowDestroyedWhileLockedIsFine();
    void windowThatWasLockedIsUnlockedThoughAnotherOneIsMainNow();

protected Q_SLOTS:
    void cleanup();
};

void tst_KdMainWindowLock::cleanup()
{
    KdUtility::gSetMainWindow(nullptr);
    KdTestCase::cleanup();
}

void tst_KdMainWindowLock::windowIsLockedUntilItIsUnlocked()
{
    QWidget window;
    KdUtility::gSetMainWindow(&window);
    KdMainWindowLock lock;
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(window.winId()));
    lock.setLocked(true);
    lock.setLocked(true);
    QVERIFY(!KdWindowsApi::IsWindowsEnableApi(window.winId()));
    lock.setLocked(false);
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(window.winId()));
}

void tst_KdMainWindowLock::goingAwayUnlocks()
{
    QWidget window;
    KdUtility::gSetMainWindow(&window);
    {
        KdMainWindowLock lock;
        lock.setLocked(true);
    }
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(window.winId()));
}

void tst_KdMainWindowLock::unlockingWhatWasNeverLockedEnablesTheWindow()
{
    QWidget window;
    KdUtility::gSetMainWindow(&window);
    KdWindowsApi::SetWindwosEnableApi(window.winId(), false);
    KdMainWindowLock lock;
    lock.setLocked(false);
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(window.winId()));
}

void tst_KdMainWindowLock::hostWithoutMainWindowIsFine()
{
    QVERIFY(!KdUtility::gGetMainWindow());
    KdMainWindowLock lock;
    lock.setLocked(true);
    lock.setLocked(false);
}

void tst_KdMainWindowLock::mainWindowDestroyedWhileLockedIsFine()
{
    KdMainWindowLock lock;
    {
        QWidget window;
        KdUtility::gSetMainWindow(&window);
        lock.setLocked(true);
    }
    lock.setLocked(false);
    lock.setLocked(true);
}

void tst_KdMainWindowLock::windowThatWasLockedIsUnlockedThoughAnotherOneIsMainNow()
{
    QWidget former;
    QWidget later;
    KdUtility::gSetMainWindow(&former);
    KdMainWindowLock lock;
    lock.setLocked(true);
    KdUtility::gSetMainWindow(&later);
    lock.setLocked(false);
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(former.winId()));
    QVERIFY(KdWindowsApi::IsWindowsEnableApi(later.winId()));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdMainWindowLock>(argc, argv);
}

#include "tst_KdMainWindowLock.moc"
