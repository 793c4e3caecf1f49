#pragma once

#include <KdWidgets/KdWidget.h>
#include <Studio/StudioPeaks.h>
#include <Studio/StudioTake.h>

class KdLabel;
class QPlainTextEdit;
class StudioPictureView;
class StudioPlayer;
class StudioTransport;
class StudioWaveformView;

/** Everything about one take: where it came from, its picture and waveform with play-back, and the
 * JSON that came with it. */
class StudioTakeDetails : public KdWidget
{
    Q_OBJECT

public:
    /** @param player must outlive the widget */
    explicit StudioTakeDetails(StudioPlayer* player, QWidget* parent = nullptr);

    /** Shows a take; the player gets its file, and goes on when that is the one it has. */
    void showTake(const StudioTake& take, const StudioPeaks& peaks);
    /** What a clip shows while it does not play. Without effect for a path that is not shown. */
    void setPoster(const QString& path, const QImage& poster);
    QString path() const { return m_take.path; }
    StudioTransport* transport() const { return m_pTransport; }
    void RetranslateUi() override;

Q_SIGNALS:
    /** A clip is shown that has no poster yet: setPoster() is expected, at any time. */
    void posterWanted(const QString& path);

private:
    void layOut();
    void showPicture(bool shown);
    QString origin() const;
    QString notice() const;
    QString reportText() const;

    StudioPlayer* m_pPlayer;
    StudioTake m_take;
    QString m_posterPath;
    KdLabel* m_pName;
    KdLabel* m_pOrigin;
    StudioPictureView* m_pPicture;
    StudioWaveformView* m_pWaveform;
    StudioTransport* m_pTransport;
    KdLabel* m_pReportCaption;
    QPlainTextEdit* m_pReport;
};
