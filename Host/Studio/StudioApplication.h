#pragma once

#include <Studio/StudioOptions.h>
#include <Studio/StudioUnattendedTake.h>

#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

class KdDemoCamera;
class KdDemoMicrophone;
class StudioLanguages;
class StudioRecordSession;
class StudioWindow;

/** One run of Studio, from the options to the exit status. Needs a QApplication. GUI thread. */
class StudioApplication : public QObject
{
    Q_OBJECT

public:
    explicit StudioApplication(const StudioOptions& options, QObject* parent = nullptr);
    ~StudioApplication() override;

    /**
     * Runs until the window is closed, or what the command line asks for is done.
     * @return the exit status
     */
    int run();

private:
    /** A take that the command line asks for. */
    struct PlannedTake
    {
        QString name; ///< as in "voice-over"
        StudioRecordSession* session = nullptr;
        StudioRecorderManual manual;
        double seconds = 0.0;
    };

    void applySettings();
    void warmEngineUp();
    bool prepareDemo();
    QString prepareMicrophone();
    QString prepareCamera();
    void planTakes();
    /** Records the next of the planned takes; ends the program when there is none. */
    void startNextTake();
    void endTake(const StudioTakeResult& result);
    void finishTake();
    void leave(int status);
    /** A picture of the recorder and one of the window, when they are asked for. */
    void keepPictures();
    void useSkin(const QString& name);
    void useLanguage(const QString& code);
    void handleQuitSignals();

    StudioOptions m_options;
    std::unique_ptr<StudioLanguages> m_languages;
    std::unique_ptr<KdDemoMicrophone> m_microphone;
    std::unique_ptr<KdDemoCamera> m_camera;
    std::unique_ptr<StudioWindow> m_window;
    QVector<PlannedTake> m_plan;
    PlannedTake m_planned;
    std::unique_ptr<StudioUnattendedTake> m_take;
    bool m_isLeaving = false;
};
