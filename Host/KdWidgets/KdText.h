#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QString>
#include <QStringList>

class QFont;
class QHelpEvent;
class QWidget;

/** Texts that come from outside (names of devices and files) made fit to be shown. GUI thread. */
namespace KdText {

/**
 * @param text from outside.
 * @return text on one line: line breaks, tabs and control characters become blanks.
 */
KDWIDGETS_EXPORT QString singleLine(const QString& text);

/**
 * Breaks text at its line breaks and where a line would be wider than width: between words, inside
 * a word only when the word alone is wider.
 * @param text from outside.
 * @param font by which it is measured.
 * @param width of a line in pixels; less than 1 counts as 1.
 * @param mostLines when there are more, the last of so many ends in an ellipsis; 0: all.
 * @return the lines; none for an empty text.
 */
KDWIDGETS_EXPORT QStringList wrapped(const QString& text, const QFont& font, int width,
                                     int mostLines = 0);

/**
 * @param text from outside.
 * @return a tool tip that shows text letter by letter, wrapped, cut off after some 500 characters;
 * empty for an empty text.
 */
KDWIDGETS_EXPORT QString toolTip(const QString& text);

/**
 * @param text with a key text in brackets at the end, as in "Start (R)"; any other is as for
 * toolTip().
 * @return as toolTip(), with the key text in the quiet text colour of the current skin.
 */
KDWIDGETS_EXPORT QString toolTipWithShortcut(const QString& text);

/**
 * Answers a tool tip event of a widget.
 * @param event tells where.
 * @param widget whose tip it is.
 * @param tip made by one of the above; empty: a tip that is there is hidden.
 */
KDWIDGETS_EXPORT void showToolTip(const QHelpEvent* event, QWidget* widget, const QString& tip);

} // namespace KdText
