#include "TestClip.h"

#include "Command.h"

#include <QFileInfo>
#include <QTest>

#include <QDir>

#include <cstdlib>

namespace TestClip {

namespace {

constexpr int kColorTolerance = 24;

QStringList inputs(const QVector<Part>& parts, const QSize& size, bool sound)
{
    QStringList arguments;
    double length = 0.0;
    for (const Part& part : parts) {
        arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i")
                  << QStringLiteral("color=c=%1:s=%2x%3:r=30:d=%4")
                         .arg(part.color.name().replace(QLatin1Char('#'), QStringLiteral("0x")))
                         .arg(size.width())
                         .arg(size.height())
                         .arg(part.seconds);
        length += part.seconds;
    }
    if (sound) {
        arguments << QStringLiteral("-f") << QStringLiteral("lavfi") << QStringLiteral("-i")
                  << QStringLiteral("sine=frequency=440:sample_rate=48000:duration=%1").arg(length);
    }
    return arguments;
}

QStringList outputs(int parts, bool sound)
{
    QStringList arguments{QStringLiteral("-filter_complex"),
                          QStringLiteral("concat=n=%1:v=1[picture]").arg(parts),
                          QStringLiteral("-map"), QStringLiteral("[picture]")};
    if (sound) {
        arguments << QStringLiteral("-map") << QStringLiteral("%1:a").arg(parts)
                  << QStringLiteral("-c:a") << QStringLiteral("aac");
    }
    return arguments << QStringLiteral("-c:v") << QStringLiteral("libx264")
                     << QStringLiteral("-preset") << QStringLiteral("ultrafast")
                     << QStringLiteral("-g") << QStringLiteral("15") << QStringLiteral("-pix_fmt")
                     << QStringLiteral("yuv420p");
}

} // namespace

void write(const QString& path, const QVector<Part>& parts, bool sound, const QSize& size)
{
    QDir().mkpath(QFileInfo(path).path());
    const QStringList arguments =
        QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y")} +
        inputs(parts, size, sound) + outputs(parts.size(), sound) + QStringList(path);
    const Command::Result made = Command::run(QStringLiteral("ffmpeg"), arguments);
    QVERIFY2(made.ok, made.errors.constData());
}

bool isLike(const QColor& left, const QColor& right)
{
    return std::abs(left.red() - right.red()) <= kColorTolerance &&
           std::abs(left.green() - right.green()) <= kColorTolerance &&
           std::abs(left.blue() - right.blue()) <= kColorTolerance;
}

} // namespace TestClip
