#include <KdWidgets/KdTitleBar.h>

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdToolButton.h>

#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPointer>
#include <QWindow>

namespace {

constexpr int kHeight = 40;
constexpr int kButtonSize = 28;

/** Where windows cannot place themselves the compositor has to move them. */
bool movedByCompositor(const QWidget* window)
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) &&
           window->windowHandle() && window->windowHandle()->startSystemMove();
}

} // namespace

KdTitleBar::KdTitleBar(QWidget* parent)
    : QWidget(parent)
    , m_pTitle(new KdLabel(this))
    , m_pMinimize(addButton(QStringLiteral("KdTitleBar_Minimize")))
    , m_pClose(addButton(QStringLiteral("KdTitleBar_Close")))
{
    setAttribute(Qt::WA_StyledBackground);
    setFixedHeight(kHeight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 0, 6, 0);
    row->setSpacing(4);
    row->addWidget(m_pTitle, 1);
    row->addWidget(m_pMinimize);
    row->addWidget(m_pClose);
    setButtons(CloseOnly);
    retranslate();
    connect(m_pMinimize, &QToolButton::clicked, this, &KdTitleBar::minimizePressed);
    connect(m_pClose, &QToolButton::clicked, this, &KdTitleBar::closePressed);
}

QToolButton* KdTitleBar::addButton(const QString& name)
{
    auto* button = KdToolButton::CreateToolButton(this, name);
    button->setFixedSize(kButtonSize, kButtonSize);
    return button;
}

void KdTitleBar::setTitle(const QString& title)
{
    m_pTitle->setText(title);
}

QString KdTitleBar::title() const
{
    return m_pTitle->text();
}

void KdTitleBar::setButtons(int mask)
{
    m_pMinimize->setVisible(mask == MinimizeToTrayAndClose);
}

void KdTitleBar::SetMinimizedEnable(bool enable)
{
    m_bMinimizes = enable;
}

void KdTitleBar::SetResizeble(bool enable)
{
    if (enable != m_bResizeble) {
        m_bResizeble = enable;
        Q_EMIT ResizebleChanged(enable);
    }
}

void KdTitleBar::minimizePressed()
{
    if (m_bMinimizes) {
        window()->showMinimized();
    }
    Q_EMIT ButtonClick(MinimizeButton);
}

void KdTitleBar::closePressed()
{
    const QPointer<KdTitleBar> alive(this);
    Q_EMIT ButtonClick(CloseButton);
    if (alive) {
        window()->close();
    }
}

void KdTitleBar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || window()->isMaximized() ||
        movedByCompositor(window())) {
        return;
    }
    m_bDragging = true;
    m_dragStart = event->globalPos() - window()->pos();
}

void KdTitleBar::mouseMoveEvent(QMouseEvent* event)
{
    if (m_bDragging && (event->buttons() & Qt::LeftButton)) {
        window()->move(event->globalPos() - m_dragStart);
    }
}

void KdTitleBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!m_bResizeble || event->button() != Qt::LeftButton) {
        return;
    }
    m_bDragging = false;
    window()->setWindowState(window()->windowState() ^ Qt::WindowMaximized);
}

void KdTitleBar::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    m_bDragging = false;
}

void KdTitleBar::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        retranslate();
    }
    QWidget::changeEvent(event);
}

void KdTitleBar::retranslate()
{
    m_pMinimize->setToolTip(tr("Minimize"));
    m_pClose->setToolTip(tr("Close"));
}
