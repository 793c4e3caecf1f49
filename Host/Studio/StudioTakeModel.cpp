#include <Studio/StudioTakeModel.h>

#include <Studio/StudioTakeLibrary.h>

StudioTakeModel::StudioTakeModel(StudioTakeLibrary* library, QObject* parent)
    : QAbstractListModel(parent), m_pLibrary(library)
{
    connect(library, &StudioTakeLibrary::aboutToReset, this, [this] { beginResetModel(); });
    connect(library, &StudioTakeLibrary::reset, this, [this] {
        m_peaks.clear();
        m_thumbnails.clear();
        endResetModel();
    });
    connect(library, &StudioTakeLibrary::aboutToInsert, this,
            [this](int row) { beginInsertRows(QModelIndex(), row, row); });
    connect(library, &StudioTakeLibrary::inserted, this, [this] { endInsertRows(); });
    connect(library, &StudioTakeLibrary::aboutToRemove, this,
            [this](int row) { beginRemoveRows(QModelIndex(), row, row); });
    connect(library, &StudioTakeLibrary::removed, this, [this] { endRemoveRows(); });
    connect(library, &StudioTakeLibrary::changed, this,
            [this](int row) { Q_EMIT dataChanged(index(row), index(row)); });
}

int StudioTakeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_pLibrary->count();
}

QVariant StudioTakeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_pLibrary->count()) {
        return {};
    }
    const StudioTake& take = m_pLibrary->takes().at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return take.name();
    case Qt::AccessibleTextRole:
        return tr("%1, %2").arg(take.name(), describeTake(take));
    case TakeRole:
        return QVariant::fromValue(take);
    case PeaksRole:
        return QVariant::fromValue(m_peaks.value(take.path));
    case ThumbnailRole:
        return m_thumbnails.value(take.path);
    default:
        return {};
    }
}

void StudioTakeModel::setPeaks(const QString& path, const StudioPeaks& peaks)
{
    m_peaks.insert(path, peaks);
    tell(path, PeaksRole);
}

void StudioTakeModel::setThumbnail(const QString& path, const QImage& thumbnail)
{
    m_thumbnails.insert(path, thumbnail);
    tell(path, ThumbnailRole);
}

void StudioTakeModel::tell(const QString& path, int role)
{
    const int row = m_pLibrary->rowOf(path);
    if (row >= 0) {
        Q_EMIT dataChanged(index(row), index(row), {role});
    }
}

QString describeTake(const StudioTake& take)
{
    switch (take.state) {
    case StudioTake::State::Missing:
        return StudioTakeModel::tr("The file is missing");
    case StudioTake::State::Unreadable:
        return StudioTakeModel::tr("The file cannot be read");
    case StudioTake::State::Checking:
    case StudioTake::State::Good:
        break;
    }
    const QString device = take.deviceName.simplified();
    const QString length = formatTakeLength(take.durationMs);
    return device.isEmpty() ? length : QStringLiteral("%1  \u00b7  %2").arg(length, device);
}
