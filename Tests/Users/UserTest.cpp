#include "UserTest.h"

#include "StoppedClocks.h"

#include <KdWidgets/KdSkinManager.h>

#include <Support/ClippedTexts.h>
#include <Support/KeyboardWalk.h>
#include <Support/PaintedPictures.h>
#include <Support/PseudoTranslator.h>
#include <Support/ShownTexts.h>
#include <Support/TextContrast.h>

#include <QHash>
#include <QMultiMap>
#include <QRegularExpression>
#include <QScreen>
#include <QToolButton>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace {

using Kinds = QVector<UserScene::Kind>;

const Kinds kAll{UserScene::Window, UserScene::Passing, UserScene::Page};
const Kinds kWindows{UserScene::Window};

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

/** What follows the language: texts, and the room that windows give them. */
struct LanguageTraces
{
    QStringList texts;                 ///< sorted
    QMultiMap<QString, QSize> windows; ///< by name
};

LanguageTraces languageTraces(const QWidget& window, const QRegularExpression& foreign)
{
    LanguageTraces traces{lastingTexts(window, foreign), {}};
    traces.texts.sort();
    for (const QWidget* shown : windowsOnScreen()) {
        // A tip goes as soon as its control loses the keyboard, which may happen at any time.
        if (!shown->inherits("KdTipWidget")) {
            traces.windows.insert(KdTest::nameOf(*shown), shown->size());
        }
    }
    return traces;
}

/** Where a pixel of the screen is no whole number of units, a size comes back from the window
 * system rounded, or not yet. */
int sizeSlack()
{
    const double ratio = qGuiApp->devicePixelRatio();
    return ratio == std::floor(ratio) ? 0 : 1;
}

bool isSameSize(const QSize& got, const QSize& wanted)
{
    const QSize off = got - wanted;
    return std::max(std::abs(off.width()), std::abs(off.height())) <= sizeSlack();
}

QStringList described(const QMultiMap<QString, QSize>& windows)
{
    QStringList lines;
    for (auto window = windows.cbegin(); window != windows.cend(); ++window) {
        const QSize size = window.value();
        lines.append(window.key() +
                     QStringLiteral(" %1 x %2").arg(size.width()).arg(size.height()));
    }
    return lines;
}

bool areSameWindows(const QMultiMap<QString, QSize>& got, const QMap<QString, QSize>& wanted)
{
    const QList<QSize> gotSizes = got.values();
    const QList<QSize> wantedSizes = wanted.values();
    return got.keys() == wanted.keys() &&
           std::equal(gotSizes.cbegin(), gotSizes.cend(), wantedSizes.cbegin(), isSameSize);
}

/** @return what only one of the two has. */
QStringList differences(const LanguageTraces& got, const LanguageTraces& wanted)
{
    QStringList found;
    std::set_symmetric_difference(got.texts.cbegin(), got.texts.cend(), wanted.texts.cbegin(),
                                  wanted.texts.cend(), std::back_inserter(found));
    if (!areSameWindows(got.windows, wanted.windows)) {
        found += described(got.windows) + described(wanted.windows);
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
    m_language = QStringLiteral("en");
    m_look = m_language;
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
            QTest::newRow(all.at(number).name.constData()) << number;
        }
    }
}

UserScene UserTest::scene()
{
    QFETCH(int, number);
    UserScene scene = scenes().at(number);
    const auto show = scene.show;
    scene.show = [show](const UserScene::Look& look) {
        show([&look](QWidget& window) {
            const StoppedClocks clocks;
            look(window);
        });
    };
    return scene;
}

void UserTest::inEveryLook(const UserScene& scene, const UserScene::Look& look)
{
    for (const QString& language : languages()) {
        m_language = language;
        useLanguage(language);
        inBothSkins(scene, look);
    }
}

void UserTest::inBothSkins(const UserScene& scene, const UserScene::Look& look)
{
    scene.show([this, &look](QWidget& window) {
        const QStringList skins = KdSkin::KdSkinManager::instance()->skins();
        for (const QString& skin : skins) {
            KdSkin::KdSkinManager::instance()->setSkin(skin);
            QCoreApplication::processEvents();
            m_look = m_language + QStringLiteral(", ") + skin;
            look(window);
        }
    });
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
    m_look.clear();
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
            const QVector<KdTest::ShownText> texts = KdTest::readableTexts(*shown);
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
    addScenes(kAll);
}

// A window that changes its language is like one that was opened in it, there and back.
void UserTest::openWindowsFollowTheLanguage()
{
    const QRegularExpression foreign(foreignTexts().join(QLatin1Char('|')));
    QHash<QString, LanguageTraces> wanted;
    for (const QString& language : languages()) {
        useLanguage(language);
        scene().show([&](QWidget& window) { wanted[language] = languageTraces(window, foreign); });
    }
    for (const QString& first : languages()) {
        useLanguage(first);
        scene().show([&](QWidget& window) {
            for (const QString& next : languages() + QStringList(first)) {
                useLanguage(next);
                m_look = first + QStringLiteral(", then ") + next;
                const auto wrong = [&] {
                    return differences(languageTraces(window, foreign), wanted.value(next));
                };
                // The window manager has a say in the size of a window.
                if (!QTest::qWaitFor([&] { return wrong().isEmpty(); })) {
                    note(wrong());
                }
            }
        });
    }
    verifyNoProblems();
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

void UserTest::textsAndIconsStandOutUnderTheMouse_data()
{
    addScenes(kAll);
}

void UserTest::textsAndIconsStandOutUnderTheMouse()
{
    inBothSkins(scene(), [this](QWidget& /*window*/) {
        for (QWidget* shown : windowsOnScreen()) {
            note(KdTest::faintUnderMouse(*shown, kTextRatio, kIconRatio));
        }
    });
    verifyNoProblems();
}

void UserTest::tipsStandOut_data()
{
    addScenes(kWindows + Kinds{UserScene::Page});
}

void UserTest::tipsStandOut()
{
    inBothSkins(scene(), [this](QWidget& window) { note(KdTest::faintTips(window, kTextRatio)); });
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

// So that nobody trusts a look that sees nothing.
void UserTest::plantedBlurIsSeen()
{
    QImage dot(16, 16, QImage::Format_RGB32);
    dot.fill(Qt::red);
    QToolButton button;
    button.setIcon(QIcon(QPixmap::fromImage(dot)));
    button.setAutoRaise(true);
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    const bool isDense = button.devicePixelRatioF() > 1;
    QCOMPARE(KdTest::coarsePictures(button).size(), isDense ? 1 : 0);
    QPixmap sharp = QPixmap::fromImage(dot.scaled(dot.size() * button.devicePixelRatioF()));
    sharp.setDevicePixelRatio(button.devicePixelRatioF());
    button.setIcon(QIcon(sharp));
    QCOMPARE(KdTest::coarsePictures(button), QStringList());
}

void UserTest::picturesAreSharp_data()
{
    addScenes(kAll);
}

void UserTest::picturesAreSharp()
{
    scene().show([this](QWidget& /*window*/) {
        for (QWidget* shown : windowsOnScreen()) {
            // A clip has the pixels that it was recorded with.
            note(KdTest::coarsePictures(*shown).filter(
                QRegularExpression(QStringLiteral("^(?!StudioPictureView )"))));
        }
    });
    verifyNoProblems();
}
