#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QColor>
#include <QHash>
#include <QString>

namespace KdSkin {

/** The colours of one skin by token; fills the placeholders of sheets. A value. */
class KDWIDGETS_EXPORT KdPalette
{
public:
    /**
     * Reads lines of a token, a blank and a colour ("text-quiet #A7AFBA"); other lines are ignored.
     * @param skin name of the skin, by which placeholders find its icons.
     * @param text all lines.
     * @return the colours; empty when no line was one.
     */
    static KdPalette parse(const QString& skin, const QString& text);

    /** @return whether there is no colour. */
    bool isEmpty() const { return m_colors.isEmpty(); }
    /**
     * @param token as "text-quiet".
     * @return an invalid colour for an unknown token.
     */
    QColor color(const QString& token) const { return m_colors.value(token); }

    /**
     * Replaces the placeholders of a sheet:
     * - "@{text}": the colour of a token;
     * - "@{text 40%}": the same at that opacity;
     * - "@{field+text 6%}": the first with so much of the second mixed in;
     * - "@{icon check text 40%}": the file of the skin's icon in the colour of a token, with or
     * without an opacity.
     *
     * An unknown token leaves the placeholder.
     * @param sheet with placeholders.
     * @return the sheet without them.
     */
    QString fill(const QString& sheet) const;

private:
    QString resolve(const QString& placeholder) const;
    QString iconFile(const QString& name, const QString& token, const QString& percent) const;

    QString m_sSkin;
    QHash<QString, QColor> m_colors;
};

} // namespace KdSkin
