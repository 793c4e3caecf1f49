#include "KdTestCase.h"
#include "WindowAnswers.h"

#include <KdCore/KdBaseLog.h>

#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include <thread>

/** Every function does what the suite must not let pass. The one to run is named on the command
 * line. */
class FaultyTest : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void nothing() {}

    void logsAQtWarning() { qWarning("a planted warning"); }

    void logsAnError()
    {
        KdBaseLog::write(KdBaseLog::Error, {"Tests/Support/faulty_test", "FaultyTest::logsAnError"},
                         "a planted error");
    }

    void logsAnErrorOnAnotherThread();

    void expectsALogLineThatDoesNotCome() { expectLog(QStringLiteral("never logged")); }

    void leavesAWindowBehind()
    {
        static QWidget* leaked = nullptr;
        leaked = new QWidget;
        leaked->setObjectName(QStringLiteral("Planted"));
    }

    void waitsInVain()
    {
        QVERIFY(
            !DialogDriver::waitUntil([] { return false; }, QStringLiteral("the impossible"), 20));
    }

    void clicksWhatIsNotThere()
    {
        const QWidget window;
        DialogDriver::click(window, QStringLiteral("Missing"));
    }

    void clicksADisabledButton()
    {
        QPushButton button;
        button.setObjectName(QStringLiteral("Off"));
        button.setEnabled(false);
        button.show();
        DialogDriver::click(button);
    }

    void showsAMessageThatNobodyAnnounced()
    {
        const WindowAnswers answers;
        QDialog message;
        message.setObjectName(QStringLiteral("KOldMessageDialog"));
        QLabel text(QStringLiteral("a planted message"), &message);
        message.exec();
    }

    void announcesAMessageThatDoesNotCome()
    {
        WindowAnswers answers;
        answers.answerMessage(QDialogButtonBox::Ok);
    }

    void answersWithAButtonThatTheMessageLacks()
    {
        WindowAnswers answers;
        answers.answerMessage(QDialogButtonBox::Yes);
        QDialog message;
        message.setObjectName(QStringLiteral("KOldMessageDialog"));
        message.exec();
    }
};

void FaultyTest::logsAnErrorOnAnotherThread()
{
    std::thread([] {
        KdBaseLog::write(KdBaseLog::Error, {"Tests/Support/faulty_test", "FaultyTest"},
                         "planted on a thread");
    }).join();
}

int main(int argc, char** argv)
{
    return KdTest::run<FaultyTest>(argc, argv);
}

#include "faulty_test.moc"
