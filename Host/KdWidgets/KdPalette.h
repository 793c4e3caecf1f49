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
    /** Reads lines of a token, a blank and a colour ("text-quiet #A7AFBA"); other lines are
     * ignored. */
    static KdPalette parse(const QString& skin, const QString& text);

    bool isEmpty() const { return m_colors.isEmpty(); }
    /** @return an invalid colour for an unknown token. */
    QColor color(const QString& token) const { return m_colors.value(token); }

    /**
     * Replaces the placeholders of a sheet:
     * "@{text}" the colour of a token, "@{text 40%}" the same at that opacity,
     * "@{field+text 6%}" the first with so much of the second mixed in. An unknown token leaves the
     * placeholder.
     */
    QString fill(const QString& sheet) const;

private:
    QString resolve(const QString& placeholder) const;
    QString iconFile(const QString& name, const QString& token, const QString& percent) const;

    QString m_sSkin;
    QHash<QString, QColor> m_colors;
};

} // namespace KdSkin
