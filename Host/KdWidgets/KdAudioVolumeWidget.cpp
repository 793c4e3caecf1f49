#include <KdWidgets/KdAudioVolumeWidget.h>

#include <KdWidgets/KdSkinManager.h>

#include <QAccessible>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFull = 100.0;
constexpr double kWarnFrom = 70.0;
constexpr double kClipFrom = 90.0;
constexpr double kUnitsPerDb = kFull / 60.0;
constexpr double kFallPerMs = 20.0 * kUnitsPerDb / 1000.0;
constexpr int kPeakHoldMs = 1500;
constexpr int kFrameMs = 33;
constexpr double kMarkWidth = 2.0;

struct Zone
{
    double from;
    double to;
    KdSkin::SkinColor color;
};

constexpr Zone kZones[] = {{0.0, kWarnFrom, KdSkin::Good},
                           {kWarnFrom, kClipFrom, KdSkin::Warn},
                           {kClipFrom, kFull, KdSkin::Record}};

KdSkin::SkinColor colorAt(double level)
{
    const auto* zone = std::find_if(std::begin(kZones), std::end(kZones) - 1,
                                    [level](const Zone& z) { return level <= z.to; });
    return zone->color;
}

} // namespace

KdAudioVolumeWidget::KdAudioVolumeWidget(QWidget* parent) : QWidget(parent)
{
    retranslate();
}

QSize KdAudioVolumeWidget::sizeHint() const
{
    return {116, 8};
}

void KdAudioVolumeWidget::setVolume(double volume)
{
    m_volume = std::isnan(volume) ? 0.0 : std::clamp(volume, 0.0, kFull);
    if (!isEnabled() && m_volume <= 0.0) {
        m_shown = 0.0;
        m_peak = 0.0;
    }
    m_shown = isVisible() ? std::max(m_shown, m_volume) : m_volume;
    if (m_volume > 0.0 && m_volume >= m_peak) {
        m_peak = m_volume;
        m_nPeakAgeMs = 0;
    }
    QAccessibleValueChangeEvent change(this, qRound(m_volume));
    QAccessible::updateAccessibility(&change);
    animate();
    update();
}

void KdAudioVolumeWidget::advance(int milliseconds)
{
    const double fall = kFallPerMs * std::max(0, milliseconds);
    m_shown = std::max(m_volume, m_shown - fall);
    m_nPeakAgeMs += std::max(0, milliseconds);
    if (m_nPeakAgeMs > kPeakHoldMs) {
        m_peak = std::max(m_shown, m_peak - fall);
    }
    update();
}

bool KdAudioVolumeWidget::isMoving() const
{
    return m_shown > m_volume || m_peak > m_shown;
}

void KdAudioVolumeWidget::animate()
{
    if (!isVisible() || !isMoving()) {
        m_timer.stop();
        return;
    }
    if (!m_timer.isActive()) {
        m_sinceFrame.start();
        m_timer.start(kFrameMs, this);
    }
}

void KdAudioVolumeWidget::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_timer.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    advance(int(m_sinceFrame.restart()));
    animate();
}

void KdAudioVolumeWidget::showEvent(QShowEvent* event)
{
    animate();
    QWidget::showEvent(event);
}

void KdAudioVolumeWidget::hideEvent(QHideEvent* event)
{
    m_timer.stop();
    QWidget::hideEvent(event);
}

void KdAudioVolumeWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    } else if (event->type() == QEvent::EnabledChange) {
        update();
    }
    QWidget::changeEvent(event);
}

void KdAudioVolumeWidget::retranslate()
{
    setAccessibleName(tr("Input level"));
}

void KdAudioVolumeWidget::paintEvent(QPaintEvent* /*event*/)
{
    const auto* skin = KdSkin::KdSkinManager::instance();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = width() / kFull;
    const double radius = height() / 2.0;
    QPainterPath track;
    track.addRoundedRect(rect(), radius, radius);
    painter.setClipPath(track);
    painter.setOpacity(isEnabled() ? 1.0 : 0.4);
    painter.fillRect(rect(), skin->color(KdSkin::Stroke));
    for (const Zone& zone : kZones) {
        const double to = std::min(m_shown, zone.to);
        if (to > zone.from) {
            painter.fillRect(QRectF(zone.from * scale, 0, (to - zone.from) * scale, height()),
                             skin->color(zone.color));
        }
    }
    if (m_peak > 0.0) {
        const double x = std::max(0.0, m_peak * scale - kMarkWidth);
        painter.fillRect(QRectF(x, 0, kMarkWidth, height()), skin->color(colorAt(m_peak)));
    }
    for (const double limit : {kWarnFrom, kClipFrom}) {
        painter.fillRect(QRectF(std::round(limit * scale), 0, 1, height()),
                         skin->color(KdSkin::Window));
    }
}
