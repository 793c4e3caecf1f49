#include <Support/ClippedTexts.h>
#include <Support/DialogDriver.h>
#include <Support/KdTestCase.h>
#include <Support/ScriptedEngine.h>

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KAudioSettings.h>
#include <KdRecord/KVideoSettings.h>
#include <KdZentraCore/KdConfigEngine.h>
#include <KdZentraCore/KdUtility.h>
#include <Studio/StudioDevicesDialog.h>
#include <Studio/StudioLanguages.h>
#include <Studio/StudioSettingsDialog.h>
#include <Studio/StudioSideWindows.h>
#include <Studio/StudioWindow.h>

#include <memory>

/** The windows that Studio's menu opens, through the keys of the menu. */
class tst_StudioSideWindows : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        KdTestCase::init();
        KdAppSettings::GetInstance()->Load();
        m_engine = std::make_unique<ScriptedEngine>();
        m_window = std::make_unique<StudioWindow>(&m_languages);
        m_window->show();
        DialogDriver::waitUntil([this] { return m_window->isActiveWindow(); },
                                QStringLiteral("The window"));
    }

    void cleanup()
    {
        m_window.reset();
        m_engine.reset();
        m_languages.use(QStringLiteral("en"));
        KdUtility::gSetMainWindow(nullptr);
        KdTestCase::cleanup();
    }

    void eachIsOpenedByItsKey_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("name");
        const int shifted = Qt::ControlModifier | Qt::ShiftModifier;
        QTest::newRow("devices") << int(Qt::Key_D) << int(Qt::ControlModifier)
                                 << QStringLiteral("StudioDevicesDialog");
        QTest::newRow("audio") << int(Qt::Key_A) << shifted
                               << QStringLiteral("StudioAudioSettingsDialog");
        QTest::newRow("video") << int(Qt::Key_V) << shifted
                               << QStringLiteral("StudioVideoSettingsDialog");
    }

    void eachIsOpenedByItsKey()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, name);
        QVERIFY(!m_window->findChild<QWidget*>(name));
        QTest::keyClick(m_window.get(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QTRY_VERIFY(m_window->findChild<QWidget*>(name));
        QTRY_VERIFY(m_window->findChild<QWidget*>(name)->isActiveWindow());
    }

    void whatIsOpenAlreadyIsNotOpenedAgain()
    {
        side()->openDevices();
        const StudioDevicesDialog* const first = side()->devices();
        side()->openDevices();
        QCOMPARE(side()->devices(), first);
    }

    void closingStudioClosesThem()
    {
        side()->openDevices();
        side()->openAudioSettings();
        side()->openVideoSettings();
        m_window->close();
        QTRY_VERIFY(!side()->devices() && !side()->audioSettings() && !side()->videoSettings());
        QCOMPARE(m_engine->alive(), 0);
    }

    void appliedAudioSettingsAreTheRecorders()
    {
        side()->openAudioSettings();
        auto* const page = side()->audioSettings()->findChild<KAudioSettings*>();
        QCOMPARE(page->data().sampleRate, 44100);
        page->loadData({0x20434141, 1, 48000, 96, 2, true});
        DialogDriver::click(*side()->audioSettings(), QStringLiteral("Studio_ApplySettings"));
        QTRY_VERIFY(!side()->audioSettings());
        KdAppSettings::GetInstance()->Load();
        const auto* const kept =
            KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings();
        QCOMPARE(kept->GetSampleRate(), 48000);
        QCOMPARE(kept->GetChannels(), 1);
        QCOMPARE(kept->GetBitrate(), 96);
        QCOMPARE(kept->GetBitrateMode(), 2U);
        side()->openAudioSettings();
        QCOMPARE(side()->audioSettings()->findChild<KAudioSettings*>()->data().sampleRate, 48000);
    }

    void theRecordersPreviewStaysAsItIs()
    {
        auto* const stored = KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings();
        stored->SetRecordPreview(false);
        side()->openAudioSettings();
        DialogDriver::click(*side()->audioSettings(), QStringLiteral("Studio_ApplySettings"));
        QTRY_VERIFY(!side()->audioSettings());
        QVERIFY(!stored->GetRecordPreview());
    }

    void appliedVideoSettingsAreThereTheNextTime()
    {
        side()->openVideoSettings();
        const _VideoAdvanceData chosen{0x34363243, 29.97F, 1, 8};
        side()->videoSettings()->findChild<KVideoSettings*>()->loadData(chosen);
        DialogDriver::click(*side()->videoSettings(), QStringLiteral("Studio_ApplySettings"));
        QTRY_VERIFY(!side()->videoSettings());
        side()->openVideoSettings();
        QVERIFY(side()->videoSettings()->findChild<KVideoSettings*>()->data() == chosen);
    }

    void cancelledSettingsAreDropped()
    {
        side()->openVideoSettings();
        side()->videoSettings()->findChild<KVideoSettings*>()->loadData({0x34363243, 60.0F, 1, 8});
        DialogDriver::click(*side()->videoSettings(), QStringLiteral("Studio_CancelSettings"));
        QTRY_VERIFY(!side()->videoSettings());
        side()->openVideoSettings();
        QVERIFY(side()->videoSettings()->findChild<KVideoSettings*>()->data() ==
                _VideoAdvanceData());
    }

    void everyTextFitsInAllLanguages_data()
    {
        QTest::addColumn<QString>("language");
        for (const char* language : {"en", "de", "zh_CN"}) {
            QTest::newRow(language) << QString::fromLatin1(language);
        }
    }

    void everyTextFitsInAllLanguages()
    {
        QFETCH(QString, language);
        side()->openAudioSettings();
        side()->openVideoSettings();
        const QString before = side()->audioSettings()->windowTitle();
        QVERIFY(m_languages.use(language));
        QTRY_COMPARE(side()->audioSettings()->windowTitle() == before,
                     language == QLatin1String("en"));
        for (const QWidget* window : {side()->audioSettings(), side()->videoSettings()}) {
            QTRY_VERIFY2(KdTest::clippedTexts(*window).isEmpty(),
                         qPrintable(KdTest::clippedTexts(*window).join(QLatin1Char('\n'))));
        }
    }

private:
    StudioSideWindows* side() const { return m_window->sideWindows(); }
    StudioLanguages m_languages;
    std::unique_ptr<ScriptedEngine> m_engine;
    std::unique_ptr<StudioWindow> m_window;
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioSideWindows>(argc, argv);
}

#include "tst_StudioSideWindows.moc"
