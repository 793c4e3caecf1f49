#include "PlainPreview.h"

#include <QBitmap>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cstring>

namespace {

QPixmap cutRound(QPixmap pixmap)
{
    if (pixmap.isNull()) {
        return pixmap;
    }
    const int diameter = std::min(pixmap.width(), pixmap.height());
    QBitmap mask(pixmap.size());
    {
        QPainter painter(&mask);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        painter.fillRect(mask.rect(), Qt::color0);
        painter.setBrush(QColor(0, 0, 0));
        painter.drawRoundedRect((pixmap.width() - diameter) / 2, (pixmap.height() - diameter) / 2,
                                diameter, diameter, diameter / 2, diameter / 2); // NOLINT
    }
    pixmap.setMask(mask);
    return pixmap;
}

} // namespace

PlainPreview::PlainPreview(QWidget* parent) : QLabel(parent) {}

bool PlainPreview::put(int width, int height, const uchar* bits)
{
    const std::unique_lock<std::mutex> lock(m_lock, std::try_to_lock);
    if (!lock) {
        return false;
    }
    const int size = width * height * 4;
    if (m_buffer.size() != size) {
        m_buffer = QByteArray(size, Qt::Uninitialized);
    }
    std::memcpy(m_buffer.data(), bits, std::size_t(size));
    m_width = width;
    m_height = height;
    return true;
}

void PlainPreview::setOptions(bool isRound, bool isFlipped)
{
    m_isRound = isRound;
    m_isFlipped = isFlipped;
    update();
}

QPixmap PlainPreview::prepared(const QImage& frame, bool isRound, bool isFlipped)
{
    QPixmap pixmap = QPixmap::fromImage(frame);
    if (isFlipped) {
        pixmap = pixmap.transformed(QTransform::fromScale(-1, 1));
    }
    return isRound ? cutRound(pixmap) : pixmap;
}

void PlainPreview::paint(QPainter* painter, const QPixmap& pixmap, const QRect& area)
{
    const QSize target =
        pixmap.size().scaled(area.size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    const QRect place((area.width() - target.width()) / 2, (area.height() - target.height()) / 2,
                      target.width(), target.height());
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter->drawPixmap(place, pixmap);
}

QImage PlainPreview::picture(const QImage& frame, const QSize& area, qreal ratio, bool isRound,
                             bool isFlipped)
{
    QImage shown((QSizeF(area) * ratio).toSize(), QImage::Format_RGB32);
    shown.setDevicePixelRatio(ratio);
    shown.fill(Qt::black);
    QPainter painter(&shown);
    paint(&painter, prepared(frame, isRound, isFlipped), QRect(QPoint(), area));
    painter.end();
    shown.setDevicePixelRatio(1);
    return shown;
}

void PlainPreview::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::black);
        QPixmap pixmap;
        {
            const std::lock_guard<std::mutex> lock(m_lock);
            const QImage frame(reinterpret_cast<const uchar*>(m_buffer.constData()), m_width,
                               m_height, QImage::Format_ARGB32);
            pixmap = prepared(frame, m_isRound, m_isFlipped);
        }
        paint(&painter, pixmap, rect());
    }
    QLabel::paintEvent(event);
}
