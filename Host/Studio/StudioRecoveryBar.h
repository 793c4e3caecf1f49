#pragma once

#include <KdVBLModel/KdTakeRecovery.h>
#include <KdWidgets/KdLiveText.h>
#include <Studio/StudioNoticeBar.h>

#include <QVector>

class KdPushButton;
class QProgressBar;
class StudioRecovery;

/**
 * Offers to repair the takes that a crash left, one after another. Hidden while there is nothing to
 * offer; it never stands in the way of other work.
 */
class StudioRecoveryBar : public StudioNoticeBar
{
    Q_OBJECT

public:
    /** @param recovery must outlive the bar */
    explicit StudioRecoveryBar(StudioRecovery* recovery, QWidget* parent = nullptr);

    void RetranslateUi() override;

Q_SIGNALS:
    /** The file at that path can be used now. */
    void recovered(const QString& path, qint64 durationMs);
    /** What became of it, for the status line. */
    void message(const KdLiveText& text);

private:
    void layOut();
    void offer(const QVector<UnfinishedTake>& takes);
    void repair();
    void askToDiscard();
    void putOff();
    void handleRepaired(const UnfinishedTake& take, const RepairResult& result);
    void handleDiscarded(const UnfinishedTake& take, bool done);
    /** The first take is dealt with. */
    void next();
    void setBusy(bool busy);
    void showTexts();

    StudioRecovery* m_pRecovery;
    QVector<UnfinishedTake> m_takes;
    KdLiveText m_failure; ///< why the first take could not be dealt with; empty: it was not tried
    QProgressBar* m_pProgress;
    KdPushButton* m_pRepair;
    KdPushButton* m_pDiscard;
    KdPushButton* m_pLater;
};
