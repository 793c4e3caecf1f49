#include <Studio/StudioUsageView.h>

#include <KdVBLModel/KdTrackEventLog.h>
#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioPaint.h>

#include <QEvent>
#include <QPainter>

namespace {

/** The log has no signal; once a second is soon enough for people. */
constexpr int kRefreshMs = 1000;

QString emptyText()
{
    return StudioUsageView::tr(
        "What is used in the recorder appears here. It stays on this machine.");
}

} // namespace

QString describeUsageEvent(const KdTrackEventRecord& event)
{
    QStringList parts{event.time.toLocalTime().toString(QStringLiteral("hh:mm:ss")), event.name};
    for (const auto& property : event.properties) {
        parts.append(QStringLiteral("%1=%2").arg(property.first, property.second.toString()));
    }
    return parts.join(QStringLiteral("  ")).simplified();
}

StudioUsageView::StudioUsageView(QWidget* parent) : QListWidget(parent)
{
    setObjectName(QStringLiteral("Studio_UsageList"));
    setUniformItemSizes(true);
    m_refresh.setInterval(kRefreshMs);
    connect(&m_refresh, &QTimer::timeout, this, &StudioUsageView::refresh);
    retranslate();
}

void StudioUsageView::retranslate()
{
    setAccessibleName(tr("Usage events"));
    setAccessibleDescription(count() == 0 ? emptyText() : QString());
    viewport()->update();
}

void StudioUsageView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QListWidget::changeEvent(event);
}

void StudioUsageView::refresh()
{
    QStringList lines;
    const QVector<KdTrackEventRecord> records = KdTrackEventLog::records();
    for (const KdTrackEventRecord& record : records) {
        lines.append(describeUsageEvent(record));
    }
    if (lines == m_lines) {
        return;
    }
    m_lines = lines;
    clear();
    addItems(m_lines);
    retranslate();
    scrollToBottom();
}

void StudioUsageView::showEvent(QShowEvent* event)
{
    refresh();
    m_refresh.start();
    QListWidget::showEvent(event);
}

void StudioUsageView::hideEvent(QHideEvent* event)
{
    m_refresh.stop();
    QListWidget::hideEvent(event);
}

void StudioUsageView::paintEvent(QPaintEvent* event)
{
    QListWidget::paintEvent(event);
    if (count() == 0) {
        QPainter painter(viewport());
        painter.setPen(StudioPaint::skin(KdSkin::TextQuiet));
        painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16),
                         Qt::AlignCenter | Qt::TextWordWrap, emptyText());
    }
}
