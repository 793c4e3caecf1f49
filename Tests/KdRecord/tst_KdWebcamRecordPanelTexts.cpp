#include "WebcamRecordFixture.h"

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/AccessibleEvents.h>
#include <Support/ClippedTexts.h>
#include <Support/WidgetLooks.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QHash>
#include <QTextDocumentFragment>

using namespace KdVBLMODEL;

/** What the webcam panel says, in other languages and to those who cannot see it. */
class tst_KdWebcamRecordPanelTexts : public WebcamRecordFixture
{
    Q_OBJECT

private Q_SLOTS:
    void textsAreAsRequired();
    void tipsFollowTheState();
    void previewSwitchSaysWhatItDoes();
    void everyControlHasAName();
    void keysReachWhatTakesNoFocus();
    void keysOfDisabledControlsDoNothing();
    void tipsNameTheKeys();
    void whatHappensToATakeIsSpoken();
    void endOfTheCountdownIsSpoken();
    void lossOfTheLastCameraIsSpoken();
    void languageChangeInMidTakeKeepsTheTake();
    void languageChangeTranslatesTheEmptyState();
    void everythingFits_data();
    void everythingFits();
    void recordButtonStandsInTheMiddle();
};

void tst_KdWebcamRecordPanelTexts::textsAreAsRequired()
{
    showPanel();
    QStringList captions;
    for (const KdLabel* const label : panel->findChildren<KdLabel*>()) {
        const QString name = label->objectName();
        if (!label->isWindow() && label->isVisible() && name != QLatin1String(kStatus) &&
            name != QLatin1String("KInputLine")) {
            captions.append(label->text());
        }
    }
    captions.sort();
    QCOMPARE(captions, texts({" 00:00:00", "Audio:", "Count Down:", "Frame Rate:", "Record Time:",
                              "Resolution:", "Video Device:", "sec"}));
    QCOMPARE(button(kOk)->text(), QStringLiteral("OK"));
    QCOMPARE(button(kReRecord)->toolTip(), QStringLiteral("Re-record"));
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("Pause"));
    const auto backs = panel->findChildren<QLabel*>(QStringLiteral("KCameraCapture_LabelBack"));
    QCOMPARE(backs.size(), 4);
    for (const QLabel* const label : backs) {
        const bool isRight = label->text() == QLatin1String("Audio:") ||
                             label->text() == QLatin1String("Frame Rate:");
        QCOMPARE(label->alignment().testFlag(Qt::AlignRight), isRight);
        QVERIFY(!isRight || label->size() == QSize(150, 16));
    }
}

void tst_KdWebcamRecordPanelTexts::tipsFollowTheState()
{
    setShortcut(QKeySequence(QStringLiteral("Ctrl+R")));
    showPanel();
    const QString key = QKeySequence(QStringLiteral("Ctrl+R")).toString(QKeySequence::NativeText);
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("Start (%1)").arg(key));
    QCOMPARE(button(kStart)->property("WITH_SHORTCUT").toBool(), true);
    startTake();
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("Stop (%1)").arg(key));
    passTime(1000);
    stopTake();
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("Start (%1)").arg(key));
}

void tst_KdWebcamRecordPanelTexts::previewSwitchSaysWhatItDoes()
{
    showPanel();
    auto* const preview = control<QCheckBox>(kPreview);
    QVERIFY(preview->isChecked());
    QVERIFY(panel->isRecordPreview());
    QCOMPARE(preview->text(), QStringLiteral("Close the Recording Preview Window"));
    click(kPreview);
    QVERIFY(!panel->isRecordPreview());
    QCOMPARE(preview->text(), QStringLiteral("Close the Recording Preview Window"));
    click(kPreview);
    QCOMPARE(preview->text(), QStringLiteral("Open the Recording Preview Window"));
    click(kPreview);
    startTake();
    QCOMPARE(stored().recordPreview, false);
    delete window;
    showPanel();
    QVERIFY(!panel->isRecordPreview());
}

void tst_KdWebcamRecordPanelTexts::everyControlHasAName()
{
    showPanel();
    startTake();
    QStringList nameless;
    for (const QWidget* const widget : panel->findChildren<QWidget*>()) {
        const bool isControl = qobject_cast<const QAbstractButton*>(widget) ||
                               qobject_cast<const QComboBox*>(widget) ||
                               qobject_cast<const QAbstractSpinBox*>(widget);
        if (!isControl || !widget->isVisibleTo(panel)) {
            continue;
        }
        const auto* const shown = qobject_cast<const QAbstractButton*>(widget);
        const bool hasText = shown && !shown->text().isEmpty();
        if (widget->accessibleName().isEmpty() && !hasText && widget->toolTip().isEmpty()) {
            nameless.append(widget->objectName());
        }
    }
    QCOMPARE(nameless, QStringList());
    QCOMPARE(button(kStart)->accessibleName(), QStringLiteral("Stop"));
    QCOMPARE(control<QWidget>(kCamera)->accessibleName(), QStringLiteral("Video Device:"));
}

void tst_KdWebcamRecordPanelTexts::keysReachWhatTakesNoFocus()
{
    showPanel();
    const QHash<int, const char*> lists{{Qt::Key_V, kCamera},
                                        {Qt::Key_A, kMicrophone},
                                        {Qt::Key_R, kResolution},
                                        {Qt::Key_F, kFrameRate}};
    for (auto list = lists.cbegin(); list != lists.cend(); ++list) {
        auto* const box = control<QComboBox>(list.value());
        const int former = box->currentIndex();
        pressKey(list.key(), Qt::AltModifier);
        QTRY_VERIFY(box->view()->isVisible());
        QTest::keyClick(box->view(), former == 0 ? Qt::Key_Down : Qt::Key_Up);
        QTest::keyClick(box->view(), Qt::Key_Return);
        QTRY_VERIFY(!box->view()->isVisible());
        QVERIFY(box->currentIndex() != former);
    }
    pressKey(Qt::Key_C, Qt::AltModifier);
    QVERIFY(control<QWidget>(kSeconds)->hasFocus());
    QTest::keyClicks(control<QDoubleSpinBox>(kSeconds), QStringLiteral("7"));
    QCOMPARE(control<QDoubleSpinBox>(kSeconds)->value(), 7.0);
    signalTexts.clear();
    pressKey(Qt::Key_O, Qt::AltModifier);
    QCOMPARE(signalTexts, QStringList(QStringLiteral("sigClose")));
}

void tst_KdWebcamRecordPanelTexts::keysOfDisabledControlsDoNothing()
{
    showPanel();
    startTake();
    pressKey(Qt::Key_V, Qt::AltModifier);
    QVERIFY(!control<QComboBox>(kCamera)->view()->isVisible());
    pressKey(Qt::Key_C, Qt::AltModifier);
    QVERIFY(!control<QWidget>(kSeconds)->hasFocus());
}

void tst_KdWebcamRecordPanelTexts::tipsNameTheKeys()
{
    showPanel();
    const auto tip = [this](const char* name) {
        const QString html = WidgetLooks::toolTip(*control<QWidget>(name));
        return QTextDocumentFragment::fromHtml(html).toPlainText();
    };
    QCOMPARE(tip(kCamera), QStringLiteral("Cam A (Alt+V)"));
    QCOMPARE(tip(kMicrophone), QStringLiteral("Mic A (Alt+A)"));
    QCOMPARE(tip(kResolution), QStringLiteral("Resolution (Alt+R)"));
    QCOMPARE(tip(kFrameRate), QStringLiteral("Frame Rate (Alt+F)"));
    QCOMPARE(tip(kSeconds), QStringLiteral("Count Down (Alt+C)"));
    QCOMPARE(tip(kOk), QStringLiteral("OK (Alt+O)"));
    QCOMPARE(control<QWidget>(kOk)->accessibleDescription(), QStringLiteral("Alt+O"));
}

void tst_KdWebcamRecordPanelTexts::whatHappensToATakeIsSpoken()
{
    showPanel();
    control<QDoubleSpinBox>(kSeconds)->setValue(2);
    AccessibleEvents heard;
    startTake();
    QCOMPARE(heard.takeAlerts(),
             texts({"Recording starts in 2", "Recording starts in 1", "Recording started"}));
    click(kPause);
    click(kPause);
    QCOMPARE(heard.takeAlerts(), texts({"Recording is paused. Click Resume to continue recording.",
                                        "Recording resumed"}));
    passTime(2000);
    stopTake();
    QCOMPARE(heard.takeAlerts(), QStringList(QStringLiteral("Recording stopped")));
}

void tst_KdWebcamRecordPanelTexts::endOfTheCountdownIsSpoken()
{
    showPanel();
    const AccessibleEvents heard;
    control<QDoubleSpinBox>(kSeconds)->setValue(9);
    click(kStart);
    QCOMPARE(heard.alerts().value(0), QStringLiteral("Recording starts in 9"));
    click(kStart);
    QCOMPARE(heard.alerts().last(), QStringLiteral("Countdown stopped"));
}

void tst_KdWebcamRecordPanelTexts::lossOfTheLastCameraIsSpoken()
{
    showPanel();
    AccessibleEvents heard;
    setCameras({});
    answers->answerMessage(QDialogButtonBox::Ok);
    lookAtDevices(fcdWebcamRemoved);
    fire(kDeviceLostTimer);
    QTRY_COMPARE(answers->pending(), 0);
    const QStringList spoken = heard.alerts();
    QCOMPARE(spoken.size(), 2);
    QVERIFY(spoken.first().endsWith(QLatin1String(": The Camera Cam A is lost.")));
    QCOMPARE(spoken.last(), QStringLiteral("No device is connected"));
}

void tst_KdWebcamRecordPanelTexts::languageChangeInMidTakeKeepsTheTake()
{
    showPanel();
    const QString path = startTake();
    engine->deliverTime(7000);
    drain();
    click(kPause);
    signalTexts.clear();
    engine->clearCalls();
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    QCOMPARE(button(kStart)->toolTip(), QStringLiteral("[Stop ([Space])]"));
    QCOMPARE(button(kPause)->toolTip(), QStringLiteral("[Resume]"));
    QCOMPARE(button(kOk)->text(), QStringLiteral("[OK]"));
    QCOMPARE(button(kPreview)->text(), QStringLiteral("[Close the Recording Preview Window]"));
    QCOMPARE(statusText(), QStringLiteral("[Recording]"));
    QCOMPARE(timeText(), QStringLiteral(" 00:00:07"));
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    QVERIFY(isLocked());
    QCOMPARE(engine->commands(), QStringList());
    QCOMPARE(signalTexts, QStringList());
    passTime(7000);
    stopTake();
    QCOMPARE(finishedPath, path);
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdWebcamRecordPanelTexts::languageChangeTranslatesTheEmptyState()
{
    setCameras({});
    showPanel();
    BracketingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    drain();
    QCOMPARE(choice(kCamera), QStringLiteral("[No Device]"));
    QCOMPARE(statusText(), QStringLiteral("[No Device]"));
    QVERIFY(textOf(kHint).startsWith(QLatin1String("[Connect")));
    setCameras({QStringLiteral("Cam A")});
    lookAtDevices(fcdWebcamListChanged);
    QVERIFY(button(kStart)->isEnabled());
    QCOMPARE(choice(kCamera), QStringLiteral("Cam A"));
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdWebcamRecordPanelTexts::everythingFits_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("skin");
    for (const char* language : {"", "de", "zh_CN"}) {
        for (const char* skin : {"dark", "light"}) {
            QTest::addRow("%s %s", *language ? language : "source", skin)
                << QString::fromLatin1(language) << QString::fromLatin1(skin);
        }
    }
}

void tst_KdWebcamRecordPanelTexts::everythingFits()
{
    QFETCH(QString, language);
    QFETCH(QString, skin);
    QTranslator translator;
    if (!language.isEmpty()) {
        QVERIFY(translator.load(QStringLiteral(":/translations/KdRecord_%1.qm").arg(language)));
        QCoreApplication::installTranslator(&translator);
    }
    KdSkin::KdSkinManager::instance()->setSkin(skin);
    showPanel();
    // The dialog on the smallest usual screen, less its title bar.
    window->resize(798, 614);
    QVERIFY2(panel->minimumSizeHint().height() <= 614 && panel->minimumSizeHint().width() <= 798,
             qPrintable(QStringLiteral("%1x%2")
                            .arg(panel->minimumSizeHint().width())
                            .arg(panel->minimumSizeHint().height())));
    QCOMPARE(KdTest::clippedTexts(*window), QStringList());
    startTake();
    QCOMPARE(KdTest::clippedTexts(*window), QStringList());
    passTime(1000);
    stopTake();
    delete window;
    setCameras({});
    showPanel();
    QCOMPARE(KdTest::clippedTexts(*window), QStringList());
    KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
    QCoreApplication::removeTranslator(&translator);
}

void tst_KdWebcamRecordPanelTexts::recordButtonStandsInTheMiddle()
{
    showPanel();
    const auto middle = [this] {
        return button(kStart)->mapTo(panel, button(kStart)->rect().center()).x();
    };
    QVERIFY(qAbs(middle() - panel->width() / 2) <= 1);
    const int idle = middle();
    startTake();
    QCOMPARE(middle(), idle);
    QCOMPARE(button(kStart)->size(), QSize(72, 72));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWebcamRecordPanelTexts>(argc, argv);
}

#include "tst_KdWebcamRecordPanelTexts.moc"
