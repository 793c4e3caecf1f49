#pragma once

#include <KdWidgets/KdWidget.h>
#include <Studio/StudioPeaks.h>

/** The waveform of one take with the place that is being played. A click, or an arrow key, asks to
 * go elsewhere. */
class StudioWaveformView : public KdWidget
{
    Q_OBJECT

public:
    /** How far an arrow key goes. */
    static constexpr qint64 kKeyStepMs = 1000;

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
    qint64 duration() const { return m_duration; }
    /** Asks to go there, as a click does; clamped, without effect while there is nothing to play.
     */
    void seek(qint64 milliseconds);
    void RetranslateUi() override;
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
