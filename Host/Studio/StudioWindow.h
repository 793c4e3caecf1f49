#pragma once

#include <KdWidgets/KdLiveText.h>
#include <Studio/StudioTake.h>

#include <QMainWindow>
#include <QString>
#include <QTimer>

class KdLabel;
class KdTrackEvent;
class QStackedWidget;
class QTabWidget;
class StudioEmptyState;
class StudioHeader;
class StudioImporter;
class StudioLanguages;
class StudioNoticeBar;
class StudioPlayer;
class StudioRecordSession;
class StudioRecovery;
class StudioRecoveryBar;
class StudioSideWindows;
class StudioStartWatch;
class StudioTakeAnalyser;
class StudioTakeDetails;
class StudioTakeLibrary;
class StudioTakeModel;
class StudioTakePane;
class StudioTimeline;
class StudioUsageView;

/** The editor's only window. It knows the recorder by its public dialog and signals alone. GUI
 * thread. */
class StudioWindow : public QMainWindow
{
    Q_OBJECT

public:
    /** @param languages must outlive the window */
    explicit StudioWindow(StudioLanguages* languages, QWidget* parent = nullptr);
    ~StudioWindow() override;

    /** Shows the takes of the voice folder of the settings, and looks for unfinished ones there. */
    void openTakes();
    /** Takes the frame rate from the project. */
    void readFrameRate();

    StudioRecordSession* voiceOver() const { return m_pVoiceOver; }
    StudioRecordSession* webcam() const { return m_pWebcam; }
    StudioTakeAnalyser* analyser() const { return m_pAnalyser; }
    StudioTakeLibrary* library() const { return m_pLibrary; }
    StudioImporter* importer() const { return m_pImporter; }
    StudioPlayer* player() const { return m_pPlayer; }
    StudioTimeline* timeline() const { return m_pTimeline; }
    StudioSideWindows* sideWindows() const { return m_pSideWindows; }
    StudioRecoveryBar* recoveryBar() const { return m_pRecoveryBar; }
    QString statusText() const;

Q_SIGNALS:
    void languageChosen(const QString& code);
    void skinChosen(const QString& name);

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildBars();
    void layOut();
    QWidget* makeBody();
    void connectTakes();
    void connectRecorders();
    void connectRecorder(StudioRecordSession* session);
    void connectHeader();
    void connectPlayer();
    void retranslate();

    /** Opens one of the recorders, or shows the one that is open. */
    void record(StudioRecordSession* wanted);
    void openVoiceFolder();
    /** Says what has happened, also to assistive technology. */
    void tell(const KdLiveText& news);
    void showStatus();
    void showTake(int row);
    /** Once, however often it is asked for within one event. */
    void refreshTimeline();
    void showTimeline();
    void refreshTake(int row);
    void showPlayPosition(qint64 milliseconds);
    void chooseTake(const QString& path);
    void setLocked(bool locked);
    void beginTake();
    void endTake(const QString& path, const QString& fileInfo, const QString& fileExportInfo);

    StudioLanguages* m_pLanguages;
    StudioTakeLibrary* m_pLibrary;
    StudioTakeAnalyser* m_pAnalyser;
    StudioImporter* m_pImporter;
    StudioTakeModel* m_pModel;
    StudioPlayer* m_pPlayer;
    StudioRecovery* m_pRecovery;
    StudioStartWatch* m_pStarts;
    StudioRecordSession* m_pVoiceOver;
    StudioRecordSession* m_pWebcam;
    StudioSideWindows* m_pSideWindows;

    StudioHeader* m_pHeader = nullptr;
    StudioRecoveryBar* m_pRecoveryBar = nullptr;
    StudioNoticeBar* m_pLockBar = nullptr;
    QWidget* m_pBody = nullptr;
    StudioTakePane* m_pTakes = nullptr;
    QStackedWidget* m_pPages = nullptr;
    StudioEmptyState* m_pEmpty = nullptr;
    QTabWidget* m_pTabs = nullptr;
    StudioTakeDetails* m_pDetails = nullptr;
    StudioUsageView* m_pUsage = nullptr;
    StudioTimeline* m_pTimeline = nullptr;
    KdLabel* m_pTimecode = nullptr;
    KdLabel* m_pFrameRate = nullptr;
    KdLabel* m_pStatus = nullptr;
    KdLiveText m_status;
    QTimer m_timelineRefresh;
};
