#include "KAudioSettings.h"

#include "KAudioBitrateLimits.h"
#include "KAudioRecordPreviewWidget.h"
#include "KComboboxExt.h"
#include "KdScreenPixmap.h"

#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdLabel.h>
#include <KdWidgets/KdToast.h>

#include <QBoxLayout>
#include <QSignalBlocker>

namespace {

constexpr quint32 AacFourcc = 0x20434141;
constexpr quint32 Vbr = 1;
constexpr quint32 Cbr = 2;
constexpr int SampleRates[] = {22050, 24000, 32000, 44100, 48000, 96000};
constexpr int Gap = 16;
constexpr int TitleHeight = 16;
constexpr int RowHeight = 52;
constexpr int PreviewHeight = 26;
constexpr int ToastMargin = 24;

// Items keep their position for life, so that a new language changes texts but no selection.
void setItem(KdComboBox* combo, int position, const QString& text, const QVariant& data)
{
    if (position < combo->count()) {
        combo->setItemText(position, text);
    } else {
        combo->addItem(text, data);
    }
}

void selectValue(KComboboxExt* row, const QVariant& value)
{
    KdComboBox* const combo = row->combobox();
    const int position = combo->findData(value);
    if (position >= 0) {
        const QSignalBlocker silence(combo);
        combo->setCurrentIndex(position);
    }
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
    m_pLayout = new QVBoxLayout(this);
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setSpacing(0);
    m_pTitle = new KdLabel(this);
    m_pTitle->setFixedHeight(TitleHeight);
    QFont titleFont = m_pTitle->font();
    titleFont.setBold(true);
    m_pTitle->setFont(titleFont);
    m_pLayout->addWidget(m_pTitle);
    m_pEncoder = addRow(QStringLiteral("KAudioSettings_Encoder"));
    m_pChannel = addRow(QStringLiteral("KAudioSettings_Channel"));
    m_pSampleRate = addRow(QStringLiteral("KAudioSettings_SampleRate"));
    m_pBitrate = addRow(QStringLiteral("KAudioSettings_Bitrate"));
    m_pBitrateMode = addRow(QStringLiteral("KAudioSettings_BitrateMode"));
    m_pBitrateMode->setQuestionVisible(true);
    if (withPreview) {
        m_pPreview = new KAudioRecordPreviewWidget(this);
        m_pPreview->setFixedHeight(PreviewHeight);
        addGap();
        m_pLayout->addWidget(m_pPreview);
    }
}

KComboboxExt* KAudioSettings::addRow(const QString& name)
{
    auto* const row = new KComboboxExt(this);
    row->setObjectName(name);
    row->setFixedHeight(RowHeight);
    addGap();
    m_pLayout->addWidget(row);
    return row;
}

void KAudioSettings::addGap()
{
    // Gaps give way where the page stands lower than it wants to be; the rows never do.
    m_pLayout->addItem(new QSpacerItem(0, Gap, QSizePolicy::Minimum, QSizePolicy::Maximum));
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
    setItem(m_pEncoder->combobox(), 0, tr("AAC"), AacFourcc);
    setItem(m_pChannel->combobox(), 0, tr("Mono"), 1);
    setItem(m_pChannel->combobox(), 1, tr("Stereo"), 2);
    int position = 0;
    for (const int rate : SampleRates) {
        setItem(m_pSampleRate->combobox(), position++, tr("%1 Hz").arg(rate), rate);
    }
    // Numbers read the same in every language, and a list that was limited stays limited.
    if (m_pBitrate->combobox()->count() == 0) {
        offerBitrates(KAudioBitrateLimits::Unlimited);
    }
    setItem(m_pBitrateMode->combobox(), 0, tr("VBR"), Vbr);
    setItem(m_pBitrateMode->combobox(), 1, tr("CBR"), Cbr);
}

void KAudioSettings::connectSignals()
{
    reportPopup(m_pEncoder, QStringLiteral("audio_encoder"));
    reportPopup(m_pBitrate, QStringLiteral("audio_bit_rate"));
    reportPopup(m_pBitrateMode, QStringLiteral("audio_bitrate_mode"));
    reportPopup(m_pChannel, QStringLiteral("audio_channel"));
    reportPopup(m_pSampleRate, QStringLiteral("audio_sample_rate"));
    connectPlainRow(m_pEncoder);
    connectPlainRow(m_pBitrate);
    connectLimitingRow(m_pBitrateMode);
    connectLimitingRow(m_pChannel);
    connectLimitingRow(m_pSampleRate);
}

void KAudioSettings::reportPopup(KComboboxExt* row, const QString& name)
{
    connect(row->combobox(), &KdComboBox::sigShowPopUp, this,
            [this, name] { Q_EMIT sigBtnClick(name); });
}

void KAudioSettings::connectPlainRow(KComboboxExt* row)
{
    connect(row->combobox(), QOverload<int>::of(&KdComboBox::currentIndexChanged), this,
            &KAudioSettings::sigParaChange);
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
    selectValue(m_pBitrate, data.bitrate);
    selectValue(m_pEncoder, data.encoder);
    selectValue(m_pBitrateMode, data.bitrateMode);
    selectValue(m_pChannel, data.channels);
    selectValue(m_pSampleRate, data.sampleRate);
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
        popTips(tr("CBR mode is on. We've automatically applied the optimal settings for you."));
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

void KAudioSettings::popTips(const QString& text)
{
    QWidget* const anchor = parentWidget() ? parentWidget() : this;
    const QPixmap success =
        KdScreenPixmap::load(QStringLiteral(":/Resource/icon24_success.png"), devicePixelRatioF());
    KdToast* const toast = KdToast::creatToast(text, anchor, success, ToastMargin);
    toast->setAttribute(Qt::WA_DeleteOnClose);
    toast->show();
}
