#include <KdWidgets/KdBubble.h>
#include <Support/KdTestCase.h>

class tst_KdBubble : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void pointsAtItsTarget_data();
    void pointsAtItsTarget();
    void keepsToTheArea_data();
    void keepsToTheArea();
    void changesItsEdgeOnlyWhereTheOtherHasRoom_data();
    void changesItsEdgeOnlyWhereTheOtherHasRoom();
    void arrowBelongsToTheOutline_data();
    void arrowBelongsToTheOutline();
};

namespace {
const QRect kArea(0, 0, 1000, 800);
const QSize kSize(200, 100);
} // namespace

void tst_KdBubble::pointsAtItsTarget_data()
{
    QTest::addColumn<QPoint>("target");
    QTest::addColumn<bool>("down");
    QTest::addColumn<int>("inset");

    for (const bool down : {false, true}) {
        for (const int inset : {-1, 0, 24, 500}) {
            for (const int x : {0, 3, 500, 997, 999}) {
                for (const int y : {0, 400, 799}) {
                    QTest::addRow("%d,%d %s inset %d", x, y, down ? "down" : "up", inset)
                        << QPoint(x, y) << down << inset;
                }
            }
        }
    }
}

void tst_KdBubble::pointsAtItsTarget()
{
    QFETCH(QPoint, target);
    QFETCH(bool, down);
    QFETCH(int, inset);
    const KdBubble bubble = KdBubble::placed(kSize, target, down, inset, kArea);
    QCOMPARE(bubble.point(), target);
    QCOMPARE(bubble.geometry.size(), kSize);
    QVERIFY(bubble.arrowX >= KdBubble::kArrow && bubble.arrowX <= 200 - KdBubble::kArrow);
}

void tst_KdBubble::keepsToTheArea_data()
{
    QTest::addColumn<QPoint>("target");

    QTest::newRow("middle") << QPoint(500, 400);
    QTest::newRow("left edge") << QPoint(14, 400);
    QTest::newRow("right edge") << QPoint(986, 400);
    QTest::newRow("upper edge") << QPoint(500, 0);
    QTest::newRow("lower edge") << QPoint(500, 800);
    QTest::newRow("corner") << QPoint(986, 795);
}

void tst_KdBubble::keepsToTheArea()
{
    QFETCH(QPoint, target);
    for (const bool down : {false, true}) {
        const KdBubble bubble = KdBubble::placed(kSize, target, down, -1, kArea);
        QVERIFY(kArea.contains(bubble.geometry));
    }
}

void tst_KdBubble::changesItsEdgeOnlyWhereTheOtherHasRoom_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("areaHeight");
    QTest::addColumn<bool>("wanted");
    QTest::addColumn<bool>("got");

    QTest::newRow("room below") << 400 << 800 << false << false;
    QTest::newRow("room above") << 400 << 800 << true << true;
    QTest::newRow("no room below") << 750 << 800 << false << true;
    QTest::newRow("no room above") << 50 << 800 << true << false;
    QTest::newRow("just enough below") << 700 << 800 << false << false;
    QTest::newRow("no room at all") << 40 << 80 << false << false;
    QTest::newRow("no room at all, downwards") << 40 << 80 << true << true;
}

void tst_KdBubble::changesItsEdgeOnlyWhereTheOtherHasRoom()
{
    QFETCH(int, y);
    QFETCH(int, areaHeight);
    QFETCH(bool, wanted);
    QFETCH(bool, got);
    const QRect area(0, 0, 1000, areaHeight);
    QCOMPARE(KdBubble::placed(kSize, {500, y}, wanted, -1, area).arrowDown, got);
}

void tst_KdBubble::arrowBelongsToTheOutline_data()
{
    QTest::addColumn<bool>("down");

    QTest::newRow("up") << false;
    QTest::newRow("down") << true;
}

void tst_KdBubble::arrowBelongsToTheOutline()
{
    QFETCH(bool, down);
    const KdBubble bubble = KdBubble::placed(kSize, {500, 400}, down, 60, kArea);
    const QPainterPath outline = bubble.outline();
    const double nearTip = down ? 98 : 2;
    QVERIFY(outline.contains(QPointF(60, nearTip)));
    QVERIFY(!outline.contains(QPointF(100, nearTip)));
    QVERIFY(outline.contains(QPointF(100, 50)));
    QVERIFY(QRectF(0, 0, 200, 100).contains(outline.boundingRect()));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdBubble>(argc, argv);
}

#include "tst_KdBubble.moc"
