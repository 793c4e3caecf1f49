#include <KdWidgets/KdText.h>

namespace {
constexpr int kToolTipLength = 500;
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

QString KdText::toolTip(const QString& text)
{
    if (text.isEmpty()) {
        return QString();
    }
    QString shown = text;
    if (shown.size() > kToolTipLength) {
        shown = shown.left(kToolTipLength) + QChar(0x2026);
    }
    return QStringLiteral("<qt>%1</qt>").arg(shown.toHtmlEscaped());
}
