#include "KdTestCase.h"
#include "WindowAnswers.h"

#include <KdWidgets/KOldMessageDialog.h>
#include <KdWidgets/KdPopovers.h>

#include <QDialog>
#include <QPushButton>

#include <memory>

class tst_WindowAnswers : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void pressesTheButtonOfAMessageAndKeepsItsText_data()
    {
        QTest::addColumn<int>("button");
        QTest::newRow("yes") << int(QDialogButtonBox::Yes);
        QTest::newRow("no") << int(QDialogButtonBox::No);
    }

    void pressesTheButtonOfAMessageAndKeepsItsText()
    {
        QFETCH(int, button);
        const auto wanted = static_cast<QDialogButtonBox::StandardButton>(button);
        WindowAnswers answers;
        answers.answerMessage(wanted);
        const QString question = QStringLiteral("Only <b>5</b>MB %1 & \"left\"?");
        QCOMPARE(KOldMessageDialog::Question_YesNo(question, nullptr), wanted);
        QCOMPARE(answers.messages(), QStringList(question));
        QCOMPARE(answers.pending(), 0);
    }

    void usesAnswersInTheOrderAnnounced()
    {
        WindowAnswers answers;
        answers.answerMessage(QDialogButtonBox::No);
        answers.answerMessage(QDialogButtonBox::Ok);
        QCOMPARE(answers.pending(), 2);
        QCOMPARE(KOldMessageDialog::Question_YesNo(QStringLiteral("first"), nullptr),
                 QDialogButtonBox::No);
        KOldMessageDialog::Infomation(QStringLiteral("second"), nullptr);
        const QStringList expected{QStringLiteral("first"), QStringLiteral("second")};
        QCOMPARE(answers.messages(), expected);
    }

    void answersAMessageOverAWindow()
    {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        WindowAnswers answers;
        answers.answerMessage(QDialogButtonBox::Ok);
        KOldMessageDialog::Infomation(QStringLiteral("over the window"), &window);
        QCOMPARE(answers.messages().size(), 1);
    }

    void answersAPopover_data()
    {
        QTest::addColumn<bool>("confirm");
        QTest::newRow("confirm") << true;
        QTest::newRow("cancel") << false;
    }

    void answersAPopover()
    {
        QFETCH(bool, confirm);
        QPushButton anchor;
        anchor.show();
        QVERIFY(QTest::qWaitForWindowExposed(&anchor));
        WindowAnswers answers;
        answers.answerPopover(confirm);
        bool isAnswered = false;
        bool answer = !confirm;
        KdPopovers::showConfirm(
            &anchor, {QStringLiteral("Sure?"), QStringLiteral("Cancel"), QStringLiteral("Do it")},
            [&](bool confirmed) {
                isAnswered = true;
                answer = confirmed;
            });
        QTRY_VERIFY(isAnswered);
        QCOMPARE(answer, confirm);
        QCOMPARE(answers.popovers(), QStringList(QStringLiteral("Sure?")));
    }

    void handlesAnyWindowAlsoWhenItsActionBringsAMessageUp()
    {
        WindowAnswers answers;
        QDialog dialog;
        dialog.setObjectName(QStringLiteral("Settings"));
        answers.handle(QStringLiteral("Settings"), [](QWidget& window) {
            KOldMessageDialog::Infomation(QStringLiteral("nested"), &window);
            static_cast<QDialog&>(window).accept();
        });
        answers.answerMessage(QDialogButtonBox::Ok);
        QCOMPARE(dialog.exec(), int(QDialog::Accepted));
        QCOMPARE(answers.messages(), QStringList(QStringLiteral("nested")));
    }

    void leavesOtherWindowsAlone()
    {
        WindowAnswers answers;
        QDialog dialog;
        dialog.setObjectName(QStringLiteral("Other"));
        dialog.open();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QCoreApplication::processEvents();
        QVERIFY(dialog.isVisible());
    }

    void survivesAWindowThatGoesByItself()
    {
        WindowAnswers answers;
        auto dialog = std::make_unique<QDialog>();
        dialog->setObjectName(QStringLiteral("Short"));
        answers.handle(QStringLiteral("Short"), [](QWidget&) {});
        dialog->show();
        dialog.reset();
        QCoreApplication::processEvents();
        QCOMPARE(answers.pending(), 1);
        QDialog again;
        again.setObjectName(QStringLiteral("Short"));
        again.show();
        QTRY_COMPARE(answers.pending(), 0);
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_WindowAnswers>(argc, argv);
}

#include "tst_WindowAnswers.moc"
