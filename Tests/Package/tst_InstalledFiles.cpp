#include <Support/Command.h>
#include <Support/KdTestCase.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace {

constexpr char kHeaders[] = KD_PACKAGE_PREFIX "/include/kdrecord-1";

QStringList filesBelow(const QString& folder)
{
    QStringList files;
    QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        files.append(QDir(folder).relativeFilePath(it.next()));
    }
    files.sort();
    return files;
}

QString textOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList libraries()
{
    return {QStringLiteral("KCore"),       QStringLiteral("KdAppSettings"),
            QStringLiteral("KdCore"),      QStringLiteral("KdRecord"),
            QStringLiteral("KdVBLModel"),  QStringLiteral("KdWidgets"),
            QStringLiteral("KdZentraCore")};
}

} // namespace

/** What a host's engineer finds after the installation. */
class tst_InstalledFiles : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void theHeadersIncludeOnlyWhatIsInstalledToo()
    {
        const QString folder = QLatin1String(kHeaders);
        const QStringList files = filesBelow(folder);
        QVERIFY(files.contains(QStringLiteral("KdRecord/KdAudioRecordView.h")));
        QVERIFY(files.contains(QStringLiteral("KdRecord/KdCaptureEngine.h")));
        static const QRegularExpression include(
            QStringLiteral("#include (?:<((?:Kd\\w*|KCore)/[^>]+)>|\"([^\"]+)\")"));
        for (const QString& file : files) {
            QRegularExpressionMatchIterator it =
                include.globalMatch(textOf(folder + QLatin1Char('/') + file));
            while (it.hasNext()) {
                const QRegularExpressionMatch match = it.next();
                const QString wanted = match.captured(1).isEmpty()
                                           ? file.section(QLatin1Char('/'), 0, 0) +
                                                 QLatin1Char('/') + match.captured(2)
                                           : match.captured(1);
                QVERIFY2(files.contains(wanted),
                         qUtf8Printable(file + QLatin1String(" includes ") + wanted));
            }
        }
    }

    void theHeadersOfTheInsideStayAtHome_data()
    {
        QTest::addColumn<QString>("header");
        for (const char* header :
             {"KdRecord/KdAudioRecordPanel.h", "KdRecord/KRecordSettingParam.h",
              "KdVBLModel/KdAudioRecorder.h", "KdWidgets/KdWindowShape.h"}) {
            QTest::newRow(header) << QString::fromLatin1(header);
        }
    }

    void theHeadersOfTheInsideStayAtHome()
    {
        QFETCH(QString, header);
        const bool inSources =
            QFile::exists(QStringLiteral(KDRECORD_SOURCE_DIR "/Src/") + header) ||
            QFile::exists(QStringLiteral(KDRECORD_SOURCE_DIR "/Host/") + header);
        QVERIFY(inSources);
        QVERIFY(!filesBelow(QLatin1String(kHeaders)).contains(header));
    }

    void nothingIsInstalledBesideHeadersLibrariesAndDescriptions()
    {
        static const QRegularExpression expected(
            QStringLiteral("^(include/kdrecord-1/(KCore|Kd\\w+)/\\w+\\.h|" KD_PACKAGE_LIBDIR
                           "/(lib(%1)\\.so(\\.1(\\.0\\.0)?)?|lib(%2)\\.a|pkgconfig/\\w+\\.pc|"
                           "cmake/KdRecord/KdRecord[\\w-]*\\.cmake))$")
                .arg(libraries().join(QLatin1Char('|')), archives().join(QLatin1Char('|'))));
        const QStringList files = filesBelow(QStringLiteral(KD_PACKAGE_PREFIX));
        QStringList strangers;
        std::copy_if(files.begin(), files.end(), std::back_inserter(strangers),
                     [](const QString& file) { return !expected.match(file).hasMatch(); });
        QCOMPARE(strangers, QStringList());
    }

    void noInstalledFileNamesTheBuildTree()
    {
        const QStringList files = filesBelow(QStringLiteral(KD_PACKAGE_PREFIX));
        for (const QString& file : files) {
            if (!file.endsWith(QLatin1String(".cmake")) && !file.endsWith(QLatin1String(".pc"))) {
                continue;
            }
            const QString text = textOf(QStringLiteral(KD_PACKAGE_PREFIX "/") + file);
            QVERIFY2(!text.contains(QStringLiteral(KDRECORD_SOURCE_DIR)), qUtf8Printable(file));
        }
    }

    void pkgConfigTellsHowToLinkEachLibrary_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<bool>("isLinked");
        const QStringList linked = libraries() + archives();
        for (const QString& library : linked) {
            QTest::newRow(qUtf8Printable(library)) << library << true;
        }
        QTest::newRow("the contract, a header") << QStringLiteral("KdCaptureEngine") << false;
    }

    void pkgConfigKnowsNothingElse()
    {
        const QDir folder(QStringLiteral(KD_PACKAGE_PREFIX "/" KD_PACKAGE_LIBDIR "/pkgconfig"));
        QCOMPARE(folder.entryList(QDir::Files).size(), libraries().size() + archives().size() + 1);
    }

    void pkgConfigTellsHowToLinkEachLibrary()
    {
        QFETCH(QString, library);
        QFETCH(bool, isLinked);
        qputenv("PKG_CONFIG_PATH", KD_PACKAGE_PREFIX "/" KD_PACKAGE_LIBDIR "/pkgconfig");
        const Command::Result result =
            Command::run(QStringLiteral("pkg-config"),
                         {QStringLiteral("--cflags"), QStringLiteral("--libs"), library});
        QVERIFY2(result.ok, result.errors.constData());
        const QString flags = QString::fromUtf8(result.output);
        QCOMPARE(flags.contains(QRegularExpression(QStringLiteral("-l%1\\b").arg(library))),
                 isLinked);
        static const QRegularExpression folder(QStringLiteral("-I(\\S+/kdrecord-1)"));
        QCOMPARE(QDir(folder.match(flags).captured(1)).canonicalPath(),
                 QDir(QLatin1String(kHeaders)).canonicalPath());
    }

private:
    static QStringList archives()
    {
        return {QStringLiteral("KdVBLModelBase"), QStringLiteral("KdEngineContractTests")};
    }
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_InstalledFiles>(argc, argv);
}

#include "tst_InstalledFiles.moc"
