#pragma once

#include <QImage>
#include <QLabel>

#include <mutex>

/**
 * A webcam preview by the plain recipe, the reference for the module's own in tests and benchmark:
 * each frame becomes a pixmap, which is mirrored and masked at its full size and scaled while it is
 * painted, the first part under the lock that frames need.
 */
class PlainPreview : public QLabel
{
    Q_OBJECT

public:
    explicit PlainPreview(QWidget* parent = nullptr);

    /** As KdWebCamDisplayLabel::WebcamFrameChanged(). @return false for a dropped frame. */
    bool put(int width, int height, const uchar* bits);
    void setOptions(bool isRound, bool isFlipped);
    std::mutex& frameLock() { return m_lock; }

    /** What the recipe shows of a frame on a surface of that size, in pixels of the screen. */
    static QImage picture(const QImage& frame, const QSize& area, qreal ratio, bool isRound,
                          bool isFlipped);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    static QPixmap prepared(const QImage& frame, bool isRound, bool isFlipped);
    static void paint(QPainter* painter, const QPixmap& pixmap, const QRect& area);

    std::mutex m_lock;
    QByteArray m_buffer;
    int m_width = 0;
    int m_height = 0;
    bool m_isRound = false;
    bool m_isFlipped = false;
};
