#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

/**
 * A level meter, lying: green to 70, amber to 90, red above, with a notch at either limit so that
 * they can be told without their colours. It rises at once, falls 20 dB a second and holds a mark
 * at the peak for 1.5 s. Its scale is that of the capture engine's levels, 60 dB from 0 to 100. GUI
 * thread.
 */
class KDWIDGETS_EXPORT KdAudioVolumeWidget : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(double volume READ volume WRITE setVolume)

public:
    /** @param parent owns the meter; may be null. */
    explicit KdAudioVolumeWidget(QWidget* parent = nullptr);

    /** @return the last level that was set, 0 to 100. */
    double volume() const { return m_volume; }
    /** @return what the bar shows now, 0 to 100; not below volume(). */
    double shownVolume() const { return m_shown; }
    /** @return the peak mark, 0 to 100; 0 when there is none. */
    double peak() const { return m_peak; }
    /** @return 116 x 8. */
    QSize sizeHint() const override;

    /**
     * Moves bar and mark on. Called by the widget itself while it is visible.
     * @param milliseconds since the last call; a negative number counts as 0.
     */
    void advance(int milliseconds);

public Q_SLOTS:
    /**
     * @param volume 0 to 100, clamped; NaN counts as 0. Setting 0 while the widget is disabled
     * clears the peak.
     */
    void setVolume(double volume);

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    /**
     * Moves bar and mark on by the time that has passed.
     * @param event of the widget's own timer, or of one of a derived class.
     */
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
