#pragma once

#include <KdRecord/KVideoAdvanceData.h>
#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdWidget.h>

class KComboboxExt;
class KdLabel;

/**
 * The page of advanced video settings: encoder, frame rate, bit-rate mode and quality. For a host
 * to put into a window of its own. GUI thread.
 */
class KDRECORD_EXPORT KVideoSettings : public KdWidget
{
    Q_OBJECT

public:
    /**
     * Shows the first choice of every row; loadData() brings others.
     * @param parent owns the page; may be null.
     */
    explicit KVideoSettings(QWidget* parent);
    ~KVideoSettings() override;

    /** @return what is selected. */
    _VideoAdvanceData data() const;
    /**
     * Selects values; each row whose selection changes emits sigParaChange().
     * @param data a value that is not offered leaves its row as it is; a frame rate has to be
     * exactly one of those offered.
     */
    void loadData(const _VideoAdvanceData& data);

    void RetranslateUi() override;

Q_SIGNALS:
    /** A row has another selection. */
    void sigParaChange();
    /**
     * The list of a row was opened.
     * @param strName which one, for usage reports: "video_encoder", "video_frame_rate",
     * "video_bitrate_mode" or "video_quality".
     */
    void sigBtnClick(QString strName);

private:
    void initUI();
    void _retransUI();
    void retranslateItems();
    void connectSignals();
    void selectFrameRate(double frameRate);

    KdLabel* m_pTitle = nullptr;
    KComboboxExt* m_pEncoder = nullptr;
    KComboboxExt* m_pFrameRate = nullptr;
    KComboboxExt* m_pBitrateMode = nullptr;
    KComboboxExt* m_pQuality = nullptr;
};
