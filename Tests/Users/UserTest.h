#pragma once

#include "UserScene.h"

#include <Support/KdTestCase.h>
#include <Support/WindowAnswers.h>

#include <KdRecord/KdRecordTranslation.h>

#include <QLocale>

#include <memory>

/**
 * What holds for everything that a user meets, whatever it is: in every language and both skins. A
 * subclass brings the scenes; the same tests run at several scales of the screen.
 */
class UserTest : public KdTestCase
{
    Q_OBJECT

public:
    ~UserTest() override;

protected:
    virtual UserScenes scenes() = 0;
    /** Regular expressions of texts that are nobody's to translate: names of devices, files. */
    virtual QStringList foreignTexts() const = 0;
    virtual void useLanguage(const QString& language);

    std::unique_ptr<WindowAnswers> answers;

protected Q_SLOTS:
    void init();
    void cleanup();

private Q_SLOTS:
    void textsFit_data();
    void textsFit();
    void everyTextIsTranslated_data();
    void everyTextIsTranslated();
    void openWindowsFollowTheLanguage_data();
    void openWindowsFollowTheLanguage();
    void keyboardReachesEverythingInReadingOrder_data();
    void keyboardReachesEverythingInReadingOrder();
    void controlsHaveNamesAndRoles_data();
    void controlsHaveNamesAndRoles();
    void textsAndIconsStandOut_data();
    void textsAndIconsStandOut();
    void textsAndIconsStandOutUnderTheMouse_data();
    void textsAndIconsStandOutUnderTheMouse();
    void tipsStandOut_data();
    void tipsStandOut();
    void focusIsSeen_data();
    void focusIsSeen();
    void windowsFitTheScreen_data();
    void windowsFitTheScreen();
    void plantedBlurIsSeen();
    void picturesAreSharp_data();
    void picturesAreSharp();

private:
    void addScenes(const QVector<UserScene::Kind>& kinds);
    UserScene scene();
    /** In every language, and in both skins. */
    void inEveryLook(const UserScene& scene, const UserScene::Look& look);
    /** In the current language. */
    void inBothSkins(const UserScene& scene, const UserScene::Look& look);
    void note(const QStringList& problems);
    void verifyNoProblems();

    QString m_language = QStringLiteral("en");
    QString m_look; ///< "de, dark"
    QStringList m_problems;
};
