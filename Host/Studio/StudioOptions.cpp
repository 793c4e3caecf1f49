#include <Studio/StudioOptions.h>

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

#include <array>
#include <cmath>
#include <optional>

namespace {

constexpr double kLongestTakeSeconds = 24.0 * 60.0 * 60.0;

class Reader
{
public:
    explicit Reader(const QStringList& arguments);
    StudioCommandLine read();

private:
    using Step = QString (Reader::*)();

    QString readTakes();
    QString readScreenshots();
    QString readFolder(const QString& name, QString* target) const;
    QString readFrameRate();
    QString readSkin();
    QString readLanguage();
    QString readVoiceOver();
    QString readWebcam();
    QString readSeconds(const QString& name, double* seconds) const;
    QString readRest();
    /** Without a value when the option was not given. */
    std::optional<QString> value(const QString& name) const;
    QString readOneOf(const QString& name, const QStringList& allowed, QString* target) const;

    QStringList m_arguments;
    QCommandLineParser m_parser;
    StudioOptions m_options;
};

StudioCommandLine bad(const QString& text)
{
    StudioCommandLine line;
    line.outcome = StudioCommandLine::Outcome::Bad;
    line.text = text;
    return line;
}

Reader::Reader(const QStringList& arguments) : m_arguments(arguments)
{
    m_parser.setApplicationDescription(
        QStringLiteral("A small editor that records voice-overs and webcam clips with the KdRecord "
                       "module."));
    m_parser.addHelpOption();
    const auto add = [this](const char* name, const char* description, const char* valueName = "") {
        m_parser.addOption({QString::fromLatin1(name), QString::fromLatin1(description),
                            QString::fromLatin1(valueName)});
    };
    add("takes", "Keep takes and Studio's own files in this folder.", "DIR");
    add("fps", "The project's frame rate, such as 25/1 or 24000/1001; 30/1 without this option.",
        "N/D");
    add("demo", "Without a microphone or a camera, make a virtual one in which something happens.");
    add("skin", "The colours: dark or light.", "NAME");
    add("lang", "The language: en, de or zh_CN.", "CODE");
    add("voice-over",
        "Record a voice-over of that length through the dialog, print its path and both "
        "of its JSON texts, and quit.",
        "SECONDS");
    add("screenshots", "Keep pictures of the windows at work in this folder.", "DIR");
    add("webcam", "The same with the webcam; after the voice-over, when both are asked for.",
        "SECONDS");
}

StudioCommandLine Reader::read()
{
    if (!m_parser.parse(m_arguments)) {
        return bad(m_parser.errorText() + QLatin1Char('.'));
    }
    if (m_parser.isSet(QStringLiteral("help"))) {
        return {StudioCommandLine::Outcome::ShowHelp, {}, m_parser.helpText()};
    }
    m_options.demo = m_parser.isSet(QStringLiteral("demo"));
    const std::array<Step, 8> steps{
        &Reader::readTakes,    &Reader::readScreenshots, &Reader::readFrameRate, &Reader::readSkin,
        &Reader::readLanguage, &Reader::readVoiceOver,   &Reader::readWebcam,    &Reader::readRest};
    for (const Step step : steps) {
        const QString error = (this->*step)();
        if (!error.isEmpty()) {
            return bad(error);
        }
    }
    return {StudioCommandLine::Outcome::Run, m_options, {}};
}

std::optional<QString> Reader::value(const QString& name) const
{
    return m_parser.isSet(name) ? std::optional<QString>(m_parser.value(name)) : std::nullopt;
}

QString Reader::readFolder(const QString& name, QString* target) const
{
    const std::optional<QString> folder = value(name);
    if (!folder) {
        return {};
    }
    if (folder->isEmpty()) {
        return QStringLiteral("--%1 needs the name of a folder.").arg(name);
    }
    const QFileInfo info(*folder);
    if (info.exists() && !info.isDir()) {
        return QStringLiteral("--%1: \"%2\" is not a folder.").arg(name, *folder);
    }
    *target = QDir::cleanPath(info.absoluteFilePath());
    return {};
}

QString Reader::readTakes()
{
    return readFolder(QStringLiteral("takes"), &m_options.takesFolder);
}

QString Reader::readScreenshots()
{
    return readFolder(QStringLiteral("screenshots"), &m_options.screenshots);
}

QString Reader::readFrameRate()
{
    const std::optional<QString> text = value(QStringLiteral("fps"));
    if (!text) {
        return {};
    }
    const QStringList parts = text->split(QLatin1Char('/'));
    bool numeratorOk = false;
    bool denominatorOk = parts.size() == 1;
    const qint64 numerator = parts.value(0).toLongLong(&numeratorOk);
    const qint64 denominator = parts.size() == 2 ? parts.at(1).toLongLong(&denominatorOk) : 1;
    if (parts.size() > 2 || !numeratorOk || !denominatorOk || numerator <= 0 || denominator <= 0) {
        return QStringLiteral("--fps: \"%1\" is not a frame rate; write it as 25/1 or 24000/1001.")
            .arg(*text);
    }
    m_options.frameRate = KdVBLMODEL::fromFraction(numerator, denominator);
    if (m_options.frameRate == KdVBLMODEL::KdFrameRate::Unknown) {
        return QStringLiteral(
                   "--fps: a project cannot have %1 frames per second; it can have 24000/1001, 24, "
                   "25, 30000/1001, 30, 48, 50, 60000/1001, 60 or 120.")
            .arg(*text);
    }
    return {};
}

QString Reader::readOneOf(const QString& name, const QStringList& allowed, QString* target) const
{
    const std::optional<QString> chosen = value(name);
    if (!chosen) {
        return {};
    }
    if (!allowed.contains(*chosen)) {
        return QStringLiteral("--%1: \"%2\" is none of %3.")
            .arg(name, *chosen, allowed.join(QStringLiteral(", ")));
    }
    *target = *chosen;
    return {};
}

QString Reader::readSkin()
{
    return readOneOf(QStringLiteral("skin"), {QStringLiteral("dark"), QStringLiteral("light")},
                     &m_options.skin);
}

QString Reader::readLanguage()
{
    return readOneOf(QStringLiteral("lang"),
                     {QStringLiteral("en"), QStringLiteral("de"), QStringLiteral("zh_CN")},
                     &m_options.language);
}

QString Reader::readSeconds(const QString& name, double* seconds) const
{
    const std::optional<QString> text = value(name);
    if (!text) {
        return {};
    }
    bool ok = false;
    const double number = text->toDouble(&ok);
    if (!ok || !std::isfinite(number) || number <= 0.0 || number > kLongestTakeSeconds) {
        return QStringLiteral("--%1: \"%2\" is not a length in seconds (above 0, at most %3).")
            .arg(name, *text, QString::number(static_cast<int>(kLongestTakeSeconds)));
    }
    *seconds = number;
    return {};
}

QString Reader::readVoiceOver()
{
    return readSeconds(QStringLiteral("voice-over"), &m_options.voiceOverSeconds);
}

QString Reader::readWebcam()
{
    return readSeconds(QStringLiteral("webcam"), &m_options.webcamSeconds);
}

QString Reader::readRest()
{
    const QStringList rest = m_parser.positionalArguments();
    return rest.isEmpty() ? QString()
                          : QStringLiteral("Studio takes no argument \"%1\".").arg(rest.first());
}

} // namespace

StudioCommandLine parseStudioCommandLine(const QStringList& arguments)
{
    return Reader(arguments).read();
}
