#include "KComboboxExt.h"

#include "KQuestionLabel.h"

#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdTipWidget.h>

#include <QBoxLayout>
#include <QEvent>
#include <QTimer>

namespace {

constexpr int TipWidth = 272;
constexpr int TipScreenMargin = 5;

} // namespace

KComboboxExt::KComboboxExt(QWidget* parent) : KdWidget(parent)
{
    initUI();
}

KComboboxExt::~KComboboxExt() = default;

void KComboboxExt::initUI()
{
    m_pTitle = new KdLabel(this);
    m_pTitle->setFixedHeight(24);
    m_pTitle->setCaption(true);
    m_pCombo = new KdComboBox(this);
    m_pCombo->setFixedHeight(24);

    m_pTitleLayout = new QHBoxLayout;
    m_pTitleLayout->setContentsMargins(0, 0, 0, 0);
    m_pTitleLayout->setSpacing(0);
    m_pTitleLayout->addWidget(m_pTitle, 0, Qt::AlignVCenter);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(m_pTitleLayout);
    layout->addSpacing(4);
    layout->addWidget(m_pCombo);
    layout->addStretch();
}

void KComboboxExt::setTitle(const QString& title)
{
    m_pTitle->setText(title);
    m_pCombo->setAccessibleName(title);
}

void KComboboxExt::setQuestionTip(const QString& tip)
{
    m_sTip = tip;
    m_pCombo->setAccessibleDescription(tip);
    describeQuestion();
}

void KComboboxExt::describeQuestion()
{
    if (m_pQuestion) {
        m_pQuestion->setAccessibleName(tr("Explanation"));
        m_pQuestion->setAccessibleDescription(m_sTip);
    }
}

void KComboboxExt::setQuestionVisible(bool visible)
{
    if (!visible) {
        if (m_pQuestion) {
            m_pQuestion->hide();
            m_pQuestion->removeEventFilter(this);
            onNeedHideTips();
        }
        return;
    }
    if (!m_pQuestion) {
        m_pQuestion = new KQuestionLabel(this);
        m_pQuestion->setFixedSize(16, 16);
        // Behind the combo box, then the combo box behind it: ahead of it, where that stands.
        setTabOrder(m_pCombo, m_pQuestion);
        setTabOrder(m_pQuestion, m_pCombo);
        describeQuestion();
    }
    m_pQuestion->installEventFilter(this);
    m_pTitleLayout->addSpacing(2);
    m_pTitleLayout->addWidget(m_pQuestion, 0, Qt::AlignVCenter);
    m_pTitleLayout->addStretch();
    m_pQuestion->show();
}

bool KComboboxExt::eventFilter(QObject* watched, QEvent* event)
{
    if (m_pQuestion && watched == m_pQuestion) {
        filterQuestion(event);
    } else if (m_pTip && watched == m_pTip) {
        filterTip(event);
    }
    return KdWidget::eventFilter(watched, event);
}

void KComboboxExt::filterQuestion(QEvent* event)
{
    if (event->type() == QEvent::Enter || event->type() == QEvent::FocusIn) {
        const QRect box = m_pQuestion->rect();
        onNeedShowTips(m_pQuestion->mapToGlobal({box.left() + box.width() / 2, box.bottom()}));
    } else if (event->type() == QEvent::Leave) {
        // The pointer may be on its way to the tip, whose enter event comes first then.
        QTimer::singleShot(0, this, &KComboboxExt::onNeedHideTips);
    } else if (event->type() == QEvent::FocusOut) {
        onNeedHideTips();
    } else if (event->type() == QEvent::LanguageChange) {
        describeQuestion();
    }
}

void KComboboxExt::filterTip(QEvent* event)
{
    if (event->type() == QEvent::Enter) {
        m_bMouseInTip = true;
    } else if (event->type() == QEvent::Leave) {
        m_bMouseInTip = false;
        onNeedHideTips();
    }
}

void KComboboxExt::onNeedShowTips(QPoint arrowTarget)
{
    m_bMouseInTip = false;
    if (!m_pTip) {
        m_pTip = KdTipWidget::creatTipWidget(KdTipWidget::InfoTip, KdTipWidget::ArrowUpCentered,
                                             this, QString(), TipWidth);
        m_pTip->installEventFilter(this);
    }
    if (m_pTip->isVisible()) {
        return;
    }
    m_pTip->setText([this] { return m_sTip; });
    m_pTip->transToArrowPos(arrowTarget);
    m_pTip->OnShow(TipScreenMargin);
}

void KComboboxExt::onNeedHideTips()
{
    if (!m_bMouseInTip && m_pTip && m_pTip->isVisible()) {
        m_pTip->close();
    }
}
