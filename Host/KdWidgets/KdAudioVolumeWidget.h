#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

/**
 * A level meter, lying: green to 70, amber to 90, red above, with a notch at either limit so that
 * they can be told without their colours. It rises at once, falls 20 dB a second and holds a mark
 * at the peak for 1.5 s. Its scale is that of the capture engine's levels, 60 dB from 0 to 100.
 */
class KDWIDGETS_EXPORT KdAudioVolumeWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(double volume READ volume WRITE setVolume)

public:
    explicit KdAudioVolumeWidget(QWidget* parent = nullptr);

    /** The last level that was set. */
    double volume() const { return m_volume; }
    /** What the bar shows now. */
    double shownVolume() const { return m_shown; }
    /** The peak mark; 0 when there is none. */
    double peak() const { return m_peak; }
    QSize sizeHint() const override;

    /** Moves bar and mark on as so many milliseconds do. Called by the widget while it is visible.
     */
    void advance(int milliseconds);

public Q_SLOTS:
    /** @param volume 0 to 100, clamped; NaN counts as 0. Setting 0 while the widget is disabled
     * clears the peak. */
    void setVolume(double volume);

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    bool isMoving() const;
    void animate();
    void retranslate();

    double m_volume = 0.0;
    double m_shown = 0.0;
    double m_peak = 0.0;
    int m_nPeakAgeMs = 0;
    QElapsedTimer m_sinceFrame;
    QBasicTimer m_timer;
};
