#include "KdCountCtrl.h"

#include "KdRecordAccessibility.h"

#include <KdWidgets/KdSkinManager.h>

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStyleOption>

#include <algorithm>
#include <limits>

namespace {

constexpr int TickMs = 50;
constexpr int DefaultCount = 3;
constexpr int FullCircle = 360 * 16;
constexpr int TwelveOClock = 90 * 16;

int ticksOf(int seconds)
{
    const qint64 ticks = qint64(seconds) * 1000 / TickMs;
    return int(std::min<qint64>(ticks, std::numeric_limits<int>::max()));
}

// QColor warns about names that it does not know, which a style sheet may well hold.
QColor colorOf(const QString& name)
{
    return QColor::isValidColor(name) ? QColor(name) : QColor();
}

} // namespace

KdCountCtrl::KdCountCtrl(QWidget* parent)
    : KdLabel(parent), m_timer(this), m_nCount(DefaultCount), m_nTotalTicks(ticksOf(DefaultCount))
{
    KdRecordAccessibility::install();
    m_timer.setObjectName(QStringLiteral("KdCountCtrl_Timer"));
    m_timer.setInterval(TickMs);
    connect(&m_timer, &QTimer::timeout, this, &KdCountCtrl::tick);

    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    KdSkin::KdSkinManager::instance()->applyStyleSheet(this,
                                                       QStringLiteral("CommonView/KdCountCtrl"), 0);
}

KdCountCtrl::~KdCountCtrl() = default;

void KdCountCtrl::SetCount(int n)
{
    m_nTick = 0;
    m_nCount = n < 0 ? DefaultCount : n;
    m_nTotalTicks = ticksOf(m_nCount);
}

void KdCountCtrl::SetCycleWidth(int w)
{
    m_nCycleWidth = qBound(1, w, 20);
    update();
}

void KdCountCtrl::SetCycleColor(const QString& color)
{
    m_CycleColor = color;
}

void KdCountCtrl::SetTextColor(const QString& color)
{
    m_TextColor = color;
}

void KdCountCtrl::Start()
{
    m_timer.start(TickMs);
    announce();
    update();
}

void KdCountCtrl::Abort()
{
    m_timer.stop();
}

void KdCountCtrl::Finish()
{
    m_timer.stop();
    Q_EMIT sigFinish();
}

void KdCountCtrl::tick()
{
    if (m_nTick < std::numeric_limits<int>::max()) {
        ++m_nTick;
    }
    if (m_nTick < m_nTotalTicks) {
        if (remainingSeconds() != m_nAnnounced) {
            announce();
        }
        repaint();
    } else {
        Finish();
    }
}

void KdCountCtrl::describe()
{
    setAccessibleName(tr("Recording starts in %1").arg(remainingSeconds()));
}

/** For those who do not see the number. */
void KdCountCtrl::announce()
{
    m_nAnnounced = remainingSeconds();
    if (m_nAnnounced > 0) {
        describe();
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void KdCountCtrl::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && !accessibleName().isEmpty()) {
        describe();
    }
    KdLabel::changeEvent(event);
}

int KdCountCtrl::remainingSeconds() const
{
    return m_nCount - int(qint64(m_nTick) * TickMs / 1000);
}

int KdCountCtrl::ringSpan() const
{
    // A count of 0 has no ticks to measure the ring by: empty until its only tick, full from then
    // on.
    const int total = std::max(m_nTotalTicks, 1);
    return int(std::min<qint64>(qint64(m_nTick) * FullCircle / total, FullCircle));
}

QRect KdCountCtrl::ringRect() const
{
    const int side = std::min(width(), height());
    const int inset = m_nCycleWidth / 2;
    const QRect square((width() - side) / 2, (height() - side) / 2, side, side);
    return square.adjusted(inset, inset, -inset, -inset);
}

void KdCountCtrl::mousePressEvent(QMouseEvent* event)
{
    const QPointer<KdCountCtrl> self(this);
    Q_EMIT sigPressed(event->globalPos());
    if (self) {
        KdLabel::mousePressEvent(event);
    }
}

// Qt leaves out the ground of a style sheet where a window lets through what lies below.
void KdCountCtrl::paintGround(QPainter& painter)
{
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void KdCountCtrl::paintEvent(QPaintEvent* event)
{
    {
        QPainter painter(this);
        paintGround(painter);
        painter.setRenderHint(QPainter::Antialiasing);
        QFont numberFont = font();
        numberFont.setWeight(QFont::Bold);
        numberFont.setPixelSize(std::max(height() / 2, 1));
        painter.setFont(numberFont);
        const QRect ring = ringRect();
        painter.setPen(colorOf(m_TextColor));
        painter.drawText(ring, Qt::AlignCenter, QStringLiteral("%1").arg(remainingSeconds()));
        painter.setPen(QPen(colorOf(m_CycleColor), m_nCycleWidth));
        painter.drawArc(ring, TwelveOClock, -ringSpan());
    }
    KdLabel::paintEvent(event);
}
