#pragma once

#include <KdRecord/KAudioAdvanceData.h>
#include <KdWidgets/KdFramelessDialog.h>

class KAudioSettings;
class KdPushButton;

/**
 * The modal "Advanced" dialog around the page of audio settings. Accepted: the owner takes data()
 * and stores it; otherwise nothing but the preview flag, which its switch stores itself, has
 * changed. Made once and reused; each showing begins with resetParaChanged(). GUI thread.
 */
class KAdvanceSettings : public KdFramelessDialog
{
    Q_OBJECT

public:
    explicit KAdvanceSettings(QWidget* parent = nullptr);
    ~KAdvanceSettings() override;

    void loadData(const _AudioAdvanceData& data);
    _AudioAdvanceData data() const;

    void resetParaChanged() { m_bParaChanged = false; }
    /** @return whether a parameter changed since resetParaChanged(). */
    bool isParaChanged() const { return m_bParaChanged; }

    void RetranslateUi() override;

Q_SIGNALS:
    /** For owners to connect to; the dialog itself emits nothing. */
    void sigParaChange();

public Q_SLOTS:
    void slotAudioParaChange();
    void slotApply();
    void slotCancel();

private:
    void initUI();
    void initButtons();
    void connectSignals();

    QWidget* m_pContent = nullptr;
    KdPushButton* m_pApply = nullptr;
    KdPushButton* m_pCancel = nullptr;
    KAudioSettings* m_pAudio = nullptr;
    bool m_bParaChanged = false;
};
