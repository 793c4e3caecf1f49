#include <Support/AccessibleEvents.h>
#include <Support/ClippedTexts.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/ScriptedEngine.h>

#include <KdWidgets/KdSkinManager.h>
#include <Studio/StudioDevicePane.h>
#include <Studio/StudioDevicesDialog.h>
#include <Studio/StudioLanguages.h>

#include <QLabel>
#include <QListWidget>
#include <QPointer>

#include <memory>

using namespace KdVBLMODEL;

namespace {

_KdCaptureDevInf device(_KdDevType type, int index, const char* name)
{
    return {type, index, QString::fromUtf8(name), QString::fromUtf8(name) + QLatin1String("-id")};
}

QStringList texts(const StudioDevicePane* pane)
{
    QStringList all;
    const auto* const list = pane->findChild<QListWidget*>();
    for (int row = 0; row < list->count(); ++row) {
        all.append(list->item(row)->text());
    }
    return all;
}

QString message(const StudioDevicePane* pane)
{
    return pane->findChild<QLabel*>(pane->objectName() + QLatin1String("_Message"))->text();
}

QStringList strings(std::initializer_list<const char*> all)
{
    QStringList list;
    for (const char* text : all) {
        list.append(QString::fromUtf8(text));
    }
    return list;
}

} // namespace

/** The list of devices while they come and go. */
class tst_StudioDevicesDialog : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        KdTestCase::init();
        m_engine = std::make_unique<ScriptedEngine>();
        m_engine->script().webcams = {device(kdtWebcam, 0, "Desk"), device(kdtWebcam, 1, "Door")};
        m_engine->script().microphones = {device(kdtMicrophone, 0, "USB")};
        m_dialog = new StudioDevicesDialog;
        m_dialog->show();
    }

    void cleanup()
    {
        delete m_dialog;
        QCOMPARE(m_engine->alive(), 0);
        m_engine.reset();
        m_languages.use(QStringLiteral("en"));
        KdSkin::KdSkinManager::instance()->setSkin(QStringLiteral("dark"));
        KdTestCase::cleanup();
    }

    void theDevicesAreListedWithTheFirstAsTheCurrentOne()
    {
        QCOMPARE(texts(m_dialog->cameras()), strings({"Desk (current)", "Door"}));
        QCOMPARE(texts(m_dialog->microphones()), strings({"USB (current)"}));
        QCOMPARE(m_engine->selectedDevice(kdtWebcam).name, QStringLiteral("Desk"));
    }

    void aDeviceThatIsPluggedInAppearsByItself()
    {
        m_engine->script().microphones.append(device(kdtMicrophone, 1, "Lapel"));
        m_engine->deliverDevice(fcdAudioInputAdded, 1);
        QTRY_COMPARE(texts(m_dialog->microphones()), strings({"USB (current)", "Lapel"}));
        QCOMPARE(message(m_dialog->microphones()), QStringLiteral("Lapel was connected."));
        QCOMPARE(message(m_dialog->cameras()),
                 QStringLiteral("Press one to make it the current one."));
    }

    void anotherDeviceThatGoesIsTold()
    {
        m_engine->script().webcams.removeLast();
        m_engine->deliverDevice(fcdWebcamRemoved, 1);
        QTRY_COMPARE(texts(m_dialog->cameras()), strings({"Desk (current)"}));
        QCOMPARE(message(m_dialog->cameras()), QStringLiteral("Door was disconnected."));
    }

    void theCurrentDeviceThatGoesStaysMarkedAsLostUntilItIsBack()
    {
        m_engine->script().webcams.removeFirst();
        m_engine->deliverDevice(fcdWebcamRemoved, 0);
        QTRY_COMPARE(texts(m_dialog->cameras()), strings({"Door", "Desk (disconnected)"}));
        QCOMPARE(message(m_dialog->cameras()), QStringLiteral("Desk was disconnected."));

        m_engine->script().webcams.append(device(kdtWebcam, 1, "Desk"));
        m_engine->deliverDevice(fcdWebcamListChanged, 1);
        QTRY_COMPARE(texts(m_dialog->cameras()), strings({"Door", "Desk (current)"}));
        QCOMPARE(message(m_dialog->cameras()), QStringLiteral("Desk was connected."));
    }

    void aLossIsSpokenOnce()
    {
        m_engine->script().webcams.append(device(kdtWebcam, 2, "Roof"));
        m_engine->deliverDevice(fcdWebcamListChanged, 2);
        QTRY_COMPARE(texts(m_dialog->cameras()).size(), 3);
        AccessibleEvents events;
        // The current one, then another while that is still gone.
        for (const char* gone : {"Desk", "Door"}) {
            m_engine->script().webcams.removeFirst();
            m_engine->deliverDevice(fcdWebcamRemoved, 0);
            const QString told = QStringLiteral("%1 was disconnected.").arg(QLatin1String(gone));
            QTRY_COMPARE(message(m_dialog->cameras()), told);
            QCOMPARE(events.takeAlerts(), QStringList{told});
        }
    }

    void aPressMakesADeviceTheCurrentOne()
    {
        auto* const list = m_dialog->cameras()->findChild<QListWidget*>();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(list->item(1)).center());
        QCOMPARE(texts(m_dialog->cameras()), strings({"Desk", "Door (current)"}));
        QCOMPARE(m_engine->selectedDevice(kdtWebcam).name, QStringLiteral("Door"));
    }

    void theKeyboardMakesADeviceTheCurrentOne()
    {
        auto* const list = m_dialog->cameras()->findChild<QListWidget*>();
        DialogDriver::waitUntil([&] { return m_dialog->isActiveWindow(); },
                                QStringLiteral("The window"));
        list->setFocus();
        QTest::keyClick(list, Qt::Key_End);
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(texts(m_dialog->cameras()), strings({"Desk", "Door (current)"}));
        QVERIFY(m_dialog->isVisible());
    }

    void aDeviceThatTheEngineRefusesDoesNotBecomeCurrent()
    {
        m_engine->fail("setDevice");
        auto* const list = m_dialog->cameras()->findChild<QListWidget*>();
        Q_EMIT list->itemActivated(list->item(1));
        QCOMPARE(texts(m_dialog->cameras()), strings({"Desk (current)", "Door"}));
    }

    void aLostDeviceCannotBeChosen()
    {
        m_engine->script().webcams.removeFirst();
        m_engine->deliverDevice(fcdWebcamRemoved, 0);
        QTRY_COMPARE(texts(m_dialog->cameras()), strings({"Door", "Desk (disconnected)"}));
        auto* const list = m_dialog->cameras()->findChild<QListWidget*>();
        Q_EMIT list->itemActivated(list->item(1));
        QCOMPARE(texts(m_dialog->cameras()), strings({"Door", "Desk (disconnected)"}));
    }

    void aCameraThatAnotherProgramUsesIsTold()
    {
        m_engine->deliverDevice(fcdWebcamOccupied, 0);
        QTRY_COMPARE(message(m_dialog->cameras()),
                     QStringLiteral("Another program is using the camera."));
    }

    void withoutDevicesItSaysWhatToDo()
    {
        m_engine->script().webcams.clear();
        delete m_dialog;
        m_dialog = new StudioDevicesDialog;
        QVERIFY(texts(m_dialog->cameras()).isEmpty());
        QCOMPARE(message(m_dialog->cameras()),
                 QStringLiteral("Connect a camera: it appears here by itself."));
    }

    void anEngineWithoutARecorderIsOneWithoutDevices()
    {
        m_engine->fail("createWebcamRecorder");
        delete m_dialog;
        m_dialog = new StudioDevicesDialog;
        QVERIFY(texts(m_dialog->microphones()).isEmpty());
    }

    void namesAreShownLetterByLetter()
    {
        m_engine->script().webcams = {device(kdtWebcam, 0, "<b>%1</b> \"a\"")};
        m_engine->deliverDevice(fcdWebcamListChanged, 0);
        QTRY_COMPARE(texts(m_dialog->cameras()).first(), QStringLiteral("<b>%1</b> \"a\""));
        QCOMPARE(message(m_dialog->cameras()), QStringLiteral("Desk was disconnected."));
    }

    void closingItLetsTheEngineGo()
    {
        QCOMPARE(m_engine->alive(), 1);
        m_dialog->close();
        QTRY_VERIFY(m_dialog.isNull());
        QCOMPARE(m_engine->alive(), 0);
    }

    void everyTextFitsInAllLanguagesAndSkins_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("skin");
        for (const char* language : {"en", "de", "zh_CN"}) {
            for (const char* skin : {"dark", "light"}) {
                QTest::addRow("%s, %s", language, skin)
                    << QString::fromLatin1(language) << QString::fromLatin1(skin);
            }
        }
    }

    void everyTextFitsInAllLanguagesAndSkins()
    {
        QFETCH(QString, language);
        QFETCH(QString, skin);
        const QString before = m_dialog->windowTitle() + message(m_dialog->cameras());
        KdSkin::KdSkinManager::instance()->setSkin(skin);
        QVERIFY(m_languages.use(language));
        QTRY_COMPARE(m_dialog->windowTitle() + message(m_dialog->cameras()) == before,
                     language == QLatin1String("en"));
        QTRY_VERIFY2(KdTest::clippedTexts(*m_dialog).isEmpty(),
                     qPrintable(KdTest::clippedTexts(*m_dialog).join(QLatin1Char('\n'))));
    }

private:
    std::unique_ptr<ScriptedEngine> m_engine;
    QPointer<StudioDevicesDialog> m_dialog;
    StudioLanguages m_languages;
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioDevicesDialog>(argc, argv);
}

#include "tst_StudioDevicesDialog.moc"
