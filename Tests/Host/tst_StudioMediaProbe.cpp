#include "Support/FileFaults.h"
#include "Support/KdTestCase.h"
#include "Support/TestClip.h"
#include "Support/TestFiles.h"

#include <Studio/StudioMediaProbe.h>
#include <Studio/StudioSpeech.h>

class tst_StudioMediaProbe : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void soundFileIsDescribed();
    void clipIsDescribed_data();
    void clipIsDescribed();
    void oddNamesAreNoObstacle_data();
    void oddNamesAreNoObstacle();
    void whatIsNoSoundFileIsUnreadable_data();
    void whatIsNoSoundFileIsUnreadable();
    void missingFileIsUnreadable();
    void folderIsUnreadable();
    void forbiddenFileIsUnreadable();
};

void tst_StudioMediaProbe::soundFileIsDescribed()
{
    const QString path = temporaryPath(QStringLiteral("a.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(1.5));
    const StudioMediaInfo info = probeMedia(path);
    QVERIFY2(info.readable, qPrintable(info.problem));
    QCOMPARE(info.problem, QString());
    QCOMPARE(info.durationMs, 1500);
    QCOMPARE(info.channels, 1);
    QCOMPARE(info.sampleRate, 24000);
    QVERIFY(!info.picture.isValid());
}

void tst_StudioMediaProbe::clipIsDescribed_data()
{
    QTest::addColumn<bool>("sound");
    QTest::newRow("with sound") << true;
    QTest::newRow("without sound") << false;
}

void tst_StudioMediaProbe::clipIsDescribed()
{
    QFETCH(bool, sound);
    const QString path = temporaryPath(QStringLiteral("a.mp4"));
    TestClip::write(path, {{Qt::red, 1.0}}, sound);
    const StudioMediaInfo info = probeMedia(path);
    QVERIFY2(info.readable, qPrintable(info.problem));
    QCOMPARE(info.picture, QSize(320, 180));
    QCOMPARE(info.channels > 0, sound);
    QVERIFY(info.durationMs >= 1000 && info.durationMs < 1100);
}

void tst_StudioMediaProbe::oddNamesAreNoObstacle_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << QStringLiteral("a b  c.wav");
    QTest::newRow("percent") << QStringLiteral("100%1 %20.wav");
    QTest::newRow("hash and question") << QStringLiteral("take#1?.wav");
    QTest::newRow("quotes and exclamation") << QStringLiteral("\"a ! fakesink\".wav");
    QTest::newRow("other letters") << QString::fromUtf8("\u58f0\u97f3 \u05d0\u05d1 \u00e4.wav");
    QTest::newRow("as long as can be") << QString(251, QLatin1Char('x')) + QStringLiteral(".wav");
}

void tst_StudioMediaProbe::oddNamesAreNoObstacle()
{
    QFETCH(QString, name);
    const QString path = temporaryPath(name);
    TestFiles::write(path, StudioSpeech::synthesise(1.0));
    const StudioMediaInfo info = probeMedia(path);
    QVERIFY2(info.readable, qPrintable(info.problem));
    QCOMPARE(info.durationMs, 1000);
}

void tst_StudioMediaProbe::whatIsNoSoundFileIsUnreadable_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text") << QByteArray("This is not a sound.\n").repeated(100);
    QTest::newRow("zeroes") << QByteArray(100000, '\0');
    QTest::newRow("a beginning only") << StudioSpeech::synthesise(1.0).left(20);
    QTest::newRow("a movie's first box") << QByteArray("\0\0\0\x18"
                                                       "ftypM4A \0\0\0\0M4A mp42",
                                                       24);
}

void tst_StudioMediaProbe::whatIsNoSoundFileIsUnreadable()
{
    QFETCH(QByteArray, content);
    const QString path = temporaryPath(QStringLiteral("a.m4a"));
    TestFiles::write(path, content);
    const StudioMediaInfo info = probeMedia(path);
    QVERIFY(!info.readable);
    QVERIFY(!info.problem.isEmpty());
    QCOMPARE(info.durationMs, 0);
}

void tst_StudioMediaProbe::missingFileIsUnreadable()
{
    const StudioMediaInfo info = probeMedia(temporaryPath(QStringLiteral("nothing.m4a")));
    QVERIFY(!info.readable);
    QCOMPARE(info.problem, QStringLiteral("There is no such file."));
    QVERIFY(!probeMedia(QString()).readable);
}

void tst_StudioMediaProbe::folderIsUnreadable()
{
    QVERIFY(!probeMedia(temporaryPath(QString())).readable);
}

void tst_StudioMediaProbe::forbiddenFileIsUnreadable()
{
    const QString path = temporaryPath(QStringLiteral("a.wav"));
    TestFiles::write(path, StudioSpeech::synthesise(1.0));
    QVERIFY(QFile::setPermissions(path, QFile::Permissions()));
    const FileFaults::WithoutPrivileges nobody;
    QVERIFY(!probeMedia(path).readable);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioMediaProbe>(argc, argv);
}

#include "tst_StudioMediaProbe.moc"
