#include "WebcamScene.h"

#include <QPainter>

namespace {

constexpr QSize kFrame(1280, 720);

void paintRoom(QPainter* painter)
{
    QLinearGradient wall(0, 0, 0, kFrame.height());
    wall.setColorAt(0, QColor(214, 205, 190));
    wall.setColorAt(1, QColor(150, 138, 122));
    painter->fillRect(QRect(QPoint(), kFrame), wall);
    painter->fillRect(QRect(90, 80, 260, 330), QColor(236, 244, 250));
    painter->fillRect(QRect(216, 80, 8, 330), QColor(150, 138, 122));
    painter->fillRect(QRect(930, 150, 250, 14), QColor(110, 84, 60));
    const QVector<QColor> books{QColor(180, 60, 50), QColor(60, 110, 150), QColor(220, 170, 70)};
    for (int i = 0; i < 9; ++i) {
        painter->fillRect(QRect(940 + i * 25, 80 + i % 3 * 9, 20, 70 - i % 3 * 9), books.at(i % 3));
    }
}

void paintPerson(QPainter* painter)
{
    painter->setBrush(QColor(52, 86, 120));
    painter->drawRoundedRect(QRect(400, 500, 480, 400), 150, 150);
    painter->setBrush(QColor(222, 178, 150));
    painter->drawRect(QRect(590, 420, 100, 110));
    painter->drawEllipse(QPoint(640, 320), 130, 165);
    painter->setBrush(QColor(70, 48, 36));
    painter->drawChord(QRect(505, 140, 270, 280), 5 * 16, 170 * 16);
    painter->drawEllipse(QPoint(590, 320), 11, 14);
    painter->drawEllipse(QPoint(690, 320), 11, 14);
    painter->setPen(QPen(QColor(150, 80, 70), 9, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(QRect(590, 350, 100, 70), 200 * 16, 140 * 16);
}

} // namespace

QImage WebcamScene::frame(bool hasBackground)
{
    QImage frame(kFrame, QImage::Format_ARGB32);
    frame.fill(Qt::transparent);
    QPainter painter(&frame);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    if (hasBackground) {
        paintRoom(&painter);
    }
    paintPerson(&painter);
    return frame;
}
