#include "UserTest.h"

#include <KdWidgets/KdSkinManager.h>

#include <Support/ClippedTexts.h>
#include <Support/KeyboardWalk.h>
#include <Support/PseudoTranslator.h>
#include <Support/ShownTexts.h>
#include <Support/TextContrast.h>

#include <QHash>
#include <QLabel>
#include <QRegularExpression>
#include <QScreen>

#include <utility>

namespace {

using Kinds = QVector<UserScene::Kind>;

const Kinds kAll{UserScene::Window, UserScene::Passing, UserScene::Page};
const Kinds kWindows{UserScene::Window};
const Kinds kLasting{UserScene::Window, UserScene::Page};

constexpr QSize kSmallScreen(1280, 720);
constexpr double kTextRatio = 4.5;
constexpr double kIconRatio = 3.0;

const QStringList& languages()
{
    static const QStringList codes =
        QStringList{QStringLiteral("en")} + KdRecordTranslation::languages();
    return codes;
}

/** Sizes of pictures, times, numbers, names of keys: the same in every language. */
const QStringList& neutralTexts()
{
    static const QStringList patterns{QStringLiteral("ProductName"),
                                      QStringLiteral("\\d+ ?x ?\\d+"), QStringLiteral("^[A-Z]$")};
    return patterns;
}

/** Without what changes by itself: times, dots that come and go. */
QStringList lastingTexts(const QWidget& window, const QRegularExpression& foreign)
{
    static const QRegularExpression moving(QStringLiteral("\\d+|\\.+$"));
    QStringList lines;
    const QVector<KdTest::ShownText> texts = KdTest::shownTexts(window);
    for (const KdTest::ShownText& text : texts) {
        QString lasting = text.text;
        lines.append(text.where + QStringLiteral(": ") + lasting.remove(foreign).remove(moving));
    }
    return lines;
}

QStringList blurredPictures(const QWidget& window)
{
    QStringList found;
    const QList<QLabel*> labels = window.findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        const QPixmap picture = label->pixmap(Qt::ReturnByValue);
        if (!picture.isNull() && picture.devicePixelRatio() < label->devicePixelRatioF()) {
            found.append(KdTest::nameOf(*label));
        }
    }
    return found;
}

} // namespace

QVector<QWidget*> windowsOnScreen()
{
    QVector<QWidget*> windows;
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* widget : all) {
        if (widget->isVisible() && !widget->inherits("QTipLabel")) {
            windows.append(widget);
        }
    }
    return windows;
}

UserTest::~UserTest() = default;

void UserTest::init()
{
    KdTestCase::init();
    answers = std::make_unique<WindowAnswers>();
    useLanguage(QStringLiteral("en"));
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("ProductName"));
}

void UserTest::cleanup()
{
    answers.reset();
    useLanguage(QStringLiteral("en"));
    KdTestCase::cleanup();
}

void UserTest::useLanguage(const QString& language)
{
    KdRecordTranslation::install(QLocale(language));
    QCoreApplication::processEvents();
}

void UserTest::addScenes(const Kinds& kinds)
{
    QTest::addColumn<int>("number");
    const UserScenes all = scenes();
    for (int number = 0; number < all.size(); ++number) {
        if (kinds.contains(all.at(number).kind)) {
            QTest::newRow(all.at(number).name) << number;
        }
    }
}

UserScene UserTest::scene()
{
    QFETCH(int, number);
    return scenes().at(number);
}

void UserTest::inEveryLook(const UserScene& scene, const UserScene::Look& look)
{
    for (const QString& language : languages()) {
        useLanguage(language);
        scene.show([this, &language, &look](QWidget& window) {
            const QStringList skins = KdSkin::KdSkinManager::instance()->skins();
            for (const QString& skin : skins) {
                KdSkin::KdSkinManager::instance()->setSkin(skin);
                QCoreApplication::processEvents();
                m_look = language + QStringLiteral(", ") + skin;
                look(window);
            }
        });
    }
}

void UserTest::note(const QStringList& problems)
{
    for (const QString& problem : problems) {
        m_problems.append(m_look + QStringLiteral(": ") + problem);
    }
}

void UserTest::verifyNoProblems()
{
    const QStringList problems = std::exchange(m_problems, {});
    QVERIFY2(problems.isEmpty(), qPrintable(QLatin1Char('\n') + problems.join(QLatin1Char('\n'))));
}

// Texts

void UserTest::textsFit_data()
{
    addScenes(kAll);
}

void UserTest::textsFit()
{
    inEveryLook(scene(), [this](QWidget& /*window*/) {
        for (QWidget* shown : windowsOnScreen()) {
            note(KdTest::clippedTexts(*shown));
        }
    });
    verifyNoProblems();
}

void UserTest::everyTextIsTranslated_data()
{
    addScenes(kAll);
}

void UserTest::everyTextIsTranslated()
{
    const QRegularExpression foreign((foreignTexts() + neutralTexts()).join(QLatin1Char('|')));
    const QRegularExpression letters(QStringLiteral("\\p{L}"));
    const PseudoTranslator pseudo;
    scene().show([this, &foreign, &letters](QWidget& /*window*/) {
        for (QWidget* shown : windowsOnScreen()) {
            const QVector<KdTest::ShownText> texts = KdTest::shownTexts(*shown);
            for (const KdTest::ShownText& text : texts) {
                QString left = PseudoTranslator::untranslatedPart(text.text);
                if (left.remove(foreign).contains(letters)) {
                    note({text.where + QStringLiteral(": ") + text.text});
                }
            }
        }
    });
    verifyNoProblems();
}

void UserTest::openWindowsFollowTheLanguage_data()
{
    addScenes(kLasting);
}

// A window that changes its language is like one that was opened in it, there and back.
void UserTest::openWindowsFollowTheLanguage()
{
    const QRegularExpression foreign(foreignTexts().join(QLatin1Char('|')));
    QHash<QString, QStringList> wanted;
    for (const QString& language : languages()) {
        useLanguage(language);
        scene().show([&](QWidget& window) { wanted[language] = lastingTexts(window, foreign); });
    }
    for (const QString& first : languages()) {
        useLanguage(first);
        scene().show([&](QWidget& window) {
            for (const QString& next : languages() + QStringList(first)) {
                useLanguage(next);
                QCOMPARE(lastingTexts(window, foreign), wanted.value(next));
            }
        });
    }
}

// Keyboard and assistive technology

void UserTest::keyboardReachesEverythingInReadingOrder_data()
{
    addScenes(kWindows);
}

void UserTest::keyboardReachesEverythingInReadingOrder()
{
    scene().show([this](QWidget& window) {
        QTRY_COMPARE(QApplication::activeWindow(), &window);
        note(KdTest::stepsBack(KdTest::tabOrder(window), window));
        note(KdTest::outOfReach(window));
    });
    verifyNoProblems();
}

void UserTest::controlsHaveNamesAndRoles_data()
{
    addScenes(kAll);
}

void UserTest::controlsHaveNamesAndRoles()
{
    scene().show([this](QWidget& /*window*/) {
        for (const QWidget* shown : windowsOnScreen()) {
            note(KdTest::withoutNameOrRole(*shown));
        }
    });
    verifyNoProblems();
}

// Looks

void UserTest::textsAndIconsStandOut_data()
{
    addScenes(kAll);
}

void UserTest::textsAndIconsStandOut()
{
    inEveryLook(scene(), [this](QWidget& /*window*/) {
        for (QWidget* shown : windowsOnScreen()) {
            note(KdTest::faintTexts(*shown, kTextRatio));
            note(KdTest::faintIcons(*shown, kIconRatio));
        }
    });
    verifyNoProblems();
}

void UserTest::focusIsSeen_data()
{
    addScenes(kWindows);
}

void UserTest::focusIsSeen()
{
    inEveryLook(scene(), [this](QWidget& window) {
        QTRY_COMPARE(QApplication::activeWindow(), &window);
        note(KdTest::faintFocus(window, kIconRatio));
    });
    verifyNoProblems();
}

void UserTest::windowsFitTheScreen_data()
{
    addScenes(kWindows + Kinds{UserScene::Passing});
}

void UserTest::windowsFitTheScreen()
{
    inEveryLook(scene(), [this](QWidget& window) {
        const QRect screen = window.screen()->availableGeometry();
        for (const QWidget* shown : windowsOnScreen()) {
            const QSize least = shown->minimumSizeHint().expandedTo(shown->minimumSize());
            if (!screen.contains(shown->geometry()) || least.width() > kSmallScreen.width() ||
                least.height() > kSmallScreen.height()) {
                note({KdTest::nameOf(*shown)});
            }
            note(KdTest::cutControls(*shown));
        }
    });
    verifyNoProblems();
}

void UserTest::picturesAreSharp_data()
{
    addScenes(kAll);
}

void UserTest::picturesAreSharp()
{
    scene().show([this](QWidget& /*window*/) {
        for (const QWidget* shown : windowsOnScreen()) {
            note(blurredPictures(*shown));
        }
    });
    verifyNoProblems();
}
