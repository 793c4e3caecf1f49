#include <Studio/StudioRecovery.h>

StudioRecovery::StudioRecovery(QObject* parent, const StudioRecoveryServices& services)
    : QObject(parent), m_services(services)
{
    m_pool.setMaxThreadCount(1);
}

StudioRecovery::~StudioRecovery()
{
    m_cancelled = true;
    m_pool.clear();
    m_pool.waitForDone();
}

void StudioRecovery::find(const QStringList& folders)
{
    m_pool.start([this, folders] {
        QVector<UnfinishedTake> takes;
        for (const QString& folder : folders) {
            takes += m_services.find(folder);
        }
        QMetaObject::invokeMethod(
            this, [this, takes] { Q_EMIT found(takes); }, Qt::QueuedConnection);
    });
}

void StudioRecovery::repair(const UnfinishedTake& take)
{
    m_pool.start([this, take] {
        const auto report = [this](int percent) {
            QMetaObject::invokeMethod(
                this, [this, percent] { Q_EMIT progress(percent); }, Qt::QueuedConnection);
            return !m_cancelled;
        };
        const RepairResult result = m_services.repair(take, report);
        QMetaObject::invokeMethod(
            this, [this, take, result] { Q_EMIT repaired(take, result); }, Qt::QueuedConnection);
    });
}

void StudioRecovery::discard(const UnfinishedTake& take)
{
    m_pool.start([this, take] {
        const bool done = m_services.discard(take);
        QMetaObject::invokeMethod(
            this, [this, take, done] { Q_EMIT discarded(take, done); }, Qt::QueuedConnection);
    });
}
