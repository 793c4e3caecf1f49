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
     * hears of it. Disabling twice and enabling twice are harmless; an unknown id does nothing.
     */
    static void SetWindwosEnableApi(WId window, bool enable);
    /** @return false while the window's input is taken away. */
    static bool IsWindowsEnableApi(WId window);
};
