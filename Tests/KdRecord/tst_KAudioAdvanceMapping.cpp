#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KAudioAdvanceMapping.h>

#include <Support/KdTestCase.h>

#include <QStringList>

namespace {

/** Settings of a host that notes what is written. */
class NotingSettings
{
public:
    QStringList written;

    void SetAudioEncode(quint32 value) { note("encode", value); }
    void SetBitrate(int value) { note("bitrate", value); }
    void SetChannels(int value) { note("channels", value); }
    void SetBitrateMode(quint32 value) { note("mode", value); }
    void SetSampleRate(int value) { note("rate", value); }
    void SetRecordPreview(bool value) { note("preview", value); }

private:
    template <typename Value>
    void note(const char* name, Value value)
    {
        written.append(QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(value));
    }
};

} // namespace

class tst_KAudioAdvanceMapping : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void defaultsAreTheHostsDefaults();
    void readsAllSixValues();
    void writesInTheOrderHostsRelyOn();
    void writingLeavesThePreviewFlagAlone();
};

void tst_KAudioAdvanceMapping::defaultsAreTheHostsDefaults()
{
    QVERIFY(KAudioAdvanceMapping::read(KAudioAdvanceSettings()) == _AudioAdvanceData());
}

void tst_KAudioAdvanceMapping::readsAllSixValues()
{
    KAudioAdvanceSettings settings;
    settings.SetAudioEncode(0xfedcba98);
    settings.SetChannels(1);
    settings.SetSampleRate(96000);
    settings.SetBitrate(320);
    settings.SetBitrateMode(2);
    settings.SetRecordPreview(false);

    const _AudioAdvanceData data = KAudioAdvanceMapping::read(settings);
    QCOMPARE(data.encoder, 0xfedcba98u);
    QCOMPARE(data.channels, 1);
    QCOMPARE(data.sampleRate, 96000);
    QCOMPARE(data.bitrate, 320);
    QCOMPARE(data.bitrateMode, 2u);
    QCOMPARE(data.recordPreview, false);
}

void tst_KAudioAdvanceMapping::writesInTheOrderHostsRelyOn()
{
    NotingSettings settings;
    KAudioAdvanceMapping::write({7, 1, 48000, 256, 2, false}, settings);
    QCOMPARE(settings.written,
             QStringList({QStringLiteral("encode 7"), QStringLiteral("bitrate 256"),
                          QStringLiteral("channels 1"), QStringLiteral("mode 2"),
                          QStringLiteral("rate 48000")}));
}

void tst_KAudioAdvanceMapping::writingLeavesThePreviewFlagAlone()
{
    KAudioAdvanceSettings settings;
    settings.SetRecordPreview(true);
    const _AudioAdvanceData data{0x20434141, 1, 22050, 96, 2, false};
    KAudioAdvanceMapping::write(data, settings);

    QVERIFY(settings.GetRecordPreview());
    _AudioAdvanceData stored = KAudioAdvanceMapping::read(settings);
    stored.recordPreview = false;
    QVERIFY(stored == data);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KAudioAdvanceMapping>(argc, argv);
}

#include "tst_KAudioAdvanceMapping.moc"
