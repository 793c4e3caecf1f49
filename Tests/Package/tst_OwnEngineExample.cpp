#include "ExampleBuild.h"

#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>

namespace {

constexpr int kRunMs = 60000;
constexpr char kPresses[] = "KAudioCapture_RecorderButton 0;"
                            "KAudioCapture_RecorderButton 8000;"
                            "KPropertyPanel_Btn 0";

/** What the microphone of this test hears, behind its file's header. */
QByteArray sound()
{
    return QByteArray("these are the samples of a file ").repeated(400);
}

struct Run
{
    bool ok = false;
    QString text;
};

Run run(const QString& program, const QStringList& arguments,
        const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(program, arguments);
    const bool ended = process.waitForFinished(kRunMs);
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }
    return {ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
            QString::fromUtf8(process.readAllStandardOutput())};
}

} // namespace

/** A host that brings an engine of its own, built against the installed package and used. */
class tst_OwnEngineExample : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_place.isValid());
        m_example = std::make_unique<ExampleBuild>(QStringLiteral("own-engine"), m_place.path());
        const QString complaint = m_example->run();
        QVERIFY2(complaint.isEmpty(), qUtf8Printable(complaint));
        const QDir devices(m_place.filePath(QStringLiteral("devices")));
        TestFiles::write(devices.filePath(QStringLiteral("Reader.wav")),
                         QByteArray(44, 'h') + sound());
        QImage picture(64, 48, QImage::Format_ARGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(devices.filePath(QStringLiteral("Still.png"))));
    }

    void theContractIsEnoughForAnEngine()
    {
        const Run checked =
            run(m_example->program(QStringLiteral("check-engine")), {}, surroundings());
        QVERIFY2(checked.ok, qUtf8Printable(checked.text));
        QVERIFY(checked.text.contains(QLatin1String(" 0 failed")));
    }

    // That the tests of the contract look: without a device nothing can be recorded.
    void anEngineWithoutDevicesFailsTheContract()
    {
        QProcessEnvironment without = surroundings();
        without.remove(QStringLiteral("FILE_ENGINE_DEVICES"));
        QVERIFY(!run(m_example->program(QStringLiteral("check-engine")), {}, without).ok);
    }

    void theDialogRecordsFromTheHostsOwnEngine()
    {
        QProcessEnvironment environment = surroundings();
        environment.insert(QStringLiteral("KD_PRESS"), QLatin1String(kPresses));
        environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(KD_PLUGINS));
        environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("kdpresser"));
        const Run recorded = run(m_example->program(QStringLiteral("own-engine")), {}, environment);
        QVERIFY2(recorded.ok, qUtf8Printable(recorded.text));
        const QString start = QStringLiteral("finished ");
        QVERIFY2(recorded.text.startsWith(start), qUtf8Printable(recorded.text));
        const QString path = recorded.text.section(QLatin1Char('\n'), 0, 0).mid(start.size());
        QVERIFY(TestFiles::read(path).startsWith(sound()));
    }

private:
    QProcessEnvironment surroundings() const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), documentDir());
        environment.insert(QStringLiteral("FILE_ENGINE_DEVICES"),
                           m_place.filePath(QStringLiteral("devices")));
        return environment;
    }

    const QTemporaryDir m_place;
    std::unique_ptr<ExampleBuild> m_example;
};

int main(int argc, char** argv)
{
    return KdTest::run<tst_OwnEngineExample>(argc, argv);
}

#include "tst_OwnEngineExample.moc"
