#include "Support/KdTestCase.h"
#include "Support/TestClip.h"

#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioPictureView.h>

class tst_StudioPictureView : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void posterIsSeenUntilSomethingPlays();
    void pictureKeepsItsShape_data();
    void pictureKeepsItsShape();
    void withoutAPictureTheGroundIsSeen();

private:
    static QImage filled(const QSize& size, const QColor& color)
    {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(color);
        return picture;
    }
    static QColor seen(StudioPictureView& view, const QPoint& place)
    {
        return view.grab().toImage().pixelColor(place);
    }
};

void tst_StudioPictureView::posterIsSeenUntilSomethingPlays()
{
    StudioPictureView view;
    view.resize(320, 180);
    view.setPoster(filled(QSize(640, 360), Qt::red));
    QCOMPARE(seen(view, QPoint(160, 90)), QColor(Qt::red));
    view.setPicture(filled(QSize(640, 360), Qt::blue));
    QCOMPARE(seen(view, QPoint(160, 90)), QColor(Qt::blue));
    view.setPicture(QImage());
    QCOMPARE(seen(view, QPoint(160, 90)), QColor(Qt::red));
}

void tst_StudioPictureView::pictureKeepsItsShape_data()
{
    QTest::addColumn<QSize>("picture");
    QTest::addColumn<QPoint>("inside");
    QTest::addColumn<QPoint>("beside");
    QTest::newRow("tall") << QSize(90, 160) << QPoint(200, 100) << QPoint(20, 100);
    QTest::newRow("wide") << QSize(400, 100) << QPoint(20, 100) << QPoint(200, 20);
}

void tst_StudioPictureView::pictureKeepsItsShape()
{
    QFETCH(QSize, picture);
    QFETCH(QPoint, inside);
    QFETCH(QPoint, beside);
    StudioPictureView view;
    view.resize(400, 200);
    view.setPicture(filled(picture, Qt::green));
    QCOMPARE(seen(view, inside), QColor(Qt::green));
    QVERIFY(seen(view, beside) != QColor(Qt::green));
}

void tst_StudioPictureView::withoutAPictureTheGroundIsSeen()
{
    StudioPictureView view;
    view.resize(400, 200);
    QCOMPARE(seen(view, QPoint(200, 100)),
             KdSkin::KdSkinManager::instance()->color(KdSkin::Surface));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioPictureView>(argc, argv);
}

#include "tst_StudioPictureView.moc"
