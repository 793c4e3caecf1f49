#include "DisplayLabelFixture.h"

#include <thread>

void Surface::paintEvent(QPaintEvent* event)
{
    paintsNow = true;
    KdWebCamDisplayLabel::paintEvent(event);
    ++paints;
    paintsNow = false;
}

void DisplayLabelFixture::init()
{
    KdTestCase::init();
    make();
}

void DisplayLabelFixture::cleanup()
{
    m_label.reset();
    KdTestCase::cleanup();
}

QImage DisplayLabelFixture::plainFrame(const QSize& size, const QColor& color)
{
    QImage frame(size, QImage::Format_ARGB32);
    frame.fill(color);
    return frame;
}

QImage DisplayLabelFixture::halves(const QSize& size, const QColor& left, const QColor& right)
{
    QImage frame = plainFrame(size, right);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width() / 2; ++x) {
            frame.setPixelColor(x, y, left);
        }
    }
    return frame;
}

void DisplayLabelFixture::make()
{
    m_label = std::make_unique<Surface>();
    m_label->resize(kArea);
}

void DisplayLabelFixture::show()
{
    m_label->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_label.get()));
}

void DisplayLabelFixture::bring(const QImage& frame, int width, int height)
{
    std::thread([&] {
        m_label->WebcamFrameChanged(width, height, const_cast<uchar*>(frame.constBits()));
    }).join();
}
