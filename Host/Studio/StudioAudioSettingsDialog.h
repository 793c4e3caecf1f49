#pragma once

#include <Studio/StudioSettingsDialog.h>

class KAudioSettings;

/** The advanced audio settings, the same that the voice-over recorder asks for: it records with
 * them from its next take. GUI thread. */
class StudioAudioSettingsDialog : public StudioSettingsDialog
{
    Q_OBJECT

public:
    explicit StudioAudioSettingsDialog(QWidget* parent = nullptr);

protected:
    QString title() const override;
    void keep() override;

private:
    KAudioSettings* m_pPage;
};
