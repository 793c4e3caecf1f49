#include <KdRecord/KdCountCtrl.h>
#include <KdWidgets/KdSkinManager.h>

#include <Support/KdTestCase.h>

#include <QMetaProperty>
#include <QPainter>
#include <QPointer>
#include <QSignalSpy>

#include <limits>

namespace {

/** Reaches what a host that derives from the control reaches. */
class DerivedCtrl : public KdCountCtrl
{
public:
    using KdCountCtrl::cycleWidth;
    using KdCountCtrl::KdCountCtrl;
    using KdCountCtrl::remainingSeconds;

    int finishes = 0;

protected:
    void Finish() override
    {
        ++finishes;
        KdCountCtrl::Finish();
    }
};

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

QTimer* timerOf(KdCountCtrl& ctrl)
{
    return ctrl.findChild<QTimer*>(QStringLiteral("KdCountCtrl_Timer"));
}

void tick(KdCountCtrl& ctrl, int times = 1)
{
    QTimer* const timer = timerOf(ctrl);
    for (int i = 0; i < times; ++i) {
        QMetaObject::invokeMethod(timer, "timeout");
    }
}

struct Look
{
    QRect ring;
    int cycleWidth = 8;
    QColor text = Qt::black;
    QColor cycle = Qt::black;
};

/** What the control is to look like, painted without it. */
QImage painted(const QWidget& like, const QString& number, int sixteenths, const Look& look)
{
    const qreal ratio = like.devicePixelRatioF();
    QPixmap canvas(like.size() * ratio);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = like.font();
    font.setBold(true);
    font.setPixelSize(like.height() / 2);
    painter.setFont(font);
    painter.setPen(look.text);
    painter.drawText(look.ring, Qt::AlignHCenter | Qt::AlignVCenter, number);
    painter.setPen(QPen(look.cycle, look.cycleWidth));
    painter.drawArc(look.ring, 1440, -sixteenths);
    painter.end();
    return canvas.toImage();
}

void setColors(KdCountCtrl& ctrl, const QString& text, const QString& cycle)
{
    // Its colours would come after ours, its ground below what is compared.
    ctrl.setStyleSheet(QString());
    ctrl.SetTextColor(text);
    ctrl.SetCycleColor(cycle);
}

} // namespace

class tst_KdCountCtrl : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void isAFramelessToolWindowThatLetsTheMouseThrough();
    void doesNotTakeTheKeyboard();
    void showsNumberAndRingAtEveryTick_data();
    void showsNumberAndRingAtEveryTick();
    void paintsAtOnceOnEveryTick();
    void isASquareInTheMiddleOfTheWidget_data();
    void isASquareInTheMiddleOfTheWidget();
    void ringGrowsClockwiseFromTheTop();
    void aPaintedWidgetWithoutHeightIsFine();

    void ticksEveryFiftyMilliseconds();
    void countOfZeroEndsAtTheFirstTick();
    void countOfZeroRunsOutByItsOwnTimer();
    void negativeCountIsThree();
    void hugeCountRunsWithoutOverflow();
    void startedTwiceGoesOnAndThenEndsAtTheNextTick();
    void startWhileRunningKeepsTheTick();
    void setCountIsTheOnlyReset();
    void abortIsSilent();
    void finishIsCalledVirtually();
    void ringWidthIsClamped_data();
    void ringWidthIsClamped();

    void coloursArePropertiesInOrder();
    void coloursComeFromTheStyleSheet();
    void groundComesFromTheStyleSheet();
    void skinSuppliesBothColours_data();
    void skinSuppliesBothColours();
    void coloursThatAreNoneAreBlack_data();
    void coloursThatAreNoneAreBlack();
    void settingAColourDoesNotRepaint();

    void pressReportsTheGlobalPosition();
    void pressFromTheWindowSystemArrivesAlthoughTheMouseIsLetThrough();
    void mayBeDestroyedFromItsSignals_data();
    void mayBeDestroyedFromItsSignals();
};

void tst_KdCountCtrl::isAFramelessToolWindowThatLetsTheMouseThrough()
{
    QWidget parent;
    KdCountCtrl ctrl(&parent);

    QVERIFY(ctrl.isWindow());
    QCOMPARE(ctrl.windowType(), Qt::Tool);
    QVERIFY(ctrl.windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(ctrl.testAttribute(Qt::WA_TransparentForMouseEvents));
    QVERIFY(ctrl.testAttribute(Qt::WA_TranslucentBackground));
    QVERIFY(ctrl.text().isEmpty());
    QVERIFY(!ctrl.isActive());
}

void tst_KdCountCtrl::doesNotTakeTheKeyboard()
{
    QWidget parent;
    parent.resize(200, 200);
    parent.show();
    parent.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&parent));
    KdCountCtrl ctrl(&parent);
    ctrl.setGeometry(parent.x() + 20, parent.y() + 20, 72, 72);
    ctrl.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ctrl));

    QCOMPARE(QApplication::activeWindow(), &parent);
}

void tst_KdCountCtrl::showsNumberAndRingAtEveryTick_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("cycleWidth");
    QTest::addColumn<QRect>("ring");

    QTest::newRow("1 s") << 1 << 4 << QRect(2, 2, 68, 68);
    QTest::newRow("3 s") << 3 << 8 << QRect(4, 4, 64, 64);
    QTest::newRow("9 s, odd width") << 9 << 5 << QRect(2, 2, 68, 68);
    QTest::newRow("12 s, widest") << 12 << 20 << QRect(10, 10, 52, 52);
}

void tst_KdCountCtrl::showsNumberAndRingAtEveryTick()
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

void tst_KdCountCtrl::paintsAtOnceOnEveryTick()
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

void tst_KdCountCtrl::isASquareInTheMiddleOfTheWidget_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("ring");

    QTest::newRow("square") << QSize(66, 66) << QRect(4, 4, 58, 58);
    QTest::newRow("wide") << QSize(100, 60) << QRect(24, 4, 52, 52);
    QTest::newRow("wide, odd rest") << QSize(101, 60) << QRect(24, 4, 52, 52);
    QTest::newRow("high") << QSize(60, 100) << QRect(4, 24, 52, 52);
    QTest::newRow("high, odd rest") << QSize(60, 103) << QRect(4, 25, 52, 52);
}

void tst_KdCountCtrl::isASquareInTheMiddleOfTheWidget()
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

void tst_KdCountCtrl::ringGrowsClockwiseFromTheTop()
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

void tst_KdCountCtrl::aPaintedWidgetWithoutHeightIsFine()
{
    KdCountCtrl ctrl;
    ctrl.resize(40, 1);
    QVERIFY(!ctrl.grab().isNull());
}

void tst_KdCountCtrl::ticksEveryFiftyMilliseconds()
{
    KdCountCtrl ctrl;
    ctrl.Start();

    QVERIFY(ctrl.isActive());
    QCOMPARE(timerOf(ctrl)->interval(), 50);
    QVERIFY(!timerOf(ctrl)->isSingleShot());
}

void tst_KdCountCtrl::countOfZeroEndsAtTheFirstTick()
{
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    setColors(ctrl, QStringLiteral("red"), QStringLiteral("blue"));
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.SetCount(0);
    ctrl.Start();

    QCOMPARE(ctrl.grab().toImage(),
             painted(ctrl, QStringLiteral("0"), 0, {QRect(4, 4, 64, 64), 8, Qt::red, Qt::blue}));
    QVERIFY(finished.isEmpty());
    tick(ctrl);
    QCOMPARE(finished.count(), 1);
    QVERIFY(!ctrl.isActive());
}

void tst_KdCountCtrl::countOfZeroRunsOutByItsOwnTimer()
{
    KdCountCtrl ctrl;
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.SetCount(0);
    ctrl.Start();

    QVERIFY(finished.wait());
    QVERIFY(!ctrl.isActive());
}

void tst_KdCountCtrl::negativeCountIsThree()
{
    DerivedCtrl ctrl;
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.SetCount(-5);
    ctrl.Start();

    QCOMPARE(ctrl.remainingSeconds(), 3);
    tick(ctrl, 59);
    QVERIFY(finished.isEmpty());
    tick(ctrl);
    QCOMPARE(finished.count(), 1);
}

void tst_KdCountCtrl::hugeCountRunsWithoutOverflow()
{
    DerivedCtrl ctrl;
    ctrl.resize(72, 72);
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.SetCount(std::numeric_limits<int>::max());
    ctrl.Start();
    tick(ctrl, 20);

    QCOMPARE(ctrl.remainingSeconds(), std::numeric_limits<int>::max() - 1);
    QVERIFY(!ctrl.grab().isNull());
    QVERIFY(ctrl.isActive());
    QVERIFY(finished.isEmpty());
}

void tst_KdCountCtrl::startedTwiceGoesOnAndThenEndsAtTheNextTick()
{
    DerivedCtrl ctrl;
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.SetCount(1);
    ctrl.Start();
    tick(ctrl, 20);
    QCOMPARE(finished.count(), 1);

    ctrl.Start();
    QVERIFY(ctrl.isActive());
    QCOMPARE(finished.count(), 1);
    tick(ctrl);
    QCOMPARE(finished.count(), 2);
    QVERIFY(!ctrl.isActive());
}

void tst_KdCountCtrl::startWhileRunningKeepsTheTick()
{
    DerivedCtrl ctrl;
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.Start();
    tick(ctrl, 40);
    ctrl.Start();

    QCOMPARE(ctrl.remainingSeconds(), 1);
    tick(ctrl, 19);
    QVERIFY(finished.isEmpty());
    tick(ctrl);
    QCOMPARE(finished.count(), 1);
}

void tst_KdCountCtrl::setCountIsTheOnlyReset()
{
    DerivedCtrl ctrl;
    ctrl.SetCount(5);
    ctrl.Start();
    tick(ctrl, 45);
    ctrl.Abort();
    QCOMPARE(ctrl.remainingSeconds(), 3);
    ctrl.Start();
    QCOMPARE(ctrl.remainingSeconds(), 3);

    ctrl.SetCount(5);
    QCOMPARE(ctrl.remainingSeconds(), 5);
    QVERIFY(ctrl.isActive());
}

void tst_KdCountCtrl::abortIsSilent()
{
    DerivedCtrl ctrl;
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    QSignalSpy pressed(&ctrl, &KdCountCtrl::sigPressed);
    ctrl.Start();
    tick(ctrl, 10);
    ctrl.Abort();

    QVERIFY(!ctrl.isActive());
    QVERIFY(finished.isEmpty());
    QVERIFY(pressed.isEmpty());
    QCOMPARE(ctrl.finishes, 0);
}

void tst_KdCountCtrl::finishIsCalledVirtually()
{
    DerivedCtrl ctrl;
    ctrl.Start();
    tick(ctrl, 60);
    QCOMPARE(ctrl.finishes, 1);
}

void tst_KdCountCtrl::ringWidthIsClamped_data()
{
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("width");

    QTest::newRow("0") << 0 << 1;
    QTest::newRow("-7") << -7 << 1;
    QTest::newRow("1") << 1 << 1;
    QTest::newRow("4") << 4 << 4;
    QTest::newRow("20") << 20 << 20;
    QTest::newRow("50") << 50 << 20;
}

void tst_KdCountCtrl::ringWidthIsClamped()
{
    QFETCH(int, asked);
    QFETCH(int, width);
    DerivedCtrl ctrl;
    QCOMPARE(ctrl.cycleWidth(), 8);
    ctrl.SetCycleWidth(asked);
    QCOMPARE(ctrl.cycleWidth(), width);
}

void tst_KdCountCtrl::coloursArePropertiesInOrder()
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

void tst_KdCountCtrl::coloursComeFromTheStyleSheet()
{
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    ctrl.setStyleSheet(QStringLiteral("KdCountCtrl { qproperty-m_CycleColor: \"#00ff00\";"
                                      " qproperty-m_TextColor: \"#0000ff\"; }"));
    tick(ctrl, 30);

    QCOMPARE(ctrl.grab().toImage(), painted(ctrl, QStringLiteral("2"), 2880,
                                            {QRect(4, 4, 64, 64), 8, Qt::blue, Qt::green}));
}

void tst_KdCountCtrl::groundComesFromTheStyleSheet()
{
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    ctrl.setStyleSheet(QStringLiteral("KdCountCtrl { background: #123456; border-radius: 36px; }"));
    const QImage shown = ctrl.grab().toImage();

    QCOMPARE(shown.pixelColor(36, 12), QColor(0x12, 0x34, 0x56));
    QCOMPARE(shown.pixelColor(2, 2).alpha(), 0);
}

void tst_KdCountCtrl::skinSuppliesBothColours_data()
{
    QTest::addColumn<QString>("skin");

    QTest::newRow("dark") << QStringLiteral("dark");
    QTest::newRow("light") << QStringLiteral("light");
}

void tst_KdCountCtrl::skinSuppliesBothColours()
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

void tst_KdCountCtrl::coloursThatAreNoneAreBlack_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QStringLiteral("");
    QTest::newRow("unknown name") << QStringLiteral("no such colour");
    QTest::newRow("half a number") << QStringLiteral("#12");
}

void tst_KdCountCtrl::coloursThatAreNoneAreBlack()
{
    QFETCH(QString, name);
    KdCountCtrl ctrl;
    ctrl.resize(72, 72);
    setColors(ctrl, name, name);
    tick(ctrl, 30);

    QCOMPARE(ctrl.grab().toImage(), painted(ctrl, QStringLiteral("2"), 2880,
                                            {QRect(4, 4, 64, 64), 8, Qt::black, Qt::black}));
}

void tst_KdCountCtrl::settingAColourDoesNotRepaint()
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

void tst_KdCountCtrl::pressReportsTheGlobalPosition()
{
    KdCountCtrl ctrl;
    ctrl.setGeometry(300, 200, 72, 72);
    ctrl.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ctrl));
    QSignalSpy pressed(&ctrl, &KdCountCtrl::sigPressed);

    QTest::mousePress(&ctrl, Qt::LeftButton, Qt::NoModifier, QPoint(11, 13));
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(pressed.at(0).at(0).toPoint(), ctrl.mapToGlobal(QPoint(11, 13)));
}

void tst_KdCountCtrl::pressFromTheWindowSystemArrivesAlthoughTheMouseIsLetThrough()
{
    KdCountCtrl ctrl;
    ctrl.setGeometry(350, 250, 72, 72);
    ctrl.show();
    QVERIFY(QTest::qWaitForWindowExposed(&ctrl));
    QSignalSpy pressed(&ctrl, &KdCountCtrl::sigPressed);

    QTest::mousePress(ctrl.windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(11, 13));
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(pressed.at(0).at(0).toPoint(), ctrl.mapToGlobal(QPoint(11, 13)));
}

void tst_KdCountCtrl::mayBeDestroyedFromItsSignals_data()
{
    QTest::addColumn<bool>("byPress");

    QTest::newRow("sigFinish") << false;
    QTest::newRow("sigPressed") << true;
}

void tst_KdCountCtrl::mayBeDestroyedFromItsSignals()
{
    QFETCH(bool, byPress);
    const QPointer<KdCountCtrl> ctrl = new KdCountCtrl;
    ctrl->resize(72, 72);
    connect(ctrl, &KdCountCtrl::sigFinish, this, [ctrl] { delete ctrl; });
    connect(ctrl, &KdCountCtrl::sigPressed, this, [ctrl] { delete ctrl; });
    if (byPress) {
        QTest::mousePress(ctrl, Qt::LeftButton);
    } else {
        ctrl->SetCount(0);
        ctrl->Start();
        QTRY_VERIFY(!ctrl);
    }
    QVERIFY(!ctrl);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCountCtrl>(argc, argv);
}

#include "tst_KdCountCtrl.moc"
