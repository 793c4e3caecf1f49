#include "AudioSettingsFixture.h"

#include <KdRecord/KComboboxExt.h>

void AudioSettingsFixture::init()
{
    KdTestCase::init();
    m_window = std::make_unique<QWidget>();
    m_window->resize(480, 473);
    m_page = new KAudioSettings(m_window.get(), true);
    m_page->setGeometry(32, 40, 416, 398);
}

void AudioSettingsFixture::cleanup()
{
    m_window.reset();
    KdTestCase::cleanup();
}

KdComboBox& AudioSettingsFixture::combo(const char* row) const
{
    return *m_page->findChild<KComboboxExt*>(QStringLiteral("KAudioSettings_") + QLatin1String(row))
                ->combobox();
}

QVector<int> AudioSettingsFixture::values(const char* row) const
{
    QVector<int> found;
    for (int i = 0; i < combo(row).count(); ++i) {
        found.append(combo(row).itemData(i).toInt());
    }
    return found;
}

void AudioSettingsFixture::select(const char* row, int value)
{
    const int position = combo(row).findData(value);
    QVERIFY(position >= 0);
    combo(row).setCurrentIndex(position);
}

QList<KdToast*> AudioSettingsFixture::toasts() const
{
    return m_window->findChildren<KdToast*>();
}
