#include <KdWidgets/KOldMessageDialog.h>
#include <KdWidgets/KdPushButton.h>
#include <KdWidgets/KdTitleBar.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/PseudoTranslator.h>
#include <Support/WidgetLooks.h>
#include <Support/WindowAnswers.h>

#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

#include <memory>

namespace {

const QString kDialog = QStringLiteral("KOldMessageDialog");
using Button = QDialogButtonBox::StandardButton;

KdPushButton* button(const QWidget& dialog, const char* name)
{
    return dialog.findChild<KdPushButton*>(kDialog + QLatin1Char('_') + QLatin1String(name));
}

} // namespace

Q_DECLARE_METATYPE(Button)

class tst_KOldMessageDialog : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void answersWithTheButtonPressed_data();
    void answersWithTheButtonPressed();
    void informationIsOk();
    void informationHasTheButtonsAskedFor();
    void informationIsNeverWithoutAButton();
    void closingOtherwiseIsTheSafeAnswer_data();
    void closingOtherwiseIsTheSafeAnswer();
    void returnGivesTheSafeAnswer();
    void theSafeAnswerIsTheDefault_data();
    void theSafeAnswerIsTheDefault();
    void titleIsTheProductsUnlessGiven_data();
    void titleIsTheProductsUnlessGiven();
    void textIsShownLetterByLetter();
    void longTextKeepsTheButtonsOnTheScreen_data();
    void longTextKeepsTheButtonsOnTheScreen();
    void shortTextIsNotScrolled();
    void standsInTheMiddleOfItsParentsWindow();
    void blocksTheWindowBehind();
    void endsSafelyWhenItsParentIsDestroyed_data();
    void endsSafelyWhenItsParentIsDestroyed();
    void worksWithoutAParent();
    void readsToAssistiveTechnology();
    void followsTheLanguage();
    void followsTheLanguageWhereItIsScrolled();

private:
    std::unique_ptr<QWidget> m_parent;
};

void tst_KOldMessageDialog::init()
{
    KdTestCase::init();
    m_parent = std::make_unique<QWidget>();
    m_parent->setGeometry(400, 300, 480, 448);
    m_parent->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_parent.get()));
}

void tst_KOldMessageDialog::cleanup()
{
    m_parent.reset();
    KdTestCase::cleanup();
}

void tst_KOldMessageDialog::answersWithTheButtonPressed_data()
{
    QTest::addColumn<Button>("pressed");

    QTest::newRow("Yes") << QDialogButtonBox::Yes;
    QTest::newRow("No") << QDialogButtonBox::No;
}

void tst_KOldMessageDialog::answersWithTheButtonPressed()
{
    QFETCH(Button, pressed);
    for (const Button safe : {QDialogButtonBox::Yes, QDialogButtonBox::No}) {
        WindowAnswers answers;
        answers.answerMessage(pressed);
        const Button answer =
            KOldMessageDialog::Question_YesNo(QStringLiteral("Really?"), m_parent.get(), safe);
        QCOMPARE(answer, pressed);
        QCOMPARE(answers.messages(), QStringList{QStringLiteral("Really?")});
    }
    QVERIFY(!m_parent->findChild<KOldMessageDialog*>());
}

void tst_KOldMessageDialog::informationIsOk()
{
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    QCOMPARE(KOldMessageDialog::Infomation(QStringLiteral("No Device"), m_parent.get()),
             QDialogButtonBox::Ok);
}

void tst_KOldMessageDialog::informationHasTheButtonsAskedFor()
{
    WindowAnswers answers;
    answers.handle(kDialog, [](QWidget& dialog) {
        QVERIFY(button(dialog, "Ok") && button(dialog, "No") && !button(dialog, "Yes"));
        DialogDriver::click(*button(dialog, "No"));
    });
    QCOMPARE(KOldMessageDialog::Infomation(QStringLiteral("x"), m_parent.get(),
                                           QDialogButtonBox::Ok | QDialogButtonBox::No),
             QDialogButtonBox::No);
}

void tst_KOldMessageDialog::informationIsNeverWithoutAButton()
{
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    QCOMPARE(
        KOldMessageDialog::Infomation(QStringLiteral("x"), m_parent.get(), QDialogButtonBox::Help),
        QDialogButtonBox::Ok);
}

void tst_KOldMessageDialog::closingOtherwiseIsTheSafeAnswer_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<Button>("safe");

    for (const char* how : {"Escape", "title bar", "close()"}) {
        QTest::addRow("%s, Yes", how) << QString::fromLatin1(how) << QDialogButtonBox::Yes;
        QTest::addRow("%s, No", how) << QString::fromLatin1(how) << QDialogButtonBox::No;
    }
}

void tst_KOldMessageDialog::closingOtherwiseIsTheSafeAnswer()
{
    QFETCH(QString, how);
    QFETCH(Button, safe);
    WindowAnswers answers;
    answers.handle(kDialog, [how](QWidget& dialog) {
        if (how == QLatin1String("Escape")) {
            QTest::keyClick(&dialog, Qt::Key_Escape);
        } else if (how == QLatin1String("close()")) {
            dialog.close();
        } else {
            DialogDriver::click(dialog, QStringLiteral("KdTitleBar_Close"));
        }
    });
    QCOMPARE(KOldMessageDialog::Question_YesNo(QStringLiteral("Really?"), m_parent.get(), safe),
             safe);
}

void tst_KOldMessageDialog::returnGivesTheSafeAnswer()
{
    for (const Button safe : {QDialogButtonBox::Yes, QDialogButtonBox::No}) {
        WindowAnswers answers;
        answers.handle(kDialog, [](QWidget& dialog) {
            // An active parent counts as active to QTest.
            QTRY_COMPARE(QApplication::activeWindow(), &dialog);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        });
        QCOMPARE(KOldMessageDialog::Question_YesNo(QStringLiteral("Really?"), m_parent.get(), safe),
                 safe);
    }
}

void tst_KOldMessageDialog::theSafeAnswerIsTheDefault_data()
{
    QTest::addColumn<Button>("safe");
    QTest::addColumn<QByteArray>("name");

    QTest::newRow("Yes") << QDialogButtonBox::Yes << QByteArray("Yes");
    QTest::newRow("No") << QDialogButtonBox::No << QByteArray("No");
}

void tst_KOldMessageDialog::theSafeAnswerIsTheDefault()
{
    QFETCH(Button, safe);
    QFETCH(QByteArray, name);
    WindowAnswers answers;
    answers.handle(kDialog, [name](QWidget& dialog) {
        const KdPushButton* safeButton = button(dialog, name.constData());
        const KdPushButton* other = button(dialog, name == "Yes" ? "No" : "Yes");
        QVERIFY(safeButton->isDefault() && !other->isDefault());
        QCOMPARE(dialog.focusWidget(), safeButton);
        QCOMPARE(safeButton->property("kind").toString(), QStringLiteral("primary"));
        QCOMPARE(other->property("kind").toString(), QStringLiteral("secondary"));
        dialog.close();
    });
    KOldMessageDialog::Question_YesNo(QStringLiteral("Really?"), m_parent.get(), safe);
}

void tst_KOldMessageDialog::titleIsTheProductsUnlessGiven_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("shown");

    QTest::newRow("empty") << QString() << QStringLiteral("A Product");
    QTest::newRow("given") << QStringLiteral("Mind") << QStringLiteral("Mind");
}

void tst_KOldMessageDialog::titleIsTheProductsUnlessGiven()
{
    QFETCH(QString, given);
    QFETCH(QString, shown);
    QGuiApplication::setApplicationDisplayName(QStringLiteral("A Product"));
    WindowAnswers answers;
    answers.handle(kDialog, [shown](QWidget& dialog) {
        QCOMPARE(dialog.windowTitle(), shown);
        QCOMPARE(dialog.findChild<KdTitleBar*>()->title(), shown);
        dialog.close();
    });
    KOldMessageDialog::Infomation(QStringLiteral("x"), m_parent.get(), QDialogButtonBox::Ok, given);
    QGuiApplication::setApplicationDisplayName(QString());
}

void tst_KOldMessageDialog::textIsShownLetterByLetter()
{
    const QString text = QStringLiteral("Audio device <b>%1</b>\n\"&x\" connection lost.");
    WindowAnswers answers;
    answers.handle(kDialog, [text](QWidget& dialog) {
        const auto* label = dialog.findChild<QLabel*>(kDialog + QStringLiteral("_Text"));
        QCOMPARE(label->text(), text);
        QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(qobject_cast<KOldMessageDialog*>(&dialog)->text(), text);
        QVERIFY(label->height() >= 2 * label->fontMetrics().lineSpacing());
        dialog.close();
    });
    KOldMessageDialog::Infomation(text, m_parent.get());
}

void tst_KOldMessageDialog::longTextKeepsTheButtonsOnTheScreen_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("one word of 4 KB") << QString(4096, QLatin1Char('W'));
    QTest::newRow("lines") << QStringLiteral("line\n").repeated(2000);
    QTest::newRow("right to left") << QString(QChar(0x5d0)).repeated(4096);
}

void tst_KOldMessageDialog::longTextKeepsTheButtonsOnTheScreen()
{
    QFETCH(QString, text);
    WindowAnswers answers;
    answers.handle(kDialog, [](QWidget& dialog) {
        QVERIFY(WidgetLooks::screenOf(dialog).contains(dialog.geometry()));
        QVERIFY(dialog.width() <= 480);
        const auto* area = dialog.findChild<QScrollArea*>();
        QVERIFY(area && area->verticalScrollBar()->maximum() > 0);
        DialogDriver::click(*button(dialog, "Ok"));
    });
    QCOMPARE(KOldMessageDialog::Infomation(text, m_parent.get()), QDialogButtonBox::Ok);
}

void tst_KOldMessageDialog::shortTextIsNotScrolled()
{
    WindowAnswers answers;
    answers.handle(kDialog, [](QWidget& dialog) {
        QVERIFY(!dialog.findChild<QScrollArea*>());
        dialog.close();
    });
    KOldMessageDialog::Infomation(QStringLiteral("Short."), m_parent.get());
}

void tst_KOldMessageDialog::standsInTheMiddleOfItsParentsWindow()
{
    auto* child = new QWidget(m_parent.get());
    WindowAnswers answers;
    answers.handle(kDialog, [this](QWidget& dialog) {
        const QPoint off = dialog.geometry().center() - m_parent->geometry().center();
        QVERIFY2(off.manhattanLength() <= 2, qPrintable(QString::number(off.manhattanLength())));
        dialog.close();
    });
    KOldMessageDialog::Infomation(QStringLiteral("x"), child);
}

void tst_KOldMessageDialog::blocksTheWindowBehind()
{
    WindowAnswers answers;
    answers.handle(kDialog, [this](QWidget& dialog) {
        QVERIFY(dialog.isModal());
        QVERIFY(!DialogDriver::whyNotClickable(*m_parent).isEmpty());
        dialog.close();
    });
    KOldMessageDialog::Infomation(QStringLiteral("x"), m_parent.get());
}

void tst_KOldMessageDialog::endsSafelyWhenItsParentIsDestroyed_data()
{
    QTest::addColumn<Button>("safe");

    QTest::newRow("Yes") << QDialogButtonBox::Yes;
    QTest::newRow("No") << QDialogButtonBox::No;
}

void tst_KOldMessageDialog::endsSafelyWhenItsParentIsDestroyed()
{
    QFETCH(Button, safe);
    WindowAnswers answers;
    answers.handle(kDialog, [this](QWidget& /*dialog*/) { m_parent.reset(); });
    QCOMPARE(KOldMessageDialog::Question_YesNo(QStringLiteral("Really?"), m_parent.get(), safe),
             safe);
    QVERIFY(!m_parent);
}

void tst_KOldMessageDialog::worksWithoutAParent()
{
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    QCOMPARE(KOldMessageDialog::Infomation(QStringLiteral("x"), nullptr), QDialogButtonBox::Ok);
}

void tst_KOldMessageDialog::readsToAssistiveTechnology()
{
    WindowAnswers answers;
    answers.handle(kDialog, [](QWidget& dialog) {
        QCOMPARE(dialog.accessibleDescription(), QStringLiteral("No Device"));
        dialog.close();
    });
    KOldMessageDialog::Infomation(QStringLiteral("No Device"), m_parent.get());
}

void tst_KOldMessageDialog::followsTheLanguage()
{
    WindowAnswers answers;
    answers.handle(kDialog, [](QWidget& dialog) {
        const auto shown = [&dialog] {
            return QStringList{dialog.windowTitle(), dialog.accessibleDescription(),
                               qobject_cast<KOldMessageDialog*>(&dialog)->text(),
                               button(dialog, "Yes")->text(), button(dialog, "No")->text()};
        };
        const QString question = QStringLiteral("Overwrite <b>%1</b>?");
        const QStringList plain{QStringLiteral("Mind"), question, question, QStringLiteral("Yes"),
                                QStringLiteral("No")};
        QCOMPARE(shown(), plain);
        const QSize size = dialog.size();
        const QWidget* const focus = dialog.focusWidget();
        {
            const PseudoTranslator pseudo;
            QTRY_VERIFY(shown() != plain);
            const QStringList texts = shown();
            for (const QString& text : texts) {
                QCOMPARE(PseudoTranslator::untranslatedPart(text), QString());
            }
            QCOMPARE(dialog.focusWidget(), focus);
        }
        QTRY_COMPARE(shown(), plain);
        QTRY_COMPARE(dialog.size(), size);
        dialog.close();
    });
    KOldMessageDialog::Question_YesNo([] { return tr("Overwrite <b>%1</b>?"); }, m_parent.get(),
                                      QDialogButtonBox::No, [] { return tr("Mind"); });
}

void tst_KOldMessageDialog::followsTheLanguageWhereItIsScrolled()
{
    int lines = 100;
    WindowAnswers answers;
    answers.handle(kDialog, [&lines](QWidget& dialog) {
        const auto* const area = dialog.findChild<QScrollArea*>();
        const int height = area->height();
        lines = 3;
        const PseudoTranslator pseudo;
        QTRY_VERIFY(area->height() < height);
        QCOMPARE(area->verticalScrollBar()->maximum(), 0);
        QTRY_VERIFY(dialog.height() < height);
        lines = 200;
        const PseudoTranslator again;
        QTRY_COMPARE(area->height(), height);
        QVERIFY(area->verticalScrollBar()->maximum() > 0);
        DialogDriver::click(*button(dialog, "Ok"));
    });
    KOldMessageDialog::Infomation([&lines] { return QStringLiteral("line\n").repeated(lines); },
                                  m_parent.get());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KOldMessageDialog>(argc, argv);
}

#include "tst_KOldMessageDialog.moc"
