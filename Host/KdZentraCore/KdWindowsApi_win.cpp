#include "KdWindowsApi.h"

#include <windows.h>

namespace {

HWND toHandle(WId window)
{
    return reinterpret_cast<HWND>(window);
}

} // namespace

void KdWindowsApi::SetWindwosEnableApi(WId window, bool enable)
{
    if (IsWindow(toHandle(window))) {
        EnableWindow(toHandle(window), enable ? TRUE : FALSE);
    }
}

bool KdWindowsApi::IsWindowsEnableApi(WId window)
{
    return !IsWindow(toHandle(window)) || IsWindowEnabled(toHandle(window));
}
