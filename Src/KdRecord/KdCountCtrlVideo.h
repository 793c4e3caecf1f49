#pragma once

#include <KdRecord/KdCountCtrl.h>

#include <QBasicTimer>

/** The countdown over a webcam picture: a white disc with a black number inside a spinning ring.
 * GUI thread. */
class KDRECORD_EXPORT KdCountCtrlVideo : public KdCountCtrl
{
    Q_OBJECT

public:
    /**
     * A window that is not shown yet, with a count of 3 s.
     * @param parent owns the countdown; may be null.
     */
    explicit KdCountCtrlVideo(QWidget* parent = nullptr);
    ~KdCountCtrlVideo() override;

    void Start() override;
    void Abort() override;

protected:
    void Finish() override;
    void paintEvent(QPaintEvent* event) override;
    /**
     * Turns the ring by 12 degrees.
     * @param event of whichever timer.
     */
    void timerEvent(QTimerEvent* event) override;

private:
    void stopSpinning();
    void paintNumber(QPainter& painter, const QPoint& center) const;
    void paintRing(QPainter& painter, const QPoint& center) const;

    int m_nAngle = 0;
    QBasicTimer m_animTimer;
};
