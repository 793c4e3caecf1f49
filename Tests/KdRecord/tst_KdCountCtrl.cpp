#include "CountCtrlTest.h"

#include <Support/KdTestCase.h>

#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <limits>

using namespace CountCtrlTest;

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

} // namespace

/** How the countdown counts, ends and answers the mouse. */
class tst_KdCountCtrl : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void isAFramelessToolWindowThatLetsTheMouseThrough();
    void doesNotTakeTheKeyboard();

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
