#include <KdWidgets/KdLineWidget.h>

#include <KdWidgets/KdSkinManager.h>

#include <QPainter>

KdLineWidget::KdLineWidget(Qt::Orientation orientation, int skinColor, QWidget* parent)
    : QWidget(parent), m_orientation(orientation), m_nSkinColor(skinColor)
{
    if (orientation == Qt::Horizontal) {
        setFixedHeight(1);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    } else {
        setFixedWidth(1);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    }
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            [this] { update(); });
}

QSize KdLineWidget::sizeHint() const
{
    return m_orientation == Qt::Horizontal ? QSize(16, 1) : QSize(1, 16);
}

void KdLineWidget::paintEvent(QPaintEvent* /*event*/)
{
    const auto* skin = KdSkin::KdSkinManager::instance();
    const QColor asked = skin->color(static_cast<KdSkin::SkinColor>(m_nSkinColor));
    QPainter(this).fillRect(rect(), asked.isValid() ? asked : skin->color(KdSkin::Stroke));
}
