#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>
#include <KdZentraCore/KdConfigEngine.h>

#include <Support/KdTestCase.h>
#include <Support/PictureDifference.h>
#include <Support/PlainPreview.h>
#include <Support/WidgetLooks.h>

#include <QBoxLayout>
#include <QElapsedTimer>
#include <QEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include <atomic>
#include <limits>
#include <memory>
#include <thread>
#include <vector>

using namespace KdVBLMODEL;

namespace {

/** Reaches what a surface that derives from the label reaches. */
class Surface : public KdWebCamDisplayLabel
{
public:
    using KdWebCamDisplayLabel::bufferSize;
    using KdWebCamDisplayLabel::frameLock;
    using KdWebCamDisplayLabel::isRendering;
    using KdWebCamDisplayLabel::KdWebCamDisplayLabel;
    using KdWebCamDisplayLabel::optionStrip;

    std::atomic<int> paints{0};
    std::atomic<bool> paintsNow{false};

protected:
    void paintEvent(QPaintEvent* event) override
    {
        paintsNow = true;
        KdWebCamDisplayLabel::paintEvent(event);
        ++paints;
        paintsNow = false;
    }
};

QImage plainFrame(const QSize& size, const QColor& color)
{
    QImage frame(size, QImage::Format_ARGB32);
    frame.fill(color);
    return frame;
}

/** Left half and right half. */
QImage halves(const QSize& size, const QColor& left, const QColor& right)
{
    QImage frame = plainFrame(size, right);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width() / 2; ++x) {
            frame.setPixelColor(x, y, left);
        }
    }
    return frame;
}

const QSize kArea(400, 300);

} // namespace

class tst_KdWebCamDisplayLabel : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void startsWithTheHostsConfiguration_data();
    void startsWithTheHostsConfiguration();
    void carriesTheStripAtItsLowerEdge();

    void paintsNoFrameBeforeRenderingStarts();
    void delayedRenderingStartsAfterATenthOfASecond();
    void aSecondDelayedStartDoesNotPostponeTheFirst();
    void stoppingTakesADelayedStartBack();
    void stoppingPaintsBlackAndFreesTheFrame();
    void aFrameAfterTheStopIsStoredNotPaintedAndFreedByTheNextPaint();

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

    void aBusyLockDropsTheFrameWithoutWaiting();
    void paintingWaitsForTheLock();
    void framesAreRepaintedSoon();
    void framesComeOnWhileTheGuiThreadIsBusy();
    void whatIsPostedGoesWithTheLabel();
    void aHiddenLabelShowsTheLatestFrameWhenItComesBack();
    void survivesAWriterAtFullSpeed();

    void stripShowsWhileTheMouseIsOverIt();
    void stripDoesNotAppearWhileRecording();
    void stripGoesWhenATakeBegins();
    void theTabKeyBringsTheStripUpAndLeadsIntoIt();
    void theTabKeyPassesByWhileRecording();
    void aWindowThatComesUpDoesNotBringTheStrip();
    void aStripThatGoesLeavesTheFocusBehind();
    void enteringAndLeavingAreReported();
    void setShapeShowsOnTheStripWithoutAsking();
    void flipAndBackgroundLeaveTheStripAlone();
    void callbacksReachTheStrip();
    void userSettingsArePushed();

private:
    void make();
    void bring(const QImage& frame) { bring(frame, frame.width(), frame.height()); }
    void bring(const QImage& frame, int width, int height);
    QColor at(int x, int y) { return WidgetLooks::colorAt(*m_label, {x, y}); }
    KRecordPreViewSettingRadiusWidget* strip() const { return m_label->optionStrip(); }
    QVariant checkState(const char* name) const;
    void show();

    std::unique_ptr<Surface> m_label;
};

void tst_KdWebCamDisplayLabel::init()
{
    KdTestCase::init();
    make();
}

void tst_KdWebCamDisplayLabel::cleanup()
{
    m_label.reset();
    KdTestCase::cleanup();
}

void tst_KdWebCamDisplayLabel::make()
{
    m_label = std::make_unique<Surface>();
    m_label->resize(kArea);
}

/** From a thread of its own, as the engine does. */
void tst_KdWebCamDisplayLabel::bring(const QImage& frame, int width, int height)
{
    std::thread([&] {
        m_label->WebcamFrameChanged(width, height, const_cast<uchar*>(frame.constBits()));
    }).join();
}

void tst_KdWebCamDisplayLabel::show()
{
    m_label->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_label.get()));
}

QVariant tst_KdWebCamDisplayLabel::checkState(const char* name) const
{
    return strip()->findChild<QWidget*>(QLatin1String(name))->property("checkState");
}

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

void tst_KdWebCamDisplayLabel::carriesTheStripAtItsLowerEdge()
{
    QVERIFY(m_label->testAttribute(Qt::WA_TranslucentBackground));
    QVERIFY(strip()->isHidden());
    strip()->show();
    show();
    QCOMPARE(strip()->geometry(), QRect((400 - 193) / 2, 300 - 8 - 40, 193, 40));
}

void tst_KdWebCamDisplayLabel::paintsNoFrameBeforeRenderingStarts()
{
    bring(plainFrame(QSize(400, 300), Qt::red));
    QVERIFY(!m_label->isRendering());
    QCOMPARE(at(200, 150), QColor(Qt::black));
}

void tst_KdWebCamDisplayLabel::delayedRenderingStartsAfterATenthOfASecond()
{
    QElapsedTimer clock;
    clock.start();
    m_label->startRenderDelay();
    QVERIFY(!m_label->isRendering());
    QTRY_VERIFY(m_label->isRendering());
    QVERIFY2(clock.elapsed() >= 94, qPrintable(QString::number(clock.elapsed())));
    bring(plainFrame(QSize(400, 300), Qt::red));
    QCOMPARE(at(200, 150), QColor(Qt::red));
}

void tst_KdWebCamDisplayLabel::aSecondDelayedStartDoesNotPostponeTheFirst()
{
    auto* const timer = m_label->findChild<QTimer*>();
    m_label->startRenderDelay();
    QTRY_VERIFY(timer->remainingTime() < 60);
    m_label->startRenderDelay();
    QVERIFY(timer->remainingTime() < 60);
    QTRY_VERIFY(m_label->isRendering());
}

/** Otherwise a start that was asked for before a change of camera would show its first frames. */
void tst_KdWebCamDisplayLabel::stoppingTakesADelayedStartBack()
{
    m_label->startRenderDelay();
    m_label->stopRender();
    Surface other;
    other.startRenderDelay();
    QTRY_VERIFY(other.isRendering());
    QVERIFY(!m_label->isRendering());
}

void tst_KdWebCamDisplayLabel::stoppingPaintsBlackAndFreesTheFrame()
{
    show();
    m_label->startRender();
    bring(plainFrame(QSize(400, 300), Qt::red));
    QCOMPARE(at(200, 150), QColor(Qt::red));
    QTRY_VERIFY(m_label->paints > 0);
    QCoreApplication::processEvents();
    const int paints = m_label->paints;
    m_label->stopRender();
    QVERIFY(!m_label->isRendering());
    QCOMPARE(m_label->bufferSize(), qint64(0));
    QTRY_VERIFY(m_label->paints > paints);
    QCOMPARE(at(200, 150), QColor(Qt::black));
}

void tst_KdWebCamDisplayLabel::aFrameAfterTheStopIsStoredNotPaintedAndFreedByTheNextPaint()
{
    m_label->startRender();
    bring(plainFrame(QSize(400, 300), Qt::red));
    QCOMPARE(at(200, 150), QColor(Qt::red));
    m_label->stopRender();
    bring(plainFrame(QSize(400, 300), Qt::blue));
    QCOMPARE(m_label->bufferSize(), qint64(400 * 300 * 4));
    QCOMPARE(at(200, 150), QColor(Qt::black));
    QCOMPARE(m_label->bufferSize(), qint64(0));
    // Nor does it come to light later.
    m_label->startRender();
    QCOMPARE(at(200, 150), QColor(Qt::black));
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

void tst_KdWebCamDisplayLabel::aBusyLockDropsTheFrameWithoutWaiting()
{
    m_label->startRender();
    bring(plainFrame(QSize(400, 300), Qt::red));
    {
        const std::lock_guard<std::mutex> lock(m_label->frameLock());
        // Returns, although the lock is not given back before.
        bring(plainFrame(QSize(200, 200), Qt::blue));
    }
    QCOMPARE(at(200, 150), QColor(Qt::red));
    QCOMPARE(m_label->bufferSize(), qint64(400 * 300 * 4));
    bring(plainFrame(QSize(200, 200), Qt::blue));
    QCOMPARE(at(200, 150), QColor(Qt::blue));
}

void tst_KdWebCamDisplayLabel::paintingWaitsForTheLock()
{
    m_label->startRender();
    bring(plainFrame(QSize(400, 300), Qt::red));
    std::atomic<bool> isHeld{false};
    std::atomic<bool> isReleased{false};
    std::thread holder([&] {
        m_label->frameLock().lock();
        isHeld = true;
        while (!m_label->paintsNow) {
            std::this_thread::yield();
        }
        isReleased = true;
        m_label->frameLock().unlock();
    });
    while (!isHeld) {
        std::this_thread::yield();
    }
    const QColor shown = at(200, 150);
    const bool wasReleased = isReleased;
    holder.join();
    QVERIFY(wasReleased);
    QCOMPARE(shown, QColor(Qt::red));
}

void tst_KdWebCamDisplayLabel::framesAreRepaintedSoon()
{
    show();
    m_label->startRender();
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
        const int paints = m_label->paints;
        bring(plainFrame(QSize(400, 300), Qt::red));
        QTRY_VERIFY(m_label->paints > paints);
    }
}

void tst_KdWebCamDisplayLabel::framesComeOnWhileTheGuiThreadIsBusy()
{
    show();
    m_label->startRender();
    QTRY_VERIFY(m_label->paints > 0);
    QCoreApplication::processEvents();
    const int paints = m_label->paints;
    const QImage red = plainFrame(QSize(400, 300), Qt::red);
    for (int i = 0; i < 100; ++i) {
        bring(red);
    }
    bring(plainFrame(QSize(400, 300), Qt::blue));
    QTRY_VERIFY(m_label->paints > paints);
    QCoreApplication::processEvents();
    // One repaint for all of them.
    QVERIFY(m_label->paints <= paints + 2);
    QCOMPARE(at(200, 150), QColor(Qt::blue));
}

void tst_KdWebCamDisplayLabel::whatIsPostedGoesWithTheLabel()
{
    for (int i = 0; i < 50; ++i) {
        make();
        m_label->startRender();
        m_label->startRenderDelay();
        bring(plainFrame(QSize(40, 30), Qt::red));
        m_label.reset();
        QCoreApplication::processEvents();
    }
    make();
    bring(plainFrame(QSize(40, 30), Qt::red));
    QCOMPARE(m_label->bufferSize(), qint64(40 * 30 * 4));
}

void tst_KdWebCamDisplayLabel::aHiddenLabelShowsTheLatestFrameWhenItComesBack()
{
    show();
    m_label->startRender();
    bring(plainFrame(QSize(400, 300), Qt::red));
    QTRY_VERIFY(m_label->paints > 0);
    QCOMPARE(at(200, 150), QColor(Qt::red));
    m_label->hide();
    bring(plainFrame(QSize(400, 300), Qt::blue));
    show();
    QCOMPARE(at(200, 150), QColor(Qt::blue));
}

/** Frames at full speed while everything happens that may; the label is destroyed when the one that
 * brings them has been waited for, as the engine's barrier does. */
void tst_KdWebCamDisplayLabel::survivesAWriterAtFullSpeed()
{
    const QVector<QImage> frames{plainFrame(QSize(160, 90), Qt::red),
                                 plainFrame(QSize(133, 101), Qt::blue)};
    for (int round = 0; round < 6; ++round) {
        make();
        show();
        std::atomic<bool> goesOn{true};
        std::atomic<int> brought{0};
        std::thread writer([&] {
            for (int i = 0; goesOn; ++i) {
                const QImage& frame = frames.at(i / 8 % 2);
                m_label->WebcamFrameChanged(frame.width(), frame.height(),
                                            const_cast<uchar*>(frame.constBits()));
                ++brought;
            }
        });
        for (int i = 0; i < 20 || brought < 20; ++i) {
            m_label->setShape(i % 3 == 0 ? fcrsCircle : fcrsSquare);
            m_label->setFlipped(i % 2 == 0);
            m_label->resize(200 + i % 5 * 40, 150 + i % 4 * 30);
            m_label->setRecording(i % 7 == 0);
            if (i % 10 == 9) {
                m_label->stopRender();
                m_label->startRenderDelay();
            } else {
                m_label->startRender();
            }
            QCoreApplication::processEvents();
        }
        goesOn = false;
        writer.join();
        m_label.reset();
        QCoreApplication::processEvents();
    }
}

void tst_KdWebCamDisplayLabel::stripShowsWhileTheMouseIsOverIt()
{
    show();
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_label.get(), &enter);
    QVERIFY(strip()->isVisible());
    QCoreApplication::sendEvent(m_label.get(), &leave);
    QVERIFY(!strip()->isVisible());
}

void tst_KdWebCamDisplayLabel::stripDoesNotAppearWhileRecording()
{
    show();
    m_label->setRecording(true);
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_label.get(), &enter);
    QVERIFY(!strip()->isVisible());
    QCoreApplication::sendEvent(m_label.get(), &leave);
    m_label->setRecording(false);
    QVERIFY(!strip()->isVisible());
    QCoreApplication::sendEvent(m_label.get(), &enter);
    QVERIFY(strip()->isVisible());
}

/** With the mouse over the label all the time, as when the take is started by its shortcut. */
void tst_KdWebCamDisplayLabel::stripGoesWhenATakeBegins()
{
    m_label->move(200, 200);
    show();
    QTest::mouseMove(m_label.get(), QPoint(5, 5));
    QTest::mouseMove(m_label.get(), QPoint(60, 60));
    QTRY_VERIFY(strip()->isVisible());
    m_label->setRecording(true);
    QVERIFY(!strip()->isVisible());
    m_label->setRecording(false);
    QVERIFY(strip()->isVisible());
}

namespace {

/** A label between two buttons, and the mouse elsewhere. */
struct Chain
{
    Chain()
    {
        window.setGeometry(100, 100, 400, 400);
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(before);
        layout->addWidget(label);
        layout->addWidget(after);
        window.show();
        QTest::mouseMove(before, QPoint(2, 2));
    }

    /** @return the object name of the widget that then has the focus. */
    static QString press(Qt::Key key)
    {
        QTest::keyClick(QApplication::focusWidget(), key,
                        key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        return QApplication::focusWidget()->objectName();
    }

    static QWidget* named(QWidget* widget, const char* name)
    {
        widget->setObjectName(QLatin1String(name));
        return widget;
    }

    QWidget window;
    QWidget* before = named(new QPushButton, "before");
    Surface* label = static_cast<Surface*>(named(new Surface, "label"));
    QWidget* after = named(new QPushButton, "after");
};

} // namespace

void tst_KdWebCamDisplayLabel::theTabKeyBringsTheStripUpAndLeadsIntoIt()
{
    Chain chain;
    QVERIFY(QTest::qWaitForWindowActive(&chain.window));
    chain.before->setFocus();
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("label"));
    QVERIFY(chain.label->optionStrip()->isVisible());
    const QColor accent = KdSkin::KdSkinManager::instance()->color(KdSkin::Accent);
    QCOMPARE(WidgetLooks::colorAt(*chain.label, {0, 60}), accent);
    QStringList reached;
    for (int i = 0; i < 5; ++i) {
        reached.append(chain.press(Qt::Key_Tab));
        QVERIFY(chain.label->optionStrip()->isVisible());
    }
    QCOMPARE(reached.constFirst(), QStringLiteral("KRecorder_Circle_RoundBtn"));
    QCOMPARE(reached.constLast(), QStringLiteral("KRecorder_Mirror_RoundBtn"));
    QCOMPARE(WidgetLooks::colorAt(*chain.label, {0, 60}), QColor(Qt::black));
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("after"));
    QVERIFY(!chain.label->optionStrip()->isVisible());
    QCOMPARE(chain.press(Qt::Key_Backtab), QStringLiteral("label"));
    QVERIFY(chain.label->optionStrip()->isVisible());
    QCOMPARE(chain.press(Qt::Key_Backtab), QStringLiteral("before"));
    QVERIFY(!chain.label->optionStrip()->isVisible());
}

void tst_KdWebCamDisplayLabel::theTabKeyPassesByWhileRecording()
{
    Chain chain;
    QVERIFY(QTest::qWaitForWindowActive(&chain.window));
    chain.before->setFocus();
    chain.label->setRecording(true);
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("after"));
    QVERIFY(!chain.label->optionStrip()->isVisible());
    chain.label->setRecording(false);
    QCOMPARE(chain.press(Qt::Key_Backtab), QStringLiteral("label"));
}

void tst_KdWebCamDisplayLabel::aWindowThatComesUpDoesNotBringTheStrip()
{
    m_label->move(300, 300);
    QTest::mouseMove(m_label.get(), QPoint(-200, -200));
    show();
    QVERIFY(QTest::qWaitForWindowActive(m_label.get()));
    QTRY_VERIFY(m_label->hasFocus());
    QVERIFY(!strip()->isVisible());
}

void tst_KdWebCamDisplayLabel::aStripThatGoesLeavesTheFocusBehind()
{
    Chain chain;
    QVERIFY(QTest::qWaitForWindowActive(&chain.window));
    chain.before->setFocus();
    chain.press(Qt::Key_Tab);
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("KRecorder_Circle_RoundBtn"));
    chain.label->setRecording(true);
    QVERIFY(!chain.label->optionStrip()->isVisible());
    QVERIFY(chain.label->hasFocus());
    QCOMPARE(chain.press(Qt::Key_Tab), QStringLiteral("after"));
}

void tst_KdWebCamDisplayLabel::enteringAndLeavingAreReported()
{
    QSignalSpy entered(m_label.get(), &KdWebCamDisplayLabel::sigEnter);
    QSignalSpy left(m_label.get(), &KdWebCamDisplayLabel::sigLeave);
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    for (const bool isRecording : {false, true}) {
        m_label->setRecording(isRecording);
        QCoreApplication::sendEvent(m_label.get(), &enter);
        QCoreApplication::sendEvent(m_label.get(), &leave);
    }
    QCOMPARE(entered.count(), 2);
    QCOMPARE(left.count(), 2);
}

void tst_KdWebCamDisplayLabel::setShapeShowsOnTheStripWithoutAsking()
{
    int asked = 0;
    m_label->setActionHandleForShapeChange([&asked](_KdCaptureRecordShape) { return ++asked > 0; });
    m_label->setShape(fcrsCircle);
    QCOMPARE(m_label->shape(), fcrsCircle);
    QCOMPARE(checkState("KRecorder_Circle_RoundBtn").toString(), QStringLiteral("checked"));
    QCOMPARE(checkState("KRecorder_Square_RoundBtn").toString(), QStringLiteral("unchecked"));
    QCOMPARE(asked, 0);
}

void tst_KdWebCamDisplayLabel::flipAndBackgroundLeaveTheStripAlone()
{
    m_label->setFlipped(true);
    m_label->setBackgroundMode(fcbmBlur);
    QCOMPARE(m_label->backgroundMode(), fcbmBlur);
    QVERIFY(!checkState("KRecorder_Mirror_RoundBtn").isValid());
    QVERIFY(!checkState("KRecorder_Blurred_RoundBtn").isValid());
}

void tst_KdWebCamDisplayLabel::callbacksReachTheStrip()
{
    QStringList asked;
    m_label->setActionHandleForShapeChange([&](_KdCaptureRecordShape shape) {
        asked.append(QStringLiteral("shape %1").arg(shape));
        m_label->setShape(shape);
        return true;
    });
    m_label->setActionHandleForBackgroundChange([&](_KdCaptureRecordBackgroundMode mode) {
        asked.append(QStringLiteral("background %1").arg(mode));
        m_label->setBackgroundMode(mode);
        return true;
    });
    m_label->setActionHandleForFlipChange([&](bool flip) {
        asked.append(QStringLiteral("flip %1").arg(flip));
        m_label->setFlipped(flip);
        return true;
    });
    show();
    QEvent enter(QEvent::Enter);
    QCoreApplication::sendEvent(m_label.get(), &enter);
    for (const char* name :
         {"KRecorder_Circle_RoundBtn", "KRecorder_Removal_RoundBtn", "KRecorder_Mirror_RoundBtn"}) {
        QTest::mouseClick(strip()->findChild<KdToolButton*>(QLatin1String(name)), Qt::LeftButton);
    }
    QCOMPARE(asked, QStringList({QStringLiteral("shape 0"), QStringLiteral("background 0"),
                                 QStringLiteral("flip 1")}));
    QCOMPARE(m_label->shape(), fcrsCircle);
    QCOMPARE(m_label->backgroundMode(), fcbmRemove);
    QVERIFY(m_label->isFlipped());
}

void tst_KdWebCamDisplayLabel::userSettingsArePushed()
{
    int asked = 0;
    const auto count = [&asked](auto) { return ++asked > 0; };
    m_label->setActionHandleForShapeChange(count);
    m_label->setActionHandleForBackgroundChange(count);
    m_label->setActionHandleForFlipChange(count);
    m_label->useUserSettings();
    QCOMPARE(asked, 3);
    QCOMPARE(checkState("KRecorder_Square_RoundBtn").toString(), QStringLiteral("checked"));
    QCOMPARE(checkState("KRecorder_Mirror_RoundBtn").toString(), QStringLiteral("unchecked"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebCamDisplayLabel>(argc, argv);
}

#include "tst_KdWebCamDisplayLabel.moc"
