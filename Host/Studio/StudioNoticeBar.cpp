#include <Studio/StudioNoticeBar.h>

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioAccessibility.h>
#include <Studio/StudioPaint.h>

#include <QAccessible>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QVariant>

StudioNoticeBar::StudioNoticeBar(const QString& iconName, int skinColor, QWidget* parent)
    : KdWidget(parent)
    , m_iconName(iconName)
    , m_skinColor(skinColor)
    , m_pIcon(new KdLabel(this))
    , m_pHeading(new KdLabel(this))
    , m_pSentence(new KdLabel(this))
    , m_pControls(new QHBoxLayout)
{
    StudioAccessibility::install();
    // The sheet can give a plain widget a ground only with this attribute.
    setAttribute(Qt::WA_StyledBackground);
    setProperty("studioBar", true);
    layOut();
    refreshIcon();
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            &StudioNoticeBar::refreshIcon);
}

void StudioNoticeBar::layOut()
{
    m_pHeading->setProperty("studioHeading", true);
    m_pSentence->setCaption(true);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(m_pHeading);
    texts->addWidget(m_pSentence);
    m_pControls->setSpacing(8);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(16, 8, 16, 8);
    row->setSpacing(12);
    row->addWidget(m_pIcon);
    row->addLayout(texts, 1);
    row->addLayout(m_pControls);
}

void StudioNoticeBar::refreshIcon()
{
    m_pIcon->setPixmap(
        StudioPaint::pixmap(m_iconName, 24, StudioPaint::skin(m_skinColor), devicePixelRatioF()));
}

void StudioNoticeBar::setTexts(const QString& heading, const QString& sentence)
{
    const bool isNews = heading != m_pHeading->text() || sentence != m_pSentence->text();
    m_pHeading->setText(heading);
    m_pSentence->setText(sentence);
    setAccessibleName(heading);
    setAccessibleDescription(sentence);
    if (isNews && isVisible()) {
        announce();
    }
}

void StudioNoticeBar::showEvent(QShowEvent* event)
{
    KdWidget::showEvent(event);
    announce();
}

void StudioNoticeBar::announce()
{
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QString StudioNoticeBar::heading() const
{
    return m_pHeading->text();
}

QString StudioNoticeBar::sentence() const
{
    return m_pSentence->text();
}
