#include "Support/KdTestCase.h"

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KdAudioTakeParams.h>

class tst_KdAudioTakeParams : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void formatComesFromTheAdvancedSettings();
    void restComesFromThePanelAndItsAdapter();
    void absurdBitRateDoesNotOverflow();
};

void tst_KdAudioTakeParams::formatComesFromTheAdvancedSettings()
{
    KAudioAdvanceSettings settings;
    settings.SetAudioEncode(0x12345678);
    settings.SetBitrate(192);
    settings.SetBitrateMode(2);
    settings.SetChannels(1);
    settings.SetSampleRate(48000);
    const KdVBLMODEL::KdAudioFormat format = KdAudioTakeParams::compose({}, settings).format;
    QCOMPARE(format.fourcc, 0x12345678);
    QCOMPARE(format.bitrate, 192000);
    QCOMPARE(format.bitrateMode, 2);
    QCOMPARE(format.channels, 1);
    QCOMPARE(format.samplerate, 48000);
}

void tst_KdAudioTakeParams::restComesFromThePanelAndItsAdapter()
{
    const QString path = QStringLiteral("/takes/%1/REC.m4a");
    const auto params = KdAudioTakeParams::compose({3, path, 24, 0.5}, KAudioAdvanceSettings());
    QCOMPARE(params.index, 3);
    QCOMPARE(params.interval, 50);
    QCOMPARE(params.outputName, path);
    QCOMPARE(params.format.bitPerSample, 24);
    QCOMPARE(params.format.volume, 0.5);
}

void tst_KdAudioTakeParams::absurdBitRateDoesNotOverflow()
{
    KAudioAdvanceSettings settings;
    settings.SetBitrate(2147483647);
    QCOMPARE(KdAudioTakeParams::compose({}, settings).format.bitrate, 2147483000);
    settings.SetBitrate(-5);
    QCOMPARE(KdAudioTakeParams::compose({}, settings).format.bitrate, 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAudioTakeParams>(argc, argv);
}

#include "tst_KdAudioTakeParams.moc"
