#include "KdInputBlocker.h"
#include "KdWindowsApi.h"

#include <QWidget>

void KdWindowsApi::SetWindwosEnableApi(WId window, bool enable)
{
    QWidget* const widget = QWidget::find(window);
    if (!widget) {
        return;
    }
    if (enable) {
        KdInputBlocker::instance()->release(widget);
    } else {
        KdInputBlocker::instance()->block(widget);
    }
}

bool KdWindowsApi::IsWindowsEnableApi(WId window)
{
    return !KdInputBlocker::instance()->isBlocked(QWidget::find(window));
}
