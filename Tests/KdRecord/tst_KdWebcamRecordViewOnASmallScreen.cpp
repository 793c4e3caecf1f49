#include "WebcamViewFixture.h"

#include <QScreen>

/** The dialog on a screen that is too small for it. */
class tst_KdWebcamRecordViewOnASmallScreen : public WebcamViewFixture
{
    Q_OBJECT

private Q_SLOTS:
    void fitsItsScreen();
};

void tst_KdWebcamRecordViewOnASmallScreen::fitsItsScreen()
{
    const QScreen* const screen = QGuiApplication::primaryScreen();
    QCOMPARE(screen->availableSize(), QSize(1280, 720));
    makeView();
    QCOMPARE(view->size(), QSize(800, 656));
    view->initDevices();
    view->show();
    QVERIFY(QTest::qWaitForWindowActive(view));
    // Nothing in it needs more room.
    QCOMPARE(view->size(), QSize(800, 656));
    for (const char* const name : {kStart, kOk, kCamera, kDisplay}) {
        const auto* const part = control<QWidget>(name);
        QVERIFY2(view->rect().contains(QRect(part->mapTo(view, QPoint()), part->size())), name);
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordViewOnASmallScreen>(argc, argv);
}

#include "tst_KdWebcamRecordViewOnASmallScreen.moc"
