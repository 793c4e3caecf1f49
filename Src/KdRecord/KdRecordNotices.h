#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

class KdLiveText;
class KdPopovers;
class KdToast;
class QWidget;

/**
 * What a recording panel has to say to its user: messages, questions, toasts and tips, which follow
 * the language while they are open. An open list of the panel is closed before a message. It
 * belongs to the panel and goes with it, also from inside a message: these run nested event loops,
 * and whoever calls one must look whether the panel still exists. GUI thread.
 */
class KdRecordNotices
{
    Q_DECLARE_TR_FUNCTIONS(KdRecordNotices)

public:
    explicit KdRecordNotices(QWidget* panel);

    /** @return whether a modal message is open; nothing starts or stops a take meanwhile. */
    bool isAsking() const { return m_nOpenMessages > 0; }
    /** Runs something modal, a dialog of the panel say, as one of these messages. */
    int runModal(const std::function<int()>& modal);

    void tellNoDevice();
    void tellStartFailed();
    void tellTooShort();
    /** The file of a take could not be finished or is not there. */
    void tellNotSaved(const QString& path);
    /** @param name as the device calls itself; line breaks and an absurd length are left out. */
    void tellDeviceLost(const QString& name);
    /** One message for all that was lost at once; none when nothing was. Names as above. */
    void tellDevicesLost(const std::optional<QString>& camera,
                         const std::optional<QString>& microphone);
    /** Told once at a time: nothing while this message is open, and only when another one is closed
     * while that is. */
    void tellWebcamOccupied();
    /** A message about the webcam that still waits for its turn does not come any more. */
    void forgetOccupied() { m_bOccupiedWaits = false; }

    /**
     * The take has ended by itself, and its file was kept.
     * @param isDiskFull false: a device is to blame, or the file could not be written for another
     * reason.
     */
    void tellTakeEnded(bool isDiskFull);

    /** Shows that the take is paused, or takes that away. */
    void showPaused(bool isPaused);
    /** Points below the button that ended the take. */
    void showAdded(const QWidget* button);
    /** Asks beside anchor; asked twice, the first question stays. confirmed is called at most once.
     */
    void askReRecord(QWidget* anchor, const std::function<void()>& confirmed);
    /** Takes away what only makes sense during a take. */
    void closeTakeNotices();

private:
    class MessageScope;
    void inform(const KdLiveText& text);
    void tellWhatWaits();

    QWidget* const m_pPanel;
    QPointer<KdToast> m_pPaused;
    QPointer<KdPopovers> m_pReRecord;
    int m_nOpenMessages = 0;
    bool m_bTellsOccupied = false; ///< that message is open
    bool m_bOccupiedWaits = false; ///< for another message to be closed
};
