#pragma once

#include <KdWidgets/KdWidgetsExport.h>

class QWidget;

/** Looks that a program chooses by number; the skins say what they are. GUI thread. */
namespace KdUIStyle {

/**
 * @param widget gets the ground; not null.
 * @param type the ground's colour: 18 that of windows; others have none of their own.
 */
KDWIDGETS_EXPORT void SetBGColorType(QWidget* widget, int type);

} // namespace KdUIStyle
