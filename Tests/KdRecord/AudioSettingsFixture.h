#pragma once

#include <KdRecord/KAudioSettings.h>
#include <KdWidgets/KdComboBox.h>
#include <KdWidgets/KdToast.h>

#include <Support/KdTestCase.h>

#include <memory>

/** Base of the tests of the page of sound settings: the page, in a window that is not shown. */
class AudioSettingsFixture : public KdTestCase
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();

protected:
    static constexpr int Vbr = 1;
    static constexpr int Cbr = 2;
    static inline const QVector<int> AllBitrates{96, 128, 160, 192, 256, 320, 512};

    /** @param row "Bitrate", "Encoder"...: what the row's name has after that of the page */
    KdComboBox& combo(const char* row) const;
    QVector<int> values(const char* row) const;
    void select(const char* row, int value);
    QList<KdToast*> toasts() const;

    std::unique_ptr<QWidget> m_window;
    KAudioSettings* m_page = nullptr;
};
