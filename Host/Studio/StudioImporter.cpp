#include <Studio/StudioImporter.h>

#include <Studio/StudioTakeAnalyser.h>
#include <Studio/StudioTakeLibrary.h>

#include <QFileInfo>

StudioImporter::StudioImporter(StudioTakeLibrary* library, StudioTakeAnalyser* analyser,
                               QObject* parent)
    : QObject(parent), m_pLibrary(library), m_pAnalyser(analyser)
{
    connect(library, &StudioTakeLibrary::needsCheck, analyser, &StudioTakeAnalyser::analyse);
    connect(analyser, &StudioTakeAnalyser::probed, this, &StudioImporter::handleProbed);
}

void StudioImporter::import(const QString& path, const QString& fileInfo,
                            const QString& fileExportInfo)
{
    if (path.isEmpty()) {
        Q_EMIT skipped();
        return;
    }
    const StudioTake take = takeFromReport(path, fileInfo, fileExportInfo);
    m_pending.insert(take.path, take);
    m_pAnalyser->analyse(take.path);
}

void StudioImporter::flush()
{
    const QHash<QString, StudioTake> pending = m_pending;
    m_pending.clear();
    for (const StudioTake& take : pending) {
        if (QFileInfo(take.path).size() > 0) {
            m_pLibrary->add(take);
        }
    }
}

void StudioImporter::handleProbed(const QString& path, const StudioMediaInfo& info)
{
    if (m_pending.contains(path)) {
        finish(m_pending.take(path), info);
    } else if (info.readable) {
        m_pLibrary->setGood(path, info.durationMs, info.picture);
    } else if (QFileInfo::exists(path)) {
        m_pLibrary->setUnreadable(path, info.problem);
    }
}

void StudioImporter::finish(StudioTake take, const StudioMediaInfo& info)
{
    if (!info.readable) {
        Q_EMIT failed(take.path, info.problem);
        return;
    }
    take.durationMs = info.durationMs;
    take.picture = info.picture;
    take.state = StudioTake::State::Good;
    m_pLibrary->add(take);
    Q_EMIT imported(take.path);
}
