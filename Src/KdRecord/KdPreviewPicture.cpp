#include "KdPreviewPicture.h"

#include "KdPreviewScaler.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using KdPreviewScaler::kWhole;
using KdPreviewScaler::Neighbours;
using KdPreviewScaler::Rows;

constexpr int kBytesPerPixel = 4;
constexpr quint32 kOpaque = 0xff000000U;

/** How the pixels of the picture lie on those of the frame, along one axis. */
struct Axis
{
    double offset;   ///< from the frame's edge to the picture's first pixel, in device pixels
    double perPixel; ///< the frame's pixels for each of the picture
    int count;       ///< of the frame's pixels

    double middleOf(int pixel) const { return (pixel + 0.5 + offset) * perPixel; }
};

Neighbours neighboursOf(const Axis& axis, int pixel, bool isMirrored)
{
    const double last = axis.count - 1;
    const double shown = qBound(0.0, axis.middleOf(pixel) - 0.5, last);
    const double place = isMirrored ? last - shown : shown;
    // The last pixel is the second of the last two, so that there are always two of them.
    const int first = std::max(std::min(int(place), axis.count - 2), 0);
    return {first, quint32(std::lround((place - first) * kWhole))};
}

quint32 darkened(quint32 pixel, double share)
{
    const auto part = int(std::lround(share * kWhole));
    const auto dark = [part](int channel) { return channel * part / int(kWhole); };
    return qRgb(dark(qRed(pixel)), dark(qGreen(pixel)), dark(qBlue(pixel)));
}

/** Half-open ranges of a picture's row: all of the outer is inside the outline at least in part,
 * all of the inner wholly. */
struct Span
{
    int outerBegin;
    int innerBegin;
    int innerEnd;
    int outerEnd;
};

/** The circle as large as the frame, in the frame's pixels. Its radius is a whole number: an odd
 * diameter leaves a straight piece of one pixel on each side. */
class Circle
{
public:
    Circle(const QSize& frame, const Axis& columns, const Axis& rows)
        : m_columns(columns), m_rows(rows), m_softness(columns.perPixel / 2)
    {
        const int diameter = std::min(frame.width(), frame.height());
        const int radius = diameter / 2;
        const int left = (frame.width() - diameter) / 2;
        const int top = (frame.height() - diameter) / 2;
        m_radius = radius;
        m_straight = diameter / 2.0 - radius;
        m_middle = QPointF(left + diameter / 2.0, top + diameter / 2.0);
    }

    Span span(int row, int width) const
    {
        const double beside =
            std::max(std::abs(m_rows.middleOf(row) - m_middle.y()) - m_straight, 0.0);
        const double outer = halfWidth(beside, m_radius + m_softness);
        const double inner = halfWidth(beside, m_radius - m_softness);
        const int outerBegin = firstFrom(m_middle.x() - outer, width);
        const int outerEnd = std::max(firstFrom(m_middle.x() + outer, width), outerBegin);
        const int innerBegin = qBound(outerBegin, firstFrom(m_middle.x() - inner, width), outerEnd);
        const int innerEnd = qBound(innerBegin, firstFrom(m_middle.x() + inner, width), outerEnd);
        return {outerBegin, innerBegin, innerEnd, outerEnd};
    }

    /** @return how much of a pixel lies inside. */
    double share(int column, int row) const
    {
        const double x = std::abs(m_columns.middleOf(column) - m_middle.x()) - m_straight;
        const double y = std::abs(m_rows.middleOf(row) - m_middle.y()) - m_straight;
        const double beyond = std::hypot(std::max(x, 0.0), std::max(y, 0.0)) +
                              std::min(std::max(x, y), 0.0) - m_radius;
        return qBound(0.0, 0.5 - beyond / m_columns.perPixel, 1.0);
    }

private:
    /** @return 0 as well when the row passes the circle by. */
    double halfWidth(double beside, double radius) const
    {
        return beside < radius ? std::sqrt(radius * radius - beside * beside) + m_straight : 0.0;
    }

    /** @return the first column whose middle lies at x or behind. */
    int firstFrom(double x, int width) const
    {
        return qBound(0, int(std::ceil(x / m_columns.perPixel - m_columns.offset - 0.5)), width);
    }

    Axis m_columns;
    Axis m_rows;
    double m_softness; ///< half a pixel of the picture
    double m_radius = 0;
    double m_straight = 0; ///< half of the straight piece
    QPointF m_middle;
};

/** Draws the pixels of one picture. */
class Drawing
{
public:
    Drawing(const KdPreviewFrame& frame, const KdPreviewLook& look, const QRectF& exact,
            const QRect& pixels)
        : m_frame(frame)
        , m_columns{pixels.x() - exact.x(), frame.width / exact.width(), frame.width}
        , m_rows{pixels.y() - exact.y(), frame.height / exact.height(), frame.height}
        , m_circle(QSize(frame.width, frame.height), m_columns, m_rows)
        , m_isRound(look.isRound)
    {
        m_neighbours.reserve(std::size_t(pixels.width()));
        for (int x = 0; x < pixels.width(); ++x) {
            m_neighbours.push_back(neighboursOf(m_columns, x, look.isFlipped));
        }
    }

    void drawRow(quint32* out, int y)
    {
        const Rows rows = rowsAt(neighboursOf(m_rows, y, false));
        const int width = int(m_neighbours.size());
        if (!m_isRound) {
            fill(out, rows, 0, width);
            return;
        }
        const Span span = m_circle.span(y, width);
        std::fill(out, out + span.outerBegin, kOpaque);
        fillRim(out, rows, y, span.outerBegin, span.innerBegin);
        fill(out, rows, span.innerBegin, span.innerEnd);
        fillRim(out, rows, y, span.innerEnd, span.outerEnd);
        std::fill(out + span.outerEnd, out + width, kOpaque);
    }

private:
    Rows rowsAt(const Neighbours& vertical) const
    {
        const std::ptrdiff_t stride = std::ptrdiff_t(m_frame.width) * kBytesPerPixel;
        const uchar* const upper = m_frame.bits + vertical.first * stride;
        return {upper, m_frame.height > 1 ? upper + stride : upper, vertical.part, m_frame.width};
    }

    void fill(quint32* out, const Rows& rows, int begin, int end)
    {
        KdPreviewScaler::fill(out, rows, m_neighbours, begin, end, &m_isOpaque);
    }

    void fillRim(quint32* out, const Rows& rows, int y, int begin, int end) const
    {
        for (int x = begin; x < end; ++x) {
            const quint32 pixel = KdPreviewScaler::mixed(rows, m_neighbours[std::size_t(x)]);
            out[x] = darkened(pixel, m_circle.share(x, y));
        }
    }

    KdPreviewFrame m_frame;
    Axis m_columns;
    Axis m_rows;
    Circle m_circle;
    bool m_isRound;
    bool m_isOpaque = true; ///< as far as it has been drawn
    std::vector<Neighbours> m_neighbours;
};

/** The pixels whose middles lie within the rectangle, at least one. */
QRect pixelsOf(const QRectF& exact)
{
    const QPoint begin(qRound(exact.left()), qRound(exact.top()));
    const int width = std::max(qRound(exact.right()) - begin.x(), 1);
    const int height = std::max(qRound(exact.bottom()) - begin.y(), 1);
    return {begin, QSize(width, height)};
}

} // namespace

qint64 KdPreviewFrame::byteCount() const
{
    if (width <= 0 || height <= 0) {
        return 0;
    }
    const qint64 bytes = qint64(width) * height; // of two ints, so that it cannot overflow
    return bytes > std::numeric_limits<int>::max() / kBytesPerPixel ? 0 : bytes * kBytesPerPixel;
}

QRect KdPreviewPicture::fitted(const QSize& frame, const QSize& area)
{
    const QSize size = frame.scaled(area, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return {(area.width() - size.width()) / 2, (area.height() - size.height()) / 2, size.width(),
            size.height()};
}

void KdPreviewPicture::draw(const KdPreviewFrame& frame, const KdPreviewLook& newLook)
{
    look = newLook;
    const QRect target = fitted(QSize(frame.width, frame.height), look.area);
    const QRectF exact(QPointF(target.topLeft()) * look.ratio, QSizeF(target.size()) * look.ratio);
    const QRect pixels = pixelsOf(exact);
    place = pixels.topLeft();
    if (image.size() != pixels.size()) {
        image = QImage(pixels.size(), QImage::Format_RGB32);
    }
    Drawing drawing(frame, look, exact, pixels);
    for (int y = 0; y < image.height(); ++y) {
        drawing.drawRow(reinterpret_cast<quint32*>(image.scanLine(y)), y);
    }
}
