#pragma once

#include <KdWidgets/KdWidget.h>

class KdLabel;
class QAction;
class QActionGroup;
class QMenu;
class StudioIconButton;
class StudioLanguages;

/** The strip at the top of the window: the program's name, the menus of settings and languages,
 * and the switch of the skin. */
class StudioHeader : public KdWidget
{
    Q_OBJECT

public:
    /** @param languages must outlive the widget */
    explicit StudioHeader(StudioLanguages* languages, QWidget* parent = nullptr);

    void RetranslateUi() override;

Q_SIGNALS:
    void languageChosen(const QString& code);
    void skinChosen(const QString& name);
    void devicesRequested();
    void audioSettingsRequested();
    void videoSettingsRequested();

private:
    void layOut();
    void fillLanguages();
    void fillSettings();
    void showSkin();

    StudioLanguages* m_pLanguages;
    KdLabel* m_pTitle;
    StudioIconButton* m_pSettings;
    StudioIconButton* m_pLanguage;
    StudioIconButton* m_pSkin;
    QMenu* m_pMenu;
    QActionGroup* m_pChoices;
    QMenu* m_pSettingsMenu;
    QAction* m_pDevices = nullptr;
    QAction* m_pAudio = nullptr;
    QAction* m_pVideo = nullptr;
};
