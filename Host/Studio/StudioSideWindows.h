#pragma once

#include <QObject>
#include <QPointer>

class QWidget;
class StudioDevicesDialog;
class StudioSettingsDialog;

/** The windows beside the main one, each open once at most: asked for again it comes to the front.
 * GUI thread. */
class StudioSideWindows : public QObject
{
    Q_OBJECT

public:
    /** @param mainWindow must outlive this */
    explicit StudioSideWindows(QWidget* mainWindow);
    ~StudioSideWindows() override;

    void openDevices();
    void openAudioSettings();
    void openVideoSettings();
    /** What is not applied is dropped. */
    void closeAll();

    /** Each null while closed. */
    StudioDevicesDialog* devices() const;
    StudioSettingsDialog* audioSettings() const;
    StudioSettingsDialog* videoSettings() const;

private:
    QWidget* m_pMainWindow;
    QPointer<StudioDevicesDialog> m_pDevices;
    QPointer<StudioSettingsDialog> m_pAudio;
    QPointer<StudioSettingsDialog> m_pVideo;
};
