#pragma once

#include <QString>
#include <QStringList>

#include <algorithm>

/** What a program wrote, for the message of a failed test: Qt Test cuts long texts. */
namespace ProgramLog {

/** @return the text without the records that only tell of progress. */
inline QString withoutProgress(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.erase(
        std::remove_if(lines.begin(), lines.end(),
                       [](const QString& line) { return line.contains(QLatin1String(" info [")); }),
        lines.end());
    return lines.join(QLatin1Char('\n'));
}

} // namespace ProgramLog
