#include <Studio/StudioAudioSettingsDialog.h>

#include <KdAppSettings/KdAppSettings.h>
#include <KdRecord/KAudioSettings.h>

namespace {

KAudioAdvanceSettings& stored()
{
    return *KdAppSettings::GetInstance()->GetSettings()->GetAudioAdvanceSettings();
}

_AudioAdvanceData storedData()
{
    _AudioAdvanceData data;
    data.encoder = stored().GetAudioEncode();
    data.channels = stored().GetChannels();
    data.sampleRate = stored().GetSampleRate();
    data.bitrate = stored().GetBitrate();
    data.bitrateMode = stored().GetBitrateMode();
    return data;
}

} // namespace

StudioAudioSettingsDialog::StudioAudioSettingsDialog(QWidget* parent)
    : StudioSettingsDialog(parent), m_pPage(new KAudioSettings(this, false))
{
    setObjectName(QStringLiteral("StudioAudioSettingsDialog"));
    m_pPage->loadData(storedData());
    showPage(m_pPage);
    StudioAudioSettingsDialog::RetranslateUi();
}

QString StudioAudioSettingsDialog::title() const
{
    return tr("Audio settings");
}

void StudioAudioSettingsDialog::keep()
{
    const _AudioAdvanceData chosen = m_pPage->data();
    stored().SetAudioEncode(chosen.encoder);
    stored().SetBitrate(chosen.bitrate);
    stored().SetChannels(chosen.channels);
    stored().SetBitrateMode(chosen.bitrateMode);
    stored().SetSampleRate(chosen.sampleRate);
    KdAppSettings::GetInstance()->Save();
}
