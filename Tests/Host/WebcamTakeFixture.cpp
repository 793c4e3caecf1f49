#include "WebcamTakeFixture.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

KdWebcamTakeFormat WebcamTakeTest::clipFormat(bool hasSound, QSize size)
{
    KdWebcamTakeFormat format;
    format.size = size;
    format.hasSound = hasSound;
    format.sound.samplerate = 48000;
    return format;
}

QString WebcamTakeTest::text(const QVector<double>& values)
{
    QStringList texts;
    for (const double value : values) {
        texts.append(QString::number(value));
    }
    return texts.join(QLatin1Char(' '));
}

double WebcamTakeTest::farthest(const QVector<double>& offsets)
{
    double most = 0.0;
    for (const double offset : offsets) {
        most = std::max(most, std::abs(offset));
    }
    return most;
}

int WebcamTakeTest::pixel(const QByteArray& picture, QSize size, int plane, int x, int y)
{
    const int luma = size.width() * size.height();
    const int width = plane == 0 ? size.width() : size.width() / 2;
    const int begin = plane == 0 ? 0 : luma + (plane - 1) * luma / 4;
    return static_cast<uchar>(picture[begin + y * width + x]);
}

int WebcamTakeTest::quarters(QSize size, int plane, int x, int y)
{
    static const int colours[4][3] = {{81, 90, 240}, {145, 54, 34}, {41, 240, 110}, {210, 16, 146}};
    const int scale = plane == 0 ? 1 : 2;
    const int quarter =
        (x * scale * 2 >= size.width() ? 1 : 0) + (y * scale * 2 >= size.height() ? 2 : 0);
    return colours[quarter][plane];
}

KdGstBufferPtr WebcamTakeTest::colourful(QSize size)
{
    return TestPicture::painted(
        size, [size](int plane, int x, int y) { return quarters(size, plane, x, y); });
}
