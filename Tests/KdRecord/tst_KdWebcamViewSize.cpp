#include "Support/KdTestCase.h"

#include <KdRecord/KdWebcamViewSize.h>

class tst_KdWebcamViewSize : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void dialogFitsTheScreen_data();
    void dialogFitsTheScreen();
};

void tst_KdWebcamViewSize::dialogFitsTheScreen_data()
{
    QTest::addColumn<QSize>("available");
    QTest::addColumn<QSize>("size");
    QTest::newRow("large") << QSize(1920, 1040) << QSize(800, 900);
    QTest::newRow("exactly enough") << QSize(800, 900) << QSize(800, 900);
    QTest::newRow("too low") << QSize(1280, 720) << QSize(800, 656);
    QTest::newRow("too low by a pixel") << QSize(1280, 899) << QSize(800, 835);
    QTest::newRow("too narrow") << QSize(799, 1200) << QSize(735, 900);
    QTest::newRow("both") << QSize(640, 480) << QSize(576, 416);
    QTest::newRow("narrow, but wide enough with what stays free")
        << QSize(864, 600) << QSize(800, 536);
    QTest::newRow("next to nothing") << QSize(60, 1) << QSize(0, 0);
    QTest::newRow("no screen") << QSize() << QSize(0, 0);
}

void tst_KdWebcamViewSize::dialogFitsTheScreen()
{
    QFETCH(QSize, available);
    QFETCH(QSize, size);
    QCOMPARE(KdWebcamViewSize::forScreen(available), size);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamViewSize>(argc, argv);
}

#include "tst_KdWebcamViewSize.moc"
