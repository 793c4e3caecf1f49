#include <Studio/StudioPictureView.h>

#include <Studio/StudioAccessibility.h>
#include <Studio/StudioPaint.h>

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr double kRadius = 6.0;

} // namespace

StudioPictureView::StudioPictureView(QWidget* parent) : QWidget(parent)
{
    StudioAccessibility::install();
    setObjectName(QStringLiteral("Studio_Picture"));
    setMinimumHeight(96);
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            [this] { update(); });
}

void StudioPictureView::setPoster(const QImage& poster)
{
    m_poster = poster;
    update();
}

void StudioPictureView::setPicture(const QImage& picture)
{
    m_picture = picture;
    update();
}

QSize StudioPictureView::sizeHint() const
{
    return {480, 270};
}

void StudioPictureView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.setPen(QPen(StudioPaint::skin(KdSkin::Stroke), 1.0));
    painter.setBrush(StudioPaint::skin(KdSkin::Surface));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    const QImage picture = shown();
    if (picture.isNull()) {
        return;
    }
    QRectF target(QPointF(),
                  QSizeF(picture.size()).scaled(size() - QSize(2, 2), Qt::KeepAspectRatio));
    target.moveCenter(QRectF(rect()).center());
    StudioPaint::thumbnail(painter, target, picture, kRadius, isEnabled() ? 1.0 : 0.4);
}
