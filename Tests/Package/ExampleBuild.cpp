#include "ExampleBuild.h"

#include "Sanitizer.h"

#include <Support/Command.h>

#include <QDir>
#include <QFile>

#include <utility>

namespace {

constexpr int kTimeoutMs = 240000;

QString complaint(const Command::Result& result)
{
    return result.ok
               ? QString()
               : QString::fromLocal8Bit(result.output) + QString::fromLocal8Bit(result.errors);
}

} // namespace

ExampleBuild::ExampleBuild(QString example, QString place)
    : m_example(std::move(example)), m_place(std::move(place))
{
}

QString ExampleBuild::run()
{
    if (!copySources()) {
        return QStringLiteral("the sources of %1 could not be copied").arg(m_example);
    }
    const QString build = m_place + QLatin1String("/build");
    QString configured = complaint(
        Command::run(QStringLiteral(KD_CMAKE),
                     {QStringLiteral("-S"), m_place + QLatin1String("/source"),
                      QStringLiteral("-B"), build, QStringLiteral("-G"), QStringLiteral("Ninja"),
                      QStringLiteral("-DCMAKE_PREFIX_PATH=" KD_PACKAGE_PREFIX),
                      QStringLiteral("-DCMAKE_CXX_COMPILER=" KD_CXX),
                      QStringLiteral("-DCMAKE_CXX_FLAGS=") + Sanitizer::compilerFlag()},
                     kTimeoutMs));
    if (!configured.isEmpty()) {
        return configured;
    }
    return complaint(
        Command::run(QStringLiteral(KD_CMAKE), {QStringLiteral("--build"), build}, kTimeoutMs));
}

bool ExampleBuild::copySources() const
{
    const QDir from(QStringLiteral(KDRECORD_SOURCE_DIR "/examples/") + m_example);
    const QDir to(m_place + QLatin1String("/source"));
    const QStringList files = from.entryList(QDir::Files);
    return to.mkpath(QStringLiteral(".")) && !files.isEmpty() &&
           std::all_of(files.begin(), files.end(), [&](const QString& file) {
               return QFile::copy(from.filePath(file), to.filePath(file));
           });
}
