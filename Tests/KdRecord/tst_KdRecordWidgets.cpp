#include <KdRecord/KdCountdownBox.h>
#include <KdRecord/KdRecordWidgets.h>
#include <KdWidgets/KdButton.h>
#include <KdWidgets/KdDoubleSpinBox.h>
#include <KdWidgets/KdLabel.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

#include <QLineEdit>

/** The widgets that both recording panels are made of. */
class tst_KdRecordWidgets : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void takeButtonsKeepTheirPlaceWhileHidden();
    void startTipFollowsTheButton();
    void pauseTipFollowsTheButton();
    void pauseButtonShowsWhatAPressDoes();
    void captionsBelongToTheirControls();
    void countdownCountsWholeSecondsUpToNine();
    void countdownReadsWhatIsBeingTyped_data();
    void countdownReadsWhatIsBeingTyped();
};

void tst_KdRecordWidgets::takeButtonsKeepTheirPlaceWhileHidden()
{
    QWidget parent;
    const KdButton* const button =
        KdRecordWidgets::makeReRecordButton(&parent, QStringLiteral("again"));
    QCOMPARE(button->objectName(), QStringLiteral("again"));
    QCOMPARE(button->size(), QSize(36, 36));
    QVERIFY(button->isHidden());
    QVERIFY(button->sizePolicy().retainSizeWhenHidden());
    QVERIFY(!button->isCheckable());
}

void tst_KdRecordWidgets::startTipFollowsTheButton()
{
    KdToolButton start;
    start.setCheckable(true);
    KdRecordWidgets::showStartTip(&start);
    QCOMPARE(start.toolTip(), QStringLiteral("Start (Space)"));
    QCOMPARE(start.accessibleName(), QStringLiteral("Start"));
    QCOMPARE(start.property("WITH_SHORTCUT").toBool(), true);
    start.setChecked(true);
    KdRecordWidgets::showStartTip(&start);
    QCOMPARE(start.toolTip(), QStringLiteral("Stop (Space)"));
    QCOMPARE(start.accessibleName(), QStringLiteral("Stop"));
}

void tst_KdRecordWidgets::pauseTipFollowsTheButton()
{
    QWidget parent;
    KdButton* const pause = KdRecordWidgets::makePauseButton(&parent, QStringLiteral("pause"));
    QVERIFY(pause->isCheckable());
    KdRecordWidgets::showPauseTip(pause);
    QCOMPARE(pause->toolTip(), QStringLiteral("Pause"));
    pause->setChecked(true);
    KdRecordWidgets::showPauseTip(pause);
    QCOMPARE(pause->toolTip(), QStringLiteral("Resume"));
    QCOMPARE(pause->accessibleName(), QStringLiteral("Resume"));
}

void tst_KdRecordWidgets::pauseButtonShowsWhatAPressDoes()
{
    QWidget parent;
    KdButton* const pause = KdRecordWidgets::makePauseButton(&parent, QStringLiteral("pause"));
    pause->show();
    const QImage running = WidgetLooks::image(*pause);
    pause->setChecked(true);
    QVERIFY(WidgetLooks::image(*pause) != running);
}

void tst_KdRecordWidgets::captionsBelongToTheirControls()
{
    QWidget parent;
    QWidget control(&parent);
    KdLabel* const caption = KdRecordWidgets::makeCaption(&parent, &control);
    KdRecordWidgets::setTextAndName(caption, &control, QStringLiteral("Size"));
    QCOMPARE(caption->text(), QStringLiteral("Size"));
    QCOMPARE(control.accessibleName(), QStringLiteral("Size"));
    QCOMPARE(caption->buddy(), &control);
}

void tst_KdRecordWidgets::countdownCountsWholeSecondsUpToNine()
{
    QWidget parent;
    KdDoubleSpinBox* const box = KdCountdownBox::create(&parent);
    QCOMPARE(box->decimals(), 0);
    box->setValue(-3);
    QCOMPARE(KdCountdownBox::seconds(*box), 0);
    box->setValue(7.6);
    QCOMPARE(KdCountdownBox::seconds(*box), 8);
    box->setValue(99);
    QCOMPARE(KdCountdownBox::seconds(*box), 9);
}

void tst_KdRecordWidgets::countdownReadsWhatIsBeingTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("seconds");
    QTest::newRow("a digit") << QStringLiteral("5") << 5;
    QTest::newRow("emptied") << QString() << 3;
    QTest::newRow("a blank only") << QStringLiteral(" ") << 3;
    QTest::newRow("zero") << QStringLiteral("0") << 0;
}

void tst_KdRecordWidgets::countdownReadsWhatIsBeingTyped()
{
    QFETCH(QString, text);
    QWidget parent;
    KdDoubleSpinBox* const box = KdCountdownBox::create(&parent);
    box->setValue(2);
    box->edit()->setText(text);
    QTEST(KdCountdownBox::seconds(*box), "seconds");
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdRecordWidgets>(argc, argv);
}

#include "tst_KdRecordWidgets.moc"
