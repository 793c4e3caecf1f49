#pragma once

#include <KdWidgets/KdFramelessDialog.h>

class KdLabel;
class StudioDevicePane;
class StudioDeviceSource;

/** The devices of this machine, cameras above microphones, for as long as it is open. It deletes
 * itself when it is closed. GUI thread. */
class StudioDevicesDialog : public KdFramelessDialog
{
    Q_OBJECT

public:
    explicit StudioDevicesDialog(QWidget* parent = nullptr);

    StudioDevicePane* cameras() const { return m_pCameras; }
    StudioDevicePane* microphones() const { return m_pMicrophones; }
    void RetranslateUi() override;

private:
    void layOut();

    StudioDeviceSource* m_pSource;
    QWidget* m_pBody;
    StudioDevicePane* m_pCameras;
    StudioDevicePane* m_pMicrophones;
    KdLabel* m_pNote;
};
