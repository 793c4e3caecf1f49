#include <Studio/StudioRecovery.h>

StudioRecovery::StudioRecovery(QObject* parent, const StudioRecoveryServices& services)
    : QObject(parent), m_services(services)
{
}

StudioRecovery::~StudioRecovery()
{
    m_cancelled = true;
    m_worker.stop();
}

void StudioRecovery::find(const QStringList& folders)
{
    m_worker.start([this, folders] {
        QVector<UnfinishedTake> takes;
        for (const QString& folder : folders) {
            takes += m_services.find(folder);
        }
        m_worker.report([this, takes] { Q_EMIT found(takes); });
    });
}

void StudioRecovery::repair(const UnfinishedTake& take)
{
    m_worker.start([this, take] {
        const auto report = [this](int percent) {
            m_worker.report([this, percent] { Q_EMIT progress(percent); });
            return !m_cancelled;
        };
        const RepairResult result = m_services.repair(take, report);
        m_worker.report([this, take, result] { Q_EMIT repaired(take, result); });
    });
}

void StudioRecovery::discard(const UnfinishedTake& take)
{
    m_worker.start([this, take] {
        const bool done = m_services.discard(take);
        m_worker.report([this, take, done] { Q_EMIT discarded(take, done); });
    });
}
