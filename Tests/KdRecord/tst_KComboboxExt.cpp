#include <KdRecord/KComboboxExt.h>
#include <KdRecord/KQuestionLabel.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdTipWidget.h>

#include <Support/KdTestCase.h>

#include <QBoxLayout>
#include <QCursor>
#include <QEnterEvent>
#include <QTimer>

#include <memory>

namespace {

const auto Tip = QStringLiteral("What this is about");

KQuestionLabel* questionOf(KComboboxExt& row)
{
    return row.findChild<KQuestionLabel*>();
}

KdTipWidget* tipOf(KComboboxExt& row)
{
    return row.findChild<KdTipWidget*>();
}

bool isTipShown(KComboboxExt& row)
{
    return tipOf(row) && tipOf(row)->isVisible();
}

void sendEnter(QWidget* widget)
{
    const QPoint center = widget->rect().center();
    QEnterEvent event(center, center, widget->mapToGlobal(center));
    QCoreApplication::sendEvent(widget, &event);
}

void sendLeave(QWidget* widget)
{
    QEvent event(QEvent::Leave);
    QCoreApplication::sendEvent(widget, &event);
}

QPoint bottomCenter(const QWidget* widget)
{
    return widget->mapToGlobal(QPoint(widget->width() / 2, widget->height() - 1));
}

} // namespace

class tst_KComboboxExt : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void standsTitleAboveCombo();
    void titleAndTipAreAccessible();
    void titleIsPlainText();

    void rowWithoutQuestionMarkNeverMakesATip();
    void hidingAQuestionMarkThatNeverWasIsFine();
    void questionMarkStandsRightOfTheTitle();
    void showingTwiceAddsTheSpacingTwice();

    void enteringTheQuestionMarkPointsATipAtIt();
    void leavingTheQuestionMarkClosesTheTipAfterTheLoopTurned();
    void movingOntoTheTipKeepsIt();
    void leavingTheTipClosesIt();
    void tipIsMadeOnceAndTakesTheTextOfEachShowing();
    void enteringAgainLeavesAShownTipAsItIs();
    void hiddenQuestionMarkClosesTheTipAndShowsNoneAgain();
    void keyboardShowsTheTipToo();
    void otherEventsGoOn();
    void mayBeDestroyedWhileTheTipIsShown();

    void followsTheRealPointer();

private:
    KComboboxExt& rowWithTip();

    std::unique_ptr<QWidget> m_window;
    KComboboxExt* m_row = nullptr;
};

void tst_KComboboxExt::init()
{
    KdTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->setGeometry(400, 300, 420, 160);
    m_row = new KComboboxExt(m_window.get());
    m_row->setGeometry(20, 20, 380, 52);
    m_row->setTitle(QStringLiteral("Bitrate Mode"));
    QCursor::setPos(5, 5);
}

void tst_KComboboxExt::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

KComboboxExt& tst_KComboboxExt::rowWithTip()
{
    m_row->setQuestionTip(Tip);
    m_row->setQuestionVisible(true);
    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get())) {
        qWarning("The window was not shown");
    }
    return *m_row;
}

void tst_KComboboxExt::standsTitleAboveCombo()
{
    m_window->show();
    const auto* const title = m_row->findChild<KdLabel*>();

    QCOMPARE(title->text(), QStringLiteral("Bitrate Mode"));
    QCOMPARE(title->geometry().top(), 0);
    QCOMPARE(title->height(), 24);
    QCOMPARE(m_row->combobox()->geometry(), QRect(0, 28, 380, 24));
    QCOMPARE(m_row->sizeHint().height(), 52);
}

void tst_KComboboxExt::titleAndTipAreAccessible()
{
    m_row->setQuestionTip(Tip);
    QCOMPARE(m_row->combobox()->accessibleName(), QStringLiteral("Bitrate Mode"));
    QCOMPARE(m_row->combobox()->accessibleDescription(), Tip);
}

void tst_KComboboxExt::titleIsPlainText()
{
    const QString title = QStringLiteral("<b>%1</b> & \"more\"");
    m_row->setTitle(title);
    QCOMPARE(m_row->findChild<KdLabel*>()->text(), title);
    QCOMPARE(m_row->findChild<KdLabel*>()->textFormat(), Qt::PlainText);
}

void tst_KComboboxExt::rowWithoutQuestionMarkNeverMakesATip()
{
    m_row->setQuestionTip(Tip);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    const QList<QWidget*> widgets = m_row->findChildren<QWidget*>() << m_row;
    for (QWidget* const widget : widgets) {
        sendEnter(widget);
        sendLeave(widget);
    }
    QCoreApplication::processEvents();

    QVERIFY(!tipOf(*m_row));
    QVERIFY(!questionOf(*m_row));
}

void tst_KComboboxExt::hidingAQuestionMarkThatNeverWasIsFine()
{
    m_row->setQuestionVisible(false);
    QVERIFY(!questionOf(*m_row));
}

void tst_KComboboxExt::questionMarkStandsRightOfTheTitle()
{
    KComboboxExt& row = rowWithTip();
    const auto* const title = row.findChild<KdLabel*>();
    const KQuestionLabel* const question = questionOf(row);

    QCOMPARE(question->size(), QSize(16, 16));
    QCOMPARE(question->geometry().left(), title->geometry().right() + 1 + 2);
    QCOMPARE(question->geometry().top(), 4);
    QCOMPARE(title->width(), title->sizeHint().width());
    QVERIFY(question->isVisible());
}

void tst_KComboboxExt::showingTwiceAddsTheSpacingTwice()
{
    KComboboxExt& row = rowWithTip();
    const auto* const titleRow = row.layout()->findChild<QHBoxLayout*>();
    QCOMPARE(titleRow->count(), 4);
    row.setQuestionVisible(true);
    QCOMPARE(titleRow->count(), 6);
}

void tst_KComboboxExt::enteringTheQuestionMarkPointsATipAtIt()
{
    KComboboxExt& row = rowWithTip();
    QVERIFY(!tipOf(row));
    sendEnter(questionOf(row));

    QVERIFY(isTipShown(row));
    QCOMPARE(tipOf(row)->text(), Tip);
    QCOMPARE(tipOf(row)->width(), 272);
    QCOMPARE(tipOf(row)->arrowPos(), bottomCenter(questionOf(row)));
}

void tst_KComboboxExt::leavingTheQuestionMarkClosesTheTipAfterTheLoopTurned()
{
    KComboboxExt& row = rowWithTip();
    sendEnter(questionOf(row));
    sendLeave(questionOf(row));

    QVERIFY(isTipShown(row));
    QTRY_VERIFY(!isTipShown(row));
}

void tst_KComboboxExt::movingOntoTheTipKeepsIt()
{
    KComboboxExt& row = rowWithTip();
    sendEnter(questionOf(row));
    sendLeave(questionOf(row));
    sendEnter(tipOf(row));
    // A timer made after the row's own fires after it.
    bool turned = false;
    QTimer::singleShot(0, this, [&turned] { turned = true; });
    QTRY_VERIFY(turned);

    QVERIFY(isTipShown(row));
}

void tst_KComboboxExt::leavingTheTipClosesIt()
{
    KComboboxExt& row = rowWithTip();
    sendEnter(questionOf(row));
    sendLeave(questionOf(row));
    sendEnter(tipOf(row));
    sendLeave(tipOf(row));

    QVERIFY(!isTipShown(row));
}

void tst_KComboboxExt::tipIsMadeOnceAndTakesTheTextOfEachShowing()
{
    KComboboxExt& row = rowWithTip();
    sendEnter(questionOf(row));
    KdTipWidget* const first = tipOf(row);
    QVERIFY(QTest::qWaitForWindowExposed(first));
    sendLeave(questionOf(row));
    QTRY_VERIFY(!isTipShown(row));
    row.setQuestionTip(QStringLiteral("Something else"));
    sendEnter(questionOf(row));

    QCOMPARE(tipOf(row), first);
    QVERIFY(isTipShown(row));
    QCOMPARE(first->text(), QStringLiteral("Something else"));
    QCOMPARE(row.findChildren<KdTipWidget*>().size(), 1);
}

void tst_KComboboxExt::enteringAgainLeavesAShownTipAsItIs()
{
    KComboboxExt& row = rowWithTip();
    sendEnter(questionOf(row));
    row.setQuestionTip(QStringLiteral("Something else"));
    sendEnter(questionOf(row));

    QCOMPARE(tipOf(row)->text(), Tip);
    QVERIFY(isTipShown(row));
}

void tst_KComboboxExt::keyboardShowsTheTipToo()
{
    KComboboxExt& row = rowWithTip();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    row.combobox()->setFocus();
    QTest::keyClick(row.combobox(), Qt::Key_Tab, Qt::ShiftModifier);
    QVERIFY(questionOf(row)->hasFocus());
    QVERIFY(isTipShown(row));
    QTest::keyClick(questionOf(row), Qt::Key_Tab);
    QVERIFY(row.combobox()->hasFocus());
    QVERIFY(!isTipShown(row));
    QCOMPARE(questionOf(row)->accessibleDescription(), Tip);
}

void tst_KComboboxExt::hiddenQuestionMarkClosesTheTipAndShowsNoneAgain()
{
    KComboboxExt& row = rowWithTip();
    sendEnter(questionOf(row));
    row.setQuestionVisible(false);

    QVERIFY(questionOf(row)->isHidden());
    QVERIFY(!isTipShown(row));
    sendEnter(questionOf(row));
    QVERIFY(!isTipShown(row));
}

void tst_KComboboxExt::otherEventsGoOn()
{
    KComboboxExt& row = rowWithTip();
    QEvent move(QEvent::MouseMove);
    QEvent enter(QEvent::Enter);
    QVERIFY(!row.eventFilter(questionOf(row), &move));
    QVERIFY(!row.eventFilter(row.combobox(), &enter));
    QVERIFY(!tipOf(row));
}

void tst_KComboboxExt::mayBeDestroyedWhileTheTipIsShown()
{
    KComboboxExt& row = rowWithTip();
    sendEnter(questionOf(row));
    sendLeave(questionOf(row));
    m_window.reset();
    QCoreApplication::processEvents();
}

void tst_KComboboxExt::followsTheRealPointer()
{
    KComboboxExt& row = rowWithTip();
    QCursor::setPos(questionOf(row)->mapToGlobal(QPoint(8, 8)));
    QTRY_VERIFY(isTipShown(row));

    const KdTipWidget* const tip = tipOf(row);
    QCursor::setPos(tip->mapToGlobal(QPoint(tip->width() / 2, tip->height() / 2)));
    QTRY_VERIFY(tip->underMouse());
    QTRY_VERIFY(!questionOf(row)->underMouse());
    QCoreApplication::processEvents();
    QVERIFY(isTipShown(row));

    QCursor::setPos(5, 5);
    QTRY_VERIFY(!isTipShown(row));

    QCursor::setPos(questionOf(row)->mapToGlobal(QPoint(8, 8)));
    QTRY_VERIFY(isTipShown(row));
    QCursor::setPos(row.combobox()->mapToGlobal(QPoint(300, 12)));
    QTRY_VERIFY(!isTipShown(row));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KComboboxExt>(argc, argv);
}

#include "tst_KComboboxExt.moc"
