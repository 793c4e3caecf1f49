#include "PersonPicture.h"

#include "DrawnPerson.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct Spot
{
    double x; ///< as a share of the width
    double y; ///< as a share of the height
    QRgb colour;
};

// A cheek, the neck, and the shirt.
constexpr std::array kPerson{Spot{0.47, 0.43, 0xffdcaa8c}, Spot{0.5, 0.63, 0xffdcaa8c},
                             Spot{0.5, 0.9, 0xffaa283c}};
constexpr std::array kRoom{Spot{0.08, 0.1, 0}, Spot{0.92, 0.1, 0},  Spot{0.08, 0.5, 0},
                           Spot{0.92, 0.5, 0}, Spot{0.25, 0.25, 0}, Spot{0.75, 0.25, 0}};
constexpr int kMostApart = 40;
constexpr int kDarkest = 24;

QColor colourAt(const QImage& picture, const Spot& spot)
{
    return picture.pixelColor(static_cast<int>(spot.x * picture.width()),
                              static_cast<int>(spot.y * picture.height()));
}

bool isLike(const QColor& colour, QRgb wanted)
{
    return colour.alpha() > 240 && std::abs(colour.red() - qRed(wanted)) < kMostApart &&
           std::abs(colour.green() - qGreen(wanted)) < kMostApart &&
           std::abs(colour.blue() - qBlue(wanted)) < kMostApart;
}

bool isDark(const QColor& colour)
{
    return std::max({colour.red(), colour.green(), colour.blue()}) < kDarkest;
}

} // namespace

bool PersonPicture::write(const QString& path, QSize size)
{
    const cv::Mat frame = DrawnPerson({size.width(), size.height()}).frame();
    return QImage(frame.data, frame.cols, frame.rows, static_cast<int>(frame.step),
                  QImage::Format_RGB32)
        .save(path);
}

bool PersonPicture::showsPerson(const QImage& picture)
{
    return !picture.isNull() &&
           std::all_of(kPerson.begin(), kPerson.end(), [&picture](const Spot& spot) {
               return isLike(colourAt(picture, spot), spot.colour);
           });
}

bool PersonPicture::isAlone(const QImage& picture)
{
    return !picture.isNull() &&
           std::all_of(kRoom.begin(), kRoom.end(),
                       [&picture](const Spot& spot) { return isDark(colourAt(picture, spot)); });
}

QString PersonPicture::describe(const QImage& picture)
{
    QStringList colours;
    for (const Spot& spot : kPerson) {
        colours.append(colourAt(picture, spot).name(QColor::HexArgb));
    }
    colours.append(QStringLiteral("beside"));
    for (const Spot& spot : kRoom) {
        colours.append(colourAt(picture, spot).name(QColor::HexArgb));
    }
    return colours.join(QLatin1Char(' '));
}
