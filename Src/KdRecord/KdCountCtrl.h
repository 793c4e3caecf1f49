#pragma once

#include <KdRecord/KdRecordExport.h>
#include <KdWidgets/KdLabel.h>

#include <QTimer>

class QPainter;

/**
 * The countdown before a take: a small frameless window with the seconds that are left and a ring
 * that closes clockwise while they run. SetCount() resets it, Start() lets it run; it then either
 * ends with sigFinish() or is stopped by Abort(), without a signal. It may be destroyed from inside
 * its own signals. GUI thread.
 *
 * QApplication::widgetAt() looks through the window to what lies below, yet presses that the window
 * system delivers to it still arrive and are reported by sigPressed(). Showing it leaves the
 * keyboard where it was, so that the shortcut that ends the countdown still reaches the window
 * below.
 */
class KDRECORD_EXPORT KdCountCtrl : public KdLabel
{
    Q_OBJECT
    Q_PROPERTY(QString m_CycleColor READ GetCycleColor WRITE SetCycleColor)
    Q_PROPERTY(QString m_TextColor READ GetTextColor WRITE SetTextColor)

public:
    /**
     * A window that is not shown yet, with a count of 3 s.
     * @param parent owns the countdown; may be null.
     */
    explicit KdCountCtrl(QWidget* parent = nullptr);
    ~KdCountCtrl() override;

    /**
     * Sets the seconds to count and goes back to the first tick.
     * @param n negative: 3. 0 ends at the first tick. Counts above 107374182 (3.4 years) end there.
     */
    void SetCount(int n);
    /** @param w pen width of the ring in pixels, clamped to 1..20. */
    void SetCycleWidth(int w);

    /**
     * Shown from the next painting on.
     * @param color of the ring, in any form that QColor accepts; black for anything else.
     */
    void SetCycleColor(const QString& color);
    /** @return as set; the skin sets it too. */
    QString GetCycleColor() const { return m_CycleColor; }
    /**
     * Shown from the next painting on.
     * @param color of the number, in any form that QColor accepts; black for anything else.
     */
    void SetTextColor(const QString& color);
    /** @return as set; the skin sets it too. */
    QString GetTextColor() const { return m_TextColor; }

    /** Runs on from the present tick; after a count has run out the next tick ends it again. */
    virtual void Start();
    /** Stops without a signal. */
    virtual void Abort();

    /** @return whether the count is running. */
    bool isActive() const { return m_timer.isActive(); }

Q_SIGNALS:
    /**
     * The mouse was pressed on the window.
     * @param globalPos where, in coordinates of the screen.
     */
    void sigPressed(QPoint globalPos);
    /** The count has run out. */
    void sigFinish();

protected:
    /** Ends the count: stops and emits sigFinish(). */
    virtual void Finish();

    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

    /** @return the seconds to show now. */
    int remainingSeconds() const;
    /** @return pen width of the ring in pixels. */
    int cycleWidth() const { return m_nCycleWidth; }

private:
    void tick();
    void describe();
    void announce();
    void paintGround(QPainter& painter);
    QRect ringRect() const;
    /** @return how far the ring has closed, in sixteenths of a degree. */
    int ringSpan() const;

    QTimer m_timer;
    int m_nCount;
    int m_nTotalTicks;
    int m_nTick = 0;
    int m_nAnnounced = 0; ///< seconds
    int m_nCycleWidth = 8;
    QString m_TextColor;
    QString m_CycleColor;
};
