#include "Support/KdTestCase.h"
#include "Support/TestFiles.h"

#include <Studio/StudioImporter.h>
#include <Studio/StudioSpeech.h>
#include <Studio/StudioTakeAnalyser.h>
#include <Studio/StudioTakeLibrary.h>

#include <QSignalSpy>

#include <memory>

/** A library, an analyser and an importer as the window has them. */
struct ImportDesk
{
    explicit ImportDesk(const QString& folder) { library.open(folder); }

    StudioTakeLibrary library;
    StudioTakeAnalyser analyser;
    StudioImporter importer{&library, &analyser};
    QSignalSpy imported{&importer, &StudioImporter::imported};
    QSignalSpy failed{&importer, &StudioImporter::failed};
    QSignalSpy skipped{&importer, &StudioImporter::skipped};
};

class tst_StudioImporter : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void goodFileIsListedWithItsRealLength();
    void emptyPathIsSkipped();
    void fileThatIsNotThereIsNotListed();
    void fileThatIsNoSoundIsNotListed();
    void listedFilesAreCheckedAtTheNextStart();
    void fileCorruptedBehindTheBackIsUnreadable();
    void endOfTheProgramLosesNothing();

private:
    QString folder() const { return temporaryPath(QStringLiteral("takes")); }
    QString makeSound(const QString& name) const
    {
        QString path = folder() + QLatin1Char('/') + name;
        TestFiles::write(path, StudioSpeech::synthesise(1.0));
        return path;
    }
    static QString report()
    {
        return QStringLiteral("{\"device_name\": \"Mic\", \"file_duration\": 9}");
    }
};

void tst_StudioImporter::goodFileIsListedWithItsRealLength()
{
    ImportDesk desk(folder());
    const QString path = makeSound(QStringLiteral("a.wav"));
    desk.importer.import(path, report(), QStringLiteral("{}"));
    QCOMPARE(desk.library.count(), 0);
    QTRY_COMPARE(desk.imported.count(), 1);
    QCOMPARE(desk.library.count(), 1);
    const StudioTake& take = desk.library.takes().first();
    QCOMPARE(take.path, path);
    QCOMPARE(take.durationMs, 1000);
    QCOMPARE(take.deviceName, QStringLiteral("Mic"));
    QVERIFY(take.state == StudioTake::State::Good);
}

void tst_StudioImporter::emptyPathIsSkipped()
{
    ImportDesk desk(folder());
    desk.importer.import(QString(), report(), QString());
    QCOMPARE(desk.skipped.count(), 1);
    QVERIFY(!desk.analyser.isBusy());
    QCOMPARE(desk.library.count(), 0);
}

void tst_StudioImporter::fileThatIsNotThereIsNotListed()
{
    ImportDesk desk(folder());
    desk.importer.import(folder() + QStringLiteral("/gone.m4a"), report(), QString());
    QTRY_COMPARE(desk.failed.count(), 1);
    QCOMPARE(desk.failed.at(0).at(1).toString(), QStringLiteral("There is no such file."));
    QCOMPARE(desk.library.count(), 0);
}

void tst_StudioImporter::fileThatIsNoSoundIsNotListed()
{
    ImportDesk desk(folder());
    TestFiles::write(folder() + QStringLiteral("/a.m4a"), QByteArray(5000, 'x'));
    desk.importer.import(folder() + QStringLiteral("/a.m4a"), report(), QString());
    QTRY_COMPARE(desk.failed.count(), 1);
    QCOMPARE(desk.library.count(), 0);
}

void tst_StudioImporter::listedFilesAreCheckedAtTheNextStart()
{
    {
        ImportDesk desk(folder());
        desk.importer.import(makeSound(QStringLiteral("a.wav")), report(), QString());
        QTRY_COMPARE(desk.imported.count(), 1);
    }
    StudioTakeLibrary library;
    StudioTakeAnalyser analyser;
    StudioImporter importer(&library, &analyser);
    QSignalSpy imported(&importer, &StudioImporter::imported);
    library.open(folder());
    QTRY_VERIFY(library.takes().first().state == StudioTake::State::Good);
    QVERIFY(imported.isEmpty());
}

void tst_StudioImporter::fileCorruptedBehindTheBackIsUnreadable()
{
    const QString path = makeSound(QStringLiteral("a.wav"));
    {
        ImportDesk desk(folder());
        desk.importer.import(path, report(), QString());
        QTRY_COMPARE(desk.imported.count(), 1);
    }
    TestFiles::write(path, QByteArray(3000, '\x7f'));
    StudioTakeLibrary library;
    StudioTakeAnalyser analyser;
    StudioImporter importer(&library, &analyser);
    library.open(folder());
    QTRY_VERIFY(library.takes().first().state == StudioTake::State::Unreadable);
    QVERIFY(!library.takes().first().problem.isEmpty());
}

void tst_StudioImporter::endOfTheProgramLosesNothing()
{
    const QString path = makeSound(QStringLiteral("a.wav"));
    {
        ImportDesk desk(folder());
        desk.importer.import(path, report(), QString());
        desk.importer.import(folder() + QStringLiteral("/never.m4a"), report(), QString());
        desk.importer.flush();
        QCOMPARE(desk.library.count(), 1);
    }
    ImportDesk restarted(folder());
    QCOMPARE(restarted.library.count(), 1);
    QCOMPARE(restarted.library.takes().first().path, path);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioImporter>(argc, argv);
}

#include "tst_StudioImporter.moc"
