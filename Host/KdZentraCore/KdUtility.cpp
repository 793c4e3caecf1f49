#include "KdUtility.h"

#include <QPointer>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace {

QPointer<QWidget>& mainWindow()
{
    static QPointer<QWidget> window;
    return window;
}

} // namespace

QWidget* KdUtility::gGetMainWindow()
{
    return mainWindow();
}

void KdUtility::gSetMainWindow(QWidget* window)
{
    mainWindow() = window;
}

void KdUtility::moveWidgetToCenter(QWidget* widget)
{
    if (!widget || !widget->isWindow() || !widget->screen()) {
        return;
    }
    const QRect available = widget->screen()->availableGeometry();
    QRect frame = widget->frameGeometry();
    frame.moveCenter(available.center());
    // A window that is too large keeps its title bar within reach.
    widget->move(std::max(frame.left(), available.left()), std::max(frame.top(), available.top()));
}

QString KdUtility::gGetProductName()
{
    return QStringLiteral("KdRecord Studio");
}
