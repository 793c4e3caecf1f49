#include <Studio/StudioSideWindows.h>

#include <Studio/StudioAudioSettingsDialog.h>
#include <Studio/StudioDevicesDialog.h>
#include <Studio/StudioVideoSettingsDialog.h>

namespace {

/** Makes the window if it is closed, and brings it to the front. */
template <typename Dialog, typename Base>
void open(QPointer<Base>& window, QWidget* mainWindow)
{
    if (!window) {
        window = new Dialog(mainWindow);
    }
    window->showNormal();
    window->raise();
    window->activateWindow();
}

void close(QWidget* window)
{
    if (window) {
        window->close();
    }
}

} // namespace

StudioSideWindows::StudioSideWindows(QWidget* mainWindow)
    : QObject(mainWindow), m_pMainWindow(mainWindow)
{
}

StudioSideWindows::~StudioSideWindows() = default;

StudioDevicesDialog* StudioSideWindows::devices() const
{
    return m_pDevices;
}

StudioSettingsDialog* StudioSideWindows::audioSettings() const
{
    return m_pAudio;
}

StudioSettingsDialog* StudioSideWindows::videoSettings() const
{
    return m_pVideo;
}

void StudioSideWindows::openDevices()
{
    open<StudioDevicesDialog>(m_pDevices, m_pMainWindow);
}

void StudioSideWindows::openAudioSettings()
{
    open<StudioAudioSettingsDialog>(m_pAudio, m_pMainWindow);
}

void StudioSideWindows::openVideoSettings()
{
    open<StudioVideoSettingsDialog>(m_pVideo, m_pMainWindow);
}

void StudioSideWindows::closeAll()
{
    close(m_pDevices);
    close(m_pAudio);
    close(m_pVideo);
}
