#include "OptionStripFixture.h"

#include <Support/WidgetLooks.h>

using namespace KdVBLMODEL;

/** What clicks and calls make of the strip's choices, and whom they ask. */
class tst_KRecordPreViewSettingRadiusWidget : public OptionStripFixture
{
    Q_OBJECT

private Q_SLOTS:
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
};

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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordPreViewSettingRadiusWidget>(argc, argv);
}

#include "tst_KRecordPreViewSettingRadiusWidget.moc"
