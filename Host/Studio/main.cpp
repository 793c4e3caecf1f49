#include <Studio/StudioApplication.h>
#include <Studio/StudioDisplay.h>
#include <Studio/StudioOptions.h>

#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kUsageError = 2;

QStringList argumentList(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
    }
    return arguments;
}

StudioCommandLine readCommandLine(int argc, char** argv)
{
    // Qt's help names the program, and asks the application for it.
    const QCoreApplication application(argc, argv);
    return parseStudioCommandLine(argumentList(argc, argv));
}

int complain(const QString& text, int status)
{
    std::fprintf(stderr, "studio: %s\n", qPrintable(text));
    return status;
}

std::unique_ptr<QApplication> makeApplication(int& argc, char** argv)
{
    const StudioDisplay::FailureGuard guard(EXIT_FAILURE);
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // Without this 150 % would be rounded to 200 %.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    return std::make_unique<QApplication>(argc, argv);
}

} // namespace

int main(int argc, char** argv)
{
    const StudioCommandLine line = readCommandLine(argc, argv);
    if (line.outcome == StudioCommandLine::Outcome::Bad) {
        return complain(line.text + QStringLiteral(" See studio --help."), kUsageError);
    }
    if (line.outcome == StudioCommandLine::Outcome::ShowHelp) {
        std::printf("%s", qPrintable(line.text));
        return EXIT_SUCCESS;
    }
    const QString missing = StudioDisplay::missingText(QProcessEnvironment::systemEnvironment());
    if (!missing.isEmpty()) {
        return complain(missing, EXIT_FAILURE);
    }
    const std::unique_ptr<QApplication> application = makeApplication(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Studio"));
    StudioApplication studio(line.options);
    return studio.run();
}
