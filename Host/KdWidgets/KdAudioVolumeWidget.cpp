#include <KdWidgets/KdAudioVolumeWidget.h>

#include <KdWidgets/KdSkinManager.h>

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

KdAudioVolumeWidget::KdAudioVolumeWidget(QWidget* parent) : QWidget(parent) {}

QSize KdAudioVolumeWidget::sizeHint() const
{
    return {116, 8};
}

void KdAudioVolumeWidget::setVolume(double volume)
{
    m_volume = std::isnan(volume) ? 0.0 : std::clamp(volume, 0.0, 100.0);
    m_shown = m_volume;
    m_peak = isEnabled() || m_volume > 0.0 ? std::max(m_peak, m_volume) : 0.0;
    update();
}

void KdAudioVolumeWidget::paintEvent(QPaintEvent* /*event*/)
{
    const auto* skin = KdSkin::KdSkinManager::instance();
    QPainter painter(this);
    painter.fillRect(rect(), skin->color(KdSkin::Field));
    QRect bar = rect();
    bar.setWidth(int(width() * m_shown / 100.0));
    painter.fillRect(bar, skin->color(KdSkin::Good));
}

void KdAudioVolumeWidget::timerEvent(QTimerEvent* event)
{
    QWidget::timerEvent(event);
}

void KdAudioVolumeWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
}
