#include "TakeMaker.h"

#include <KdVBLModel/KdTakeCheck.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <gst/gst.h>

class tst_KdTakeCheck : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { gst_init(nullptr, nullptr); }
    void framesOfBothTracksAreCounted();
    void fileThatCannotBeReadIsSaidToBeSo_data();
    void fileThatCannotBeReadIsSaidToBeSo();
};

void tst_KdTakeCheck::framesOfBothTracksAreCounted()
{
    TakeMaker::Take take;
    take.path = temporaryPath(QStringLiteral("take.mp4"));
    take.hasVideo = true;
    take.seconds = 2;
    QCOMPARE(TakeMaker::write(take), QString());
    const KdTakeContents contents = KdTakeCheck::read(take.path);
    QVERIFY2(contents.isReadable, qPrintable(contents.problem));
    QCOMPARE(contents.videoFrames, 60);
    QCOMPARE(contents.audioFrames, TakeMaker::read(take.path).audioFrames);
}

void tst_KdTakeCheck::fileThatCannotBeReadIsSaidToBeSo_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("text") << QByteArray(5000, 'x');
}

void tst_KdTakeCheck::fileThatCannotBeReadIsSaidToBeSo()
{
    QFETCH(QByteArray, content);
    const QString path = temporaryPath(QStringLiteral("take.mp4"));
    if (!content.isNull()) {
        TestFiles::write(path, content);
    }
    const KdTakeContents contents = KdTakeCheck::read(path);
    QVERIFY(!contents.isReadable);
    QVERIFY(!contents.problem.isEmpty());
    QCOMPARE(contents.audioFrames + contents.videoFrames, 0);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdTakeCheck>(argc, argv);
}

#include "tst_KdTakeCheck.moc"
