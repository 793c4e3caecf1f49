#include <Studio/StudioEmptyState.h>

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioPaint.h>

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

constexpr int kIconSize = 56;
constexpr int kTextWidth = 420;

} // namespace

StudioEmptyState::StudioEmptyState(QWidget* parent)
    : KdWidget(parent)
    , m_pIcon(new KdLabel(this))
    , m_pHeading(new KdLabel(this))
    , m_pSentence(new KdLabel(this))
{
    setObjectName(QStringLiteral("Studio_EmptyState"));
    layOut();
    refreshIcon();
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            &StudioEmptyState::refreshIcon);
    StudioEmptyState::RetranslateUi();
}

void StudioEmptyState::layOut()
{
    m_pHeading->setObjectName(QStringLiteral("Studio_TakeName"));
    m_pSentence->setCaption(true);
    m_pSentence->setWordWrap(true);
    m_pSentence->setFixedWidth(kTextWidth);
    for (KdLabel* const label : {m_pIcon, m_pHeading, m_pSentence}) {
        label->setAlignment(Qt::AlignCenter);
    }
    auto* const column = new QVBoxLayout(this);
    column->setSpacing(8);
    column->addStretch(2);
    column->addWidget(m_pIcon, 0, Qt::AlignHCenter);
    column->addSpacing(8);
    column->addWidget(m_pHeading, 0, Qt::AlignHCenter);
    // Aligned in the column it would get the height of one line only.
    auto* const sentence = new QHBoxLayout;
    sentence->addStretch(1);
    sentence->addWidget(m_pSentence);
    sentence->addStretch(1);
    column->addLayout(sentence);
    column->addStretch(3);
}

void StudioEmptyState::setHasTakes(bool hasTakes)
{
    m_hasTakes = hasTakes;
    RetranslateUi();
}

void StudioEmptyState::RetranslateUi()
{
    m_pHeading->setText(m_hasTakes ? tr("Choose a take") : tr("Record your first take"));
    m_pSentence->setText(
        m_hasTakes
            ? tr("Click one in the list to see and hear it.")
            : tr("Press \u201cRecord voice-over\u201d and speak, or \u201cRecord webcam\u201d and "
                 "show yourself. The take appears in the list and on the timeline."));
}

void StudioEmptyState::refreshIcon()
{
    m_pIcon->setPixmap(StudioPaint::pixmap(QStringLiteral("microphone"), kIconSize,
                                           StudioPaint::skin(KdSkin::TextQuiet),
                                           devicePixelRatioF()));
}
