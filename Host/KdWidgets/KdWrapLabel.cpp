#include <KdWidgets/KdWrapLabel.h>

#include <KdWidgets/KdText.h>

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

/** Lines of some fonts overlap; the last one would lose its descenders to that. */
int rowHeight(const QFontMetrics& metrics)
{
    return std::max(metrics.height(), metrics.lineSpacing());
}

} // namespace

KdWrapLabel::KdWrapLabel(const QString& text, int widest, int mostLines, QWidget* parent)
    : QLabel(parent), m_nWidest(widest), m_nMostLines(mostLines)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setText(text);
}

KdWrapLabel::~KdWrapLabel() = default;

QStringList KdWrapLabel::lines(int width) const
{
    return KdText::wrapped(text(), font(), width, m_nMostLines);
}

int KdWrapLabel::heightForWidth(int width) const
{
    return int(qMax(1, lines(width).size())) * rowHeight(fontMetrics());
}

QSize KdWrapLabel::sizeHint() const
{
    int widest = 0;
    const QStringList shown = lines(m_nWidest);
    for (const QString& line : shown) {
        // One pixel more: the metrics round, and a line of exactly its own width would break again.
        widest = std::max(widest, fontMetrics().horizontalAdvance(line) + 1);
    }
    widest = std::min(widest, m_nWidest);
    return {widest, heightForWidth(widest)};
}

QSize KdWrapLabel::minimumSizeHint() const
{
    return {std::min(sizeHint().width(), fontMetrics().averageCharWidth() * 8),
            rowHeight(fontMetrics())};
}

void KdWrapLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    drawFrame(&painter);
    // AlignLeft means the side where reading begins.
    painter.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const int flags = Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine | Qt::TextDontClip;
    const QStringList shown = lines(width());
    QRect row(0, 0, width(), rowHeight(fontMetrics()));
    row.moveTop(qMax(0, (height() - int(shown.size()) * row.height()) / 2));
    for (const QString& line : shown) {
        style()->drawItemText(&painter, row, flags, palette(), isEnabled(), line, foregroundRole());
        row.translate(0, row.height());
    }
}
