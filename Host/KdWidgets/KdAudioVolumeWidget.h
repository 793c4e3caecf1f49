#pragma once

#include <KdWidgets/KdWidgetsExport.h>

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

/** A level meter, lying: green to 70, amber to 90, red above; falls 20 dB a second; holds the peak
 * for 1.5 s. */
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

public Q_SLOTS:
    /** @param volume 0 to 100, clamped; NaN counts as 0. Setting 0 while the widget is disabled
     * clears the peak. */
    void setVolume(double volume);

protected:
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    double m_volume = 0.0;
    double m_shown = 0.0;
    double m_peak = 0.0;
    QElapsedTimer m_sinceFrame;
    QElapsedTimer m_sincePeak;
    QBasicTimer m_timer;
};
