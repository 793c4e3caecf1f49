#include <KdRecord/KdOverlayPlace.h>
#include <Support/KdTestCase.h>

#include <QMoveEvent>
#include <QWidget>

class tst_KdOverlayPlace : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void overlayStandsOverTheMiddle();
    void overlayComesBackWhenItIsMovedAway();
    void windowSystemThatInsistsIsLetBe();

private:
    static bool isCentred(const QWidget& overlay, const QWidget& below)
    {
        const QPoint middle = below.mapToGlobal(below.rect().center());
        return (overlay.geometry().center() - middle).manhattanLength() <= 2;
    }
};

void tst_KdOverlayPlace::overlayStandsOverTheMiddle()
{
    QWidget window;
    window.setGeometry(100, 80, 400, 300);
    QWidget below(&window);
    below.setGeometry(50, 40, 200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* const overlay = new QWidget(&window, Qt::Tool | Qt::FramelessWindowHint);
    overlay->setFixedSize(60, 60);
    auto* const place = new KdOverlayPlace(overlay, &below);
    QVERIFY(!overlay->isVisible());
    place->show();
    QVERIFY(overlay->isVisible());
    QTRY_VERIFY(isCentred(*overlay, below));
    below.move(150, 120);
    place->place();
    QTRY_VERIFY(isCentred(*overlay, below));
}

void tst_KdOverlayPlace::overlayComesBackWhenItIsMovedAway()
{
    QWidget window;
    window.setGeometry(100, 80, 400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* const overlay = new QWidget(&window, Qt::Tool | Qt::FramelessWindowHint);
    overlay->setFixedSize(60, 60);
    auto* const place = new KdOverlayPlace(overlay, &window);
    place->show();
    QTRY_VERIFY(isCentred(*overlay, window));
    overlay->move(0, 0);
    QTRY_VERIFY(isCentred(*overlay, window));
}

void tst_KdOverlayPlace::windowSystemThatInsistsIsLetBe()
{
    // Offscreen there is no one else to move it, so that the moves can be counted.
    QWidget below;
    below.setGeometry(100, 100, 200, 200);
    QWidget overlay;
    overlay.setFixedSize(60, 60);
    KdOverlayPlace place(&overlay, &below);
    overlay.setAttribute(Qt::WA_DontShowOnScreen);
    place.show();
    int comebacks = 0;
    for (int i = 0; i < 20; ++i) {
        overlay.move(0, 0);
        QMoveEvent moved(QPoint(0, 0), QPoint(1, 1));
        QApplication::sendEvent(&overlay, &moved);
        QCoreApplication::processEvents();
        comebacks += overlay.pos() == QPoint(0, 0) ? 0 : 1;
    }
    QVERIFY2(comebacks > 0 && comebacks <= 5, qPrintable(QString::number(comebacks)));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdOverlayPlace>(argc, argv);
}

#include "tst_KdOverlayPlace.moc"
