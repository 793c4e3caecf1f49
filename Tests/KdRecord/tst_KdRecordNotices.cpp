#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>
#include <Support/WindowAnswers.h>

#include <KdRecord/KdRecordNotices.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdTipWidget.h>
#include <KdWidgets/KdToast.h>

#include <QPushButton>
#include <QSignalSpy>

#include <functional>
#include <memory>

namespace {

/** A widget with the notices that belong to it, as a panel has them. */
class Panel : public QWidget
{
public:
    Panel() { setFixedSize(480, 400); }
    KdRecordNotices notices{this};
};

template <typename Widget>
Widget* shownWindow()
{
    for (QWidget* const top : QApplication::topLevelWidgets()) {
        auto* const found = qobject_cast<Widget*>(top);
        if (found && found->isVisible()) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(KdRecordNotices&)>)

class tst_KdRecordNotices : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void messagesHaveTheirTexts_data();
    void messagesHaveTheirTexts();
    void lostDeviceIsNamedAsPlainText_data();
    void lostDeviceIsNamedAsPlainText();
    void devicesLostAtOnceAreOneMessage_data();
    void devicesLostAtOnceAreOneMessage();
    void openListIsClosedBeforeAMessage();
    void listOfSomeoneElseStaysOpen();
    void lostTakeIsExplainedByItsFolder();
    void isAskingWhileAMessageIsOpen();
    void isAskingWhileSomethingModalRuns();
    void occupiedWebcamWaitsForAnotherMessage_data();
    void occupiedWebcamWaitsForAnotherMessage();
    void panelMayGoInsideAMessage();
    void pauseIsShownUntilItIsOver();
    void tipPointsBelowTheButton();
    void reRecordQuestionCallsOnlyWhenConfirmed_data();
    void reRecordQuestionCallsOnlyWhenConfirmed();
    void secondReRecordQuestionLeavesTheFirst();
    void takeNoticesGoTogether();
};

void tst_KdRecordNotices::messagesHaveTheirTexts_data()
{
    using Tell = std::function<void(KdRecordNotices&)>;
    QTest::addColumn<Tell>("tell");
    QTest::addColumn<QString>("text");
    QTest::newRow("no device") << Tell(&KdRecordNotices::tellNoDevice)
                               << QStringLiteral("No Device");
    QTest::newRow("start failed") << Tell(&KdRecordNotices::tellStartFailed)
                                  << QStringLiteral(
                                         "Unable to record due to an issue with the device.");
    QTest::newRow("too short") << Tell(&KdRecordNotices::tellTooShort)
                               << QStringLiteral(
                                      "The recording is too short. Data cannot be saved.");
    QTest::newRow("occupied") << Tell(&KdRecordNotices::tellWebcamOccupied)
                              << QStringLiteral("Webcam is being used by another application, "
                                                "please close other application and try again.");
}

void tst_KdRecordNotices::messagesHaveTheirTexts()
{
    using Tell = std::function<void(KdRecordNotices&)>;
    QFETCH(Tell, tell);
    QFETCH(QString, text);
    Panel panel;
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    tell(panel.notices);
    QCOMPARE(answers.messages(), QStringList{text});
}

void tst_KdRecordNotices::lostDeviceIsNamedAsPlainText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* title, const QString& name, const QString& shown) {
        QTest::newRow(title) << name << shown;
    };
    row("plain", QStringLiteral("Mic 1"), QStringLiteral("Mic 1"));
    row("empty", QString(), QString());
    row("place marker", QStringLiteral("Mic %1 %2"), QStringLiteral("Mic %1 %2"));
    row("markup", QStringLiteral("<b>Mic</b> & <i>"), QStringLiteral("<b>Mic</b> & <i>"));
    row("quotes", QStringLiteral("\"Mic\" 'x' \\"), QStringLiteral("\"Mic\" 'x' \\"));
    row("right to left", QStringLiteral("ميكروفون"), QStringLiteral("ميكروفون"));
    row("line breaks", QStringLiteral("Mic\n1\u20282"), QStringLiteral("Mic 1 2"));
    row("absurdly long", QString(5000, QLatin1Char('m')),
        QString(120, QLatin1Char('m')) + QChar(0x2026));
}

void tst_KdRecordNotices::lostDeviceIsNamedAsPlainText()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    Panel panel;
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    panel.notices.tellDeviceLost(name);
    QCOMPARE(answers.messages(), QStringList{QStringLiteral("Audio device ") + shown +
                                             QStringLiteral(" connection lost.")});
}

void tst_KdRecordNotices::devicesLostAtOnceAreOneMessage_data()
{
    QTest::addColumn<bool>("isCameraLost");
    QTest::addColumn<bool>("isMicrophoneLost");
    QTest::addColumn<QStringList>("messages");
    const QString camera = QStringLiteral("The Camera Cam %1 is lost.");
    const QString microphone = QStringLiteral("Audio device Mic connection lost.");
    QTest::newRow("camera") << true << false << QStringList{camera};
    QTest::newRow("microphone") << false << true << QStringList{microphone};
    QTest::newRow("both") << true << true << QStringList{camera + QLatin1Char('\n') + microphone};
    QTest::newRow("none") << false << false << QStringList();
}

void tst_KdRecordNotices::devicesLostAtOnceAreOneMessage()
{
    QFETCH(bool, isCameraLost);
    QFETCH(bool, isMicrophoneLost);
    QFETCH(QStringList, messages);
    Panel panel;
    WindowAnswers answers;
    if (!messages.isEmpty()) {
        answers.answerMessage(QDialogButtonBox::Ok);
    }
    panel.notices.tellDevicesLost(
        isCameraLost ? std::optional<QString>(QStringLiteral("Cam %1")) : std::nullopt,
        isMicrophoneLost ? std::optional<QString>(QStringLiteral("Mic")) : std::nullopt);
    QCOMPARE(answers.messages(), messages);
}

void tst_KdRecordNotices::openListIsClosedBeforeAMessage()
{
    Panel panel;
    auto* const list = new KdComboBox(&panel);
    list->addItems({QStringLiteral("A"), QStringLiteral("B")});
    panel.show();
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    list->showPopup();
    QVERIFY(list->isPopupVisible());
    WindowAnswers answers;
    bool wasOpen = true;
    answers.handle(QStringLiteral("KOldMessageDialog"), [&](QWidget& box) {
        wasOpen = list->isPopupVisible();
        box.close();
    });
    panel.notices.tellNoDevice();
    QVERIFY(!wasOpen);
    QCOMPARE(list->currentIndex(), 0);
}

void tst_KdRecordNotices::listOfSomeoneElseStaysOpen()
{
    Panel panel;
    panel.show();
    KdComboBox other;
    other.addItem(QStringLiteral("A"));
    other.show();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    other.showPopup();
    QVERIFY(other.isPopupVisible());
    panel.notices.runModal([&other] {
        [&other] { QVERIFY(other.isPopupVisible()); }();
        return 0;
    });
}

void tst_KdRecordNotices::lostTakeIsExplainedByItsFolder()
{
    Panel panel;
    WindowAnswers answers;
    answers.answerMessage(QDialogButtonBox::Ok);
    answers.answerMessage(QDialogButtonBox::Ok);
    panel.notices.tellNotSaved(temporaryPath(QStringLiteral("REC.m4a")));
    panel.notices.tellNotSaved(temporaryPath(QStringLiteral("gone/REC.m4a")));
    const QStringList expected{
        QStringLiteral("Unable to record due to an issue with the device."),
        QStringLiteral("Please check whether you have permission to write or read on the path, or "
                       "choose other path to create.")};
    QCOMPARE(answers.messages(), expected);
}

void tst_KdRecordNotices::isAskingWhileAMessageIsOpen()
{
    Panel panel;
    QVERIFY(!panel.notices.isAsking());
    WindowAnswers answers;
    bool wasAsking = false;
    answers.handle(QStringLiteral("KOldMessageDialog"), [&](QWidget& box) {
        wasAsking = panel.notices.isAsking();
        box.close();
    });
    panel.notices.tellNoDevice();
    QVERIFY(wasAsking);
    QVERIFY(!panel.notices.isAsking());
}

void tst_KdRecordNotices::isAskingWhileSomethingModalRuns()
{
    Panel panel;
    const int result =
        panel.notices.runModal([&panel] { return panel.notices.isAsking() ? 42 : 0; });
    QCOMPARE(result, 42);
    QVERIFY(!panel.notices.isAsking());
}

void tst_KdRecordNotices::occupiedWebcamWaitsForAnotherMessage_data()
{
    QTest::addColumn<bool>("isForgotten");
    QTest::newRow("told") << false;
    QTest::newRow("forgotten") << true;
}

void tst_KdRecordNotices::occupiedWebcamWaitsForAnotherMessage()
{
    QFETCH(bool, isForgotten);
    Panel panel;
    WindowAnswers answers;
    answers.handle(QStringLiteral("KOldMessageDialog"), [&panel](QWidget& box) {
        panel.notices.tellWebcamOccupied();
        box.close();
    });
    panel.notices.tellNoDevice();
    QCOMPARE(answers.messages().size(), 1);
    if (isForgotten) {
        panel.notices.forgetOccupied();
    } else {
        answers.handle(QStringLiteral("KOldMessageDialog"), [&panel](QWidget& box) {
            // It is on the screen already.
            panel.notices.tellWebcamOccupied();
            box.close();
        });
    }
    QCoreApplication::sendPostedEvents(&panel);
    QCOMPARE(answers.messages().size(), isForgotten ? 1 : 2);
    QVERIFY(!panel.notices.isAsking());
    QCoreApplication::sendPostedEvents(&panel);
    QCOMPARE(answers.messages().size(), isForgotten ? 1 : 2);
}

void tst_KdRecordNotices::panelMayGoInsideAMessage()
{
    auto* const panel = new Panel;
    WindowAnswers answers;
    answers.handle(QStringLiteral("KOldMessageDialog"), [panel](QWidget&) { delete panel; });
    panel->notices.tellDeviceLost(QStringLiteral("Mic"));
    QCOMPARE(answers.pending(), 0);
}

void tst_KdRecordNotices::pauseIsShownUntilItIsOver()
{
    Panel panel;
    panel.show();
    panel.notices.showPaused(true);
    panel.notices.showPaused(true);
    const KdToast* const toast = shownWindow<KdToast>();
    QVERIFY(toast);
    QCOMPARE(toast->text(),
             QStringLiteral("Recording is paused. Click Resume to continue recording."));
    panel.notices.showPaused(false);
    QVERIFY(!shownWindow<KdToast>());
}

void tst_KdRecordNotices::tipPointsBelowTheButton()
{
    Panel panel;
    QPushButton button(&panel);
    button.setGeometry(100, 50, 72, 72);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    panel.notices.showAdded(&button);
    QPointer<KdTipWidget> tip = shownWindow<KdTipWidget>();
    QVERIFY(tip);
    QCOMPARE(tip->text(),
             QStringLiteral("Your audio has been added to the timeline and media library."));
    QCOMPARE(tip->arrowPos(), button.mapToGlobal(QPoint(0, 72 + 10)));
    tip->close();
    QTRY_VERIFY(!tip);
}

void tst_KdRecordNotices::reRecordQuestionCallsOnlyWhenConfirmed_data()
{
    QTest::addColumn<bool>("isConfirmed");
    QTest::newRow("confirmed") << true;
    QTest::newRow("cancelled") << false;
}

void tst_KdRecordNotices::reRecordQuestionCallsOnlyWhenConfirmed()
{
    QFETCH(bool, isConfirmed);
    Panel panel;
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    WindowAnswers answers;
    answers.answerPopover(isConfirmed);
    int calls = 0;
    panel.notices.askReRecord(&panel, [&calls] { ++calls; });
    QTRY_COMPARE(answers.pending(), 0);
    QTRY_COMPARE(calls, isConfirmed ? 1 : 0);
    QCOMPARE(answers.popovers(),
             QStringList{QStringLiteral("Re-recording will overwrite the already recorded content, "
                                        "are you sure?")});
}

void tst_KdRecordNotices::secondReRecordQuestionLeavesTheFirst()
{
    Panel panel;
    panel.show();
    int first = 0;
    int second = 0;
    panel.notices.askReRecord(&panel, [&first] { ++first; });
    panel.notices.askReRecord(&panel, [&second] { ++second; });
    const auto questions = panel.findChildren<QWidget*>(QStringLiteral("KdPopovers"));
    QCOMPARE(questions.size(), 1);
    questions.first()->findChild<QAbstractButton*>(QStringLiteral("KdPopovers_Confirm"))->click();
    QTRY_COMPARE(first, 1);
    QCOMPARE(second, 0);
}

void tst_KdRecordNotices::takeNoticesGoTogether()
{
    Panel panel;
    panel.show();
    int calls = 0;
    panel.notices.showPaused(true);
    panel.notices.askReRecord(&panel, [&calls] { ++calls; });
    panel.notices.closeTakeNotices();
    QVERIFY(!shownWindow<KdToast>());
    QTRY_VERIFY(!panel.findChild<QWidget*>(QStringLiteral("KdPopovers")));
    QCOMPARE(calls, 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdRecordNotices>(argc, argv);
}

#include "tst_KdRecordNotices.moc"
