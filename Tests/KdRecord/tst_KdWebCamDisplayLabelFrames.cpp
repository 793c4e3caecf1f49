#include "DisplayLabelFixture.h"

#include <QElapsedTimer>
#include <QTimer>

#include <thread>

using namespace KdVBLMODEL;

/** When the label takes frames, from which thread, and when it paints them. */
class tst_KdWebCamDisplayLabelFrames : public DisplayLabelFixture
{
    Q_OBJECT

private Q_SLOTS:
    void paintsNoFrameBeforeRenderingStarts();
    void delayedRenderingStartsAfterATenthOfASecond();
    void aSecondDelayedStartDoesNotPostponeTheFirst();
    void stoppingTakesADelayedStartBack();
    void stoppingPaintsBlackAndFreesTheFrame();
    void aFrameAfterTheStopIsStoredNotPaintedAndFreedByTheNextPaint();

    void aBusyLockDropsTheFrameWithoutWaiting();
    void paintingWaitsForTheLock();
    void framesAreRepaintedSoon();
    void framesComeOnWhileTheGuiThreadIsBusy();
    void whatIsPostedGoesWithTheLabel();
    void aHiddenLabelShowsTheLatestFrameWhenItComesBack();
    void survivesAWriterAtFullSpeed();
};

void tst_KdWebCamDisplayLabelFrames::paintsNoFrameBeforeRenderingStarts()
{
    bring(plainFrame(QSize(400, 300), Qt::red));
    QVERIFY(!m_label->isRendering());
    QCOMPARE(at(200, 150), QColor(Qt::black));
}

void tst_KdWebCamDisplayLabelFrames::delayedRenderingStartsAfterATenthOfASecond()
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

void tst_KdWebCamDisplayLabelFrames::aSecondDelayedStartDoesNotPostponeTheFirst()
{
    auto* const timer = m_label->findChild<QTimer*>();
    m_label->startRenderDelay();
    QTRY_VERIFY(timer->remainingTime() < 60);
    m_label->startRenderDelay();
    QVERIFY(timer->remainingTime() < 60);
    QTRY_VERIFY(m_label->isRendering());
}

/** Otherwise a start that was asked for before a change of camera would show its first frames. */
void tst_KdWebCamDisplayLabelFrames::stoppingTakesADelayedStartBack()
{
    m_label->startRenderDelay();
    m_label->stopRender();
    Surface other;
    other.startRenderDelay();
    QTRY_VERIFY(other.isRendering());
    QVERIFY(!m_label->isRendering());
}

void tst_KdWebCamDisplayLabelFrames::stoppingPaintsBlackAndFreesTheFrame()
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

void tst_KdWebCamDisplayLabelFrames::aFrameAfterTheStopIsStoredNotPaintedAndFreedByTheNextPaint()
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

void tst_KdWebCamDisplayLabelFrames::aBusyLockDropsTheFrameWithoutWaiting()
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

void tst_KdWebCamDisplayLabelFrames::paintingWaitsForTheLock()
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

void tst_KdWebCamDisplayLabelFrames::framesAreRepaintedSoon()
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

void tst_KdWebCamDisplayLabelFrames::framesComeOnWhileTheGuiThreadIsBusy()
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

void tst_KdWebCamDisplayLabelFrames::whatIsPostedGoesWithTheLabel()
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

void tst_KdWebCamDisplayLabelFrames::aHiddenLabelShowsTheLatestFrameWhenItComesBack()
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
void tst_KdWebCamDisplayLabelFrames::survivesAWriterAtFullSpeed()
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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebCamDisplayLabelFrames>(argc, argv);
}

#include "tst_KdWebCamDisplayLabelFrames.moc"
