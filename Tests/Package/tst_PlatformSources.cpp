#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

QStringList libraries()
{
    return {QStringLiteral("Src/KdRecord"),    QStringLiteral("Host/KdCore"),
            QStringLiteral("Host/KCore"),      QStringLiteral("Host/KdAppSettings"),
            QStringLiteral("Host/KdWidgets"),  QStringLiteral("Host/KdZentraCore"),
            QStringLiteral("Host/KdVBLModel"), QStringLiteral("Host/KdEngineContractTests")};
}

QDir folderOf(const QString& library)
{
    return QDir(QStringLiteral(KDRECORD_SOURCE_DIR "/") + library);
}

bool isForOnePlatform(const QString& file)
{
    static const QRegularExpression name(QStringLiteral("_(win|other|pulse|x11)\\.cpp$"));
    return file.contains(name);
}

/** A system asked for by name, a header that not every system has, or a folder of one. */
const QRegularExpression& platformWords()
{
    static const QRegularExpression words(QStringLiteral(
        "\\b(Q_OS_\\w+|Q_CC_\\w+|_WIN32|_MSC_VER|__MINGW\\w*|__linux__|__unix__|__APPLE__|\\w+_X11|"
        "QX11Info)\\b|\"/(usr|etc|opt|proc|var|dev)/|"
        "#\\s*include\\s*<((sys|linux|netinet|arpa|pulse|X11)/[^>]*|"
        "(unistd|fcntl|dirent|pwd|grp|poll|pthread|sched|semaphore|signal|spawn|syslog|termios|"
        "dlfcn|io|direct|process|windows)\\.h|csignal)>"));
    return words;
}

} // namespace

/** Where the differences between systems stand. */
class tst_PlatformSources : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void onlyFilesForOnePlatformKnowPlatforms_data() { addLibraries(); }

    void onlyFilesForOnePlatformKnowPlatforms()
    {
        QFETCH(QString, library);
        const QDir folder = folderOf(library);
        const QStringList files =
            folder.entryList({QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files);
        QVERIFY(!files.isEmpty());
        QStringList strangers;
        for (const QString& file : files) {
            const QString text = QString::fromUtf8(TestFiles::read(folder.filePath(file)));
            const QString word = platformWords().match(text).captured();
            if (!isForOnePlatform(file) && !word.isEmpty()) {
                strangers.append(file + QLatin1String(": ") + word);
            }
        }
        QCOMPARE(strangers, QStringList());
    }

    void whatIsForWindowsAloneHasItsLikeForTheOthers_data() { addLibraries(); }

    void whatIsForWindowsAloneHasItsLikeForTheOthers()
    {
        QFETCH(QString, library);
        const QDir folder = folderOf(library);
        QCOMPARE(stems(folder, QStringLiteral("_win.cpp")),
                 stems(folder, QStringLiteral("_other.cpp")));
    }

    void theModuleHasNoFileForOnePlatform()
    {
        const QStringList files = folderOf(QStringLiteral("Src/KdRecord")).entryList(QDir::Files);
        QVERIFY(std::none_of(files.begin(), files.end(), isForOnePlatform));
    }

    // That the test looks.
    void aPlatformsWordIsFound_data()
    {
        QTest::addColumn<QString>("line");
        for (const char* line :
             {"#if defined(Q_OS_WIN)", "#ifdef _WIN32", "#include <unistd.h>",
              "#  include <sys/stat.h>", "#include <csignal>", "#ifdef KDWIDGETS_X11",
              "QX11Info::isPlatformX11()", "QStringLiteral(\"/usr/share\")"}) {
            QTest::newRow(line) << QString::fromLatin1(line);
        }
    }

    void aPlatformsWordIsFound()
    {
        QFETCH(QString, line);
        QVERIFY(platformWords().match(line).hasMatch());
    }

private:
    static void addLibraries()
    {
        QTest::addColumn<QString>("library");
        const QStringList all = libraries();
        for (const QString& library : all) {
            QTest::newRow(qUtf8Printable(library)) << library;
        }
    }

    static QStringList stems(const QDir& folder, const QString& ending)
    {
        QStringList names = folder.entryList({QLatin1Char('*') + ending}, QDir::Files);
        for (QString& name : names) {
            name.chop(ending.size());
        }
        return names;
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_PlatformSources>(argc, argv);
}

#include "tst_PlatformSources.moc"
