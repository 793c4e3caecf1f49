#pragma once

#include <Studio/StudioOptions.h>

#include <QObject>

#include <memory>

class KdDemoMicrophone;
class StudioLanguages;
class StudioVoiceOver;
class StudioWindow;
struct StudioVoiceOverResult;

/** One run of Studio, from the options to the exit status. Needs a QApplication. GUI thread. */
class StudioApplication : public QObject
{
    Q_OBJECT

public:
    explicit StudioApplication(const StudioOptions& options, QObject* parent = nullptr);
    ~StudioApplication() override;

    /** Runs until the window is closed or the voice-over is done. @return the exit status */
    int run();

private:
    void applySettings();
    bool prepareDemo();
    void startVoiceOver();
    void endVoiceOver(const StudioVoiceOverResult& result);
    void useSkin(const QString& name);
    void useLanguage(const QString& code);
    void handleQuitSignals();

    StudioOptions m_options;
    std::unique_ptr<StudioLanguages> m_languages;
    std::unique_ptr<KdDemoMicrophone> m_microphone;
    std::unique_ptr<StudioWindow> m_window;
    std::unique_ptr<StudioVoiceOver> m_voiceOver;
};
