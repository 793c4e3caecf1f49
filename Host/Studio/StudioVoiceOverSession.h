#pragma once

#include <Studio/StudioRecordSession.h>

class KdAudioRecordView;

/** The dialog for voice-overs. A take that runs when it is closed is still reported. */
class StudioVoiceOverSession : public StudioRecordSession
{
    Q_OBJECT

public:
    using StudioRecordSession::StudioRecordSession;

protected:
    KdFramelessDialog* makeView(QWidget* mainWindow) override;
    void showView() override;

private:
    KdAudioRecordView* m_pDialog = nullptr;
};
