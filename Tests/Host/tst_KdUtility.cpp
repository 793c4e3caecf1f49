#include <KdZentraCore/KdUtility.h>
#include <Support/KdTestCase.h>

#include <QScreen>

class tst_KdUtility : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void mainWindowIsWhatTheHostSet();
    void destroyedMainWindowIsForgotten();
    void shownWindowIsCentredWithItsFrame();
    void hiddenWindowIsCentredBeforeItIsShown();
    void tooLargeWindowKeepsItsTitleBarOnTheScreen();
    void onlyWindowsAreMoved();
    void productHasAName();
};

void tst_KdUtility::mainWindowIsWhatTheHostSet()
{
    QCOMPARE(KdUtility::gGetMainWindow(), nullptr);
    QWidget window;
    KdUtility::gSetMainWindow(&window);
    QCOMPARE(KdUtility::gGetMainWindow(), &window);
    KdUtility::gSetMainWindow(nullptr);
    QCOMPARE(KdUtility::gGetMainWindow(), nullptr);
}

void tst_KdUtility::destroyedMainWindowIsForgotten()
{
    {
        QWidget window;
        KdUtility::gSetMainWindow(&window);
    }
    QCOMPARE(KdUtility::gGetMainWindow(), nullptr);
}

void tst_KdUtility::shownWindowIsCentredWithItsFrame()
{
    QWidget window;
    window.resize(300, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.move(10, 20);
    const QPoint centre = window.screen()->availableGeometry().center();
    KdUtility::moveWidgetToCenter(&window);
    QTRY_VERIFY2((window.frameGeometry().center() - centre).manhattanLength() <= 2,
                 qPrintable(QStringLiteral("%1,%2").arg(window.x()).arg(window.y())));
}

void tst_KdUtility::hiddenWindowIsCentredBeforeItIsShown()
{
    QWidget window;
    window.resize(301, 201);
    KdUtility::moveWidgetToCenter(&window);
    QCOMPARE(window.geometry().center(), window.screen()->availableGeometry().center());
}

void tst_KdUtility::tooLargeWindowKeepsItsTitleBarOnTheScreen()
{
    QWidget window;
    const QRect available = window.screen()->availableGeometry();
    window.resize(available.size() * 2);
    KdUtility::moveWidgetToCenter(&window);
    QCOMPARE(window.pos(), available.topLeft());
}

void tst_KdUtility::onlyWindowsAreMoved()
{
    QWidget window;
    QWidget child(&window);
    child.move(3, 4);
    KdUtility::moveWidgetToCenter(&child);
    KdUtility::moveWidgetToCenter(nullptr);
    QCOMPARE(child.pos(), QPoint(3, 4));
}

void tst_KdUtility::productHasAName()
{
    QCOMPARE(KdUtility::gGetProductName(), QStringLiteral("KdRecord Studio"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdUtility>(argc, argv);
}

#include "tst_KdUtility.moc"
