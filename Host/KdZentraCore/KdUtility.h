#pragma once

#include <KdZentraCore/KdZentraCoreExport.h>

#include <QString>

class QWidget;

/** Small services around the host's windows. GUI thread. */
namespace KdUtility {

/**
 * @return the host's main window, not the caller's; null before gSetMainWindow() and after its end.
 */
KDZENTRACORE_EXPORT QWidget* gGetMainWindow();
/**
 * Names the window that takes no input while a take runs.
 * @param window not owned; forgotten when it is destroyed. Null: none.
 */
KDZENTRACORE_EXPORT void gSetMainWindow(QWidget* window);
/**
 * Centres a window on the available area of the screen it is on; the top left corner of one that is
 * too large stays on the screen.
 * @param widget a top-level widget; null and any other are left alone.
 */
KDZENTRACORE_EXPORT void moveWidgetToCenter(QWidget* widget);
/** @return the host's name as its user knows it, for the titles of its windows; not translated. */
KDZENTRACORE_EXPORT QString gGetProductName();

} // namespace KdUtility
