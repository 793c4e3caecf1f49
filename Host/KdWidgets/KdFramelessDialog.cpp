#include <KdWidgets/KdFramelessDialog.h>

#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdTitleBar.h>

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QVariant>

namespace {
Qt::WindowFlags windowFlagsFor(int kind)
{
    return (kind == 0 ? Qt::Window : Qt::Dialog) | Qt::FramelessWindowHint;
}
} // namespace

KdFramelessDialog::KdFramelessDialog(QWidget* parent, bool titleBar, bool shadow, int kind)
    : KdDialog(parent, windowFlagsFor(kind))
    , m_pTitleBar(new KdTitleBar(this))
    , m_pButtonBar(new QWidget(this))
    , m_pButtonLayout(new QHBoxLayout(m_pButtonBar))
    , m_pLayout(new QVBoxLayout(this))
{
    setProperty("shadow", shadow);
    KdSkin::KdSkinManager::instance();
    m_pTitleBar->setVisible(titleBar);
    m_pButtonLayout->setContentsMargins(16, 0, 16, 16);
    m_pButtonLayout->setSpacing(8);
    m_pButtonLayout->addStretch();
    const int border = shadow ? 1 : 0;
    m_pLayout->setContentsMargins(border, border, border, border);
    m_pLayout->setSpacing(0);
    m_pLayout->addWidget(m_pTitleBar);
    m_pLayout->addWidget(m_pButtonBar);
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
