#include <KdRecord/KAudioRecordPreviewWidget.h>
#include <KdRecord/KAudioSettings.h>
#include <KdRecord/KComboboxExt.h>
#include <KdRecord/KQuestionLabel.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdToast.h>

#include <Support/KdTestCase.h>

#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTranslator>

#include <memory>

namespace {

constexpr int Vbr = 1;
constexpr int Cbr = 2;
const QVector<int> AllBitrates{96, 128, 160, 192, 256, 320, 512};

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

/** The choices of a row, which note when one is looked for. */
class NotingModel : public QStandardItemModel
{
public:
    NotingModel(const KdComboBox& combo, const QString& name, QStringList& log)
        : QStandardItemModel(combo.count(), 1), m_name(name), m_log(log)
    {
        for (int i = 0; i < combo.count(); ++i) {
            setData(index(i, 0), combo.itemData(i), Qt::UserRole);
        }
    }

    QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits,
                          Qt::MatchFlags flags) const override
    {
        m_log.append(m_name);
        return QStandardItemModel::match(start, role, value, hits, flags);
    }

private:
    QString m_name;
    QStringList& m_log;
};

} // namespace

class tst_KAudioSettings : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void offersTheChoicesInOrder_data();
    void offersTheChoicesInOrder();
    void standsRowsBelowEachOther_data();
    void standsRowsBelowEachOther();
    void gapsGiveWayOnALowPageAndRowsDoNot();
    void onlyTheModeHasAQuestionMark();
    void modeIsExplained();

    void dataIsWhatIsSelected();
    void previewIsOnWithoutAPreviewRow();
    void previewFollowsItsSwitch();

    void loadsEveryValue_data();
    void loadsEveryValue();
    void loadingLimitsNothing();
    void loadingEmitsNothing();
    void loadsRowsInAFixedOrder();
    void unknownValuesLeaveTheirRows_data();
    void unknownValuesLeaveTheirRows();

    void openingAListIsReported_data();
    void openingAListIsReported();
    void everyChangeIsReported_data();
    void everyChangeIsReported();
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

private:
    KdComboBox& combo(const char* row) const;
    QVector<int> values(const char* row) const;
    void select(const char* row, int value);
    QList<KdToast*> toasts() const;

    std::unique_ptr<QWidget> m_window;
    KAudioSettings* m_page = nullptr;
};

void tst_KAudioSettings::init()
{
    KdTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->resize(480, 473);
    m_page = new KAudioSettings(m_window.get(), true);
    m_page->setGeometry(32, 40, 416, 398);
}

void tst_KAudioSettings::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

KdComboBox& tst_KAudioSettings::combo(const char* row) const
{
    return *m_page->findChild<KComboboxExt*>(QStringLiteral("KAudioSettings_") + QLatin1String(row))
                ->combobox();
}

QVector<int> tst_KAudioSettings::values(const char* row) const
{
    QVector<int> found;
    for (int i = 0; i < combo(row).count(); ++i) {
        found.append(combo(row).itemData(i).toInt());
    }
    return found;
}

void tst_KAudioSettings::select(const char* row, int value)
{
    const int position = combo(row).findData(value);
    QVERIFY(position >= 0);
    combo(row).setCurrentIndex(position);
}

QList<KdToast*> tst_KAudioSettings::toasts() const
{
    return m_window->findChildren<KdToast*>();
}

void tst_KAudioSettings::offersTheChoicesInOrder_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QVector<int>>("data");

    const auto texts = [](const char* list) {
        return QString::fromLatin1(list).split(QLatin1Char('|'));
    };
    QTest::newRow("encoder") << QByteArray("Encoder") << QStringLiteral("Encoder") << texts("AAC")
                             << QVector<int>{0x20434141};
    QTest::newRow("channel") << QByteArray("Channel") << QStringLiteral("Channel")
                             << texts("Mono|Stereo") << QVector<int>{1, 2};
    QTest::newRow("sample rate") << QByteArray("SampleRate") << QStringLiteral("Sample Rate")
                                 << texts("22050 Hz|24000 Hz|32000 Hz|44100 Hz|48000 Hz|96000 Hz")
                                 << QVector<int>{22050, 24000, 32000, 44100, 48000, 96000};
    QTest::newRow("bit rate") << QByteArray("Bitrate") << QStringLiteral("Bit Rate")
                              << texts("96|128|160|192|256|320|512") << AllBitrates;
    QTest::newRow("mode") << QByteArray("BitrateMode") << QStringLiteral("Bitrate Mode")
                          << texts("VBR|CBR") << QVector<int>{Vbr, Cbr};
}

void tst_KAudioSettings::offersTheChoicesInOrder()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, title);
    QFETCH(QStringList, texts);
    QFETCH(QVector<int>, data);
    QStringList shown;
    for (int i = 0; i < combo(row).count(); ++i) {
        shown.append(combo(row).itemText(i));
    }

    QCOMPARE(shown, texts);
    QCOMPARE(values(row), data);
    QCOMPARE(combo(row).parentWidget()->findChild<KdLabel*>()->text(), title);
}

void tst_KAudioSettings::standsRowsBelowEachOther_data()
{
    QTest::addColumn<bool>("withPreview");
    QTest::addColumn<int>("height");

    QTest::newRow("with preview row") << true << 398;
    QTest::newRow("without") << false << 356;
}

void tst_KAudioSettings::standsRowsBelowEachOther()
{
    QFETCH(bool, withPreview);
    QFETCH(int, height);
    KAudioSettings page(nullptr, withPreview);
    page.resize(416, page.sizeHint().height());
    page.show();

    QCOMPARE(page.sizeHint().height(), height);
    const auto* const title = page.findChild<KdLabel*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(title->text(), QStringLiteral("Audio"));
    QCOMPARE(title->geometry(), QRect(0, 0, 416, 16));
    const QList<KComboboxExt*> rows = page.findChildren<KComboboxExt*>();
    QCOMPARE(rows.size(), 5);
    for (int i = 0; i < rows.size(); ++i) {
        QCOMPARE(rows[i]->geometry(), QRect(0, 32 + i * 68, 416, 52));
    }
    const auto* const preview = page.findChild<KAudioRecordPreviewWidget*>();
    QCOMPARE(preview != nullptr, withPreview);
    if (preview) {
        QCOMPARE(preview->geometry(), QRect(0, 372, 416, 26));
    }
}

void tst_KAudioSettings::gapsGiveWayOnALowPageAndRowsDoNot()
{
    m_page->resize(416, 359);
    m_window->show();
    int bottom = 16;
    const QList<KComboboxExt*> rows = m_page->findChildren<KComboboxExt*>();
    for (const KComboboxExt* row : rows) {
        QCOMPARE(row->height(), 52);
        QVERIFY(row->y() - bottom >= 8);
        QVERIFY(row->y() - bottom <= 16);
        bottom = row->y() + row->height();
    }
    const auto* const preview = m_page->findChild<KAudioRecordPreviewWidget*>();
    QVERIFY(preview->y() - bottom >= 8);
    QCOMPARE(preview->geometry().bottom() + 1, 359);
}

void tst_KAudioSettings::onlyTheModeHasAQuestionMark()
{
    const QList<KQuestionLabel*> marks = m_page->findChildren<KQuestionLabel*>();
    QCOMPARE(marks.size(), 1);
    QCOMPARE(marks.first()->parentWidget(), combo("BitrateMode").parentWidget());
}

void tst_KAudioSettings::modeIsExplained()
{
    QCOMPARE(combo("BitrateMode").accessibleDescription(),
             QStringLiteral("Bitrate mode affects audio quality and file size.Use CBR for stable "
                            "streaming, VBR for better quality, and ABR for balanced control."));
}

void tst_KAudioSettings::dataIsWhatIsSelected()
{
    const _AudioAdvanceData first{0x20434141, 1, 22050, 96, Vbr, false};
    QVERIFY(m_page->data() == first);
    select("Channel", 2);
    select("SampleRate", 48000);
    select("Bitrate", 320);
    select("BitrateMode", Cbr);
    const _AudioAdvanceData chosen{0x20434141, 2, 48000, 320, Cbr, false};
    QVERIFY(m_page->data() == chosen);
}

void tst_KAudioSettings::previewIsOnWithoutAPreviewRow()
{
    KAudioSettings page(m_window.get(), false);
    QVERIFY(page.data().recordPreview);
    _AudioAdvanceData off;
    off.recordPreview = false;
    page.loadData(off);
    QVERIFY(page.data().recordPreview);
}

void tst_KAudioSettings::previewFollowsItsSwitch()
{
    auto* const preview = m_page->findChild<KAudioRecordPreviewWidget*>();
    preview->setRecordPreviewCheck(true);
    QVERIFY(m_page->data().recordPreview);
    preview->setRecordPreviewCheck(false);
    QVERIFY(!m_page->data().recordPreview);
}

void tst_KAudioSettings::loadsEveryValue_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("sampleRate");
    QTest::addColumn<int>("bitrate");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("preview");

    QTest::newRow("stereo, VBR") << 2 << 44100 << 128 << Vbr << true;
    QTest::newRow("mono, CBR") << 1 << 22050 << 96 << Cbr << false;
    QTest::newRow("highest") << 2 << 96000 << 512 << Cbr << true;
}

void tst_KAudioSettings::loadsEveryValue()
{
    QFETCH(int, channels);
    QFETCH(int, sampleRate);
    QFETCH(int, bitrate);
    QFETCH(int, mode);
    QFETCH(bool, preview);
    const _AudioAdvanceData data{0x20434141, channels, sampleRate, bitrate, quint32(mode), preview};
    m_page->loadData(data);
    QVERIFY(m_page->data() == data);
}

void tst_KAudioSettings::loadingLimitsNothing()
{
    const _AudioAdvanceData aboveTheLimit{0x20434141, 1, 22050, 512, Cbr, false};
    m_page->loadData(aboveTheLimit);

    QVERIFY(m_page->data() == aboveTheLimit);
    QCOMPARE(values("Bitrate"), AllBitrates);
    QVERIFY(toasts().isEmpty());
}

void tst_KAudioSettings::loadingEmitsNothing()
{
    QSignalSpy changes(m_page, &KAudioSettings::sigParaChange);
    QSignalSpy clicks(m_page, &KAudioSettings::sigBtnClick);
    m_page->loadData({0x20434141, 2, 48000, 320, Cbr, true});

    QVERIFY(changes.isEmpty());
    QVERIFY(clicks.isEmpty());
    select("Bitrate", 256);
    QCOMPARE(changes.count(), 1);
}

void tst_KAudioSettings::loadsRowsInAFixedOrder()
{
    QStringList log;
    QVector<std::shared_ptr<NotingModel>> models;
    for (const char* row : {"Encoder", "Channel", "SampleRate", "Bitrate", "BitrateMode"}) {
        models.append(std::make_shared<NotingModel>(combo(row), QString::fromLatin1(row), log));
        combo(row).setModel(models.last().get());
    }
    log.clear();
    m_page->loadData({0x20434141, 2, 48000, 320, Cbr, false});
    m_window.reset();

    QCOMPARE(log.join(QLatin1Char(' ')),
             QStringLiteral("Bitrate Encoder BitrateMode Channel SampleRate"));
}

void tst_KAudioSettings::unknownValuesLeaveTheirRows_data()
{
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("sampleRate");
    QTest::addColumn<int>("bitrate");
    QTest::addColumn<int>("mode");
    QTest::addColumn<quint32>("encoder");

    const quint32 aac = 0x20434141;
    QTest::newRow("sample rate not offered") << 1 << 16000 << 192 << Cbr << aac;
    QTest::newRow("channels not offered") << 6 << 44100 << 192 << Cbr << aac;
    QTest::newRow("bit rate not offered") << 1 << 44100 << 64 << Cbr << aac;
    QTest::newRow("mode not offered") << 1 << 44100 << 192 << 3 << aac;
    QTest::newRow("encoder not offered") << 1 << 44100 << 192 << Cbr << quint32(0x33504d2e);
    QTest::newRow("nothing offered")
        << -1 << 0 << std::numeric_limits<int>::min() << -1 << std::numeric_limits<quint32>::max();
}

void tst_KAudioSettings::unknownValuesLeaveTheirRows()
{
    QFETCH(int, channels);
    QFETCH(int, sampleRate);
    QFETCH(int, bitrate);
    QFETCH(int, mode);
    QFETCH(quint32, encoder);
    const _AudioAdvanceData before{0x20434141, 2, 48000, 320, Vbr, true};
    m_page->loadData(before);
    m_page->loadData({encoder, channels, sampleRate, bitrate, quint32(mode), true});

    const _AudioAdvanceData after = m_page->data();
    QCOMPARE(after.encoder, before.encoder);
    QCOMPARE(after.channels, channels == 1 ? 1 : before.channels);
    QCOMPARE(after.sampleRate, sampleRate == 44100 ? 44100 : before.sampleRate);
    QCOMPARE(after.bitrate, bitrate == 192 ? 192 : before.bitrate);
    QCOMPARE(after.bitrateMode, mode == Cbr ? quint32(Cbr) : before.bitrateMode);
}

void tst_KAudioSettings::openingAListIsReported_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("name");

    QTest::newRow("encoder") << QByteArray("Encoder") << QStringLiteral("audio_encoder");
    QTest::newRow("bit rate") << QByteArray("Bitrate") << QStringLiteral("audio_bit_rate");
    QTest::newRow("mode") << QByteArray("BitrateMode") << QStringLiteral("audio_bitrate_mode");
    QTest::newRow("channel") << QByteArray("Channel") << QStringLiteral("audio_channel");
    QTest::newRow("sample rate") << QByteArray("SampleRate") << QStringLiteral("audio_sample_rate");
}

void tst_KAudioSettings::openingAListIsReported()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, name);
    m_window->show();
    QSignalSpy clicks(m_page, &KAudioSettings::sigBtnClick);
    QSignalSpy changes(m_page, &KAudioSettings::sigParaChange);
    QTest::mouseClick(&combo(row), Qt::LeftButton);
    QTRY_VERIFY(combo(row).isPopupVisible());
    combo(row).hidePopup();

    QCOMPARE(clicks.count(), 1);
    QCOMPARE(clicks.at(0).at(0).toString(), name);
    QVERIFY(changes.isEmpty());
}

void tst_KAudioSettings::everyChangeIsReported_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<int>("index");

    QTest::newRow("encoder") << QByteArray("Encoder") << -1;
    QTest::newRow("channel") << QByteArray("Channel") << 1;
    QTest::newRow("sample rate") << QByteArray("SampleRate") << 3;
    QTest::newRow("bit rate") << QByteArray("Bitrate") << 4;
    QTest::newRow("mode") << QByteArray("BitrateMode") << 1;
}

void tst_KAudioSettings::everyChangeIsReported()
{
    QFETCH(QByteArray, row);
    QFETCH(int, index);
    QSignalSpy changes(m_page, &KAudioSettings::sigParaChange);
    combo(row).setCurrentIndex(index);
    QCOMPARE(changes.count(), 1);
    combo(row).setCurrentIndex(index);
    QCOMPARE(changes.count(), 1);
}

void tst_KAudioSettings::limitsComeBeforeTheReport()
{
    select("Bitrate", 512);
    QVector<int> offeredAtReport;
    connect(m_page, &KAudioSettings::sigParaChange, this,
            [&] { offeredAtReport = values("Bitrate"); });
    select("BitrateMode", Cbr);
    QCOMPARE(offeredAtReport, QVector<int>({96, 128}));
}

void tst_KAudioSettings::cbrLimitsTheBitrates_data()
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

void tst_KAudioSettings::cbrLimitsTheBitrates()
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

void tst_KAudioSettings::cbrMovesASelectionThatIsTooHighAndSaysSo()
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

void tst_KAudioSettings::cbrKeepsASelectionThatFits()
{
    m_page->loadData({0x20434141, 1, 32000, 192, Vbr, true});
    select("BitrateMode", Cbr);

    QCOMPARE(values("Bitrate"), QVector<int>({96, 128, 160, 192}));
    QCOMPARE(m_page->data().bitrate, 192);
    QVERIFY(toasts().isEmpty());
}

void tst_KAudioSettings::vbrRestoresEveryBitrateWithoutAWord()
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

void tst_KAudioSettings::channelAndSampleRateLimitToo()
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

void tst_KAudioSettings::loadedBitrateAboveTheLimitFallsAtTheFirstTouch()
{
    m_page->loadData({0x20434141, 1, 22050, 512, Cbr, true});
    QCOMPARE(m_page->data().bitrate, 512);
    select("SampleRate", 32000);
    QCOMPARE(m_page->data().bitrate, 192);
    QCOMPARE(toasts().size(), 1);
}

void tst_KAudioSettings::withoutAKnownSampleRateNothingChanges()
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

void tst_KAudioSettings::withoutAChannelCountNothingChanges()
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

void tst_KAudioSettings::emptyBitrateRowIsFilledSilently()
{
    combo("Bitrate").clear();
    select("BitrateMode", Cbr);
    QCOMPARE(values("Bitrate"), QVector<int>({96, 128}));
    QVERIFY(toasts().isEmpty());
}

void tst_KAudioSettings::noticeGoesAwayForGood()
{
    m_page->loadData({0x20434141, 1, 22050, 192, Vbr, true});
    m_window->show();
    select("BitrateMode", Cbr);
    toasts().first()->close();
    QTRY_VERIFY(toasts().isEmpty());
}

void tst_KAudioSettings::noticeOnAPageOfItsOwn()
{
    KAudioSettings page(nullptr, false);
    page.loadData({0x20434141, 1, 22050, 192, Vbr, true});
    auto* const mode = page.findChild<KComboboxExt*>(QStringLiteral("KAudioSettings_BitrateMode"));
    mode->combobox()->setCurrentIndex(1);
    QCOMPARE(page.findChildren<KdToast*>().size(), 1);
}

void tst_KAudioSettings::newLanguageKeepsSelections()
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

void tst_KAudioSettings::newLanguageKeepsTheLimit()
{
    m_page->loadData({0x20434141, 1, 22050, 192, Vbr, true});
    select("BitrateMode", Cbr);
    m_page->RetranslateUi();
    QCOMPARE(values("Bitrate"), QVector<int>({96, 128}));
}

void tst_KAudioSettings::languageChangeIsNoticed()
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
    return KdTest::run<tst_KAudioSettings>(argc, argv);
}

#include "tst_KAudioSettings.moc"
