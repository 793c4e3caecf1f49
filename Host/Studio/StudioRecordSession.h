#pragma once

#include <KdRecord/KdAudioRecordView.h>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

class QWidget;

/** The one recording dialog that may be open, and what it tells the editor. GUI thread. */
class StudioRecordSession : public QObject
{
    Q_OBJECT

public:
    /** @param mainWindow the window that the recorder locks; must outlive the session */
    explicit StudioRecordSession(QWidget* mainWindow);

    /** Opens the dialog, or brings the open one to the front. */
    void open();
    /** Ends a running take, which is still reported, and closes the dialog. */
    void close();
    bool isOpen() const { return !m_pView.isNull(); }
    /** Null while closed. */
    KdAudioRecordView* view() const { return m_pView; }

Q_SIGNALS:
    void opened();
    void closed();
    /** @param again a take that ran is thrown away for this one */
    void takeStarted(bool again);
    void takeStartFailed();
    /** @param frames length of the running take in project frames */
    void takeRuns(qint64 frames);
    /** The take is over. An empty path: there is nothing to import. */
    void takeFinished(const QString& path, const QString& fileInfo, const QString& fileExportInfo);
    void mute(bool muted);
    /** Whether the recorder has taken the main window's input away. */
    void lockChanged(bool locked);

private:
    void connectView();
    void lookAtLock();

    QWidget* m_pMainWindow;
    QPointer<KdAudioRecordView> m_pView;
    QTimer m_lockTimer;
    bool m_locked = false;
};
