#include "KQuestionLabel.h"

#include "KdScreenPixmap.h"

#include <QPainter>

KQuestionLabel::KQuestionLabel(QWidget* parent)
    : QLabel(parent)
    , m_pixmap(KdScreenPixmap::load(QStringLiteral(":/Resource/icon16_help_normal.png"),
                                    devicePixelRatioF()))
{
}

KQuestionLabel::~KQuestionLabel() = default;

void KQuestionLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), m_pixmap);
}
