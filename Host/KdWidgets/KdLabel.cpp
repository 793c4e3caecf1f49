#include <KdWidgets/KdLabel.h>

#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdText.h>

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QToolTip>

KdLabel::KdLabel(QWidget* parent) : KdLabel(QString(), parent) {}

KdLabel::KdLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    setTextFormat(Qt::PlainText);
}

KdLabel::~KdLabel() = default;

void KdLabel::setCaption(bool caption)
{
    setProperty("caption", caption);
    KdSkin::KdSkinManager::repolish(this);
}

QString KdLabel::overflowText() const
{
    if (wordWrap() || fontMetrics().horizontalAdvance(text()) <= contentsRect().width()) {
        return QString();
    }
    return text();
}

QSize KdLabel::minimumSizeHint() const
{
    const QSize hint = QLabel::minimumSizeHint();
    if (wordWrap() || text().isEmpty()) {
        return hint;
    }
    const int ellipsis = fontMetrics().horizontalAdvance(QChar(0x2026));
    return {qMin(hint.width(), ellipsis + 2 * margin()), hint.height()};
}

bool KdLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !overflowText().isEmpty()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), KdText::toolTip(text()),
                           this);
        return true;
    }
    return QLabel::event(event);
}

void KdLabel::paintEvent(QPaintEvent* event)
{
    if (overflowText().isEmpty()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    const QRect area = contentsRect();
    const QString line =
        fontMetrics().elidedText(KdText::singleLine(text()), Qt::ElideRight, area.width());
    style()->drawItemText(&painter, area, int(alignment()) | Qt::TextSingleLine, palette(),
                          isEnabled(), line, foregroundRole());
}
