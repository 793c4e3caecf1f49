#include <Studio/StudioHeader.h>

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioIconButton.h>
#include <Studio/StudioLanguages.h>

#include <QActionGroup>
#include <QHBoxLayout>
#include <QMenu>

namespace {

bool isDark()
{
    return KdSkin::KdSkinManager::instance()->skin() == QLatin1String("dark");
}

} // namespace

StudioHeader::StudioHeader(StudioLanguages* languages, QWidget* parent)
    : KdWidget(parent)
    , m_pLanguages(languages)
    , m_pTitle(new KdLabel(KdUtility::gGetProductName(), this))
    , m_pLanguage(
          new StudioIconButton(QStringLiteral("Studio_Language"), QStringLiteral("language"), this))
    , m_pSkin(new StudioIconButton(QStringLiteral("Studio_Skin"), QString(), this))
    , m_pMenu(new QMenu(this))
    , m_pChoices(new QActionGroup(this))
{
    setObjectName(QStringLiteral("Studio_Header"));
    setAttribute(Qt::WA_StyledBackground);
    layOut();
    fillLanguages();
    connect(m_pChoices, &QActionGroup::triggered, this,
            [this](const QAction* choice) { Q_EMIT languageChosen(choice->data().toString()); });
    connect(m_pSkin, &QToolButton::clicked, this, [this] {
        Q_EMIT skinChosen(isDark() ? QStringLiteral("light") : QStringLiteral("dark"));
    });
    connect(KdSkin::KdSkinManager::instance(), &KdSkin::KdSkinManager::skinChanged, this,
            &StudioHeader::showSkin);
    StudioHeader::RetranslateUi();
}

void StudioHeader::layOut()
{
    m_pTitle->setObjectName(QStringLiteral("Studio_Title"));
    m_pLanguage->setMenu(m_pMenu);
    m_pLanguage->setPopupMode(QToolButton::InstantPopup);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(16, 8, 12, 8);
    row->setSpacing(4);
    row->addWidget(m_pTitle, 1);
    row->addWidget(m_pLanguage);
    row->addWidget(m_pSkin);
}

void StudioHeader::fillLanguages()
{
    const QVector<StudioLanguages::Language> languages = StudioLanguages::all();
    for (const StudioLanguages::Language& language : languages) {
        QAction* const choice = m_pMenu->addAction(language.name);
        choice->setCheckable(true);
        choice->setData(language.code);
        choice->setChecked(language.code == m_pLanguages->code());
        m_pChoices->addAction(choice);
    }
}

void StudioHeader::RetranslateUi()
{
    m_pLanguage->setMeaning(tr("Language"));
    showSkin();
}

void StudioHeader::showSkin()
{
    m_pSkin->setIconName(isDark() ? QStringLiteral("sun") : QStringLiteral("moon"));
    m_pSkin->setMeaning(isDark() ? tr("Use the light skin") : tr("Use the dark skin"));
}
