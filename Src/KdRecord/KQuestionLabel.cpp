#include "KQuestionLabel.h"

#include "KdRecordAccessibility.h"
#include "KdScreenPixmap.h"

#include <KdWidgets/KdSkinManager.h>

#include <QPainter>

namespace {

constexpr int RingWidth = 2;

} // namespace

KQuestionLabel::KQuestionLabel(QWidget* parent) : QLabel(parent)
{
    KdRecordAccessibility::install();
    // The keyboard cannot hover: what a pointer over the mark explains, its focus does too.
    setFocusPolicy(Qt::TabFocus);
}

KQuestionLabel::~KQuestionLabel() = default;

void KQuestionLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QString file = QStringLiteral(":/Resource/icon16_help_normal.png");
    painter.drawPixmap(rect(), KdScreenPixmap::load(file, painter));
    if (hasFocus()) {
        const QColor accent = KdSkin::KdSkinManager::instance()->color(KdSkin::Accent);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(accent, RingWidth));
        painter.drawEllipse(QRectF(rect()).adjusted(1, 1, -1, -1));
    }
}
