#pragma once

#include <KdWidgets/KdFramelessDialog.h>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

class QWidget;

/**
 * One of the recorder's dialogs while it is open, and what it tells the editor. Each kind of dialog
 * has a class of its own. GUI thread.
 */
class StudioRecordSession : public QObject
{
    Q_OBJECT

public:
    /** @param mainWindow the window that the recorder locks; must outlive the session */
    explicit StudioRecordSession(QWidget* mainWindow);

    /** Opens the dialog, or brings the open one to the front. May run until the dialog is closed,
     * by then this object may be gone. */
    void open();
    /** Closes the dialog as its user does, who may throw a running take away by that. */
    void close();
    /** Ends a running take so that it is kept and told, and closes the dialog. Asks nobody. */
    virtual void finish() { close(); }
    bool isOpen() const { return !m_pView.isNull(); }
    /** The dialog; null while closed. */
    KdFramelessDialog* view() const { return m_pView; }

Q_SIGNALS:
    /** Comes before the dialog can be seen. */
    void opened();
    void closed();
    /** @param again a take that ran is thrown away for this one */
    void takeStarted(bool again);
    void takeStartFailed();
    /** @param frames length of the running take in project frames; not every dialog tells it */
    void takeRuns(qint64 frames);
    /** The take is over. An empty path: there is nothing to import. */
    void takeFinished(const QString& path, const QString& fileInfo, const QString& fileExportInfo);
    void mute(bool muted);
    /** Whether the recorder has taken the main window's input away. */
    void lockChanged(bool locked);

protected:
    /** Makes the dialog, which deletes itself when it is closed, and connects what it tells. */
    virtual KdFramelessDialog* makeView(QWidget* mainWindow) = 0;
    /** Shows the dialog that makeView() made. The last thing that open() does. */
    virtual void showView() = 0;

private:
    void noteGone();
    void lookAtLock();

    QWidget* m_pMainWindow;
    QPointer<KdFramelessDialog> m_pView;
    QTimer m_lockTimer;
    bool m_locked = false;
};
