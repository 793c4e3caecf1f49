#pragma once

#include <KdRecord/KAudioAdvanceData.h>
#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdWidget.h>

class KAudioRecordPreviewWidget;
class KComboboxExt;
class KdLabel;
class KdLiveText;

/**
 * The page of advanced audio settings: encoder, channels, sample rate, bit rate and bit-rate mode
 * of voice-over recordings, and on demand the recording-preview switch. While the mode is CBR only
 * bit rates are offered that the sample rate and channels allow. GUI thread.
 */
class KDRECORD_EXPORT KAudioSettings : public KdWidget
{
    Q_OBJECT

public:
    /**
     * Shows the first choice of every row; loadData() brings others.
     * @param parent owns the page; may be null.
     * @param withPreview whether there is a recording-preview row.
     */
    explicit KAudioSettings(QWidget* parent, bool withPreview);
    ~KAudioSettings() override;

    /** @return what is selected; recordPreview is true on a page without that row. */
    _AudioAdvanceData data() const;
    /**
     * Selects values without emitting a signal and without limiting the bit rates.
     * @param data a value that is not offered leaves its row as it is.
     */
    void loadData(const _AudioAdvanceData& data);

    void RetranslateUi() override;

Q_SIGNALS:
    /** A row has another selection. */
    void sigParaChange();
    /**
     * The list of a row was opened.
     * @param strName which one, for usage reports: "audio_encoder", "audio_bit_rate",
     * "audio_bitrate_mode", "audio_channel" or "audio_sample_rate".
     */
    void sigBtnClick(QString strName);

private:
    void initUI(bool withPreview);
    void _retransUI();
    void retranslateItems();
    void connectSignals();
    void connectLimitingRow(KComboboxExt* row);
    void refreshBitrate();
    void offerBitrates(int limit);
    void popTips(const KdLiveText& text);

    KdLabel* m_pTitle = nullptr;
    KComboboxExt* m_pEncoder = nullptr;
    KComboboxExt* m_pChannel = nullptr;
    KComboboxExt* m_pSampleRate = nullptr;
    KComboboxExt* m_pBitrate = nullptr;
    KComboboxExt* m_pBitrateMode = nullptr;
    KAudioRecordPreviewWidget* m_pPreview = nullptr;
};
