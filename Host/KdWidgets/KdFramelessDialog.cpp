#include <KdWidgets/KdFramelessDialog.h>

#include <KdWidgets/KdResizeGrips.h>
#include <KdWidgets/KdTitleBar.h>
#include <KdWidgets/KdWindowWatch.h>

#include <QFrame>
#include <QHBoxLayout>
#include <QResizeEvent>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kPlacingMs = 2000;

Qt::WindowFlags windowFlagsFor(int kind)
{
    return (kind == 0 ? Qt::Window : Qt::Dialog) | Qt::FramelessWindowHint;
}

} // namespace

KdFramelessDialog::KdFramelessDialog(QWidget* parent, bool fixedSize, bool shadow, int kind)
    : KdDialog(parent, windowFlagsFor(kind))
    , m_pTitleBar(new KdTitleBar(this))
    , m_pButtonBar(new QWidget(this))
    , m_pButtonLayout(new QHBoxLayout(m_pButtonBar))
    , m_pLayout(new QVBoxLayout(this))
{
    m_pButtonLayout->setContentsMargins(16, 0, 16, 16);
    m_pButtonLayout->setSpacing(8);
    m_pButtonLayout->addStretch();
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setSpacing(0);
    m_pLayout->addWidget(m_pTitleBar);
    m_pLayout->addWidget(m_pButtonBar);
    if (shadow) {
        addBorder();
    }
    if (!fixedSize) {
        connect(m_pTitleBar, &KdTitleBar::ResizebleChanged, this, &KdFramelessDialog::setResizable);
    }
}

KdFramelessDialog::~KdFramelessDialog() = default;

void KdFramelessDialog::SetTitleName(const QString& title)
{
    m_pTitleBar->setTitle(title);
    setWindowTitle(title);
}

KdTitleBar* KdFramelessDialog::titleBar() const
{
    return m_pTitleBar;
}

void KdFramelessDialog::setContentWidget(QWidget* widget)
{
    if (widget == m_pContent) {
        return;
    }
    delete m_pContent;
    m_pContent = widget;
    if (widget) {
        m_pLayout->insertWidget(1, widget, 1);
    }
    if (m_pBorder) {
        m_pBorder->raise();
    }
    if (m_pGrips) {
        m_pGrips->place();
    }
}

QWidget* KdFramelessDialog::contentWidget() const
{
    return m_pContent;
}

QHBoxLayout* KdFramelessDialog::buttonBarLayout() const
{
    return m_pButtonLayout;
}

void KdFramelessDialog::setButtonBarVisible(bool visible)
{
    m_pButtonBar->setVisible(visible);
}

void KdFramelessDialog::setTitleBarButtons(int mask)
{
    m_pTitleBar->setButtons(mask);
}

void KdFramelessDialog::SetMinimizedEnable(bool enable)
{
    m_pTitleBar->SetMinimizedEnable(enable);
}

void KdFramelessDialog::addBorder()
{
    m_pBorder = new QFrame(this);
    m_pBorder->setObjectName(QStringLiteral("KdFramelessDialog_Border"));
    m_pBorder->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void KdFramelessDialog::setResizable(bool resizable)
{
    delete m_pGrips;
    if (resizable) {
        m_pGrips = new KdResizeGrips(this);
    }
}

/** As large as the content wants to be where the screen has room; QWidget::adjustSize() stops at
 * two thirds of the screen. */
QSize KdFramelessDialog::wantedSize(const QSize& room) const
{
    const QSize hint = sizeHint();
    const int height = hasHeightForWidth() ? heightForWidth(hint.width()) : hint.height();
    return QSize(hint.width(), height).boundedTo(room).expandedTo(minimumSizeHint());
}

void KdFramelessDialog::fit(const QSize& room)
{
    m_fitted = wantedSize(room);
    resize(m_fitted);
}

/** Where a pixel of the screen is a fraction of ours, the size comes back from there rounded. */
bool KdFramelessDialog::isFitted() const
{
    const QSize off = size() - m_fitted;
    return m_fitted.isValid() && qAbs(off.width()) <= 1 && qAbs(off.height()) <= 1;
}

bool KdFramelessDialog::event(QEvent* event)
{
    const bool isHandled = KdDialog::event(event);
    if (event->type() == QEvent::LayoutRequest && isVisible() && isFitted()) {
        fit(KdWindowWatch::availableArea(geometry().center()).size());
    }
    return isHandled;
}

void KdFramelessDialog::centre()
{
    const QWidget* host = parentWidget() ? parentWidget()->window() : nullptr;
    const bool onHost = host && host->isVisible() && !host->isMinimized();
    const QPoint middle = onHost ? host->geometry().center() : QPoint();
    const QRect screen = KdWindowWatch::availableArea(middle);
    const QRect around = onHost ? host->geometry() : screen;
    if (!testAttribute(Qt::WA_Resized)) {
        ensurePolished();
        layout()->activate();
        fit(screen.size());
    }
    const QPoint corner = around.center() - rect().center();
    move(qBound(screen.left(), corner.x(), qMax(screen.left(), screen.right() + 1 - width())),
         qBound(screen.top(), corner.y(), qMax(screen.top(), screen.bottom() + 1 - height())));
}

void KdFramelessDialog::orderFocus()
{
    QWidget* last = previousInFocusChain();
    while (last != this &&
           (last->focusPolicy() == Qt::NoFocus || m_pTitleBar->isAncestorOf(last))) {
        last = last->previousInFocusChain();
    }
    if (last == this) {
        return;
    }
    // Backwards: the chain is a ring, in which Qt holds the first button to be behind the last
    // control already.
    const auto buttons = m_pTitleBar->findChildren<QToolButton*>();
    for (auto button = buttons.crbegin(); button != buttons.crend(); ++button) {
        setTabOrder(last, *button);
    }
}

void KdFramelessDialog::showEvent(QShowEvent* event)
{
    if (!event->spontaneous()) {
        orderFocus();
        if (!testAttribute(Qt::WA_Moved)) {
            centre();
            m_bCentred = true;
        }
        m_shownAt = pos();
        m_sinceShown.start();
    }
    KdDialog::showEvent(event);
}

void KdFramelessDialog::moveEvent(QMoveEvent* event)
{
    KdDialog::moveEvent(event);
    // Some window managers report a new window in the corner, whose frame was there before they
    // placed it, and never correct that. Asking for the place again makes them tell where the
    // window is.
    const bool isBeingPlaced = m_sinceShown.isValid() && !m_sinceShown.hasExpired(kPlacingMs);
    if (isBeingPlaced && event->pos().isNull() && !m_shownAt.isNull()) {
        m_sinceShown.invalidate();
        QTimer::singleShot(0, this, [this] { move(m_shownAt); });
    }
}

void KdFramelessDialog::hideEvent(QHideEvent* event)
{
    if (m_bCentred && !event->spontaneous()) {
        m_bCentred = false;
        setAttribute(Qt::WA_Moved, false);
    }
    KdDialog::hideEvent(event);
}

void KdFramelessDialog::resizeEvent(QResizeEvent* event)
{
    KdDialog::resizeEvent(event);
    if (m_pBorder) {
        m_pBorder->setGeometry(rect());
        m_pBorder->setMask(QRegion(rect()) - QRegion(rect().adjusted(1, 1, -1, -1)));
        m_pBorder->raise();
    }
    if (m_pGrips) {
        m_pGrips->place();
    }
}
