#include <KdWidgets/KdText.h>

#include <KdWidgets/KdSkinManager.h>

#include <QFontMetrics>
#include <QHelpEvent>
#include <QRegularExpression>
#include <QTextLayout>
#include <QTextOption>
#include <QToolTip>

namespace {

constexpr int kToolTipLength = 500;
constexpr QChar kEllipsis(0x2026);

QString shortened(const QString& text)
{
    return text.size() > kToolTipLength ? text.left(kToolTipLength) + kEllipsis : text;
}

QString asRichText(const QString& html)
{
    return QStringLiteral("<qt>%1</qt>").arg(html);
}

QString escaped(const QString& text)
{
    return shortened(text).toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br/>"));
}

} // namespace

QString KdText::singleLine(const QString& text)
{
    QString line = text;
    for (QChar& character : line) {
        const bool breaks =
            character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
        if (breaks || character.category() == QChar::Other_Control) {
            character = QLatin1Char(' ');
        }
    }
    return line;
}

QStringList KdText::wrapped(const QString& text, const QFont& font, int width, int mostLines)
{
    QString breakable = text;
    breakable.replace(QLatin1Char('\n'), QChar::LineSeparator);
    QTextLayout layout(breakable, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(qMax(1, width));
        if (mostLines > 0 && lines.size() == mostLines) {
            const QString rest = lines.last() + breakable.mid(line.textStart());
            lines.last() = QFontMetrics(font).elidedText(singleLine(rest), Qt::ElideRight, width);
            break;
        }
        lines.append(singleLine(breakable.mid(line.textStart(), line.textLength())));
    }
    layout.endLayout();
    return lines;
}

QString KdText::toolTip(const QString& text)
{
    return text.isEmpty() ? QString() : asRichText(escaped(text));
}

QString KdText::toolTipWithShortcut(const QString& text)
{
    static const QRegularExpression keyAtEnd(QStringLiteral("^(.*\\S)(\\s*\\([^()]+\\))$"));
    const auto match = keyAtEnd.match(text);
    if (!match.hasMatch()) {
        return toolTip(text);
    }
    const QColor quiet = KdSkin::KdSkinManager::instance()->color(KdSkin::TextQuiet);
    return asRichText(
        QStringLiteral("%1<span style=\"color:%2\">%3</span>")
            .arg(escaped(match.captured(1)), quiet.name(), escaped(match.captured(2))));
}

void KdText::showToolTip(const QHelpEvent* event, QWidget* widget, const QString& tip)
{
    if (tip.isEmpty()) {
        QToolTip::hideText();
        return;
    }
    QToolTip::showText(event->globalPos(), tip, widget);
}
