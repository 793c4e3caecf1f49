#include <Studio/StudioWaveformView.h>

#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioAccessibility.h>
#include <Studio/StudioPaint.h>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int kPadding = 12;
constexpr int kFlatHeight = 56;
constexpr int kLeastHeight = 96;
constexpr int kMostHeight = 168;
constexpr double kRadius = 6.0;

} // namespace

StudioWaveformView::StudioWaveformView(QWidget* parent) : KdWidget(parent)
{
    StudioAccessibility::install();
    setObjectName(QStringLiteral("Studio_Waveform"));
    setFocusPolicy(Qt::StrongFocus);
    setFlat(false);
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            [this] { update(); });
    StudioWaveformView::RetranslateUi();
}

void StudioWaveformView::RetranslateUi()
{
    setAccessibleName(tr("Waveform"));
}

void StudioWaveformView::setPeaks(const StudioPeaks& peaks)
{
    m_peaks = peaks;
    update();
}

void StudioWaveformView::setNotice(const QString& text)
{
    m_notice = text;
    setAccessibleDescription(text);
    update();
}

void StudioWaveformView::setFlat(bool flat)
{
    setMinimumHeight(flat ? kFlatHeight : kLeastHeight);
    setMaximumHeight(flat ? kFlatHeight : kMostHeight);
}

void StudioWaveformView::setDuration(qint64 milliseconds)
{
    m_duration = std::max<qint64>(0, milliseconds);
    setPosition(m_position);
    update();
}

void StudioWaveformView::setPosition(qint64 milliseconds)
{
    const qint64 position = std::clamp<qint64>(milliseconds, 0, m_duration);
    if (position != m_position) {
        m_position = position;
        update();
    }
}

QSize StudioWaveformView::sizeHint() const
{
    return {480, 136};
}

QRect StudioWaveformView::waveformArea() const
{
    return rect().adjusted(kPadding, kPadding, -kPadding, -kPadding);
}

bool StudioWaveformView::canSeek() const
{
    return m_notice.isEmpty() && m_duration > 0;
}

void StudioWaveformView::seekTo(int pixel)
{
    const QRect area = waveformArea();
    if (!canSeek() || area.width() <= 0) {
        return;
    }
    const double part = static_cast<double>(pixel - area.left()) / area.width();
    Q_EMIT seekRequested(
        static_cast<qint64>(std::clamp(part, 0.0, 1.0) * static_cast<double>(m_duration)));
}

void StudioWaveformView::mousePressEvent(QMouseEvent* event)
{
    seekTo(event->pos().x());
}

void StudioWaveformView::mouseMoveEvent(QMouseEvent* event)
{
    seekTo(event->pos().x());
}

void StudioWaveformView::keyPressEvent(QKeyEvent* event)
{
    const bool back = event->key() == Qt::Key_Left;
    if (!canSeek() || (!back && event->key() != Qt::Key_Right)) {
        QWidget::keyPressEvent(event);
        return;
    }
    seek(m_position + (back ? -kKeyStepMs : kKeyStepMs));
}

void StudioWaveformView::seek(qint64 milliseconds)
{
    if (canSeek()) {
        Q_EMIT seekRequested(std::clamp<qint64>(milliseconds, 0, m_duration));
    }
}

void StudioWaveformView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setBrush(StudioPaint::skin(KdSkin::Surface));
    painter.setPen(hasFocus() ? QPen(StudioPaint::skin(KdSkin::Accent), 2.0)
                              : QPen(StudioPaint::skin(KdSkin::Stroke), 1.0));
    painter.drawRoundedRect(hasFocus() ? frame.adjusted(0.5, 0.5, -0.5, -0.5) : frame, kRadius,
                            kRadius);
    if (!m_notice.isEmpty()) {
        painter.setPen(StudioPaint::skin(KdSkin::TextQuiet));
        painter.drawText(waveformArea(), Qt::AlignCenter | Qt::TextWordWrap, m_notice);
        return;
    }
    const double opacity = isEnabled() ? 1.0 : 0.4;
    const QRectF area(waveformArea());
    const double played = m_duration > 0 ? area.width() * static_cast<double>(m_position) /
                                               static_cast<double>(m_duration)
                                         : 0.0;
    painter.setClipRect(QRectF(area.left(), 0, played, height()));
    StudioPaint::waveform(painter, area, m_peaks, StudioPaint::skin(KdSkin::Accent, opacity));
    painter.setClipRect(QRectF(area.left() + played, 0, width(), height()));
    StudioPaint::waveform(painter, area, m_peaks, StudioPaint::skin(KdSkin::TextQuiet, opacity));
    painter.setClipping(false);
    if (m_position > 0) {
        painter.setPen(QPen(StudioPaint::skin(KdSkin::Accent, opacity), 2.0));
        painter.drawLine(QPointF(area.left() + played, 6),
                         QPointF(area.left() + played, height() - 6));
    }
}
