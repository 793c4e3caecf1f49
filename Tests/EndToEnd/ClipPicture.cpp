#include "ClipPicture.h"

#include <Support/Command.h>

#include <QColor>
#include <QRect>

#include <cstdlib>

namespace ClipPicture {

QImage at(const QString& path, double second)
{
    const Command::Result result = Command::run(
        QStringLiteral("ffmpeg"),
        {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
         QStringLiteral("-ss"), QString::number(second, 'f', 3), QStringLiteral("-frames:v"),
         QStringLiteral("1"), QStringLiteral("-f"), QStringLiteral("image2pipe"),
         QStringLiteral("-c:v"), QStringLiteral("png"), QStringLiteral("-")});
    return QImage::fromData(result.output, "PNG").convertToFormat(QImage::Format_RGB32);
}

bool isRed(const QColor& color)
{
    return color.red() > 150 && color.green() < 90 && color.blue() < 90;
}

bool isGreen(const QColor& color)
{
    return color.green() > 140 && color.red() < 90 && color.blue() < 90;
}

bool isBlue(const QColor& color)
{
    return color.blue() > 150 && color.red() < 90 && color.green() < 90;
}

bool isBlack(const QColor& color)
{
    return color.red() < 24 && color.green() < 24 && color.blue() < 24;
}

int squareAt(const QImage& picture)
{
    const int row = picture.height() - qMax(2, picture.height() / 16);
    for (int x = 0; x < picture.width(); ++x) {
        const QColor color = picture.pixelColor(x, row);
        if (color.red() > 200 && color.green() > 200 && color.blue() > 200) {
            return x;
        }
    }
    return -1;
}

double difference(const QImage& one, const QImage& other)
{
    const QSize size = one.size().boundedTo(other.size());
    const QImage left = one.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage right = other.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double sum = 0.0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QColor a = left.pixelColor(x, y);
            const QColor b = right.pixelColor(x, y);
            sum += std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
                   std::abs(a.blue() - b.blue());
        }
    }
    return sum / (3.0 * size.width() * size.height());
}

} // namespace ClipPicture
