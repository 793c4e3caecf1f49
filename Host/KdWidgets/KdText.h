#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QString>
#include <QStringList>

class QFont;
class QHelpEvent;
class QWidget;

/** Texts that come from outside (names of devices and files) made fit to be shown. GUI thread. */
namespace KdText {

/** @return text on one line: line breaks, tabs and control characters become blanks. */
KDWIDGETS_EXPORT QString singleLine(const QString& text);

/**
 * Breaks text at its line breaks and where a line would be wider than width pixels: between words,
 * inside a word only when the word alone is wider.
 * @param mostLines when there are more, the last of so many ends in an ellipsis; 0: all.
 */
KDWIDGETS_EXPORT QStringList wrapped(const QString& text, const QFont& font, int width,
                                     int mostLines = 0);

/** @return a tool tip that shows text letter by letter, wrapped, cut off after some 500 characters.
 */
KDWIDGETS_EXPORT QString toolTip(const QString& text);

/** As toolTip(), with a key text in brackets at the end, as in "Start (R)", in the quiet text
 * colour. */
KDWIDGETS_EXPORT QString toolTipWithShortcut(const QString& text);

/** Answers a tool tip event of widget: shows a tip made by one of the above, or hides it when it is
 * empty. */
KDWIDGETS_EXPORT void showToolTip(const QHelpEvent* event, QWidget* widget, const QString& tip);

} // namespace KdText
