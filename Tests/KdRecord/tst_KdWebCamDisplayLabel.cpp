#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdRecord/KdWebCamDisplayLabel.h>
#include <KdWidgets/KdToolButton.h>
#include <KdZentraCore/KdConfigEngine.h>

#include <Support/KdTestCase.h>
#include <Support/PlainPreview.h>
#include <Support/WidgetLooks.h>

#include <QElapsedTimer>
#include <QEvent>
#include <QLayout>
#include <QSignalSpy>

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

protected:
    void paintEvent(QPaintEvent* event) override
    {
        KdWebCamDisplayLabel::paintEvent(event);
        ++paints;
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

    void showsTheFrameLetterBoxed();
    void flippedMirrorsTheStoredFrameAtOnce();

private:
    void make();
    void bring(const QImage& frame) { bring(frame, frame.width(), frame.height()); }
    void bring(const QImage& frame, int width, int height);
    QColor at(int x, int y) { return WidgetLooks::colorAt(*m_label, {x, y}); }

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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebCamDisplayLabel>(argc, argv);
}

#include "tst_KdWebCamDisplayLabel.moc"
