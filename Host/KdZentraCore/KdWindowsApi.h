#pragma once

#include <KdZentraCore/KdZentraCoreExport.h>

#include <qwindowdefs.h>

/** Calls to the window system. GUI thread. */
class KDZENTRACORE_EXPORT KdWindowsApi
{
public:
    /**
     * Takes a window's input away or gives it back. Windows that belong to it stay usable: on
     * Windows by the native call, elsewhere by swallowing this one window's mouse, wheel, touch and
     * key input, its shortcuts, what is dropped on it and the user's closing it. There
     * QEvent::ShortcutOverride still arrives, so that whoever watches the window for a shortcut
     * hears of it.
     * @param window as of QWidget::winId(); an unknown id does nothing.
     * @param enable false takes the input away, true gives it back; twice the same is harmless.
     */
    static void SetWindwosEnableApi(WId window, bool enable);
    /**
     * @param window as of QWidget::winId().
     * @return false while the window's input is taken away; true for an unknown id.
     */
    static bool IsWindowsEnableApi(WId window);
};
