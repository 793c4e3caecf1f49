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
    , m_pSettings(
          new StudioIconButton(QStringLiteral("Studio_Settings"), QStringLiteral("settings"), this))
    , m_pLanguage(
          new StudioIconButton(QStringLiteral("Studio_Language"), QStringLiteral("language"), this))
    , m_pSkin(new StudioIconButton(QStringLiteral("Studio_Skin"), QString(), this))
    , m_pMenu(new QMenu(this))
    , m_pChoices(new QActionGroup(this))
    , m_pSettingsMenu(new QMenu(this))
{
    setObjectName(QStringLiteral("Studio_Header"));
    setAttribute(Qt::WA_StyledBackground);
    layOut();
    fillLanguages();
    fillSettings();
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
    m_pSettings->setMenu(m_pSettingsMenu);
    for (StudioIconButton* const button : {m_pSettings, m_pLanguage}) {
        button->setPopupMode(QToolButton::InstantPopup);
    }
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(16, 8, 12, 8);
    row->setSpacing(4);
    row->addWidget(m_pTitle, 1);
    row->addWidget(m_pSettings);
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

void StudioHeader::fillSettings()
{
    const auto add = [this](const char* name, const char* key, void (StudioHeader::*signal)()) {
        QAction* const action = m_pSettingsMenu->addAction(QString());
        action->setObjectName(QString::fromLatin1(name));
        action->setShortcut(QKeySequence(QString::fromLatin1(key)));
        connect(action, &QAction::triggered, this, signal);
        addAction(action); // a key works for what is in a window, not for what is in a menu alone
        return action;
    };
    m_pDevices = add("Studio_OpenDevices", "Ctrl+D", &StudioHeader::devicesRequested);
    m_pAudio =
        add("Studio_OpenAudioSettings", "Ctrl+Shift+A", &StudioHeader::audioSettingsRequested);
    m_pVideo =
        add("Studio_OpenVideoSettings", "Ctrl+Shift+V", &StudioHeader::videoSettingsRequested);
}

void StudioHeader::RetranslateUi()
{
    m_pSettings->setMeaning(tr("Devices and settings"));
    m_pDevices->setText(tr("Devices"));
    m_pAudio->setText(tr("Audio settings"));
    m_pVideo->setText(tr("Video settings"));
    m_pLanguage->setMeaning(tr("Language"));
    showSkin();
}

void StudioHeader::showSkin()
{
    m_pSkin->setIconName(isDark() ? QStringLiteral("sun") : QStringLiteral("moon"));
    m_pSkin->setMeaning(isDark() ? tr("Use the light skin") : tr("Use the dark skin"));
}
