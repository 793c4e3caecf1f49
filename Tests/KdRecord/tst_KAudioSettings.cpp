#include "AudioSettingsFixture.h"

#include <KdRecord/KAudioRecordPreviewWidget.h>
#include <KdRecord/KComboboxExt.h>
#include <KdRecord/KQuestionLabel.h>
#include <KdWidgets/KdLabel.h>

#include <QSignalSpy>
#include <QStandardItemModel>

namespace {

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

/** The page's rows and choices, and how values come into it and out of it. */
class tst_KAudioSettings : public AudioSettingsFixture
{
    Q_OBJECT

private Q_SLOTS:
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
};

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

int main(int argc, char** argv)
{
    return KdTest::run<tst_KAudioSettings>(argc, argv);
}

#include "tst_KAudioSettings.moc"
