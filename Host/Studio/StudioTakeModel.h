#pragma once

#include <Studio/StudioPeaks.h>
#include <Studio/StudioTake.h>

#include <QAbstractListModel>
#include <QHash>

class StudioTakeLibrary;

/** A take library's takes as rows, with the waveforms that are known so far. GUI thread. */
class StudioTakeModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role : int
    {
        TakeRole = Qt::UserRole,
        PeaksRole
    };

    /** @param library must outlive the model */
    explicit StudioTakeModel(StudioTakeLibrary* library, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    /** The display text is the take's name; the accessible one says everything about it. */
    QVariant data(const QModelIndex& index, int role) const override;

    StudioPeaks peaks(const QString& path) const { return m_peaks.value(path); }
    void setPeaks(const QString& path, const StudioPeaks& peaks);

private:
    StudioTakeLibrary* m_pLibrary;
    QHash<QString, StudioPeaks> m_peaks;
};

/** What is wrong with a take, or where it came from and how long it is: the second line of its row.
 */
QString describeTake(const StudioTake& take);
