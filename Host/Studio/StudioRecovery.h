#pragma once

#include <Studio/StudioWorker.h>

#include <KdVBLModel/KdTakeRecovery.h>

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <functional>

/** What does the work of a StudioRecovery; all are called on its worker thread. */
struct StudioRecoveryServices
{
    std::function<QVector<UnfinishedTake>(const QString& folder)> find = KdTakeRecovery::find;
    std::function<RepairResult(const UnfinishedTake&, const KdTakeRecovery::Progress&)> repair =
        KdTakeRecovery::repair;
    std::function<bool(const UnfinishedTake&)> discard = KdTakeRecovery::discard;
};

/** Finds and repairs what a crash left, on a thread of its own. GUI thread; so are the signals. */
class StudioRecovery : public QObject
{
    Q_OBJECT

public:
    explicit StudioRecovery(QObject* parent = nullptr,
                            const StudioRecoveryServices& services = StudioRecoveryServices());
    /** Cancels a running repair, which leaves the take as unfinished as it was, and waits for it.
     */
    ~StudioRecovery() override;

    /** found() follows, once for all of the folders. */
    void find(const QStringList& folders);
    /** progress() and repaired() follow. */
    void repair(const UnfinishedTake& take);
    /** discarded() follows. */
    void discard(const UnfinishedTake& take);

Q_SIGNALS:
    void found(const QVector<UnfinishedTake>& takes);
    void progress(int percent);
    void repaired(const UnfinishedTake& take, const RepairResult& result);
    void discarded(const UnfinishedTake& take, bool done);

private:
    StudioRecoveryServices m_services;
    std::atomic<bool> m_cancelled{false};
    StudioWorker m_worker;
};

Q_DECLARE_METATYPE(UnfinishedTake)
Q_DECLARE_METATYPE(RepairResult)
