#include <KdWidgets/KdLabel.h>

#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdText.h>

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

namespace {
constexpr int kWidestHint = 480;
constexpr QChar kEllipsis(0x2026);
} // namespace

KdLabel::KdLabel(QWidget* parent) : KdLabel(QString(), parent) {}

KdLabel::KdLabel(const QString& text, QWidget* parent) : QLabel(parent)
{
    KdSkin::KdSkinManager::instance();
    setTextFormat(Qt::PlainText);
    setText(text);
}

KdLabel::~KdLabel() = default;

void KdLabel::setCaption(bool caption)
{
    setProperty("caption", caption);
    KdSkin::KdSkinManager::repolish(this);
}

QString KdLabel::overflowText() const
{
    if (wordWrap() || text().isEmpty()) {
        return QString();
    }
    const int needed = fontMetrics().horizontalAdvance(KdText::singleLine(text()));
    return needed > contentsRect().width() - 2 * margin() ? text() : QString();
}

QSize KdLabel::sizeHint() const
{
    const QSize hint = QLabel::sizeHint();
    return wordWrap() ? hint : onOneLine(hint, kWidestHint);
}

QSize KdLabel::minimumSizeHint() const
{
    const QSize hint = QLabel::minimumSizeHint();
    if (wordWrap() || text().isEmpty()) {
        return hint;
    }
    return onOneLine(hint, fontMetrics().horizontalAdvance(kEllipsis) + 2 * margin());
}

QSize KdLabel::onOneLine(const QSize& hint, int widest) const
{
    const QString line = KdText::singleLine(text());
    if (line == text()) {
        return {qMin(hint.width(), widest), hint.height()};
    }
    const int spare = hint.height() - fontMetrics().size(0, text()).height();
    const QSize size = fontMetrics().size(Qt::TextSingleLine, line);
    return {qMin(size.width() + spare, widest), size.height() + spare};
}

bool KdLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const QString tip = toolTip().isEmpty() ? overflowText() : toolTip();
        KdText::showToolTip(static_cast<QHelpEvent*>(event), this, KdText::toolTip(tip));
        return true;
    }
    return QLabel::event(event);
}

void KdLabel::paintEvent(QPaintEvent* event)
{
    const QString whole = KdText::singleLine(text());
    if (wordWrap() || (overflowText().isEmpty() && whole == text())) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    drawFrame(&painter);
    const QRect area = contentsRect().adjusted(margin(), margin(), -margin(), -margin());
    const QString line = fontMetrics().elidedText(whole, Qt::ElideRight, area.width());
    const auto direction = text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
    const auto placed = QStyle::visualAlignment(direction, alignment());
    style()->drawItemText(&painter, area, int(placed) | Qt::TextSingleLine, palette(), isEnabled(),
                          line, foregroundRole());
}
