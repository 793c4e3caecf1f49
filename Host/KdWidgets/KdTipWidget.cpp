#include <KdWidgets/KdTipWidget.h>

#include <KdWidgets/KdSkinManager.h>

#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>

namespace {
constexpr int kArrow = 6;
constexpr int kPadding = 12;
constexpr int kArrowInset = 20;
} // namespace

KdTipWidget::KdTipWidget(TipTypes type, ArrowDirection direction, QWidget* parent,
                         const QString& text, int width)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint)
    , m_type(type)
    , m_direction(direction)
    , m_nWidth(width)
    , m_pText(new QLabel(text, this))
{
    setObjectName(QStringLiteral("KdTipWidget"));
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setWordWrap(true);
    auto* column = new QVBoxLayout(this);
    const bool down = direction == ArrowDown;
    column->setContentsMargins(kPadding, kPadding + (down ? 0 : kArrow), kPadding,
                               kPadding + (down ? kArrow : 0));
    column->addWidget(m_pText);
    relayout();
}

KdTipWidget* KdTipWidget::creatTipWidget(int type, int arrowDirection, QWidget* parent,
                                         const QString& text, int width)
{
    return new KdTipWidget(static_cast<TipTypes>(type), static_cast<ArrowDirection>(arrowDirection),
                           parent, text, width);
}

void KdTipWidget::setText(const QString& text)
{
    m_pText->setText(text);
    relayout();
}

QString KdTipWidget::text() const
{
    return m_pText->text();
}

void KdTipWidget::transToArrowPos(const QPoint& globalPos)
{
    m_arrowTarget = globalPos;
    relayout();
}

QPoint KdTipWidget::arrowPos() const
{
    return mapToGlobal(QPoint(m_nArrowX, m_direction == ArrowDown ? height() : 0));
}

void KdTipWidget::OnShow(int screenMargin)
{
    relayout();
    if (const QScreen* screen = QGuiApplication::screenAt(m_arrowTarget)) {
        const QRect area = screen->availableGeometry().adjusted(screenMargin, screenMargin,
                                                                -screenMargin, -screenMargin);
        const int left = qMax(area.left(), qMin(x(), area.right() + 1 - width()));
        m_nArrowX += x() - left;
        move(left, y());
    }
    show();
}

void KdTipWidget::relayout()
{
    if (m_nWidth > 0) {
        setFixedWidth(m_nWidth);
    }
    adjustSize();
    m_nArrowX = m_direction == ArrowUpCentered ? width() / 2 : qMin(kArrowInset, width() / 2);
    move(m_arrowTarget.x() - m_nArrowX,
         m_direction == ArrowDown ? m_arrowTarget.y() - height() : m_arrowTarget.y());
}

void KdTipWidget::paintEvent(QPaintEvent* /*event*/)
{
    const auto* skin = KdSkin::KdSkinManager::instance();
    const bool down = m_direction == ArrowDown;
    QPainterPath bubble;
    bubble.addRoundedRect(
        QRectF(rect()).adjusted(0.5, down ? 0.5 : kArrow, -0.5, down ? -kArrow : -0.5), 6, 6);
    QPainterPath arrow;
    const double base = down ? height() - kArrow : kArrow;
    arrow.addPolygon(
        QPolygonF({QPointF(m_nArrowX - kArrow, base), QPointF(m_nArrowX, down ? height() : 0),
                   QPointF(m_nArrowX + kArrow, base)}));
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(skin->color(KdSkin::Stroke));
    painter.setBrush(skin->color(KdSkin::Surface));
    painter.drawPath(bubble.united(arrow));
}
