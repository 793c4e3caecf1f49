#include "KVideoSettings.h"

#include "KSettingsRows.h"

#include <KdRecord/KdCaptureEngine.h>
#include <KdWidgets/KdLabel.h>

#include <iterator>

namespace {

constexpr quint32 H264Fourcc = KdVBLMODEL::kFourCcH264;
constexpr quint32 Vbr = KdVBLMODEL::fbmVariable;
constexpr float FrameRates[] = {12.0F,  15.0F, 20.0F, 23.97F, 24.0F, 25.0F,
                                29.97F, 30.0F, 50.0F, 59.94F, 60.0F};
/** The encoder's codes for 10 %, 20 % and so on. */
constexpr quint32 Qualities[] = {7, 5, 1, 3, 8, 10};
constexpr int QualityStep = 10;
constexpr int RateDigits = 6;

} // namespace

KVideoSettings::KVideoSettings(QWidget* parent) : KdWidget(parent)
{
    initUI();
    _retransUI();
    connectSignals();
}

KVideoSettings::~KVideoSettings() = default;

void KVideoSettings::initUI()
{
    KSettingsRows rows(this);
    m_pTitle = rows.addTitle();
    m_pEncoder = rows.addRow(QStringLiteral("KVideoSettings_Encoder"));
    m_pFrameRate = rows.addRow(QStringLiteral("KVideoSettings_FrameRate"));
    // One more than a list shows by itself: all of them without a scroll bar.
    m_pFrameRate->combobox()->setMaxVisibleItems(int(std::size(FrameRates)));
    m_pBitrateMode = rows.addRow(QStringLiteral("KVideoSettings_BitrateMode"));
    m_pBitrateMode->setQuestionVisible(true);
    m_pQuality = rows.addRow(QStringLiteral("KVideoSettings_Quality"));
}

void KVideoSettings::RetranslateUi()
{
    _retransUI();
}

void KVideoSettings::_retransUI()
{
    m_pTitle->setText(tr("Video"));
    m_pEncoder->setTitle(tr("Encoder"));
    m_pFrameRate->setTitle(tr("Frame Rate"));
    m_pBitrateMode->setTitle(tr("Bitrate Mode"));
    m_pBitrateMode->setQuestionTip(tr("Bitrate mode affects audio quality and file size.Use CBR "
                                      "for stable streaming, VBR for better "
                                      "quality, and ABR for balanced control."));
    m_pQuality->setTitle(tr("Quality"));
    retranslateItems();
}

void KVideoSettings::retranslateItems()
{
    KSettingsRows::setItem(m_pEncoder, 0, tr("H264"), H264Fourcc);
    int position = 0;
    for (const float rate : FrameRates) {
        const QString number = QString::number(double(rate), 'g', RateDigits);
        KSettingsRows::setItem(m_pFrameRate, position++, tr("%1 fps").arg(number), rate);
    }
    KSettingsRows::setItem(m_pBitrateMode, 0, tr("VBR"), Vbr);
    position = 0;
    for (const quint32 quality : Qualities) {
        const int percent = (position + 1) * QualityStep;
        KSettingsRows::setItem(m_pQuality, position++, tr("%1%").arg(percent), quality);
    }
}

void KVideoSettings::connectSignals()
{
    KSettingsRows::reportPopup(m_pEncoder, this, QStringLiteral("video_encoder"));
    KSettingsRows::reportPopup(m_pFrameRate, this, QStringLiteral("video_frame_rate"));
    KSettingsRows::reportPopup(m_pBitrateMode, this, QStringLiteral("video_bitrate_mode"));
    KSettingsRows::reportPopup(m_pQuality, this, QStringLiteral("video_quality"));
    for (KComboboxExt* row : {m_pEncoder, m_pFrameRate, m_pBitrateMode, m_pQuality}) {
        KSettingsRows::reportChange(row, this);
    }
}

_VideoAdvanceData KVideoSettings::data() const
{
    _VideoAdvanceData data;
    data.encoder = m_pEncoder->combobox()->currentData().toUInt();
    data.frameRate = static_cast<float>(m_pFrameRate->combobox()->currentData().toDouble());
    data.bitrateMode = m_pBitrateMode->combobox()->currentData().toUInt();
    data.quality = m_pQuality->combobox()->currentData().toUInt();
    return data;
}

void KVideoSettings::loadData(const _VideoAdvanceData& data)
{
    selectFrameRate(double(data.frameRate));
    KSettingsRows::select(m_pEncoder, data.encoder);
    KSettingsRows::select(m_pBitrateMode, data.bitrateMode);
    KSettingsRows::select(m_pQuality, data.quality);
}

/** Not by findData(): variants take floating-point numbers that are nearly alike for equal. */
void KVideoSettings::selectFrameRate(double frameRate)
{
    KdComboBox* const combo = m_pFrameRate->combobox();
    for (int i = 0; i < combo->count(); ++i) {
        if (combo->itemData(i).toDouble() == frameRate) {
            combo->setCurrentIndex(i);
            return;
        }
    }
}
