#pragma once

#include <QString>
#include <QVector>

/** A fenced block of a page: what follows its opening fence, and what it holds. */
struct GuideBlock
{
    QString language; ///< "cpp"
    QString name;     ///< the rest of the opening line, "main.cpp"; may be empty
    QString text;     ///< its lines, each with a line break
};

/** The pages of the documentation as the tests follow them. */
namespace GuideBlocks {

/** @return the fenced blocks in their order */
QVector<GuideBlock> of(const QString& markdown);

/** @return whether the lines stand in text in this order, with others between them, whatever their
 * indentation */
bool quotes(const QString& lines, const QString& text);

} // namespace GuideBlocks
