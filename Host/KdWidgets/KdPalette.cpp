#include <KdWidgets/KdPalette.h>

#include <QRegularExpression>

namespace KdSkin {

namespace {

QColor mixed(const QColor& base, const QColor& other, double share)
{
    const auto blend = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return {blend(base.red(), other.red()), blend(base.green(), other.green()),
            blend(base.blue(), other.blue())};
}

QString asSheetColor(const QColor& color)
{
    if (color.alpha() == 255) {
        return color.name();
    }
    return QStringLiteral("rgba(%1, %2, %3, %4)")
        .arg(color.red())
        .arg(color.green())
        .arg(color.blue())
        .arg(color.alpha());
}

} // namespace

KdPalette KdPalette::parse(const QString& skin, const QString& text)
{
    KdPalette palette;
    palette.m_sSkin = skin;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        const QColor color(words.value(1));
        if (words.size() == 2 && color.isValid()) {
            palette.m_colors.insert(words.first(), color);
        }
    }
    return palette;
}

QString KdPalette::fill(const QString& sheet) const
{
    static const QRegularExpression placeholder(QStringLiteral("@\\{([^}]+)\\}"));
    QString filled;
    int from = 0;
    auto match = placeholder.match(sheet);
    while (match.hasMatch()) {
        filled += sheet.mid(from, match.capturedStart() - from);
        filled += resolve(match.captured(1));
        from = match.capturedEnd();
        match = placeholder.match(sheet, from);
    }
    return filled + sheet.mid(from);
}

QString KdPalette::resolve(const QString& placeholder) const
{
    static const QRegularExpression icon(QStringLiteral("^icon ([a-z-]+) ([a-z-]+)(?: (\\d+)%)?$"));
    static const QRegularExpression tone(
        QStringLiteral("^([a-z-]+)(?:\\+([a-z-]+))?(?: (\\d+)%)?$"));
    if (const auto match = icon.match(placeholder); match.hasMatch()) {
        return iconFile(match.captured(1), match.captured(2), match.captured(3));
    }
    const auto match = tone.match(placeholder);
    QColor result = color(match.captured(1));
    const bool isMixed = !match.captured(2).isEmpty();
    if (!result.isValid() || (isMixed && !color(match.captured(2)).isValid())) {
        return QStringLiteral("@{%1}").arg(placeholder);
    }
    const double share = match.captured(3).isEmpty() ? 1.0 : match.captured(3).toInt() / 100.0;
    if (isMixed) {
        result = mixed(result, color(match.captured(2)), share);
    } else {
        result.setAlphaF(share);
    }
    return asSheetColor(result);
}

QString KdPalette::iconFile(const QString& name, const QString& token, const QString& percent) const
{
    const QString faint = percent.isEmpty() ? QString() : QLatin1Char('_') + percent;
    return QStringLiteral(":/KdSkin/icons/%1/%2_%3%4.svg").arg(m_sSkin, name, token, faint);
}

} // namespace KdSkin
