#include <Studio/StudioVideoSettingsDialog.h>

#include <KdRecord/KVideoSettings.h>
#include <KdZentraCore/KdConfigEngine.h>

namespace {

constexpr int kUserScope = 1;

QVariant stored(const char* key, const QVariant& fallback)
{
    return KdConfigEngine::instance()->value(kUserScope, QStringLiteral("StudioVideo"),
                                             QString::fromLatin1(key), fallback);
}

void store(const char* key, const QVariant& value)
{
    KdConfigEngine::instance()->setValue(kUserScope, QStringLiteral("StudioVideo"),
                                         QString::fromLatin1(key), value);
}

_VideoAdvanceData storedData()
{
    _VideoAdvanceData data;
    data.encoder = stored("Encoder", data.encoder).toUInt();
    data.frameRate = stored("FrameRate", data.frameRate).toFloat();
    data.bitrateMode = stored("BitrateMode", data.bitrateMode).toUInt();
    data.quality = stored("Quality", data.quality).toUInt();
    return data;
}

} // namespace

StudioVideoSettingsDialog::StudioVideoSettingsDialog(QWidget* parent)
    : StudioSettingsDialog(parent), m_pPage(new KVideoSettings(this))
{
    setObjectName(QStringLiteral("StudioVideoSettingsDialog"));
    m_pPage->loadData(storedData());
    showPage(m_pPage);
    StudioVideoSettingsDialog::RetranslateUi();
}

QString StudioVideoSettingsDialog::title() const
{
    return tr("Video settings");
}

void StudioVideoSettingsDialog::keep()
{
    const _VideoAdvanceData chosen = m_pPage->data();
    store("Encoder", chosen.encoder);
    store("FrameRate", chosen.frameRate);
    store("BitrateMode", chosen.bitrateMode);
    store("Quality", chosen.quality);
}
