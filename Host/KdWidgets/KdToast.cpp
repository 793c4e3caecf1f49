#include <KdWidgets/KdToast.h>

#include <KdWidgets/KdIcon.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdWindowShape.h>
#include <KdWidgets/KdWindowWatch.h>
#include <KdWidgets/KdWrapLabel.h>

#include <QAccessible>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>
#include <QTimerEvent>

namespace {
constexpr int kShownMs = 3000;
constexpr int kRadius = 6;
constexpr int kSideMargin = 16;
constexpr int kWidestText = 360;
constexpr int kMostLines = 4;
} // namespace

KdToast::KdToast(const KdLiveText& text, QWidget* window, const QPixmap& pixmap, int bottomMargin)
    : QWidget(window, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput)
    , m_text(text)
    , m_pText(new KdWrapLabel(QString(), kWidestText, kMostLines, this))
    , m_nBottomMargin(bottomMargin)
{
    setObjectName(QStringLiteral("KdToast"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    KdWindowShape::prepare(this);
    setAttribute(Qt::WA_QuitOnClose, false);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 12, 16, 12);
    row->setSpacing(8);
    if (!pixmap.isNull()) {
        auto* icon = new QLabel(this);
        icon->setPixmap(KdIcon::reduced(pixmap, devicePixelRatioF()));
        row->addWidget(icon);
    }
    m_pText->setObjectName(QStringLiteral("KdToast_Text"));
    row->addWidget(m_pText, 1);
    retranslate();
    if (window) {
        window->installEventFilter(this);
    }
}

KdToast* KdToast::creatToast(const KdLiveText& text, QWidget* parent, const QPixmap& pixmap,
                             int bottomMargin)
{
    return new KdToast(text, parent ? parent->window() : nullptr, pixmap, bottomMargin);
}

KdToast* KdToast::showToast(QWidget* parent, const KdLiveText& text, const QPixmap& pixmap,
                            int bottomMargin)
{
    KdToast* toast = creatToast(text, parent, pixmap, bottomMargin);
    toast->closeOthers();
    toast->setAttribute(Qt::WA_DeleteOnClose);
    toast->show();
    return toast;
}

QString KdToast::text() const
{
    return m_pText->text();
}

void KdToast::retranslate()
{
    m_pText->setText(m_text.now());
    setAccessibleName(text());
    if (isVisible()) {
        place();
    }
}

void KdToast::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QWidget::changeEvent(event);
}

void KdToast::closeOthers()
{
    if (!parentWidget()) {
        return;
    }
    const auto toasts =
        parentWidget()->findChildren<KdToast*>(QString(), Qt::FindDirectChildrenOnly);
    for (KdToast* other : toasts) {
        if (other != this) {
            other->close();
        }
    }
}

void KdToast::showEvent(QShowEvent* event)
{
    if (!m_timer.isActive()) {
        m_timer.start(kShownMs, Qt::PreciseTimer, this);
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
    place();
    QWidget::showEvent(event);
}

QPainterPath KdToast::outline() const
{
    QPainterPath path;
    path.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
    return path;
}

void KdToast::paintEvent(QPaintEvent* /*event*/)
{
    const auto* skin = KdSkin::KdSkinManager::instance();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(skin->color(KdSkin::Stroke));
    painter.setBrush(skin->color(KdSkin::Surface));
    painter.drawPath(outline());
}

void KdToast::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId()) {
        m_timer.stop();
        close();
        return;
    }
    QWidget::timerEvent(event);
}

bool KdToast::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != parentWidget()) {
        return false;
    }
    if (event->type() == QEvent::WindowStateChange) {
        followWindowState();
    } else if (event->type() == QEvent::Hide && !event->spontaneous()) {
        close();
    } else if (KdWindowWatch::isMoving(event) && isVisible()) {
        place();
    }
    return false;
}

void KdToast::followWindowState()
{
    if (parentWidget()->isMinimized()) {
        hide();
    } else if (m_timer.isActive()) {
        show();
    }
}

void KdToast::place()
{
    const QWidget* window = parentWidget();
    const QRect screen =
        KdWindowWatch::availableArea(window ? window->geometry().center() : QPoint());
    const QRect around = window ? QRect(window->mapToGlobal(QPoint()), window->size()) : screen;
    layout()->activate();
    const int width = qMin(sizeHint().width(), around.width() - 2 * kSideMargin);
    const int height = layout()->totalHeightForWidth(width);
    const int left = around.center().x() - width / 2;
    const int top = around.top() + around.height() - m_nBottomMargin - height;
    setGeometry(qBound(screen.left(), left, screen.right() + 1 - width),
                qBound(screen.top(), top, screen.bottom() + 1 - height), width, height);
}
