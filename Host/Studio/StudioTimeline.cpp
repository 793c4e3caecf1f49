#include <Studio/StudioTimeline.h>

#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioAccessibility.h>
#include <Studio/StudioPaint.h>

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int kMargin = 16;
constexpr int kRulerHeight = 28;
constexpr int kTrackHeight = 56;
constexpr int kLeastMarkDistance = 96;
constexpr double kRadius = 6.0;
constexpr double kPictureWidth = 76.0;
/** Room behind the end, so that a growing take does not push the scale at every frame. */
constexpr double kSpare = 1.15;

/** @return the width that it takes: none where the clip is too short for it. */
double paintFirstPicture(QPainter& painter, const QRectF& clip, const QImage& picture)
{
    if (picture.isNull() || clip.width() < 2 * kPictureWidth) {
        return 0.0;
    }
    StudioPaint::thumbnail(
        painter, QRectF(clip.left() + 4, clip.top() + 4, kPictureWidth, clip.height() - 8), picture,
        kRadius - 2.0);
    return kPictureWidth;
}

QString emptyText()
{
    return StudioTimeline::tr("Takes line up here");
}

} // namespace

QVector<StudioClip> layOutClips(const QVector<StudioTake>& takes, double framesPerSecond)
{
    QVector<StudioClip> clips;
    qint64 start = 0;
    for (const StudioTake& take : takes) {
        if (take.state != StudioTake::State::Good) {
            continue;
        }
        const qint64 frames =
            std::max<qint64>(1, StudioTimecode::framesFromMs(take.durationMs, framesPerSecond));
        clips.append({take.path, take.name(), start, frames, {}, {}});
        start += frames;
    }
    return clips;
}

qint64 endOfClips(const QVector<StudioClip>& clips)
{
    return clips.isEmpty() ? 0 : clips.constLast().start + clips.constLast().frames;
}

StudioTimeline::StudioTimeline(QWidget* parent) : KdWidget(parent)
{
    StudioAccessibility::install();
    setObjectName(QStringLiteral("Studio_Timeline"));
    setFixedHeight(kRulerHeight + kTrackHeight + 2 * 8);
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            [this] { update(); });
    StudioTimeline::RetranslateUi();
}

void StudioTimeline::RetranslateUi()
{
    setAccessibleName(tr("Timeline"));
    setAccessibleDescription(m_clips.isEmpty() ? emptyText() : QString());
    update();
}

void StudioTimeline::setFrameRate(double framesPerSecond)
{
    m_framesPerSecond = framesPerSecond;
    update();
}

void StudioTimeline::setClips(const QVector<StudioClip>& clips)
{
    m_clips = clips;
    RetranslateUi();
}

void StudioTimeline::setCurrentClip(const QString& path)
{
    m_current = path;
    update();
}

void StudioTimeline::setPlayhead(qint64 frame)
{
    const qint64 target = std::max<qint64>(0, frame);
    if (m_playhead != target) {
        m_playhead = target;
        update();
    }
}

void StudioTimeline::beginRecording()
{
    m_recording = true;
    m_recordStart = endOfClips(m_clips);
    m_recordFrames = 0;
    setPlayhead(m_recordStart);
    update();
}

void StudioTimeline::setRecordedFrames(qint64 frames)
{
    if (!m_recording) {
        return;
    }
    m_recordFrames = std::max<qint64>(0, frames);
    setPlayhead(m_recordStart + m_recordFrames);
    update();
}

void StudioTimeline::endRecording()
{
    m_recording = false;
    m_recordFrames = 0;
    update();
}

StudioTimelineScale StudioTimeline::scale() const
{
    const qint64 recorded = m_recording ? m_recordStart + m_recordFrames : 0;
    const auto shown =
        static_cast<qint64>(static_cast<double>(std::max(endOfClips(m_clips), recorded)) * kSpare);
    return StudioTimelineScale::fit(shown, m_framesPerSecond, kMargin, width() - 2 * kMargin);
}

QSize StudioTimeline::sizeHint() const
{
    return {640, height()};
}

QRect StudioTimeline::track() const
{
    return {kMargin, kRulerHeight + 4, width() - 2 * kMargin, kTrackHeight};
}

QRectF StudioTimeline::clipRect(qint64 start, qint64 frames) const
{
    const StudioTimelineScale shown = scale();
    const QRect lane = track();
    const int left = shown.toPixel(start);
    return QRectF(left, lane.top(), std::max(2, shown.toPixel(start + frames) - left - 2),
                  lane.height());
}

void StudioTimeline::mousePressEvent(QMouseEvent* event)
{
    for (const StudioClip& clip : std::as_const(m_clips)) {
        if (clipRect(clip.start, clip.frames).contains(event->pos())) {
            Q_EMIT clipClicked(QString(clip.path));
            return;
        }
    }
}

void StudioTimeline::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(StudioPaint::skin(KdSkin::Text, 0.05));
    painter.drawRoundedRect(track(), kRadius, kRadius);
    paintRuler(painter);
    for (const StudioClip& clip : m_clips) {
        paintClip(painter, clip);
    }
    if (m_recording) {
        paintRecording(painter);
    } else if (m_clips.isEmpty()) {
        painter.setPen(StudioPaint::skin(KdSkin::TextQuiet));
        painter.drawText(track(), Qt::AlignCenter, emptyText());
    }
    paintPlayhead(painter);
}

void StudioTimeline::paintRuler(QPainter& painter) const
{
    const StudioTimelineScale shown = scale();
    const qint64 step = shown.markStep(m_framesPerSecond, kLeastMarkDistance);
    const int end = width() - kMargin;
    for (qint64 frame = 0; shown.toPixel(frame) <= end; frame += step) {
        const int x = shown.toPixel(frame);
        painter.setPen(StudioPaint::skin(KdSkin::Stroke));
        painter.drawLine(QPointF(x + 0.5, kRulerHeight - 6), QPointF(x + 0.5, kRulerHeight));
        painter.setPen(StudioPaint::skin(KdSkin::TextQuiet));
        const QRect label(x + 4, 4, kLeastMarkDistance - 8, kRulerHeight - 8);
        if (label.left() + painter.fontMetrics().horizontalAdvance(QLatin1Char('0')) * 11 <=
            width()) {
            painter.drawText(label, Qt::AlignVCenter | Qt::AlignLeft,
                             StudioTimecode::text(frame, m_framesPerSecond));
        }
    }
}

void StudioTimeline::paintClip(QPainter& painter, const StudioClip& clip) const
{
    const QRectF area = clipRect(clip.start, clip.frames);
    const bool chosen = clip.path == m_current;
    painter.setBrush(StudioPaint::skin(KdSkin::Accent, chosen ? 0.30 : 0.18));
    painter.setPen(chosen ? QPen(StudioPaint::skin(KdSkin::Accent), 2.0) : QPen(Qt::NoPen));
    painter.drawRoundedRect(area.adjusted(1, 1, -1, -1), kRadius, kRadius);
    painter.save();
    painter.setClipRect(area.adjusted(4, 0, -4, 0));
    const double pictured = paintFirstPicture(painter, area, clip.thumbnail);
    const QRectF rest = area.adjusted(pictured, 0, 0, 0);
    StudioPaint::waveform(painter, rest.adjusted(8, 20, -6, -6), clip.peaks,
                          StudioPaint::skin(KdSkin::Accent));
    painter.setPen(StudioPaint::skin(KdSkin::Text));
    const QString name = painter.fontMetrics().elidedText(clip.name, Qt::ElideRight,
                                                          static_cast<int>(rest.width()) - 16);
    painter.drawText(rest.adjusted(8, 3, -8, 0), Qt::AlignTop | Qt::AlignLeft, name);
    painter.restore();
}

void StudioTimeline::paintRecording(QPainter& painter) const
{
    const QRectF area = clipRect(m_recordStart, m_recordFrames);
    painter.setBrush(StudioPaint::skin(KdSkin::Record, 0.22));
    painter.setPen(QPen(StudioPaint::skin(KdSkin::Record), 1.0));
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(StudioPaint::skin(KdSkin::Record));
    if (area.width() >= 24.0) {
        painter.drawEllipse(QPointF(area.left() + 14, area.top() + 14), 4.0, 4.0);
    }
    const QString caption = tr("Recording");
    if (area.width() >= painter.fontMetrics().horizontalAdvance(caption) + 34) {
        painter.setPen(StudioPaint::skin(KdSkin::Text));
        painter.drawText(area.adjusted(24, 5, -4, 0), Qt::AlignTop | Qt::AlignLeft, caption);
    }
}

void StudioTimeline::paintPlayhead(QPainter& painter) const
{
    const double x = scale().toPixel(m_playhead) + 0.5;
    const QColor color = StudioPaint::skin(m_recording ? KdSkin::Record : KdSkin::Text);
    painter.setPen(QPen(color, 1.5));
    painter.drawLine(QPointF(x, kRulerHeight - 4), QPointF(x, track().bottom() + 4));
    QPainterPath head;
    head.moveTo(x - 6, kRulerHeight - 12);
    head.lineTo(x + 6, kRulerHeight - 12);
    head.lineTo(x, kRulerHeight - 3);
    head.closeSubpath();
    painter.fillPath(head, color);
}
