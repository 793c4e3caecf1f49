#include "KdCountCtrlVideo.h"

#include "KdScreenPixmap.h"

#include <QPainter>
#include <QPointer>

#include <algorithm>

namespace {

constexpr int AnimationMs = 33;
constexpr int AngleStep = 12;
constexpr int DiscRadius = 50;
constexpr int NumberPixelSize = 60;
constexpr int RingSide = 145;

} // namespace

KdCountCtrlVideo::KdCountCtrlVideo(QWidget* parent) : KdCountCtrl(parent) {}

KdCountCtrlVideo::~KdCountCtrlVideo() = default;

void KdCountCtrlVideo::Start()
{
    KdCountCtrl::Start();
    m_nAngle = 0;
    if (!m_animTimer.isActive()) {
        m_animTimer.start(AnimationMs, this);
    }
    update();
}

void KdCountCtrlVideo::Abort()
{
    KdCountCtrl::Abort();
    stopSpinning();
}

void KdCountCtrlVideo::Finish()
{
    const QPointer<KdCountCtrlVideo> self(this);
    KdCountCtrl::Finish();
    if (self) {
        stopSpinning();
    }
}

void KdCountCtrlVideo::stopSpinning()
{
    m_animTimer.stop();
    update();
}

void KdCountCtrlVideo::timerEvent(QTimerEvent* event)
{
    KdCountCtrl::timerEvent(event);
    m_nAngle += AngleStep;
    if (m_nAngle >= 360) {
        m_nAngle = 0;
    }
    update();
}

void KdCountCtrlVideo::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const QPoint center = rect().center();
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(0xff, 0xff, 0xff));
        painter.drawEllipse(center, DiscRadius, DiscRadius);
        paintNumber(painter, center);
        paintRing(painter, center);
    }
    // The number and ring of the base are replaced, not painted over.
    KdLabel::paintEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

void KdCountCtrlVideo::paintNumber(QPainter& painter, const QPoint& center) const
{
    QFont numberFont = font();
    numberFont.setWeight(QFont::Bold);
    numberFont.setPixelSize(NumberPixelSize);
    const QString number = QStringLiteral("%1").arg(remainingSeconds());
    QRect box = QFontMetrics(numberFont).boundingRect(number);
    box.moveCenter(center);
    painter.setFont(numberFont);
    painter.setPen(QColor(0, 0, 0));
    painter.drawText(box, Qt::AlignCenter | Qt::TextDontClip, number);
}

void KdCountCtrlVideo::paintRing(QPainter& painter, const QPoint& center) const
{
    const QPixmap ring =
        KdScreenPixmap::load(QStringLiteral(":/Resource/icon145_Ellipse.png"), painter);
    if (ring.isNull()) {
        return;
    }
    const int offset = (std::min(width(), height()) - RingSide) / 2;
    painter.save();
    painter.translate(center);
    painter.rotate(m_nAngle);
    painter.translate(-center);
    painter.drawPixmap(QRect(offset, offset, RingSide, RingSide), ring);
    painter.restore();
}
