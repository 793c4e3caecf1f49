#include <KdWidgets/KdTipWidget.h>

#include <KdWidgets/KdWindowShape.h>
#include <KdWidgets/KdWindowWatch.h>
#include <KdWidgets/KdWrapLabel.h>

#include <QEvent>

namespace {
constexpr int kPadding = 12;
constexpr int kArrowInset = 24;
constexpr int kWidestText = 320;
constexpr int kMostLines = 20;
} // namespace

KdTipWidget::KdTipWidget(TipTypes type, ArrowDirection direction, QWidget* parent,
                         const KdLiveText& text, int width)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint)
    , m_type(type)
    , m_direction(direction)
    , m_nWidth(width)
    , m_text(text)
    , m_pText(new KdWrapLabel(QString(), width > 0 ? width - 2 * kPadding : kWidestText, kMostLines,
                              this))
{
    setObjectName(QStringLiteral("KdTipWidget"));
    m_pText->setObjectName(QStringLiteral("KdTipWidget_Text"));
    KdWindowShape::prepare(this);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    if (parent) {
        parent->window()->installEventFilter(this);
    }
    retranslate();
}

KdTipWidget* KdTipWidget::creatTipWidget(int type, int arrowDirection, QWidget* parent,
                                         const KdLiveText& text, int width)
{
    return new KdTipWidget(static_cast<TipTypes>(type), static_cast<ArrowDirection>(arrowDirection),
                           parent, text, width);
}

void KdTipWidget::setText(const KdLiveText& text)
{
    m_text = text;
    retranslate();
}

void KdTipWidget::retranslate()
{
    m_pText->setText(m_text.now());
    setAccessibleName(text());
    relayout();
}

void KdTipWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QWidget::changeEvent(event);
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
    return m_bubble.point();
}

void KdTipWidget::OnShow(int screenMargin)
{
    m_nScreenMargin = screenMargin;
    relayout();
    show();
}

QSize KdTipWidget::cardSize() const
{
    const int width = m_nWidth > 0 ? m_nWidth : m_pText->sizeHint().width() + 2 * kPadding;
    const int textHeight = m_pText->heightForWidth(width - 2 * kPadding);
    return {width, textHeight + 2 * kPadding + KdBubble::kArrow};
}

QRect KdTipWidget::screenArea() const
{
    const int margin = m_nScreenMargin;
    return KdWindowWatch::availableArea(m_arrowTarget).adjusted(margin, margin, -margin, -margin);
}

void KdTipWidget::relayout()
{
    const QSize size = cardSize();
    const int inset = m_direction == ArrowUpCentered ? -1 : kArrowInset;
    m_bubble = KdBubble::placed(size, m_arrowTarget, m_direction == ArrowDown, inset, screenArea());
    m_bubble.applyTo(this);
    const int top = kPadding + (m_bubble.arrowDown ? 0 : KdBubble::kArrow);
    const int width = size.width() - 2 * kPadding;
    m_pText->setGeometry(kPadding, top, width, m_pText->heightForWidth(width));
}

bool KdTipWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (isVisible() && KdWindowWatch::isLeaving(watched, event)) {
        close();
    }
    return QWidget::eventFilter(watched, event);
}

void KdTipWidget::mousePressEvent(QMouseEvent* /*event*/)
{
    close();
}

void KdTipWidget::paintEvent(QPaintEvent* /*event*/)
{
    m_bubble.paint(this, m_type == WarningTip ? KdSkin::Warn : KdSkin::Stroke);
}
