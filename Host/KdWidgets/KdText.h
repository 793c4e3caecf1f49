#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QString>

/** Texts that come from outside (names of devices and files) made fit to be shown. Any thread. */
namespace KdText {

/** @return text on one line: line breaks, tabs and control characters become blanks. */
KDWIDGETS_EXPORT QString singleLine(const QString& text);

/** @return a tool tip that shows text letter by letter, wrapped, cut off after some 500 characters.
 */
KDWIDGETS_EXPORT QString toolTip(const QString& text);

} // namespace KdText
