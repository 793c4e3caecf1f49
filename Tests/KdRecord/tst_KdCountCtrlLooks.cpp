#include "CountCtrlTest.h"

#include <KdWidgets/KdSkinManager.h>

#include <Support/KdTestCase.h>

#include <QMetaProperty>
#include <QSignalSpy>

using namespace CountCtrlTest;

namespace {

class PaintCounter : public QObject
{
public:
    int paints = 0;

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace

/** What the countdown paints, and in which colours. */
class tst_KdCountCtrlLooks : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void showsNumberAndRingAtEveryTick_data();
    void showsNumberAndRingAtEveryTick();
    void paintsAtOnceOnEveryTick();
    void isASquareInTheMiddleOfTheWidget_data();
    void isASquareInTheMiddleOfTheWidget();
    void ringGrowsClockwiseFromTheTop();
    void aPaintedWidgetWithoutHeightIsFine();

    void coloursArePropertiesInOrder();
    void coloursComeFromTheStyleSheet();
    void groundComesFromTheStyleSheet();
    void skinSuppliesBothColours_data();
    void skinSuppliesBothColours();
    void coloursThatAreNoneAreBlack_data();
    void coloursThatAreNoneAreBlack();
    void settingAColourDoesNotRepaint();
};

void tst_KdCountCtrlLooks::showsNumberAndRingAtEveryTick_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("cycleWidth");
    QTest::addColumn<QRect>("ring");

    QTest::newRow("1 s") << 1 << 4 << QRect(2, 2, 68, 68);
    QTest::newRow("3 s") << 3 << 8 << QRect(4, 4, 64, 64);
    QTest::newRow("9 s, odd width") << 9 << 5 << QRect(2, 2, 68, 68);
    QTest::newRow("12 s, widest") << 12 << 20 << QRect(10, 10, 52, 52);
}

void tst_KdCountCtrlLooks::showsNumberAndRingAtEveryTick()
{
    QFETCH(int, count);
    QFETCH(int, cycleWidth);
    QFETCH(QRect, ring);
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    setColors(ctrl, QStringLiteral("#f1f3f5"), QStringLiteral("#4c9dff"));
    ctrl.SetCycleWidth(cycleWidth);
    ctrl.SetCount(count);
    ctrl.Start();
    const Look look{ring, cycleWidth, QColor(0xf1, 0xf3, 0xf5), QColor(0x4c, 0x9d, 0xff)};
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);

    QImage former;
    for (int elapsed = 0; elapsed < count * 20; ++elapsed) {
        const QImage shown = ctrl.grab().toImage();
        const QString number = QString::number(count - elapsed / 20);
        const QImage expected = painted(ctrl, number, elapsed * 288 / count, look);
        QVERIFY2(shown == expected, qPrintable(QStringLiteral("tick %1").arg(elapsed)));
        QVERIFY2(shown != former, qPrintable(QStringLiteral("nothing new at %1").arg(elapsed)));
        former = shown;
        QVERIFY(finished.isEmpty());
        tick(ctrl);
    }
    QCOMPARE(finished.count(), 1);
    QVERIFY(!ctrl.isActive());
}

void tst_KdCountCtrlLooks::paintsAtOnceOnEveryTick()
{
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    ctrl.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ctrl));
    PaintCounter counter;
    ctrl.installEventFilter(&counter);

    tick(ctrl, 59);
    QCOMPARE(counter.paints, 59);
}

void tst_KdCountCtrlLooks::isASquareInTheMiddleOfTheWidget_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("ring");

    QTest::newRow("square") << QSize(66, 66) << QRect(4, 4, 58, 58);
    QTest::newRow("wide") << QSize(100, 60) << QRect(24, 4, 52, 52);
    QTest::newRow("wide, odd rest") << QSize(101, 60) << QRect(24, 4, 52, 52);
    QTest::newRow("high") << QSize(60, 100) << QRect(4, 24, 52, 52);
    QTest::newRow("high, odd rest") << QSize(60, 103) << QRect(4, 25, 52, 52);
}

void tst_KdCountCtrlLooks::isASquareInTheMiddleOfTheWidget()
{
    QFETCH(QSize, size);
    QFETCH(QRect, ring);
    KdCountCtrl ctrl;
    ctrl.resize(size);
    setColors(ctrl, QStringLiteral("red"), QStringLiteral("blue"));
    tick(ctrl, 30);

    QCOMPARE(ctrl.grab().toImage(),
             painted(ctrl, QStringLiteral("2"), 2880, {ring, 8, Qt::red, Qt::blue}));
}

void tst_KdCountCtrlLooks::ringGrowsClockwiseFromTheTop()
{
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    setColors(ctrl, QStringLiteral("transparent"), QStringLiteral("#ff0000"));
    const auto quarters = [&ctrl] {
        const QImage shown = ctrl.grab().toImage();
        const auto isRed = [&shown](int x, int y) { return shown.pixelColor(x, y) == Qt::red; };
        return QVector<bool>{isRed(59, 13), isRed(59, 59), isRed(13, 59), isRed(13, 13)};
    };

    QCOMPARE(quarters(), QVector<bool>({false, false, false, false}));
    tick(ctrl, 15);
    QCOMPARE(quarters(), QVector<bool>({true, false, false, false}));
    tick(ctrl, 15);
    QCOMPARE(quarters(), QVector<bool>({true, true, false, false}));
    tick(ctrl, 15);
    QCOMPARE(quarters(), QVector<bool>({true, true, true, false}));
    tick(ctrl, 15);
    QCOMPARE(quarters(), QVector<bool>({true, true, true, true}));
}

void tst_KdCountCtrlLooks::aPaintedWidgetWithoutHeightIsFine()
{
    KdCountCtrl ctrl;
    ctrl.resize(40, 1);
    QVERIFY(!ctrl.grab().isNull());
}

void tst_KdCountCtrlLooks::coloursArePropertiesInOrder()
{
    const QMetaObject& meta = KdCountCtrl::staticMetaObject;
    const int first = meta.propertyOffset();
    QCOMPARE(meta.propertyCount() - first, 2);
    QCOMPARE(meta.property(first).name(), "m_CycleColor");
    QCOMPARE(meta.property(first + 1).name(), "m_TextColor");

    KdCountCtrl ctrl;
    ctrl.setStyleSheet(QString());
    ctrl.setProperty("m_CycleColor", QStringLiteral("tomato"));
    ctrl.setProperty("m_TextColor", QStringLiteral("#123456"));
    QCOMPARE(ctrl.GetCycleColor(), QStringLiteral("tomato"));
    QCOMPARE(ctrl.GetTextColor(), QStringLiteral("#123456"));
}

void tst_KdCountCtrlLooks::coloursComeFromTheStyleSheet()
{
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    ctrl.setStyleSheet(QStringLiteral("KdCountCtrl { qproperty-m_CycleColor: \"#00ff00\";"
                                      " qproperty-m_TextColor: \"#0000ff\"; }"));
    tick(ctrl, 30);

    QCOMPARE(ctrl.grab().toImage(), painted(ctrl, QStringLiteral("2"), 2880,
                                            {QRect(4, 4, 64, 64), 8, Qt::blue, Qt::green}));
}

void tst_KdCountCtrlLooks::groundComesFromTheStyleSheet()
{
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    ctrl.setStyleSheet(QStringLiteral("KdCountCtrl { background: #123456; border-radius: 36px; }"));
    const QImage shown = ctrl.grab().toImage();

    QCOMPARE(shown.pixelColor(36, 12), QColor(0x12, 0x34, 0x56));
    QCOMPARE(shown.pixelColor(2, 2).alpha(), 0);
}

void tst_KdCountCtrlLooks::skinSuppliesBothColours_data()
{
    QTest::addColumn<QString>("skin");

    QTest::newRow("dark") << QStringLiteral("dark");
    QTest::newRow("light") << QStringLiteral("light");
}

void tst_KdCountCtrlLooks::skinSuppliesBothColours()
{
    QFETCH(QString, skin);
    auto* const manager = KdSkin::KdSkinManager::instance();
    const QString former = manager->skin();
    KdCountCtrl ctrl;
    QVERIFY(manager->setSkin(skin));
    ctrl.ensurePolished();
    const QString text = ctrl.GetTextColor();
    const QString cycle = ctrl.GetCycleColor();
    manager->setSkin(former);

    QVERIFY2(QColor::isValidColor(text), qPrintable(text));
    QVERIFY2(QColor::isValidColor(cycle), qPrintable(cycle));
}

void tst_KdCountCtrlLooks::coloursThatAreNoneAreBlack_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("unknown name") << QStringLiteral("no such colour");
    QTest::newRow("half a number") << QStringLiteral("#12");
}

void tst_KdCountCtrlLooks::coloursThatAreNoneAreBlack()
{
    QFETCH(QString, name);
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    setColors(ctrl, name, name);
    tick(ctrl, 30);

    QCOMPARE(ctrl.grab().toImage(), painted(ctrl, QStringLiteral("2"), 2880,
                                            {QRect(4, 4, 64, 64), 8, Qt::black, Qt::black}));
}

void tst_KdCountCtrlLooks::settingAColourDoesNotRepaint()
{
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    ctrl.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ctrl));
    QCoreApplication::processEvents();
    PaintCounter counter;
    ctrl.installEventFilter(&counter);

    ctrl.SetTextColor(QStringLiteral("red"));
    ctrl.SetCycleColor(QStringLiteral("red"));
    QCoreApplication::processEvents();
    QCOMPARE(counter.paints, 0);

    ctrl.SetCycleWidth(3);
    QTRY_COMPARE(counter.paints, 1);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCountCtrlLooks>(argc, argv);
}

#include "tst_KdCountCtrlLooks.moc"
