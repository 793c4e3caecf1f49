#include "Support/KdTestCase.h"

#include <KdWidgets/KdResizeGrips.h>

class tst_KdResizeGrips : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void edgesMoveWithinTheSizes_data();
    void edgesMoveWithinTheSizes();
};

void tst_KdResizeGrips::edgesMoveWithinTheSizes_data()
{
    QTest::addColumn<int>("edges");
    QTest::addColumn<QPoint>("by");
    QTest::addColumn<QRect>("result");
    const auto row = [](const char* name, Qt::Edges edges, const QPoint& by, const QRect& result) {
        QTest::newRow(name) << static_cast<int>(edges) << by << result;
    };
    row("right", Qt::RightEdge, {30, 99}, {100, 100, 330, 200});
    row("left", Qt::LeftEdge, {30, 99}, {130, 100, 270, 200});
    row("top", Qt::TopEdge, {99, -20}, {100, 80, 300, 220});
    row("bottom", Qt::BottomEdge, {99, -20}, {100, 100, 300, 180});
    row("corner", Qt::TopEdge | Qt::LeftEdge, {-10, -20}, {90, 80, 310, 220});
    row("no smaller than the smallest", Qt::RightEdge | Qt::BottomEdge, {-900, -900},
        {100, 100, 200, 150});
    row("the edge across stays", Qt::LeftEdge | Qt::TopEdge, {900, 900}, {200, 150, 200, 150});
    row("no larger than the largest", Qt::LeftEdge, {-900, 0}, {-100, 100, 500, 200});
    row("nothing", {}, {50, 50}, {100, 100, 300, 200});
}

void tst_KdResizeGrips::edgesMoveWithinTheSizes()
{
    QFETCH(int, edges);
    QFETCH(QPoint, by);
    QFETCH(QRect, result);
    QCOMPARE(KdResizeGrips::dragged(QRect(100, 100, 300, 200), Qt::Edges(edges), by,
                                    QSize(200, 150), QSize(500, 400)),
             result);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdResizeGrips>(argc, argv);
}

#include "tst_KdResizeGrips.moc"
