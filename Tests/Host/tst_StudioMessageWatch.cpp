#include "Support/KdTestCase.h"

#include <KdWidgets/KOldMessageDialog.h>
#include <Studio/StudioMessageWatch.h>

#include <QMessageBox>
#include <QSignalSpy>
#include <QTimer>

class tst_StudioMessageWatch : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void informationIsReportedAndAnswered();
    void questionGetsItsSafeAnswer_data();
    void questionGetsItsSafeAnswer();
    void foreignMessageBoxesDoNotHangEither();
    void windowsThatAskNothingAreLeftAlone();
    void modalDialogThatIsNoMessageIsLeftAlone();
};

void tst_StudioMessageWatch::informationIsReportedAndAnswered()
{
    StudioMessageWatch watch;
    QSignalSpy shown(&watch, &StudioMessageWatch::messageShown);
    const QString text = QStringLiteral("The recording is too short. %1 <b>x</b>");
    QCOMPARE(KOldMessageDialog::Infomation(text, nullptr), QDialogButtonBox::Ok);
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.at(0).at(0).toString(), text);
}

void tst_StudioMessageWatch::questionGetsItsSafeAnswer_data()
{
    QTest::addColumn<int>("safe");
    QTest::newRow("yes") << static_cast<int>(QDialogButtonBox::Yes);
    QTest::newRow("no") << static_cast<int>(QDialogButtonBox::No);
}

void tst_StudioMessageWatch::questionGetsItsSafeAnswer()
{
    QFETCH(int, safe);
    const StudioMessageWatch watch;
    const auto answer =
        KOldMessageDialog::Question_YesNo(QStringLiteral("Another directory?"), nullptr,
                                          static_cast<QDialogButtonBox::StandardButton>(safe));
    QCOMPARE(static_cast<int>(answer), safe);
}

void tst_StudioMessageWatch::foreignMessageBoxesDoNotHangEither()
{
    StudioMessageWatch watch;
    QSignalSpy shown(&watch, &StudioMessageWatch::messageShown);
    QMessageBox box(QMessageBox::Warning, QStringLiteral("Title"),
                    QStringLiteral("Something is wrong."));
    box.exec();
    QCOMPARE(shown.count(), 1);
    QVERIFY(shown.at(0).at(0).toString().contains(QStringLiteral("Something is wrong.")));
}

void tst_StudioMessageWatch::windowsThatAskNothingAreLeftAlone()
{
    StudioMessageWatch watch;
    QSignalSpy shown(&watch, &StudioMessageWatch::messageShown);
    QDialog dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCoreApplication::processEvents();
    QVERIFY(dialog.isVisible());
    QVERIFY(shown.isEmpty());
}

void tst_StudioMessageWatch::modalDialogThatIsNoMessageIsLeftAlone()
{
    QDialog dialog;
    StudioMessageWatch watch([&dialog](const QDialog* shown) { return shown != &dialog; });
    QSignalSpy shown(&watch, &StudioMessageWatch::messageShown);
    QTimer::singleShot(0, &dialog, [&] {
        QCOMPARE(KOldMessageDialog::Infomation(QStringLiteral("A message."), &dialog),
                 QDialogButtonBox::Ok);
        dialog.accept();
    });
    QCOMPARE(dialog.exec(), static_cast<int>(QDialog::Accepted));
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.at(0).at(0).toString(), QStringLiteral("A message."));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioMessageWatch>(argc, argv);
}

#include "tst_StudioMessageWatch.moc"
