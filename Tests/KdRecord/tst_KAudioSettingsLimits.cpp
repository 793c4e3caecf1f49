#include "AudioSettingsFixture.h"

#include <KdRecord/KComboboxExt.h>

#include <QSignalSpy>
#include <QTranslator>

namespace {

/** Translates every text of the page into capitals between brackets. */
class Shouting : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* /*disambiguation*/,
                      int /*n*/) const override
    {
        return qstrcmp(context, "KAudioSettings") == 0
                   ? QStringLiteral("[%1]").arg(QString::fromUtf8(source).toUpper())
                   : QString();
    }
};

} // namespace

/** The bit rates that the other rows leave, the notice of it, and both in another language. */
class tst_KAudioSettingsLimits : public AudioSettingsFixture
{
    Q_OBJECT

private Q_SLOTS:
    void limitsComeBeforeTheReport();
    void cbrLimitsTheBitrates_data();
    void cbrLimitsTheBitrates();
    void cbrMovesASelectionThatIsTooHighAndSaysSo();
    void cbrKeepsASelectionThatFits();
    void vbrRestoresEveryBitrateWithoutAWord();
    void channelAndSampleRateLimitToo();
    void loadedBitrateAboveTheLimitFallsAtTheFirstTouch();
    void withoutAKnownSampleRateNothingChanges();
    void withoutAChannelCountNothingChanges();
    void emptyBitrateRowIsFilledSilently();
    void noticeGoesAwayForGood();
    void noticeOnAPageOfItsOwn();

    void newLanguageKeepsSelections();
    void newLanguageKeepsTheLimit();
    void languageChangeIsNoticed();
};

void tst_KAudioSettingsLimits::limitsComeBeforeTheReport()
{
    select("Bitrate", 512);
    QVector<int> offeredAtReport;
    connect(m_page, &KAudioSettings::sigParaChange, this,
            [&] { offeredAtReport = values("Bitrate"); });
    select("BitrateMode", Cbr);
    QCOMPARE(offeredAtReport, QVector<int>({96, 128}));
}

void tst_KAudioSettingsLimits::cbrLimitsTheBitrates_data()
{
    QTest::addColumn<int>("sampleRate");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("highest");

    QTest::newRow("22050 mono") << 22050 << 1 << 128;
    QTest::newRow("22050 stereo") << 22050 << 2 << 256;
    QTest::newRow("24000 mono") << 24000 << 1 << 128;
    QTest::newRow("24000 stereo") << 24000 << 2 << 192;
    QTest::newRow("32000 mono") << 32000 << 1 << 192;
    QTest::newRow("32000 stereo") << 32000 << 2 << 320;
    QTest::newRow("44100 mono") << 44100 << 1 << 256;
    QTest::newRow("44100 stereo") << 44100 << 2 << 512;
    QTest::newRow("48000 mono") << 48000 << 1 << 512;
    QTest::newRow("48000 stereo") << 48000 << 2 << 512;
    QTest::newRow("96000 mono") << 96000 << 1 << 512;
    QTest::newRow("96000 stereo") << 96000 << 2 << 512;
}

void tst_KAudioSettingsLimits::cbrLimitsTheBitrates()
{
    QFETCH(int, sampleRate);
    QFETCH(int, channels);
    QFETCH(int, highest);
    m_page->loadData({0x20434141, channels, sampleRate, 512, Vbr, true});
    select("BitrateMode", Cbr);

    QCOMPARE(values("Bitrate"), AllBitrates.mid(0, AllBitrates.indexOf(highest) + 1));
    QCOMPARE(m_page->data().bitrate, highest);
    QCOMPARE(toasts().size(), highest == 512 ? 0 : 1);
}

void tst_KAudioSettingsLimits::cbrMovesASelectionThatIsTooHighAndSaysSo()
{
    m_page->loadData({0x20434141, 1, 22050, 192, Vbr, true});
    m_window->show();
    select("BitrateMode", Cbr);

    QCOMPARE(values("Bitrate"), QVector<int>({96, 128}));
    QCOMPARE(m_page->data().bitrate, 128);
    QCOMPARE(toasts().size(), 1);
    const KdToast* const toast = toasts().first();
    QCOMPARE(toast->text(), QStringLiteral("CBR mode is on. We've automatically applied the "
                                           "optimal settings for you."));
    QVERIFY(toast->isVisible());
}

void tst_KAudioSettingsLimits::cbrKeepsASelectionThatFits()
{
    m_page->loadData({0x20434141, 1, 32000, 192, Vbr, true});
    select("BitrateMode", Cbr);

    QCOMPARE(values("Bitrate"), QVector<int>({96, 128, 160, 192}));
    QCOMPARE(m_page->data().bitrate, 192);
    QVERIFY(toasts().isEmpty());
}

void tst_KAudioSettingsLimits::vbrRestoresEveryBitrateWithoutAWord()
{
    m_page->loadData({0x20434141, 1, 22050, 192, Vbr, true});
    select("BitrateMode", Cbr);
    qDeleteAll(toasts());
    select("BitrateMode", Vbr);

    QCOMPARE(values("Bitrate"), AllBitrates);
    QCOMPARE(combo("Bitrate").itemText(6), QStringLiteral("512"));
    QCOMPARE(m_page->data().bitrate, 128);
    QVERIFY(toasts().isEmpty());
}

void tst_KAudioSettingsLimits::channelAndSampleRateLimitToo()
{
    m_page->loadData({0x20434141, 2, 44100, 512, Cbr, true});
    select("Channel", 1);
    QCOMPARE(m_page->data().bitrate, 256);
    QCOMPARE(toasts().size(), 1);
    select("SampleRate", 24000);
    QCOMPARE(m_page->data().bitrate, 128);
    QCOMPARE(toasts().size(), 2);
    select("Channel", 2);
    QCOMPARE(values("Bitrate"), QVector<int>({96, 128, 160, 192}));
    QCOMPARE(m_page->data().bitrate, 128);
    QCOMPARE(toasts().size(), 2);
}

void tst_KAudioSettingsLimits::loadedBitrateAboveTheLimitFallsAtTheFirstTouch()
{
    m_page->loadData({0x20434141, 1, 22050, 512, Cbr, true});
    QCOMPARE(m_page->data().bitrate, 512);
    select("SampleRate", 32000);
    QCOMPARE(m_page->data().bitrate, 192);
    QCOMPARE(toasts().size(), 1);
}

void tst_KAudioSettingsLimits::withoutAKnownSampleRateNothingChanges()
{
    m_page->loadData({0x20434141, 1, 22050, 512, Cbr, true});
    combo("SampleRate").setCurrentIndex(-1);
    QCOMPARE(values("Bitrate"), AllBitrates);
    combo("SampleRate").addItem(QStringLiteral("16000 Hz"), 16000);
    select("SampleRate", 16000);
    QCOMPARE(values("Bitrate"), AllBitrates);
    QCOMPARE(m_page->data().bitrate, 512);
    QVERIFY(toasts().isEmpty());
}

void tst_KAudioSettingsLimits::withoutAChannelCountNothingChanges()
{
    m_page->loadData({0x20434141, 1, 22050, 512, Cbr, true});
    combo("Channel").setCurrentIndex(-1);
    QCOMPARE(values("Bitrate"), AllBitrates);
    combo("Channel").addItem(QStringLiteral("5.1"), 6);
    select("Channel", 6);
    QCOMPARE(values("Bitrate"), AllBitrates);
    QCOMPARE(m_page->data().bitrate, 512);
    QVERIFY(toasts().isEmpty());
}

void tst_KAudioSettingsLimits::emptyBitrateRowIsFilledSilently()
{
    combo("Bitrate").clear();
    select("BitrateMode", Cbr);
    QCOMPARE(values("Bitrate"), QVector<int>({96, 128}));
    QVERIFY(toasts().isEmpty());
}

void tst_KAudioSettingsLimits::noticeGoesAwayForGood()
{
    m_page->loadData({0x20434141, 1, 22050, 192, Vbr, true});
    m_window->show();
    select("BitrateMode", Cbr);
    toasts().first()->close();
    QTRY_VERIFY(toasts().isEmpty());
}

void tst_KAudioSettingsLimits::noticeOnAPageOfItsOwn()
{
    KAudioSettings page(nullptr, false);
    page.loadData({0x20434141, 1, 22050, 192, Vbr, true});
    auto* const mode = page.findChild<KComboboxExt*>(QStringLiteral("KAudioSettings_BitrateMode"));
    mode->combobox()->setCurrentIndex(1);
    QCOMPARE(page.findChildren<KdToast*>().size(), 1);
}

void tst_KAudioSettingsLimits::newLanguageKeepsSelections()
{
    const _AudioAdvanceData data{0x20434141, 2, 48000, 320, Cbr, true};
    m_page->loadData(data);
    QSignalSpy changes(m_page, &KAudioSettings::sigParaChange);
    Shouting shouting;
    QCoreApplication::installTranslator(&shouting);
    m_page->RetranslateUi();
    QCoreApplication::removeTranslator(&shouting);

    QVERIFY(m_page->data() == data);
    QVERIFY(changes.isEmpty());
    QCOMPARE(combo("Channel").itemText(1), QStringLiteral("[STEREO]"));
    QCOMPARE(combo("SampleRate").itemText(3), QStringLiteral("[44100 HZ]"));
    QCOMPARE(combo("Encoder").accessibleName(), QStringLiteral("[ENCODER]"));
    QCOMPARE(values("Channel"), QVector<int>({1, 2}));
    QCOMPARE(combo("SampleRate").count(), 6);
    QVERIFY(combo("BitrateMode").accessibleDescription().startsWith(QStringLiteral("[BITRATE")));
}

void tst_KAudioSettingsLimits::newLanguageKeepsTheLimit()
{
    m_page->loadData({0x20434141, 1, 22050, 192, Vbr, true});
    select("BitrateMode", Cbr);
    m_page->RetranslateUi();
    QCOMPARE(values("Bitrate"), QVector<int>({96, 128}));
}

void tst_KAudioSettingsLimits::languageChangeIsNoticed()
{
    Shouting shouting;
    QCoreApplication::installTranslator(&shouting);
    m_window->show();
    QTRY_COMPARE(combo("Encoder").accessibleName(), QStringLiteral("[ENCODER]"));
    QCoreApplication::removeTranslator(&shouting);
    QTRY_COMPARE(combo("Encoder").accessibleName(), QStringLiteral("Encoder"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KAudioSettingsLimits>(argc, argv);
}

#include "tst_KAudioSettingsLimits.moc"
