#include "CountCtrlTest.h"

#include <QPainter>
#include <QTimer>

QTimer* CountCtrlTest::timerOf(KdCountCtrl& ctrl)
{
    return ctrl.findChild<QTimer*>(QStringLiteral("KdCountCtrl_Timer"));
}

void CountCtrlTest::tick(KdCountCtrl& ctrl, int times)
{
    QTimer* const timer = timerOf(ctrl);
    for (int i = 0; i < times; ++i) {
        QMetaObject::invokeMethod(timer, "timeout");
    }
}

QImage CountCtrlTest::painted(const QWidget& like, const QString& number, int sixteenths,
                              const Look& look)
{
    const qreal ratio = like.devicePixelRatioF();
    QPixmap canvas(like.size() * ratio);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = like.font();
    font.setBold(true);
    font.setPixelSize(like.height() / 2);
    painter.setFont(font);
    painter.setPen(look.text);
    painter.drawText(look.ring, Qt::AlignHCenter | Qt::AlignVCenter, number);
    painter.setPen(QPen(look.cycle, look.cycleWidth));
    painter.drawArc(look.ring, 1440, -sixteenths);
    painter.end();
    return canvas.toImage();
}

void CountCtrlTest::setColors(KdCountCtrl& ctrl, const QString& text, const QString& cycle)
{
    // Its colours would come after ours, its ground below what is compared.
    ctrl.setStyleSheet(QString());
    ctrl.SetTextColor(text);
    ctrl.SetCycleColor(cycle);
}
