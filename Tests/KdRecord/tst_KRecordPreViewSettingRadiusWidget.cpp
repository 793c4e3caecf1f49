#include <KdRecord/KRecordPreViewSettingRadiusWidget.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdToolButton.h>

#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QPointer>

#include <memory>

using namespace KdVBLMODEL;
using KdSkin::KdSkinManager;

namespace {

const QString kCircle = QStringLiteral("KRecorder_Circle_RoundBtn");
const QString kSquare = QStringLiteral("KRecorder_Square_RoundBtn");
const QString kRemoval = QStringLiteral("KRecorder_Removal_RoundBtn");
const QString kBlurred = QStringLiteral("KRecorder_Blurred_RoundBtn");
const QString kMirror = QStringLiteral("KRecorder_Mirror_RoundBtn");
const QString kLine = QStringLiteral("KInputLine");

using Strip = KRecordPreViewSettingRadiusWidget;

} // namespace

class tst_KRecordPreViewSettingRadiusWidget : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void standsInItsOrderAndSize();
    void tipsAndNamesSayWhatAButtonDoes_data();
    void tipsAndNamesSayWhatAButtonDoes();
    void textsFollowTheLanguage();
    void theConstructorShowsNoChoice();

    void clickingTheOtherShapeAsksAndShows_data();
    void clickingTheOtherShapeAsksAndShows();
    void clickingTheChosenShapeCallsNothing_data();
    void clickingTheChosenShapeCallsNothing();
    void backgroundClicks_data();
    void backgroundClicks();
    void removeTwiceLeavesBothBackgroundButtonsWithoutACheckState();
    void flipTogglesAndAsks();

    void aRefusedShapeIsKeptButTheOldLookStays();
    void aRefusedBackgroundIsKeptButTheOldLookStays();
    void aRefusedFlipIsKeptButTheOldLookStays();
    void withoutACallbackTheChoiceChangesUnseen_data();
    void withoutACallbackTheChoiceChangesUnseen();

    void settingAnotherShapeShowsItWithoutAsking();
    void settingTheSameShapeRefreshesNothing();
    void settingFlipShowsItWithoutAsking();
    void userSettingsAskInOrderAndShowAll_data();
    void userSettingsAskInOrderAndShowAll();
    void userSettingsAreShownWhateverTheAnswers();
    void choicesOutOfRangeCheckNoButton();

    void aCallbackMayReplaceItself();
    void aCallbackMayDestroyTheStrip_data();
    void aCallbackMayDestroyTheStrip();

    void everyButtonWorksFromTheKeyboard();
    void assistiveTechnologyIsToldWhatIsChecked();
    void everyStateLooksDifferent_data();
    void everyStateLooksDifferent();
    void standsOutFromAnyPicture_data();
    void standsOutFromAnyPicture();

private:
    void make(_KdCaptureRecordShape shape, _KdCaptureRecordBackgroundMode mode, bool flip);
    void answer(bool accepted);
    KdToolButton* button(const QString& name) const;
    void click(const QString& name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    QVariant state(const QString& name) const { return button(name)->property("checkState"); }
    QString states() const;

    std::unique_ptr<QWidget> m_window;
    QPointer<Strip> m_strip;
    QStringList m_asked;
};

void tst_KRecordPreViewSettingRadiusWidget::init()
{
    KdTestCase::init();
    m_asked.clear();
    m_window = std::make_unique<QWidget>();
    m_window->resize(260, 80);
    make(fcrsSquare, fcbmNone, false);
}

void tst_KRecordPreViewSettingRadiusWidget::cleanup()
{
    m_window.reset();
    KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    KdTestCase::cleanup();
}

void tst_KRecordPreViewSettingRadiusWidget::make(_KdCaptureRecordShape shape,
                                                 _KdCaptureRecordBackgroundMode mode, bool flip)
{
    delete m_strip;
    m_strip = new Strip(m_window.get(), shape, mode, flip);
    m_strip->move(20, 20);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

/** Sets all three callbacks; what they are asked is kept in its order. */
void tst_KRecordPreViewSettingRadiusWidget::answer(bool accepted)
{
    m_strip->setActionHandleForShapeChange([this, accepted](_KdCaptureRecordShape shape) {
        m_asked.append(QStringLiteral("shape %1").arg(shape));
        return accepted;
    });
    m_strip->setActionHandleForBackgroundChange(
        [this, accepted](_KdCaptureRecordBackgroundMode mode) {
            m_asked.append(QStringLiteral("background %1").arg(mode));
            return accepted;
        });
    m_strip->setActionHandleForFlipChange([this, accepted](bool flip) {
        m_asked.append(QStringLiteral("flip %1").arg(flip));
        return accepted;
    });
}

KdToolButton* tst_KRecordPreViewSettingRadiusWidget::button(const QString& name) const
{
    return m_strip->findChild<KdToolButton*>(name);
}

/** Circle, square, removal, blurred, mirror: "+" checked, "-" unchecked, "." no state at all. */
QString tst_KRecordPreViewSettingRadiusWidget::states() const
{
    QString text;
    for (const QString& name : {kCircle, kSquare, kRemoval, kBlurred, kMirror}) {
        const QVariant value = state(name);
        if (!value.isValid()) {
            text += QLatin1Char('.');
        } else if (value == QStringLiteral("checked")) {
            text += QLatin1Char('+');
        } else {
            text += value == QStringLiteral("unchecked") ? QLatin1Char('-') : QLatin1Char('!');
        }
    }
    return text;
}

void tst_KRecordPreViewSettingRadiusWidget::standsInItsOrderAndSize()
{
    QCOMPARE(m_strip->size(), QSize(193, 40));
    QVERIFY(m_strip->inherits("KdRoundRadiusWidget"));
    int left = 6;
    for (const QString& name : {kCircle, kSquare, kLine, kRemoval, kBlurred, kMirror}) {
        const auto* const part = m_strip->findChild<QWidget*>(name);
        QVERIFY(part);
        const QSize size = name == kLine ? QSize(1, 28) : QSize(28, 28);
        QCOMPARE(part->geometry(), QRect(QPoint(left, 6), size));
        left += size.width() + 8;
    }
    QCOMPARE(left - 8 + 6, 193);
    QVERIFY(m_strip->findChild<KdLabel*>(kLine));
}

void tst_KRecordPreViewSettingRadiusWidget::tipsAndNamesSayWhatAButtonDoes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tip");

    QTest::newRow("square") << kSquare << QStringLiteral("Switch to Square");
    QTest::newRow("circle") << kCircle << QStringLiteral("Switch to Circle");
    QTest::newRow("blurred") << kBlurred << QStringLiteral("Blur Background");
    QTest::newRow("removal") << kRemoval << QStringLiteral("Remove Background");
    QTest::newRow("mirror") << kMirror << QStringLiteral("Flip");
}

void tst_KRecordPreViewSettingRadiusWidget::tipsAndNamesSayWhatAButtonDoes()
{
    QFETCH(QString, name);
    QFETCH(QString, tip);
    QCOMPARE(button(name)->toolTip(), tip);
    QCOMPARE(button(name)->accessibleName(), tip);
}

void tst_KRecordPreViewSettingRadiusWidget::textsFollowTheLanguage()
{
    const WidgetLooks::Brackets brackets;
    QTRY_COMPARE(button(kMirror)->toolTip(), QStringLiteral("[Flip]"));
    QCOMPARE(button(kCircle)->toolTip(), QStringLiteral("[Switch to Circle]"));
    QCOMPARE(button(kBlurred)->accessibleName(), QStringLiteral("[Blur Background]"));
}

void tst_KRecordPreViewSettingRadiusWidget::theConstructorShowsNoChoice()
{
    make(fcrsCircle, fcbmBlur, true);
    QCOMPARE(states(), QStringLiteral("....."));
}

void tst_KRecordPreViewSettingRadiusWidget::clickingTheOtherShapeAsksAndShows_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("shown");

    QTest::newRow("circle") << int(fcrsSquare) << kCircle << QStringLiteral("shape 0")
                            << QStringLiteral("+-...");
    QTest::newRow("square") << int(fcrsCircle) << kSquare << QStringLiteral("shape 1")
                            << QStringLiteral("-+...");
}

void tst_KRecordPreViewSettingRadiusWidget::clickingTheOtherShapeAsksAndShows()
{
    QFETCH(int, before);
    QFETCH(QString, name);
    QFETCH(QString, asked);
    QFETCH(QString, shown);
    make(_KdCaptureRecordShape(before), fcbmNone, false);
    answer(true);
    click(name);
    QCOMPARE(m_asked, QStringList{asked});
    QCOMPARE(states(), shown);
}

void tst_KRecordPreViewSettingRadiusWidget::clickingTheChosenShapeCallsNothing_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QString>("name");

    QTest::newRow("circle") << int(fcrsCircle) << kCircle;
    QTest::newRow("square") << int(fcrsSquare) << kSquare;
}

void tst_KRecordPreViewSettingRadiusWidget::clickingTheChosenShapeCallsNothing()
{
    QFETCH(int, shape);
    QFETCH(QString, name);
    make(_KdCaptureRecordShape(shape), fcbmNone, false);
    answer(true);
    click(name);
    QVERIFY(m_asked.isEmpty());
    QCOMPARE(states(), QStringLiteral("....."));
}

void tst_KRecordPreViewSettingRadiusWidget::backgroundClicks_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("asked");
    QTest::addColumn<QString>("shown");

    const auto shown = [](const char* text) { return QString::fromLatin1(text); };
    QTest::newRow("none, remove") << -1 << kRemoval << shown("background 0") << shown("..+-.");
    QTest::newRow("none, blur") << -1 << kBlurred << shown("background 1") << shown("..-+.");
    QTest::newRow("blur, remove") << 1 << kRemoval << shown("background 0") << shown("..+-.");
    QTest::newRow("remove, blur") << 0 << kBlurred << shown("background 1") << shown("..-+.");
    QTest::newRow("blur, blur") << 1 << kBlurred << shown("background -1") << shown(".....");
    QTest::newRow("remove, remove") << 0 << kRemoval << shown("background -1") << shown(".....");
}

void tst_KRecordPreViewSettingRadiusWidget::backgroundClicks()
{
    QFETCH(int, before);
    QFETCH(QString, name);
    QFETCH(QString, asked);
    QFETCH(QString, shown);
    make(fcrsSquare, _KdCaptureRecordBackgroundMode(before), false);
    answer(true);
    click(name);
    QCOMPARE(m_asked, QStringList{asked});
    QCOMPARE(states(), shown);
}

void tst_KRecordPreViewSettingRadiusWidget::
    removeTwiceLeavesBothBackgroundButtonsWithoutACheckState()
{
    answer(true);
    click(kRemoval);
    QCOMPARE(state(kRemoval).toString(), QStringLiteral("checked"));
    QCOMPARE(state(kBlurred).toString(), QStringLiteral("unchecked"));
    const QImage checked = WidgetLooks::image(*button(kRemoval));
    click(kRemoval);
    QVERIFY(!state(kRemoval).isValid());
    QVERIFY(!state(kBlurred).isValid());
    QVERIFY(WidgetLooks::image(*button(kRemoval)) != checked);
}

void tst_KRecordPreViewSettingRadiusWidget::flipTogglesAndAsks()
{
    answer(true);
    click(kMirror);
    QCOMPARE(states(), QStringLiteral("....+"));
    click(kMirror);
    QCOMPARE(states(), QStringLiteral("....-"));
    QCOMPARE(m_asked, QStringList({QStringLiteral("flip 1"), QStringLiteral("flip 0")}));
}

void tst_KRecordPreViewSettingRadiusWidget::aRefusedShapeIsKeptButTheOldLookStays()
{
    answer(true);
    m_strip->useUserSettings();
    const QString before = states();
    answer(false);
    click(kCircle);
    QCOMPARE(states(), before);
    // The kept value shows in what a second click does, and in the next refresh.
    m_asked.clear();
    click(kCircle);
    QVERIFY(m_asked.isEmpty());
    answer(true);
    m_strip->useUserSettings();
    QCOMPARE(m_asked.constFirst(), QStringLiteral("shape 0"));
    QVERIFY(states().startsWith(QStringLiteral("+-")));
}

void tst_KRecordPreViewSettingRadiusWidget::aRefusedBackgroundIsKeptButTheOldLookStays()
{
    make(fcrsSquare, fcbmRemove, false);
    answer(true);
    m_strip->useUserSettings();
    const QString before = states();
    QCOMPARE(before, QStringLiteral("-++--"));
    answer(false);
    m_asked.clear();
    click(kBlurred);
    QCOMPARE(states(), before);
    click(kBlurred);
    QCOMPARE(m_asked,
             QStringList({QStringLiteral("background 1"), QStringLiteral("background -1")}));
    QCOMPARE(states(), before);
}

void tst_KRecordPreViewSettingRadiusWidget::aRefusedFlipIsKeptButTheOldLookStays()
{
    answer(true);
    m_strip->useUserSettings();
    const QString before = states();
    answer(false);
    m_asked.clear();
    click(kMirror);
    click(kMirror);
    click(kMirror);
    QCOMPARE(m_asked, QStringList({QStringLiteral("flip 1"), QStringLiteral("flip 0"),
                                   QStringLiteral("flip 1")}));
    QCOMPARE(states(), before);
}

void tst_KRecordPreViewSettingRadiusWidget::withoutACallbackTheChoiceChangesUnseen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kept");

    QTest::newRow("shape") << kCircle << QStringLiteral("shape 0");
    QTest::newRow("remove") << kRemoval << QStringLiteral("background 0");
    QTest::newRow("blur") << kBlurred << QStringLiteral("background 1");
    QTest::newRow("flip") << kMirror << QStringLiteral("flip 1");
}

void tst_KRecordPreViewSettingRadiusWidget::withoutACallbackTheChoiceChangesUnseen()
{
    QFETCH(QString, name);
    QFETCH(QString, kept);
    click(name);
    QCOMPARE(states(), QStringLiteral("....."));
    answer(true);
    m_strip->useUserSettings();
    QVERIFY(m_asked.contains(kept));
}

void tst_KRecordPreViewSettingRadiusWidget::settingAnotherShapeShowsItWithoutAsking()
{
    answer(true);
    m_strip->setCurrentShape(fcrsCircle);
    QVERIFY(m_asked.isEmpty());
    QCOMPARE(states(), QStringLiteral("+-..."));
}

void tst_KRecordPreViewSettingRadiusWidget::settingTheSameShapeRefreshesNothing()
{
    m_strip->setCurrentShape(fcrsSquare);
    m_strip->setFlip(false);
    QCOMPARE(states(), QStringLiteral("....."));
}

void tst_KRecordPreViewSettingRadiusWidget::settingFlipShowsItWithoutAsking()
{
    answer(true);
    m_strip->setFlip(true);
    QVERIFY(m_asked.isEmpty());
    QCOMPARE(states(), QStringLiteral("....+"));
    m_strip->setFlip(false);
    QCOMPARE(states(), QStringLiteral("....-"));
}

void tst_KRecordPreViewSettingRadiusWidget::userSettingsAskInOrderAndShowAll_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("flip");
    QTest::addColumn<QString>("shown");

    QTest::newRow("defaults") << 1 << -1 << false << QStringLiteral("-+..-");
    QTest::newRow("circle, remove, flip") << 0 << 0 << true << QStringLiteral("+-+-+");
    QTest::newRow("square, blur") << 1 << 1 << false << QStringLiteral("-+-+-");
}

void tst_KRecordPreViewSettingRadiusWidget::userSettingsAskInOrderAndShowAll()
{
    QFETCH(int, shape);
    QFETCH(int, mode);
    QFETCH(bool, flip);
    QFETCH(QString, shown);
    make(_KdCaptureRecordShape(shape), _KdCaptureRecordBackgroundMode(mode), flip);
    answer(true);
    m_strip->useUserSettings();
    QCOMPARE(m_asked, QStringList({QStringLiteral("shape %1").arg(shape),
                                   QStringLiteral("background %1").arg(mode),
                                   QStringLiteral("flip %1").arg(flip)}));
    QCOMPARE(states(), shown);
}

void tst_KRecordPreViewSettingRadiusWidget::userSettingsAreShownWhateverTheAnswers()
{
    answer(false);
    m_strip->useUserSettings();
    QCOMPARE(m_asked.size(), 3);
    QCOMPARE(states(), QStringLiteral("-+..-"));
}

void tst_KRecordPreViewSettingRadiusWidget::choicesOutOfRangeCheckNoButton()
{
    make(_KdCaptureRecordShape(7), _KdCaptureRecordBackgroundMode(-9), false);
    answer(true);
    m_strip->useUserSettings();
    QCOMPARE(states(), QStringLiteral("-----"));
    click(kCircle);
    click(kBlurred);
    QCOMPARE(states(), QStringLiteral("+--+-"));
}

void tst_KRecordPreViewSettingRadiusWidget::aCallbackMayReplaceItself()
{
    m_strip->setActionHandleForFlipChange([this](bool flip) {
        m_strip->setActionHandleForFlipChange({});
        m_asked.append(QStringLiteral("flip %1").arg(flip));
        return true;
    });
    click(kMirror);
    QCOMPARE(m_asked, QStringList{QStringLiteral("flip 1")});
    QCOMPARE(states(), QStringLiteral("....+"));
}

void tst_KRecordPreViewSettingRadiusWidget::aCallbackMayDestroyTheStrip_data()
{
    QTest::addColumn<QString>("name");

    for (const QString& name : {kCircle, kRemoval, kBlurred, kMirror}) {
        QTest::newRow(qUtf8Printable(name)) << name;
    }
}

void tst_KRecordPreViewSettingRadiusWidget::aCallbackMayDestroyTheStrip()
{
    QFETCH(QString, name);
    const auto destroy = [this] {
        delete m_strip;
        return true;
    };
    m_strip->setActionHandleForShapeChange([destroy](_KdCaptureRecordShape) { return destroy(); });
    m_strip->setActionHandleForBackgroundChange(
        [destroy](_KdCaptureRecordBackgroundMode) { return destroy(); });
    m_strip->setActionHandleForFlipChange([destroy](bool) { return destroy(); });
    click(name);
    QVERIFY(!m_strip);
}

void tst_KRecordPreViewSettingRadiusWidget::everyButtonWorksFromTheKeyboard()
{
    answer(true);
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QStringList reached;
    button(kCircle)->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 5; ++i) {
        reached.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, QStringList({kCircle, kSquare, kRemoval, kBlurred, kMirror}));
    QCOMPARE(m_asked, QStringList({QStringLiteral("shape 0"), QStringLiteral("shape 1"),
                                   QStringLiteral("background 0"), QStringLiteral("background 1"),
                                   QStringLiteral("flip 1")}));
}

void tst_KRecordPreViewSettingRadiusWidget::assistiveTechnologyIsToldWhatIsChecked()
{
    make(fcrsCircle, fcbmBlur, false);
    answer(true);
    m_strip->useUserSettings();
    QCOMPARE(button(kCircle)->accessibleDescription(), QStringLiteral("Selected"));
    QCOMPARE(button(kBlurred)->accessibleDescription(), QStringLiteral("Selected"));
    QVERIFY(button(kSquare)->accessibleDescription().isEmpty());
    QVERIFY(button(kMirror)->accessibleDescription().isEmpty());
    click(kBlurred);
    QVERIFY(button(kBlurred)->accessibleDescription().isEmpty());
    const WidgetLooks::Brackets brackets;
    QTRY_COMPARE(button(kCircle)->accessibleDescription(), QStringLiteral("[Selected]"));
}

void tst_KRecordPreViewSettingRadiusWidget::everyStateLooksDifferent_data()
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<QString>("name");

    for (const char* skin : {"dark", "light"}) {
        for (const QString& name : {kCircle, kSquare, kRemoval, kBlurred, kMirror}) {
            QTest::addRow("%s %s", skin, qUtf8Printable(name)) << QString::fromLatin1(skin) << name;
        }
    }
}

void tst_KRecordPreViewSettingRadiusWidget::everyStateLooksDifferent()
{
    QFETCH(QString, skin);
    QFETCH(QString, name);
    QVERIFY(KdSkinManager::instance()->setSkin(skin));
    KdToolButton* const shown = button(name);
    QTest::mouseMove(m_window.get(), QPoint(2, 2));
    // The first button has the focus when the window is shown.
    button(kCircle)->clearFocus();
    QVector<QImage> looks;
    for (const bool isChecked : {false, true}) {
        KdSkinManager::setCheckState(shown, isChecked);
        looks.append(WidgetLooks::image(*shown));
        QTest::mouseMove(shown, QPoint(14, 13));
        QTest::mouseMove(shown, QPoint(14, 14));
        QTRY_VERIFY(shown->underMouse());
        looks.append(WidgetLooks::image(*shown));
        QTest::mouseMove(m_window.get(), QPoint(2, 2));
        QTRY_VERIFY(!shown->underMouse());
        shown->setDown(true);
        looks.append(WidgetLooks::image(*shown));
        shown->setDown(false);
        shown->setFocus();
        QTRY_VERIFY(shown->hasFocus());
        looks.append(WidgetLooks::image(*shown));
        shown->clearFocus();
        shown->setEnabled(false);
        looks.append(WidgetLooks::image(*shown));
        shown->setEnabled(true);
    }
    for (int i = 0; i < looks.size(); ++i) {
        for (int j = i + 1; j < looks.size(); ++j) {
            QVERIFY2(looks.at(i) != looks.at(j),
                     qPrintable(QStringLiteral("looks %1 and %2 are the same").arg(i).arg(j)));
        }
    }
}

void tst_KRecordPreViewSettingRadiusWidget::standsOutFromAnyPicture_data()
{
    QTest::addColumn<QString>("skin");
    QTest::addColumn<QColor>("picture");

    for (const char* skin : {"dark", "light"}) {
        for (const Qt::GlobalColor picture : {Qt::black, Qt::white, Qt::gray, Qt::blue}) {
            QTest::addRow("%s on %d", skin, picture)
                << QString::fromLatin1(skin) << QColor(picture);
        }
    }
}

/** Whatever lies below, the ground is the skin's own, and the line around it or the ground itself
 * is seen. */
void tst_KRecordPreViewSettingRadiusWidget::standsOutFromAnyPicture()
{
    QFETCH(QString, skin);
    QFETCH(QColor, picture);
    QVERIFY(KdSkinManager::instance()->setSkin(skin));
    QPalette palette;
    palette.setColor(QPalette::Window, picture);
    m_window->setPalette(palette);
    const QColor ground = KdSkinManager::instance()->color(KdSkin::Surface);
    const QColor line = KdSkinManager::instance()->color(KdSkin::Stroke);
    const QPoint middle(button(kSquare)->geometry().right() + 4, 20);
    QCOMPARE(WidgetLooks::colorAt(*m_strip, middle), ground);
    QCOMPARE(WidgetLooks::colorAt(*m_strip, {96, 0}), line);
    QCOMPARE(WidgetLooks::colorAt(*m_strip, {0, 0}), picture);
    QVERIFY(qMax(WidgetLooks::contrast(ground, picture), WidgetLooks::contrast(line, picture)) >
            1.5);
    const QColor icon = KdSkinManager::instance()->color(KdSkin::TextQuiet);
    QVERIFY(WidgetLooks::contrast(icon, ground) >= 4.5);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordPreViewSettingRadiusWidget>(argc, argv);
}

#include "tst_KRecordPreViewSettingRadiusWidget.moc"
