#include <KdWidgets/KdLineWidget.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QHBoxLayout>
#include <QVBoxLayout>

class tst_KdLineWidget : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void isOnePixelThick_data();
    void isOnePixelThick();
    void hasItsColourInBothSkins_data();
    void hasItsColourInBothSkins();
};

void tst_KdLineWidget::isOnePixelThick_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<QSize>("size");

    QTest::newRow("lying") << Qt::Horizontal << QSize(200, 1);
    QTest::newRow("standing") << Qt::Vertical << QSize(1, 100);
}

void tst_KdLineWidget::isOnePixelThick()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(QSize, size);
    QWidget window;
    auto* layout = orientation == Qt::Horizontal
                       ? static_cast<QBoxLayout*>(new QVBoxLayout(&window))
                       : new QHBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* line = new KdLineWidget(orientation, KdSkin::Stroke, &window);
    layout->addWidget(line);
    layout->addStretch();
    window.resize(200, 100);
    window.show();
    QCOMPARE(line->size(), size);
}

void tst_KdLineWidget::hasItsColourInBothSkins_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("token");

    QTest::newRow("42") << 42 << QStringLiteral("stroke");
    QTest::newRow("accent") << int(KdSkin::Accent) << QStringLiteral("accent");
    QTest::newRow("unknown") << 7 << QStringLiteral("stroke");
}

void tst_KdLineWidget::hasItsColourInBothSkins()
{
    QFETCH(int, number);
    QFETCH(QString, token);
    auto* manager = KdSkin::KdSkinManager::instance();
    KdLineWidget line(Qt::Horizontal, number);
    line.resize(50, 1);
    line.show();
    for (const QString& skin : manager->skins()) {
        QVERIFY(manager->setSkin(skin));
        QCOMPARE(WidgetLooks::colorAt(line, {25, 0}), manager->color(token));
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdLineWidget>(argc, argv);
}

#include "tst_KdLineWidget.moc"
