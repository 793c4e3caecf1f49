#include <KdRecord/KdDefaultResolution.h>

#include <Support/KdTestCase.h>

using Sizes = QList<QSize>;

class tst_KdDefaultResolution : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void choosesTheResolutionInWhichAWebcamStarts_data()
    {
        QTest::addColumn<Sizes>("list");
        QTest::addColumn<QSize>("expected");
        const QSize vga(640, 480);
        QTest::newRow("nothing") << Sizes() << vga;
        QTest::newRow("the largest")
            << Sizes{{320, 240}, {1280, 720}, {1920, 1080}} << QSize(1920, 1080);
        QTest::newRow("the largest, wherever it stands")
            << Sizes{{1920, 1080}, {320, 240}, {1280, 720}} << QSize(1920, 1080);
        QTest::newRow("the first of two of the largest area")
            << Sizes{{320, 240}, {1600, 900}, {900, 1600}} << QSize(1600, 900);
        QTest::newRow("the first of two that are alike but turned")
            << Sizes{{900, 1600}, {1600, 900}} << QSize(900, 1600);
        QTest::newRow("640 x 480 when nothing is larger") << Sizes{{320, 240}, vga} << vga;
        QTest::newRow("640 x 480 before another of its area")
            << Sizes{{480, 640}, {320, 240}, vga} << vga;
        QTest::newRow("before the middle of three")
            << Sizes{{160, 120}, {320, 240}, {352, 288}} << QSize(160, 120);
        QTest::newRow("before the middle of four")
            << Sizes{{176, 144}, {320, 240}, {352, 288}, {424, 240}} << QSize(320, 240);
        QTest::newRow("before the middle of five")
            << Sizes{{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}} << QSize(2, 2);
        QTest::newRow("the only one, small") << Sizes{{160, 120}} << QSize(160, 120);
        QTest::newRow("the first of two, small")
            << Sizes{{160, 120}, {320, 240}} << QSize(160, 120);
        QTest::newRow("of the area of 640 x 480, but not it")
            << Sizes{{480, 640}} << QSize(480, 640);
    }

    void choosesTheResolutionInWhichAWebcamStarts()
    {
        QFETCH(Sizes, list);
        QFETCH(QSize, expected);
        QCOMPARE(GetDefaultResoluction(list), expected);
    }

    void takesAbsurdSizes_data()
    {
        QTest::addColumn<QSize>("absurd");
        QTest::newRow("invalid") << QSize();
        QTest::newRow("null") << QSize(0, 0);
        QTest::newRow("negative width") << QSize(-640, 480);
        QTest::newRow("wraps around to nothing") << QSize(65536, 65536);
        QTest::newRow("wraps around below nothing") << QSize(65536, 32768);
    }

    void takesAbsurdSizes()
    {
        QFETCH(QSize, absurd);
        QCOMPARE(GetDefaultResoluction({absurd, {640, 480}}), QSize(640, 480));
        QCOMPARE(GetDefaultResoluction({{1280, 720}, absurd}), QSize(1280, 720));
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDefaultResolution>(argc, argv);
}

#include "tst_KdDefaultResolution.moc"
