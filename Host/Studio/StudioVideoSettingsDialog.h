#pragma once

#include <Studio/StudioSettingsDialog.h>

class KVideoSettings;

/** The advanced video settings. Studio, which makes no films, keeps them and uses them for nothing.
 * GUI thread. */
class StudioVideoSettingsDialog : public StudioSettingsDialog
{
    Q_OBJECT

public:
    explicit StudioVideoSettingsDialog(QWidget* parent = nullptr);

protected:
    QString title() const override;
    void keep() override;

private:
    KVideoSettings* m_pPage;
};
