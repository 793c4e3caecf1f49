#include "GuideBlocks.h"

#include <QRegularExpression>
#include <QStringList>

QVector<GuideBlock> GuideBlocks::of(const QString& markdown)
{
    static const QRegularExpression fenced(QStringLiteral("^```(\\w*) ?([^\\n]*)\\n(.*?)^```$"),
                                           QRegularExpression::MultilineOption |
                                               QRegularExpression::DotMatchesEverythingOption);
    QVector<GuideBlock> blocks;
    QRegularExpressionMatchIterator it = fenced.globalMatch(markdown);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        blocks.append({match.captured(1), match.captured(2), match.captured(3)});
    }
    return blocks;
}

bool GuideBlocks::quotes(const QString& lines, const QString& text)
{
    const QStringList wanted = lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const QStringList there = text.split(QLatin1Char('\n'));
    auto place = there.begin();
    for (const QString& line : wanted) {
        place = std::find_if(place, there.end(), [&line](const QString& candidate) {
            return candidate.trimmed() == line.trimmed();
        });
        if (place == there.end()) {
            return false;
        }
        ++place;
    }
    return !wanted.isEmpty();
}
