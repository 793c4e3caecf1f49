#pragma once

#include <KdRecord/KdCountCtrl.h>

#include <QColor>
#include <QImage>
#include <QRect>

class QTimer;

/** What the tests of the countdowns have in common. */
namespace CountCtrlTest {

/** @return the timer that a countdown ticks by. */
QTimer* timerOf(KdCountCtrl& ctrl);
/** Lets the countdown tick at once. */
void tick(KdCountCtrl& ctrl, int times = 1);

struct Look
{
    QRect ring;
    int cycleWidth = 8;
    QColor text = Qt::black;
    QColor cycle = Qt::black;
};

/** @return what the control is to look like, painted without it. */
QImage painted(const QWidget& like, const QString& number, int sixteenths, const Look& look);
/** Gives it colours in place of those of its style sheet. */
void setColors(KdCountCtrl& ctrl, const QString& text, const QString& cycle);

} // namespace CountCtrlTest
