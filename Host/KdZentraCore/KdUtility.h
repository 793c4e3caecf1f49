#pragma once

#include <KdZentraCore/KdZentraCoreExport.h>

#include <QString>

class QWidget;

/** Small services around the host's windows. GUI thread. */
namespace KdUtility {

/** @return the host's main window, or null. */
KDZENTRACORE_EXPORT QWidget* gGetMainWindow();
/** @param window not owned; forgotten when it is destroyed. */
KDZENTRACORE_EXPORT void gSetMainWindow(QWidget* window);
/** Centres a top-level widget on the available area of the screen it is on. */
KDZENTRACORE_EXPORT void moveWidgetToCenter(QWidget* widget);
KDZENTRACORE_EXPORT QString gGetProductName();

} // namespace KdUtility
