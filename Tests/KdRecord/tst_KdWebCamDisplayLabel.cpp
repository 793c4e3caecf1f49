#include "DisplayLabelFixture.h"

#include <KdZentraCore/KdConfigEngine.h>

#include <Support/PictureDifference.h>
#include <Support/PlainPreview.h>

#include <limits>

using namespace KdVBLMODEL;

/** What the label shows of the frames that it is given. */
class tst_KdWebCamDisplayLabel : public DisplayLabelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithTheHostsConfiguration_data();
    void startsWithTheHostsConfiguration();

    void showsTheFrameLetterBoxed();
    void aFrameOfANewSizeReplacesTheBuffer();
    void aCircleIsAsWideAsTheFrameIsHigh();
    void flippedMirrorsTheStoredFrameAtOnce();
    void shapeCutsTheStoredFrameAtOnce();
    void resizingScalesTheStoredFrameAnew();
    void looksLikeThePlainRecipe_data();
    void looksLikeThePlainRecipe();
    void transparentPixelsShowBlack();
    void badFramesAreIgnored_data();
    void badFramesAreIgnored();
    void textLiesOverThePicture();
    void theCornerChangesNothingThatIsPainted();
};

void tst_KdWebCamDisplayLabel::startsWithTheHostsConfiguration_data()
{
    QTest::addColumn<QVariant>("storedShape");
    QTest::addColumn<QVariant>("storedFlip");
    QTest::addColumn<QVariant>("storedBackground");
    QTest::addColumn<int>("shape");
    QTest::addColumn<bool>("isFlipped");
    QTest::addColumn<int>("background");

    const QVariant none;
    const QVariant word(QStringLiteral("circle"));
    QTest::newRow("nothing stored") << none << none << none << 1 << false << -1;
    QTest::newRow("stored") << QVariant(0) << QVariant(true) << QVariant(1) << 0 << true << 1;
    QTest::newRow("another type") << QVariant(QStringLiteral("0")) << QVariant(1)
                                  << QVariant(QStringLiteral("0")) << 0 << true << 0;
    QTest::newRow("no numbers") << word << QVariant(QStringLiteral("false")) << word << 0 << false
                                << 0;
}

void tst_KdWebCamDisplayLabel::startsWithTheHostsConfiguration()
{
    QFETCH(QVariant, storedShape);
    QFETCH(QVariant, storedFlip);
    QFETCH(QVariant, storedBackground);
    QFETCH(int, shape);
    QFETCH(bool, isFlipped);
    QFETCH(int, background);
    const auto store = [](const char* key, const QVariant& value) {
        if (value.isValid()) {
            KdConfigEngine::instance()->setValue(1, QStringLiteral("WebCamFuncConfig"),
                                                 QLatin1String(key), value);
        }
    };
    store("WebCamFuncShape", storedShape);
    store("WebCamFuncFlip", storedFlip);
    store("WebCamFuncBackground", storedBackground);
    make();
    QCOMPARE(int(m_label->shape()), shape);
    QCOMPARE(m_label->isFlipped(), isFlipped);
    QCOMPARE(int(m_label->backgroundMode()), background);

    // The strip starts with the same choices.
    QStringList pushed;
    m_label->setActionHandleForShapeChange([&](_KdCaptureRecordShape choice) {
        pushed.append(QString::number(choice));
        return true;
    });
    m_label->setActionHandleForBackgroundChange([&](_KdCaptureRecordBackgroundMode choice) {
        pushed.append(QString::number(choice));
        return true;
    });
    m_label->setActionHandleForFlipChange([&](bool choice) {
        pushed.append(QString::number(choice));
        return true;
    });
    m_label->useUserSettings();
    QCOMPARE(pushed, QStringList({QString::number(shape), QString::number(background),
                                  QString::number(isFlipped)}));
}

void tst_KdWebCamDisplayLabel::showsTheFrameLetterBoxed()
{
    m_label->startRender();
    bring(plainFrame(QSize(400, 200), Qt::red));
    QCOMPARE(at(200, 150), QColor(Qt::red));
    QCOMPARE(at(0, 50), QColor(Qt::red));
    QCOMPARE(at(399, 249), QColor(Qt::red));
    QCOMPARE(at(200, 49), QColor(Qt::black));
    QCOMPARE(at(200, 250), QColor(Qt::black));
}

void tst_KdWebCamDisplayLabel::aFrameOfANewSizeReplacesTheBuffer()
{
    m_label->startRender();
    bring(plainFrame(QSize(400, 200), Qt::red));
    QCOMPARE(m_label->bufferSize(), qint64(400 * 200 * 4));
    QCOMPARE(at(20, 150), QColor(Qt::red));
    bring(plainFrame(QSize(101, 301), Qt::blue));
    QCOMPARE(m_label->bufferSize(), qint64(101 * 301 * 4));
    QCOMPARE(at(200, 150), QColor(Qt::blue));
    QCOMPARE(at(200, 2), QColor(Qt::blue));
    QCOMPARE(at(20, 150), QColor(Qt::black));
}

/** The frame fits exactly, so that its diameter of 720 is to be seen as it is. */
void tst_KdWebCamDisplayLabel::aCircleIsAsWideAsTheFrameIsHigh()
{
    m_label->resize(1280, 760);
    m_label->startRender();
    m_label->setShape(fcrsCircle);
    bring(plainFrame(QSize(1280, 720), Qt::red));
    const QImage shown = WidgetLooks::image(*m_label);
    QCOMPARE(shown.size(), QSize(1280, 760));
    const auto isRed = [&shown](int x, int y) { return shown.pixelColor(x, y) == Qt::red; };
    const auto isBlack = [&shown](int x, int y) { return shown.pixelColor(x, y) == Qt::black; };
    // 2 pixels within and beyond each end of both diameters, then on the diagonal.
    QVERIFY(isRed(282, 380) && isBlack(277, 380));
    QVERIFY(isRed(997, 380) && isBlack(1002, 380));
    QVERIFY(isRed(640, 22) && isBlack(640, 17));
    QVERIFY(isRed(640, 737) && isBlack(640, 742));
    QVERIFY(isRed(640 - 252, 380 - 252) && isBlack(640 - 257, 380 - 257));
    QVERIFY(isRed(640 + 251, 380 + 251) && isBlack(640 + 257, 380 + 257));
    QVERIFY(isBlack(2, 22) && isBlack(1277, 737));
}

void tst_KdWebCamDisplayLabel::flippedMirrorsTheStoredFrameAtOnce()
{
    m_label->startRender();
    bring(halves(QSize(400, 300), Qt::red, Qt::blue));
    QCOMPARE(at(100, 150), QColor(Qt::red));
    m_label->setFlipped(true);
    QVERIFY(m_label->isFlipped());
    QCOMPARE(at(100, 150), QColor(Qt::blue));
    QCOMPARE(at(300, 150), QColor(Qt::red));
    m_label->setFlipped(false);
    QCOMPARE(at(100, 150), QColor(Qt::red));
}

void tst_KdWebCamDisplayLabel::shapeCutsTheStoredFrameAtOnce()
{
    m_label->startRender();
    bring(plainFrame(QSize(400, 300), Qt::red));
    QCOMPARE(at(3, 3), QColor(Qt::red));
    m_label->setShape(fcrsCircle);
    QCOMPARE(at(3, 3), QColor(Qt::black));
    QCOMPARE(at(200, 150), QColor(Qt::red));
    m_label->setShape(fcrsSquare);
    QCOMPARE(at(3, 3), QColor(Qt::red));
}

void tst_KdWebCamDisplayLabel::resizingScalesTheStoredFrameAnew()
{
    m_label->startRender();
    const QImage frame = halves(QSize(400, 200), Qt::red, Qt::blue);
    bring(frame);
    QCOMPARE(at(10, 55), QColor(Qt::red));
    m_label->resize(800, 400);
    QCOMPARE(at(390, 5), QColor(Qt::red));
    QCOMPARE(at(410, 395), QColor(Qt::blue));
    m_label->resize(200, 200);
    QCOMPARE(at(90, 55), QColor(Qt::red));
    QCOMPARE(at(110, 145), QColor(Qt::blue));
    QCOMPARE(at(100, 45), QColor(Qt::black));
}

void tst_KdWebCamDisplayLabel::looksLikeThePlainRecipe_data()
{
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<bool>("isRound");
    QTest::addColumn<bool>("isFlipped");

    for (const double ratio : {1.0, 1.5, 2.0}) {
        for (const QSize& size : {QSize(640, 480), QSize(1280, 720), QSize(333, 201)}) {
            for (const bool isRound : {false, true}) {
                QTest::addRow("%dx%d at %g%s", size.width(), size.height(), ratio,
                              isRound ? ", round" : "")
                    << size << ratio << isRound << isRound;
            }
        }
    }
}

/** Painted onto an image of that ratio: sharp, in its place, with black around it. */
void tst_KdWebCamDisplayLabel::looksLikeThePlainRecipe()
{
    QFETCH(QSize, frame);
    QFETCH(double, ratio);
    QFETCH(bool, isRound);
    QFETCH(bool, isFlipped);
    QImage image = halves(frame, Qt::red, Qt::blue);
    for (int x = 0; x < frame.width(); ++x) {
        image.setPixelColor(x, frame.height() / 3, Qt::white);
    }
    m_label->setShape(isRound ? fcrsCircle : fcrsSquare);
    m_label->setFlipped(isFlipped);
    m_label->startRender();
    bring(image);
    QImage shown((QSizeF(kArea) * ratio).toSize(), QImage::Format_RGB32);
    shown.setDevicePixelRatio(ratio);
    shown.fill(Qt::green);
    m_label->render(&shown);
    const QImage expected = PlainPreview::picture(image, kArea, ratio, isRound, isFlipped);
    // Nothing is left out: no pixel of the surface is in the picture of a frame without a size.
    const PictureDifference off = PictureDifference::between(shown, expected, {});
    QVERIFY2(off.mean <= 2, qPrintable(QString::number(off.mean)));
}

void tst_KdWebCamDisplayLabel::transparentPixelsShowBlack()
{
    m_label->startRender();
    bring(halves(QSize(400, 300), QColor(255, 0, 0, 0), QColor(255, 0, 0, 128)));
    QCOMPARE(at(100, 150), QColor(Qt::black));
    QCOMPARE(at(300, 150), QColor(128, 0, 0));
}

void tst_KdWebCamDisplayLabel::badFramesAreIgnored_data()
{
    QTest::addColumn<bool>("hasBits");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");

    constexpr int most = std::numeric_limits<int>::max();
    QTest::newRow("null") << false << 400 << 300;
    QTest::newRow("no width") << true << 0 << 300;
    QTest::newRow("no height") << true << 400 << 0;
    QTest::newRow("negative") << true << -400 << 300;
    QTest::newRow("negative both") << true << -400 << -300;
    QTest::newRow("absurdly large") << true << most << most;
    QTest::newRow("its product wraps") << true << 65536 << 65537;
}

void tst_KdWebCamDisplayLabel::badFramesAreIgnored()
{
    QFETCH(bool, hasBits);
    QFETCH(int, width);
    QFETCH(int, height);
    m_label->startRender();
    bring(plainFrame(QSize(400, 300), Qt::red));
    bring(hasBits ? plainFrame(QSize(400, 300), Qt::blue) : QImage(), width, height);
    QCOMPARE(at(200, 150), QColor(Qt::red));
    QCOMPARE(m_label->bufferSize(), qint64(400 * 300 * 4));
}

void tst_KdWebCamDisplayLabel::textLiesOverThePicture()
{
    m_label->setText(QStringLiteral("███"));
    m_label->setAlignment(Qt::AlignCenter);
    QPalette palette = m_label->palette();
    palette.setColor(QPalette::WindowText, Qt::green);
    m_label->setPalette(palette);
    const QImage black = WidgetLooks::image(*m_label);
    QVERIFY(WidgetLooks::hasColor(black, palette.color(QPalette::WindowText)));
    m_label->startRender();
    bring(plainFrame(QSize(400, 300), Qt::red));
    const QImage shown = WidgetLooks::image(*m_label);
    QVERIFY(WidgetLooks::hasColor(shown, palette.color(QPalette::WindowText)));
    QCOMPARE(shown.pixelColor(5, 5), QColor(Qt::red));
}

void tst_KdWebCamDisplayLabel::theCornerChangesNothingThatIsPainted()
{
    m_label->startRender();
    bring(halves(QSize(400, 300), Qt::red, Qt::blue));
    show();
    const QImage before = WidgetLooks::image(*m_label);
    QTRY_VERIFY(m_label->paints > 1);
    QCoreApplication::processEvents();
    const int paints = m_label->paints;
    m_label->setLayerCorner(24.0F, true);
    QTRY_VERIFY(m_label->paints > paints);
    QCOMPARE(WidgetLooks::image(*m_label), before);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebCamDisplayLabel>(argc, argv);
}

#include "tst_KdWebCamDisplayLabel.moc"
