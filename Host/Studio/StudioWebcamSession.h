#pragma once

#include <Studio/StudioRecordSession.h>
#include <Studio/StudioStartWatch.h>

class KdWebcamRecordView;

/**
 * The dialog for webcam clips. It is modal: open() returns when it is closed. close() throws a take
 * that runs away. The project is muted while it is open, for its sound would be in the clip.
 */
class StudioWebcamSession : public StudioRecordSession
{
    Q_OBJECT

public:
    explicit StudioWebcamSession(QWidget* mainWindow);

    void finish() override;

protected:
    KdFramelessDialog* makeView(QWidget* mainWindow) override;
    void showView() override;

private:
    /** The dialog itself does not tell that recording began. */
    StudioStartWatch m_starts;
    KdWebcamRecordView* m_pDialog = nullptr;
};
