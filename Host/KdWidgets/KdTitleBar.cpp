#include <KdWidgets/KdTitleBar.h>

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdToolButton.h>

#include <QEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPointer>

KdTitleBar::KdTitleBar(QWidget* parent)
    : QWidget(parent)
    , m_pTitle(new KdLabel(this))
    , m_pMinimize(KdToolButton::CreateToolButton(this, QStringLiteral("KdTitleBar_Minimize")))
    , m_pClose(KdToolButton::CreateToolButton(this, QStringLiteral("KdTitleBar_Close")))
{
    setAttribute(Qt::WA_StyledBackground);
    setFixedHeight(40);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 0, 8, 0);
    row->setSpacing(4);
    row->addWidget(m_pTitle, 1);
    row->addWidget(m_pMinimize);
    row->addWidget(m_pClose);
    setButtons(CloseOnly);
    retranslate();

    connect(m_pMinimize, &QToolButton::clicked, this, [this] {
        if (m_bMinimizes) {
            window()->showMinimized();
        }
        Q_EMIT ButtonClick(MinimizeButton);
    });
    connect(m_pClose, &QToolButton::clicked, this, [this] {
        const QPointer<KdTitleBar> alive(this);
        Q_EMIT ButtonClick(CloseButton);
        if (alive) {
            window()->close();
        }
    });
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

void KdTitleBar::mousePressEvent(QMouseEvent* event)
{
    m_dragStart = event->globalPos() - window()->pos();
}

void KdTitleBar::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() & Qt::LeftButton) {
        window()->move(event->globalPos() - m_dragStart);
    }
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
