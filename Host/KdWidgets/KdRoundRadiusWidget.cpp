#include <KdWidgets/KdRoundRadiusWidget.h>

KdRoundRadiusWidget::KdRoundRadiusWidget(QWidget* parent) : KdWidget(parent)
{
    // Qt paints the ground of a sheet by itself only for a few classes.
    setAttribute(Qt::WA_StyledBackground);
}

KdRoundRadiusWidget::~KdRoundRadiusWidget() = default;
