#pragma once

#include <Studio/StudioPeaks.h>
#include <Studio/StudioTake.h>

#include <QAbstractListModel>
#include <QHash>
#include <QImage>

class StudioTakeLibrary;

/**
 * A take library's takes as rows, with the waveforms and thumbnails that are known so
 * far. GUI thread.
 */
class StudioTakeModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role : int
    {
        TakeRole = Qt::UserRole,
        PeaksRole,
        ThumbnailRole ///< a QImage; null for sound alone, and while unknown
    };

    /** @param library must outlive the model */
    explicit StudioTakeModel(StudioTakeLibrary* library, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    /** The display text is the take's name; the accessible one says everything about it. */
    QVariant data(const QModelIndex& index, int role) const override;

    StudioPeaks peaks(const QString& path) const { return m_peaks.value(path); }
    void setPeaks(const QString& path, const StudioPeaks& peaks);
    QImage thumbnail(const QString& path) const { return m_thumbnails.value(path); }
    void setThumbnail(const QString& path, const QImage& thumbnail);

private:
    void tell(const QString& path, int role);

    StudioTakeLibrary* m_pLibrary;
    QHash<QString, StudioPeaks> m_peaks;
    QHash<QString, QImage> m_thumbnails;
};

/** What is wrong with a take, or where it came from and how long it is: the second line of its row.
 */
QString describeTake(const StudioTake& take);
