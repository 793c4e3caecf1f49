#include <Studio/StudioTakeLibrary.h>

#include <KdCore/KdBaseLog.h>
#include <KdCore/KdSafeFile.h>
#include <Studio/StudioTakeIndex.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace {

constexpr qint64 kLargestIndex = qint64(16) * 1024 * 1024;
/** A take in the making changes the folder many times a second. */
constexpr int kRefreshDelayMs = 200;

KdBaseLog::Source here(const char* function, int line = __builtin_LINE())
{
    return {"Host/Studio/StudioTakeLibrary", function, line};
}

} // namespace

StudioTakeLibrary::StudioTakeLibrary(QObject* parent) : QObject(parent)
{
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(kRefreshDelayMs);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!m_refresh.isActive()) {
            m_refresh.start();
        }
    });
    connect(&m_refresh, &QTimer::timeout, this, &StudioTakeLibrary::refresh);
}

void StudioTakeLibrary::open(const QString& folder)
{
    m_folder = QDir::cleanPath(QDir(folder).absolutePath());
    Q_EMIT aboutToReset();
    m_takes.clear();
    if (!QDir().mkpath(m_folder)) {
        Q_EMIT problem([folder = QDir::toNativeSeparators(m_folder)] {
            return tr("The takes folder \"%1\" cannot be made.").arg(folder);
        });
    }
    load();
    watch();
    Q_EMIT reset();
    refresh();
}

QString StudioTakeLibrary::indexPath() const
{
    return m_folder + QStringLiteral("/Takes.json");
}

int StudioTakeLibrary::rowOf(const QString& path) const
{
    const auto found = std::find_if(m_takes.cbegin(), m_takes.cend(),
                                    [&path](const StudioTake& take) { return take.path == path; });
    return found == m_takes.cend() ? -1 : static_cast<int>(found - m_takes.cbegin());
}

void StudioTakeLibrary::add(const StudioTake& take)
{
    const int row = rowOf(take.path);
    if (row >= 0) {
        m_takes[row] = take;
        Q_EMIT changed(row);
    } else {
        Q_EMIT aboutToInsert(m_takes.size());
        m_takes.append(take);
        Q_EMIT inserted(m_takes.size() - 1);
    }
    save();
    refreshRow(rowOf(take.path));
    watch();
}

void StudioTakeLibrary::remove(const QString& path)
{
    const int row = rowOf(path);
    if (row < 0) {
        return;
    }
    Q_EMIT aboutToRemove(row);
    m_takes.remove(row);
    Q_EMIT removed(row);
    save();
}

void StudioTakeLibrary::setGood(const QString& path, qint64 durationMs, const QSize& picture)
{
    const int row = rowOf(path);
    if (row < 0) {
        return;
    }
    const bool lengthIsNew = m_takes.at(row).durationMs != durationMs;
    const bool pictureIsNew = m_takes.at(row).picture != picture;
    m_takes[row].picture = picture;
    update(row, StudioTake::State::Good, QString(), durationMs);
    if (lengthIsNew) {
        save();
    }
    if (pictureIsNew) {
        Q_EMIT changed(rowOf(path));
    }
}

void StudioTakeLibrary::setUnreadable(const QString& path, const QString& problem)
{
    const int row = rowOf(path);
    if (row >= 0) {
        update(row, StudioTake::State::Unreadable, problem, m_takes.at(row).durationMs);
    }
}

void StudioTakeLibrary::refresh()
{
    for (int row = 0; row < m_takes.size(); ++row) {
        refreshRow(row);
    }
    watch();
}

void StudioTakeLibrary::refreshRow(int row)
{
    const StudioTake& take = m_takes.at(row);
    if (!QFileInfo(take.path).isFile()) {
        update(row, StudioTake::State::Missing, QString(), take.durationMs);
    } else if (take.state == StudioTake::State::Missing ||
               take.state == StudioTake::State::Checking) {
        update(row, StudioTake::State::Checking, QString(), take.durationMs);
        Q_EMIT needsCheck(QString(m_takes.at(row).path));
    }
}

void StudioTakeLibrary::update(int row, StudioTake::State state, const QString& problem,
                               qint64 durationMs)
{
    StudioTake& take = m_takes[row];
    if (take.state == state && take.problem == problem && take.durationMs == durationMs) {
        return;
    }
    take.state = state;
    take.problem = problem;
    take.durationMs = durationMs;
    Q_EMIT changed(row);
}

void StudioTakeLibrary::load()
{
    QFile file(indexPath());
    if (!file.exists()) {
        return;
    }
    const bool readable = file.size() <= kLargestIndex && file.open(QIODevice::ReadOnly);
    const StudioTakeIndex::Content content =
        StudioTakeIndex::read(readable ? file.readAll() : QByteArray(), m_folder);
    file.close();
    if (!content.valid) {
        putAside();
        return;
    }
    m_takes = content.takes;
    if (content.skipped > 0) {
        KdBaseLog::write(KdBaseLog::Info, here("StudioTakeLibrary::load"),
                         "%d entries of the take list made no sense and were left out",
                         content.skipped);
    }
}

void StudioTakeLibrary::putAside()
{
    const QString aside = indexPath() + QStringLiteral(".damaged");
    QFile::remove(aside);
    QFile::rename(indexPath(), aside);
    KdBaseLog::write(KdBaseLog::Warning, here("StudioTakeLibrary::putAside"),
                     "The take list cannot be read and was put aside as %s", qPrintable(aside));
    Q_EMIT problem([name = QFileInfo(aside).fileName()] {
        return tr("The list of takes cannot be read; it was put aside as \"%1\".").arg(name);
    });
}

void StudioTakeLibrary::save()
{
    if (KdSafeFile::replace(indexPath(), StudioTakeIndex::write(m_takes, m_folder))) {
        return;
    }
    KdBaseLog::write(KdBaseLog::Warning, here("StudioTakeLibrary::save"),
                     "The take list %s cannot be written", qPrintable(indexPath()));
    Q_EMIT problem([folder = QDir::toNativeSeparators(m_folder)] {
        return tr("The list of takes cannot be saved in \"%1\".").arg(folder);
    });
}

void StudioTakeLibrary::watch()
{
    QSet<QString> wanted{m_folder};
    for (const StudioTake& take : qAsConst(m_takes)) {
        wanted.insert(QFileInfo(take.path).path());
    }
    const QStringList list = m_watcher.directories();
    const QSet<QString> watched(list.cbegin(), list.cend());
    for (const QString& folder : watched - wanted) {
        m_watcher.removePath(folder);
    }
    for (const QString& folder : wanted - watched) {
        if (QFileInfo(folder).isDir()) {
            m_watcher.addPath(folder);
        }
    }
}
