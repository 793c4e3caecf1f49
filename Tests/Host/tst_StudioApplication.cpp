#include "Support/DialogDriver.h"
#include "Support/KdTestCase.h"

#include <KCore/KCoreDirs.h>
#include <KdAppSettings/KdAppSettings.h>
#include <KdVBLModel/KdProject.h>
#include <KdWidgets/KdSkinManager.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioApplication.h>
#include <Studio/StudioTakeLibrary.h>
#include <Studio/StudioTimeline.h>
#include <Studio/StudioWindow.h>

#include <QAction>
#include <QFileInfo>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include <functional>

class tst_StudioApplication : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void takesFolderHoldsTakesAndSettings();
    void frameRateReachesTheTimeline();
    void chosenSkinIsThereAtTheNextStart();
    void chosenLanguageIsThereAtTheNextStart();
    void commandLineRulesOverWhatWasChosen();

private:
    StudioOptions options() const
    {
        StudioOptions options;
        options.takesFolder = temporaryPath(QStringLiteral("my takes"));
        return options;
    }
    /** Runs the program; what happens while the window is there is the test's business. */
    static int run(const StudioOptions& options, const std::function<void(StudioWindow&)>& use);
    static QString recordText(const StudioWindow& window)
    {
        return window.findChild<QPushButton*>(QStringLiteral("Studio_RecordVoiceOver"))->text();
    }
    static void chooseLanguage(const StudioWindow& window, const QString& code);
};

void tst_StudioApplication::init()
{
    KdTestCase::init();
    KdAppSettings::GetInstance()->Load();
}

int tst_StudioApplication::run(const StudioOptions& options,
                               const std::function<void(StudioWindow&)>& use)
{
    QTimer::singleShot(0, qApp, [&use] {
        auto* const window = qobject_cast<StudioWindow*>(KdUtility::gGetMainWindow());
        QVERIFY(window);
        use(*window);
        window->close();
        QApplication::exit(0);
    });
    StudioApplication studio(options);
    return studio.run();
}

void tst_StudioApplication::chooseLanguage(const StudioWindow& window, const QString& code)
{
    const QList<QAction*> choices = window.findChild<QMenu*>()->actions();
    for (QAction* const choice : choices) {
        if (choice->data().toString() == code) {
            choice->trigger();
        }
    }
}

void tst_StudioApplication::takesFolderHoldsTakesAndSettings()
{
    const QString folder = options().takesFolder;
    QString listed;
    QCOMPARE(run(options(), [&](StudioWindow& window) { listed = window.library()->folder(); }), 0);
    QCOMPARE(listed, folder);
    QVERIFY(QFileInfo(folder).isDir());
    QCOMPARE(getZentraDocumentDir(), folder);
}

void tst_StudioApplication::frameRateReachesTheTimeline()
{
    StudioOptions wanted = options();
    wanted.frameRate = KdVBLMODEL::KdFrameRate::Fps23_976;
    double rate = 0.0;
    run(wanted, [&](StudioWindow& window) { rate = window.timeline()->frameRate(); });
    QCOMPARE(rate, 23.97);
}

void tst_StudioApplication::chosenSkinIsThereAtTheNextStart()
{
    QString skin;
    run(options(), [&](StudioWindow& window) {
        QCOMPARE(KdSkin::KdSkinManager::instance()->skin(), QStringLiteral("dark"));
        DialogDriver::click(window, QStringLiteral("Studio_Skin"));
    });
    run(options(), [&](StudioWindow&) { skin = KdSkin::KdSkinManager::instance()->skin(); });
    QCOMPARE(skin, QStringLiteral("light"));
}

void tst_StudioApplication::chosenLanguageIsThereAtTheNextStart()
{
    run(options(), [&](StudioWindow& window) {
        QCOMPARE(recordText(window), QStringLiteral("Record voice-over"));
        chooseLanguage(window, QStringLiteral("de"));
        QTRY_VERIFY(recordText(window) != QStringLiteral("Record voice-over"));
    });
    QString text;
    run(options(), [&](StudioWindow& window) { text = recordText(window); });
    QVERIFY(text != QStringLiteral("Record voice-over"));
}

void tst_StudioApplication::commandLineRulesOverWhatWasChosen()
{
    run(options(), [&](StudioWindow& window) {
        DialogDriver::click(window, QStringLiteral("Studio_Skin"));
        chooseLanguage(window, QStringLiteral("de"));
    });
    StudioOptions wanted = options();
    wanted.skin = QStringLiteral("dark");
    wanted.language = QStringLiteral("en");
    QString text;
    QString skin;
    run(wanted, [&](StudioWindow& window) {
        text = recordText(window);
        skin = KdSkin::KdSkinManager::instance()->skin();
    });
    QCOMPARE(text, QStringLiteral("Record voice-over"));
    QCOMPARE(skin, QStringLiteral("dark"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioApplication>(argc, argv);
}

#include "tst_StudioApplication.moc"
