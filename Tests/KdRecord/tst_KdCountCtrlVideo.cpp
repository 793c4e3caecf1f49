#include "CountCtrlTest.h"

#include <KdRecord/KdCountCtrlVideo.h>

#include <Support/KdTestCase.h>
#include <Support/PaintedPictures.h>

#include <QPainter>
#include <QPointer>
#include <QSet>
#include <QSignalSpy>
#include <QTimerEvent>

using CountCtrlTest::tick;

namespace {

constexpr int Side = 200;

class OpenCtrl : public KdCountCtrlVideo
{
public:
    using KdCountCtrlVideo::Finish;
    using KdCountCtrlVideo::KdCountCtrlVideo;

    void animate(int times, int timerId = -1)
    {
        for (int i = 0; i < times; ++i) {
            QTimerEvent event(timerId);
            timerEvent(&event);
        }
    }
};

/** Notes which timers fire, so that a running animation can be told from a stopped one. */
class TimerWatch : public QObject
{
public:
    int timerEvents = 0;
    QSet<int> timerIds;

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Timer) {
            ++timerEvents;
            timerIds.insert(static_cast<QTimerEvent*>(event)->timerId());
        }
        return false;
    }
};

/** What the control is to look like, painted without it. */
QImage painted(const QWidget& like, const QString& number, int degrees, const QPoint& ringCorner)
{
    const qreal ratio = like.devicePixelRatioF();
    QPixmap canvas(like.size() * ratio);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::transparent);
    const QPoint center((like.width() - 1) / 2, (like.height() - 1) / 2);
    QPainter painter(&canvas);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QRect(center.x() - 50, center.y() - 50, 100, 100));

    QFont font = like.font();
    font.setBold(true);
    font.setPixelSize(60);
    painter.setFont(font);
    painter.setPen(Qt::black);
    const QSize box = QFontMetrics(font).boundingRect(number).size();
    const QPoint corner(center.x() - (box.width() - 1) / 2, center.y() - (box.height() - 1) / 2);
    painter.drawText(QRect(corner, box), Qt::AlignCenter | Qt::TextDontClip, number);

    QTransform turn;
    turn.translate(center.x(), center.y()).rotate(degrees).translate(-center.x(), -center.y());
    painter.setTransform(turn, true);
    painter.drawPixmap(QRect(ringCorner, QSize(145, 145)),
                       QPixmap(QStringLiteral(":/Resource/icon145_Ellipse.png")));
    return canvas.toImage();
}

QImage paintedSquare(const QWidget& like, const QString& number, int degrees)
{
    return painted(like, number, degrees, QPoint(27, 27));
}

} // namespace

class tst_KdCountCtrlVideo : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void hasARingImage();
    void showsNumberAtEveryTick();
    void ringTurnsByTwelveDegreesAndComesRound();
    void ringFollowsTheShorterSide_data();
    void ringFollowsTheShorterSide();
    void isSharpOnEveryScreenItComesTo();
    void everyTimerEventTurnsTheRing();
    void startTurnsTheRingBack();
    void startAnimatesUntilAbort();
    void startTwiceAnimatesOnce();
    void finishSignalsAndStopsTheAnimation();
    void countOfZeroEndsAtTheFirstTick();
    void abortIsSilent();
    void addsNoSignals();
    void mayBeDestroyedFromSigFinish();
};

void tst_KdCountCtrlVideo::hasARingImage()
{
    QVERIFY(!QPixmap(QStringLiteral(":/Resource/icon145_Ellipse.png")).isNull());
}

void tst_KdCountCtrlVideo::showsNumberAtEveryTick()
{
    OpenCtrl ctrl;
    ctrl.resize(Side, Side);
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.Start();

    for (int elapsed = 0; elapsed < 60; ++elapsed) {
        const QString number = QString::number(3 - elapsed / 20);
        QVERIFY2(ctrl.grab().toImage() == paintedSquare(ctrl, number, 0),
                 qPrintable(QStringLiteral("tick %1").arg(elapsed)));
        QVERIFY(finished.isEmpty());
        tick(ctrl);
    }
    QCOMPARE(finished.count(), 1);
}

void tst_KdCountCtrlVideo::ringTurnsByTwelveDegreesAndComesRound()
{
    OpenCtrl ctrl;
    ctrl.resize(Side, Side);
    const QImage atRest = ctrl.grab().toImage();

    for (int step = 1; step < 30; ++step) {
        ctrl.animate(1);
        const QImage shown = ctrl.grab().toImage();
        QVERIFY2(shown == paintedSquare(ctrl, QStringLiteral("3"), step * 12),
                 qPrintable(QStringLiteral("step %1").arg(step)));
        QVERIFY(shown != atRest);
    }
    ctrl.animate(1);
    QCOMPARE(ctrl.grab().toImage(), atRest);
}

void tst_KdCountCtrlVideo::ringFollowsTheShorterSide_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("corner");

    QTest::newRow("as large as the image") << QSize(145, 145) << QPoint(0, 0);
    QTest::newRow("wide") << QSize(300, 165) << QPoint(10, 10);
    QTest::newRow("high") << QSize(185, 240) << QPoint(20, 20);
    QTest::newRow("smaller than the image") << QSize(125, 125) << QPoint(-10, -10);
}

void tst_KdCountCtrlVideo::ringFollowsTheShorterSide()
{
    QFETCH(QSize, size);
    QFETCH(QPoint, corner);
    OpenCtrl ctrl;
    ctrl.resize(size);
    ctrl.animate(3);

    QCOMPARE(ctrl.grab().toImage(), painted(ctrl, QStringLiteral("3"), 36, corner));
}

void tst_KdCountCtrlVideo::everyTimerEventTurnsTheRing()
{
    OpenCtrl ctrl;
    ctrl.resize(Side, Side);
    ctrl.animate(1, 0);
    ctrl.animate(1, 4711);

    QCOMPARE(ctrl.grab().toImage(), paintedSquare(ctrl, QStringLiteral("3"), 24));
}

void tst_KdCountCtrlVideo::startTurnsTheRingBack()
{
    OpenCtrl ctrl;
    ctrl.resize(Side, Side);
    ctrl.animate(7);
    ctrl.Start();

    QCOMPARE(ctrl.grab().toImage(), paintedSquare(ctrl, QStringLiteral("3"), 0));
}

void tst_KdCountCtrlVideo::startAnimatesUntilAbort()
{
    OpenCtrl ctrl;
    TimerWatch watch;
    ctrl.installEventFilter(&watch);
    ctrl.SetCount(1000);
    ctrl.Start();
    QVERIFY(ctrl.isActive());
    QTRY_VERIFY(watch.timerEvents >= 3);

    ctrl.Abort();
    QVERIFY(!ctrl.isActive());
    const int sofar = watch.timerEvents;
    QTimer other;
    QSignalSpy otherFired(&other, &QTimer::timeout);
    other.start(33);
    QTRY_VERIFY(otherFired.count() >= 3);
    QCOMPARE(watch.timerEvents, sofar);
}

void tst_KdCountCtrlVideo::startTwiceAnimatesOnce()
{
    OpenCtrl ctrl;
    TimerWatch watch;
    ctrl.installEventFilter(&watch);
    ctrl.SetCount(1000);
    ctrl.Start();
    ctrl.Start();

    QTRY_VERIFY(watch.timerEvents >= 4);
    QCOMPARE(watch.timerIds.size(), 1);
}

void tst_KdCountCtrlVideo::finishSignalsAndStopsTheAnimation()
{
    OpenCtrl ctrl;
    TimerWatch watch;
    ctrl.installEventFilter(&watch);
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.SetCount(0);
    ctrl.Start();

    QVERIFY(finished.wait());
    QVERIFY(!ctrl.isActive());
    const int sofar = watch.timerEvents;
    QTimer other;
    QSignalSpy otherFired(&other, &QTimer::timeout);
    other.start(33);
    QTRY_VERIFY(otherFired.count() >= 3);
    QCOMPARE(watch.timerEvents, sofar);
    QCOMPARE(finished.count(), 1);
}

void tst_KdCountCtrlVideo::countOfZeroEndsAtTheFirstTick()
{
    OpenCtrl ctrl;
    ctrl.resize(Side, Side);
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.SetCount(0);
    ctrl.Start();

    QCOMPARE(ctrl.grab().toImage(), paintedSquare(ctrl, QStringLiteral("0"), 0));
    tick(ctrl);
    QCOMPARE(finished.count(), 1);
    QVERIFY(!ctrl.isActive());
}

void tst_KdCountCtrlVideo::abortIsSilent()
{
    OpenCtrl ctrl;
    QSignalSpy finished(&ctrl, &KdCountCtrl::sigFinish);
    ctrl.Start();
    tick(ctrl, 5);
    ctrl.Abort();

    QVERIFY(finished.isEmpty());
    QVERIFY(!ctrl.isActive());
}

void tst_KdCountCtrlVideo::addsNoSignals()
{
    const QMetaObject& meta = KdCountCtrlVideo::staticMetaObject;
    QCOMPARE(meta.methodCount(), meta.methodOffset());
}

void tst_KdCountCtrlVideo::mayBeDestroyedFromSigFinish()
{
    const QPointer<KdCountCtrlVideo> ctrl = new KdCountCtrlVideo;
    connect(ctrl, &KdCountCtrl::sigFinish, this, [ctrl] { delete ctrl; });
    ctrl->SetCount(0);
    ctrl->Start();
    QTRY_VERIFY(!ctrl);
}

void tst_KdCountCtrlVideo::isSharpOnEveryScreenItComesTo()
{
    OpenCtrl ctrl;
    ctrl.resize(Side, Side);
    for (const int ratio : {1, 2, 1}) {
        const auto pictures = KdTest::paintedPictures(ctrl, ratio);
        QCOMPARE(pictures.size(), 1);
        QCOMPARE(pictures.first().picture.size(), QSize(145, 145) * ratio);
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdCountCtrlVideo>(argc, argv);
}

#include "tst_KdCountCtrlVideo.moc"
