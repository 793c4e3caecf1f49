#pragma once

#include <Studio/StudioPeaks.h>

#include <QWidget>

/** The waveform of one take with the place that is being played. A click, or an arrow key, asks to
 * go elsewhere. */
class StudioWaveformView : public QWidget
{
    Q_OBJECT

public:
    explicit StudioWaveformView(QWidget* parent = nullptr);

    void setPeaks(const StudioPeaks& peaks);
    /** Shown instead of a waveform while not empty: why there is none. */
    void setNotice(const QString& text);
    void setDuration(qint64 milliseconds);
    /** Leaves room for a picture above it. */
    void setFlat(bool flat);
    /** Clamped to the duration. */
    void setPosition(qint64 milliseconds);
    qint64 position() const { return m_position; }
    QSize sizeHint() const override;

Q_SIGNALS:
    void seekRequested(qint64 milliseconds);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRect waveformArea() const;
    bool canSeek() const;
    void seekTo(int pixel);

    StudioPeaks m_peaks;
    QString m_notice;
    qint64 m_duration = 0;
    qint64 m_position = 0;
};
