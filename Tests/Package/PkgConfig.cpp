#include "PkgConfig.h"

#include "Sanitizer.h"

#include <Support/Command.h>

namespace {

constexpr int kTimeoutMs = 120000;

} // namespace

QStringList PkgConfig::flags(const QString& library)
{
    qputenv("PKG_CONFIG_PATH", KD_PACKAGE_PREFIX "/" KD_PACKAGE_LIBDIR "/pkgconfig");
    const Command::Result told =
        Command::run(QStringLiteral("pkg-config"),
                     {QStringLiteral("--cflags"), QStringLiteral("--libs"), library});
    return told.ok ? QString::fromUtf8(told.output)
                         .simplified()
                         .split(QLatin1Char(' '), Qt::SkipEmptyParts)
                   : QStringList();
}

QString PkgConfig::compile(const QStringList& arguments)
{
    const QStringList found = flags(QStringLiteral("KdRecord"));
    if (found.isEmpty()) {
        return QStringLiteral("pkg-config does not know KdRecord");
    }
    QStringList all{QStringLiteral("-std=c++17"), QStringLiteral("-fPIC")};
    if (!Sanitizer::compilerFlag().isEmpty()) {
        all.append(Sanitizer::compilerFlag());
    }
    const Command::Result built =
        Command::run(QStringLiteral(KD_CXX), all + arguments + found, kTimeoutMs);
    return built.ok ? QString() : QString::fromUtf8(built.output + built.errors);
}
