#pragma once

#include <KdWidgets/KdWidget.h>
#include <Studio/StudioPeaks.h>
#include <Studio/StudioTake.h>
#include <Studio/StudioTimecode.h>

#include <QImage>
#include <QString>
#include <QVector>

/** A take on the timeline. */
struct StudioClip
{
    QString path;
    QString name;
    qint64 start = 0;  ///< project frame
    qint64 frames = 0; ///< at least 1
    StudioPeaks peaks;
    QImage thumbnail; ///< null: sound alone
};

/** Lays playable takes one after another; others have no place on the timeline. */
QVector<StudioClip> layOutClips(const QVector<StudioTake>& takes, double framesPerSecond);

/** @return the first frame behind all clips. */
qint64 endOfClips(const QVector<StudioClip>& clips);

/**
 * A strip with one track, a ruler and a playhead, all in project frames. A take that is being
 * recorded grows behind the last clip with the playhead at its end.
 */
class StudioTimeline : public KdWidget
{
    Q_OBJECT

public:
    explicit StudioTimeline(QWidget* parent = nullptr);

    void setFrameRate(double framesPerSecond);
    double frameRate() const { return m_framesPerSecond; }
    void setClips(const QVector<StudioClip>& clips);
    const QVector<StudioClip>& clips() const { return m_clips; }
    /** The clip that is chosen; none for an unknown path. */
    void setCurrentClip(const QString& path);

    void setPlayhead(qint64 frame);
    qint64 playhead() const { return m_playhead; }

    /** A take begins behind the last clip; also begins anew. */
    void beginRecording();
    /** @param frames length of the running take; without effect when none runs */
    void setRecordedFrames(qint64 frames);
    /** Its place goes; the finished take comes back as a clip. */
    void endRecording();
    bool isRecording() const { return m_recording; }

    StudioTimelineScale scale() const;
    QSize sizeHint() const override;
    void RetranslateUi() override;

Q_SIGNALS:
    void clipClicked(const QString& path);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QRect track() const;
    QRectF clipRect(qint64 start, qint64 frames) const;
    void paintRuler(QPainter& painter) const;
    void paintClip(QPainter& painter, const StudioClip& clip) const;
    void paintRecording(QPainter& painter) const;
    void paintPlayhead(QPainter& painter) const;

    double m_framesPerSecond = 30.0;
    QVector<StudioClip> m_clips;
    QString m_current;
    qint64 m_playhead = 0;
    bool m_recording = false;
    qint64 m_recordStart = 0;
    qint64 m_recordFrames = 0;
};
