#include <KdWidgets/KOldMessageDialog.h>
#include <KdWidgets/KdPopovers.h>
#include <KdWidgets/KdPushButton.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>
#include <Support/WindowAnswers.h>

#include <QAccessible>
#include <QLabel>
#include <QPointer>

#include <cstdlib>
#include <memory>

class tst_KdPopovers : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void buttonsAnswerOnce_data();
    void buttonsAnswerOnce();
    void closingOtherwiseIsNo_data();
    void closingOtherwiseIsNo();
    void returnPressesTheSafeChoice();
    void keyboardReachesTheOtherChoice();
    void textsArePlain();
    void strangeTextsKeepItOnTheScreen();
    void pointsAtItsAnchor_data();
    void pointsAtItsAnchor();
    void destroyedAnchorIsNotAnswered();
    void answerMayDestroyTheAnchor();
    void answerMayAskOn();
    void isGoneWhenItIsAnswered();
    void withoutAnAnchorItStillAsks();
    void isADialogToAssistiveTechnology();
    void followsTheLanguage();

private:
    KdPopovers* ask();

    std::unique_ptr<QWidget> m_window;
    QWidget* m_anchor = nullptr;
    QVector<bool> m_answers;
};

void tst_KdPopovers::init()
{
    KdTestCase::init();
    m_answers.clear();
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 480, 448);
    m_anchor = new QWidget(m_window.get());
    m_anchor->setGeometry(100, 40, 36, 36);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_KdPopovers::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

KdPopovers* tst_KdPopovers::ask()
{
    auto* popover = KdPopovers::showConfirm(
        m_anchor,
        {QStringLiteral("Are you sure?"), QStringLiteral("Cancel"), QStringLiteral("Re-record")},
        [this](bool confirmed) { m_answers.append(confirmed); });
    return QTest::qWaitForWindowExposed(popover) ? popover : nullptr;
}

void tst_KdPopovers::buttonsAnswerOnce_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("confirmed");

    QTest::newRow("confirm") << QStringLiteral("KdPopovers_Confirm") << true;
    QTest::newRow("cancel") << QStringLiteral("KdPopovers_Cancel") << false;
}

void tst_KdPopovers::buttonsAnswerOnce()
{
    QFETCH(QString, button);
    QFETCH(bool, confirmed);
    const QPointer<KdPopovers> popover = ask();
    DialogDriver::click(*popover, button);
    QTRY_VERIFY(!popover);
    QCOMPARE(m_answers, QVector<bool>{confirmed});
}

void tst_KdPopovers::closingOtherwiseIsNo_data()
{
    QTest::addColumn<QString>("how");

    for (const char* how :
         {"Escape", "press outside", "close()", "window hidden", "window moved", "modal dialog"}) {
        QTest::newRow(how) << QString::fromLatin1(how);
    }
}

void tst_KdPopovers::closingOtherwiseIsNo()
{
    QFETCH(QString, how);
    const QPointer<KdPopovers> popover = ask();
    WindowAnswers answers;
    if (how == QLatin1String("Escape")) {
        QTest::keyClick(popover, Qt::Key_Escape);
    } else if (how == QLatin1String("press outside")) {
        QTest::mousePress(popover, Qt::LeftButton, Qt::NoModifier, QPoint(-20, -20));
    } else if (how == QLatin1String("close()")) {
        popover->close();
    } else if (how == QLatin1String("window hidden")) {
        m_window->hide();
    } else if (how == QLatin1String("window moved")) {
        m_window->move(500, 400);
    } else {
        answers.answerMessage(QDialogButtonBox::Ok);
        KOldMessageDialog::Infomation(QStringLiteral("Device lost"), m_window.get());
    }
    QTRY_VERIFY(!popover);
    QTRY_COMPARE(m_answers, QVector<bool>{false});
}

void tst_KdPopovers::returnPressesTheSafeChoice()
{
    const QPointer<KdPopovers> popover = ask();
    QCOMPARE(popover->focusWidget()->objectName(), QStringLiteral("KdPopovers_Cancel"));
    QTest::keyClick(popover->focusWidget(), Qt::Key_Return);
    QTRY_VERIFY(!popover);
    QCOMPARE(m_answers, QVector<bool>{false});
}

void tst_KdPopovers::keyboardReachesTheOtherChoice()
{
    const QPointer<KdPopovers> popover = ask();
    QTest::keyClick(popover->focusWidget(), Qt::Key_Tab);
    QCOMPARE(popover->focusWidget()->objectName(), QStringLiteral("KdPopovers_Confirm"));
    QTest::keyClick(popover->focusWidget(), Qt::Key_Space);
    QTRY_COMPARE(m_answers, QVector<bool>{true});
}

void tst_KdPopovers::textsArePlain()
{
    auto* popover = KdPopovers::showConfirm(
        m_anchor, {QStringLiteral("<b>%1</b>"), QStringLiteral("No"), QStringLiteral("Yes")}, {});
    const auto* label = popover->findChild<QLabel*>(QStringLiteral("KdPopovers_Text"));
    QCOMPARE(label->text(), QStringLiteral("<b>%1</b>"));
    QCOMPARE(label->textFormat(), Qt::PlainText);
    const auto* cancel = popover->findChild<KdPushButton*>(QStringLiteral("KdPopovers_Cancel"));
    const auto* confirm = popover->findChild<KdPushButton*>(QStringLiteral("KdPopovers_Confirm"));
    QCOMPARE(cancel->text(), QStringLiteral("No"));
    QCOMPARE(confirm->text(), QStringLiteral("Yes"));
    popover->close();
}

void tst_KdPopovers::strangeTextsKeepItOnTheScreen()
{
    auto* popover = KdPopovers::showConfirm(
        m_anchor, {QString(4096, QLatin1Char('W')), QStringLiteral("No"), QStringLiteral("Yes")},
        {});
    QVERIFY(WidgetLooks::screenOf(*m_window).contains(popover->geometry()));
    QVERIFY(popover->width() < 400);
    popover->close();
}

void tst_KdPopovers::pointsAtItsAnchor_data()
{
    QTest::addColumn<QPoint>("corner");

    QTest::newRow("middle") << QPoint(700, 400);
    QTest::newRow("lower right") << QPoint(1920 - 60, 1200 - 60);
    QTest::newRow("upper left") << QPoint(0, 0);
}

void tst_KdPopovers::pointsAtItsAnchor()
{
    QFETCH(QPoint, corner);
    QWidget anchor(nullptr, Qt::ToolTip);
    anchor.setGeometry(QRect(corner, QSize(60, 60)));
    anchor.show();
    QVERIFY(QTest::qWaitForWindowExposed(&anchor));
    auto* popover = KdPopovers::showConfirm(
        &anchor, {QStringLiteral("Sure?"), QStringLiteral("No"), QStringLiteral("Yes")}, {});
    QVERIFY(QTest::qWaitForWindowExposed(popover));
    const QRect place = popover->geometry();
    QVERIFY(WidgetLooks::screenOf(anchor).contains(place));
    QVERIFY(!place.intersects(anchor.geometry()));
    const bool below = place.top() > anchor.geometry().bottom();
    const int gap =
        below ? place.top() - anchor.geometry().bottom() : anchor.geometry().top() - place.bottom();
    QVERIFY2(gap <= 8, qPrintable(QString::number(gap)));
    QVERIFY(place.left() <= anchor.geometry().center().x());
    QVERIFY(place.right() >= anchor.geometry().center().x());
    popover->close();
}

void tst_KdPopovers::destroyedAnchorIsNotAnswered()
{
    const QPointer<KdPopovers> popover = ask();
    delete m_anchor;
    QVERIFY(!popover);
    QCoreApplication::processEvents();
    QVERIFY(m_answers.isEmpty());
}

void tst_KdPopovers::answerMayDestroyTheAnchor()
{
    QPointer<QWidget> anchor(m_anchor);
    const QPointer<KdPopovers> popover = KdPopovers::showConfirm(
        m_anchor, {QStringLiteral("Sure?"), QStringLiteral("No"), QStringLiteral("Yes")},
        [this](bool confirmed) {
            m_answers.append(confirmed);
            delete m_anchor;
        });
    DialogDriver::click(*popover, QStringLiteral("KdPopovers_Confirm"));
    QTRY_VERIFY(!anchor);
    QTRY_VERIFY(!popover);
    QCOMPARE(m_answers, QVector<bool>{true});
}

void tst_KdPopovers::answerMayAskOn()
{
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    bool answered = false;
    auto* popover = KdPopovers::showConfirm(
        m_anchor, {QStringLiteral("Sure?"), QStringLiteral("No"), QStringLiteral("Yes")},
        [&](bool) {
            KOldMessageDialog::Infomation(QStringLiteral("Unable to record"), m_window.get());
            answered = true;
        });
    DialogDriver::click(*popover, QStringLiteral("KdPopovers_Confirm"));
    QTRY_VERIFY(answered);
}

void tst_KdPopovers::isGoneWhenItIsAnswered()
{
    QPointer<KdPopovers> popover;
    bool wasVisible = true;
    popover = KdPopovers::showConfirm(
        m_anchor, {QStringLiteral("Sure?"), QStringLiteral("No"), QStringLiteral("Yes")},
        [&](bool) { wasVisible = popover && popover->isVisible(); });
    DialogDriver::click(*popover, QStringLiteral("KdPopovers_Cancel"));
    QTRY_VERIFY(!wasVisible);
}

void tst_KdPopovers::withoutAnAnchorItStillAsks()
{
    m_anchor = nullptr;
    const QPointer<KdPopovers> popover = ask();
    QVERIFY(popover);
    DialogDriver::click(*popover, QStringLiteral("KdPopovers_Confirm"));
    QTRY_COMPARE(m_answers, QVector<bool>{true});
    QTRY_VERIFY(!popover);
}

void tst_KdPopovers::isADialogToAssistiveTechnology()
{
    KdPopovers* popover = ask();
    const QAccessibleInterface* read = QAccessible::queryAccessibleInterface(popover);
    QCOMPARE(read->role(), QAccessible::Dialog);
    QCOMPARE(read->text(QAccessible::Name), QStringLiteral("Are you sure?"));
    popover->close();
}

void tst_KdPopovers::followsTheLanguage()
{
    auto* const popover =
        KdPopovers::showConfirm(m_anchor,
                                {[] { return tr("Are you sure that you want to?"); },
                                 [] { return tr("Cancel"); }, [] { return tr("Re-record"); }},
                                nullptr);
    QVERIFY(QTest::qWaitForWindowExposed(popover));
    const auto shown = [popover] {
        const auto text = [popover](const char* name) {
            return popover->findChild<QWidget*>(QLatin1String(name))->property("text").toString();
        };
        return QStringList{text("KdPopovers_Text"), text("KdPopovers_Cancel"),
                           text("KdPopovers_Confirm"), popover->accessibleName()};
    };
    const QRect place = popover->geometry();
    {
        const WidgetLooks::Brackets brackets;
        const QStringList wanted{QStringLiteral("[Are you sure that you want to?]"),
                                 QStringLiteral("[Cancel]"), QStringLiteral("[Re-record]"),
                                 QStringLiteral("[Are you sure that you want to?]")};
        QTRY_COMPARE(shown(), wanted);
        QVERIFY(popover->width() > place.width());
        QVERIFY(std::abs(popover->geometry().center().x() - place.center().x()) <= 1);
    }
    QTRY_COMPARE(shown().first(), QStringLiteral("Are you sure that you want to?"));
    QCOMPARE(popover->geometry(), place);
    popover->close();
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPopovers>(argc, argv);
}

#include "tst_KdPopovers.moc"
