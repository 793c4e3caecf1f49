#include "KAudioSettings.h"

#include "KAudioBitrateLimits.h"
#include "KAudioRecordPreviewWidget.h"
#include "KSettingsRows.h"
#include "KdScreenPixmap.h"

#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdToast.h>

#include <QSignalBlocker>

namespace {

constexpr quint32 AacFourcc = 0x20434141;
constexpr quint32 Vbr = 1;
constexpr quint32 Cbr = 2;
constexpr int SampleRates[] = {22050, 24000, 32000, 44100, 48000, 96000};
constexpr int PreviewHeight = 26;
constexpr int ToastMargin = 24;

void selectSilently(KComboboxExt* row, const QVariant& value)
{
    const QSignalBlocker silence(row->combobox());
    KSettingsRows::select(row, value);
}

} // namespace

KAudioSettings::KAudioSettings(QWidget* parent, bool withPreview) : KdWidget(parent)
{
    initUI(withPreview);
    _retransUI();
    connectSignals();
}

KAudioSettings::~KAudioSettings() = default;

void KAudioSettings::initUI(bool withPreview)
{
    KSettingsRows rows(this);
    m_pTitle = rows.addTitle();
    m_pEncoder = rows.addRow(QStringLiteral("KAudioSettings_Encoder"));
    m_pChannel = rows.addRow(QStringLiteral("KAudioSettings_Channel"));
    m_pSampleRate = rows.addRow(QStringLiteral("KAudioSettings_SampleRate"));
    m_pBitrate = rows.addRow(QStringLiteral("KAudioSettings_Bitrate"));
    m_pBitrateMode = rows.addRow(QStringLiteral("KAudioSettings_BitrateMode"));
    m_pBitrateMode->setQuestionVisible(true);
    if (withPreview) {
        m_pPreview = new KAudioRecordPreviewWidget(this);
        rows.add(m_pPreview, PreviewHeight);
    }
}

void KAudioSettings::RetranslateUi()
{
    _retransUI();
}

void KAudioSettings::_retransUI()
{
    m_pTitle->setText(tr("Audio"));
    m_pEncoder->setTitle(tr("Encoder"));
    m_pChannel->setTitle(tr("Channel"));
    m_pSampleRate->setTitle(tr("Sample Rate"));
    m_pBitrate->setTitle(tr("Bit Rate"));
    m_pBitrateMode->setTitle(tr("Bitrate Mode"));
    m_pBitrateMode->setQuestionTip(tr("Bitrate mode affects audio quality and file size.Use CBR "
                                      "for stable streaming, VBR for better "
                                      "quality, and ABR for balanced control."));
    retranslateItems();
}

void KAudioSettings::retranslateItems()
{
    KSettingsRows::setItem(m_pEncoder, 0, tr("AAC"), AacFourcc);
    KSettingsRows::setItem(m_pChannel, 0, tr("Mono"), 1);
    KSettingsRows::setItem(m_pChannel, 1, tr("Stereo"), 2);
    int position = 0;
    for (const int rate : SampleRates) {
        KSettingsRows::setItem(m_pSampleRate, position++, tr("%1 Hz").arg(rate), rate);
    }
    // Numbers read the same in every language, and a list that was limited stays limited.
    if (m_pBitrate->combobox()->count() == 0) {
        offerBitrates(KAudioBitrateLimits::Unlimited);
    }
    KSettingsRows::setItem(m_pBitrateMode, 0, tr("VBR"), Vbr);
    KSettingsRows::setItem(m_pBitrateMode, 1, tr("CBR"), Cbr);
}

void KAudioSettings::connectSignals()
{
    KSettingsRows::reportPopup(m_pEncoder, this, QStringLiteral("audio_encoder"));
    KSettingsRows::reportPopup(m_pBitrate, this, QStringLiteral("audio_bit_rate"));
    KSettingsRows::reportPopup(m_pBitrateMode, this, QStringLiteral("audio_bitrate_mode"));
    KSettingsRows::reportPopup(m_pChannel, this, QStringLiteral("audio_channel"));
    KSettingsRows::reportPopup(m_pSampleRate, this, QStringLiteral("audio_sample_rate"));
    KSettingsRows::reportChange(m_pEncoder, this);
    KSettingsRows::reportChange(m_pBitrate, this);
    connectLimitingRow(m_pBitrateMode);
    connectLimitingRow(m_pChannel);
    connectLimitingRow(m_pSampleRate);
}

void KAudioSettings::connectLimitingRow(KComboboxExt* row)
{
    connect(row->combobox(), QOverload<int>::of(&KdComboBox::currentIndexChanged), this, [this] {
        refreshBitrate();
        Q_EMIT sigParaChange();
    });
}

_AudioAdvanceData KAudioSettings::data() const
{
    _AudioAdvanceData data;
    data.encoder = m_pEncoder->combobox()->currentData().toUInt();
    data.channels = m_pChannel->combobox()->currentData().toInt();
    data.sampleRate = m_pSampleRate->combobox()->currentData().toInt();
    data.bitrate = m_pBitrate->combobox()->currentData().toInt();
    data.bitrateMode = m_pBitrateMode->combobox()->currentData().toUInt();
    data.recordPreview = !m_pPreview || m_pPreview->getRecordPreviewCheck();
    return data;
}

void KAudioSettings::loadData(const _AudioAdvanceData& data)
{
    selectSilently(m_pBitrate, data.bitrate);
    selectSilently(m_pEncoder, data.encoder);
    selectSilently(m_pBitrateMode, data.bitrateMode);
    selectSilently(m_pChannel, data.channels);
    selectSilently(m_pSampleRate, data.sampleRate);
    if (m_pPreview) {
        m_pPreview->setRecordPreviewCheck(data.recordPreview);
    }
}

void KAudioSettings::refreshBitrate()
{
    std::optional<int> limit = KAudioBitrateLimits::Unlimited;
    if (m_pBitrateMode->combobox()->currentData().toUInt() == Cbr) {
        limit = KAudioBitrateLimits::limit(m_pSampleRate->combobox()->currentData().toInt(),
                                           m_pChannel->combobox()->currentData().toInt());
    }
    if (!limit) {
        return;
    }
    KdComboBox* const combo = m_pBitrate->combobox();
    const int previous = combo->currentData().toInt();
    offerBitrates(*limit);
    const int last = combo->itemData(combo->count() - 1).toInt();
    if (previous >= 1 && previous > last) {
        combo->setCurrentIndex(combo->count() - 1);
        popTips([] {
            return tr("CBR mode is on. We've automatically applied the optimal settings for you.");
        });
    }
}

void KAudioSettings::offerBitrates(int limit)
{
    KdComboBox* const combo = m_pBitrate->combobox();
    for (int i = combo->count() - 1; i >= 0; --i) {
        if (combo->itemData(i).toInt() > limit) {
            combo->removeItem(i);
        }
    }
    const QVector<int> offered = KAudioBitrateLimits::offered(limit);
    for (int i = combo->count(); i < offered.size(); ++i) {
        combo->addItem(QString::number(offered[i]), offered[i]);
    }
}

void KAudioSettings::popTips(const KdLiveText& text)
{
    QWidget* const anchor = parentWidget() ? parentWidget() : this;
    const QPixmap success =
        KdScreenPixmap::load(QStringLiteral(":/Resource/icon24_success.png"), devicePixelRatioF());
    KdToast* const toast = KdToast::creatToast(text, anchor, success, ToastMargin);
    toast->setAttribute(Qt::WA_DeleteOnClose);
    toast->show();
}
