#include "Support/KdTestCase.h"
#include "Support/TestClip.h"
#include "Support/TestFiles.h"

#include <Studio/StudioPictureReader.h>
#include <Studio/StudioSpeech.h>
#include <Studio/StudioWorkGate.h>

class tst_StudioPictureReader : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void pictureOfTheAskedPlaceIsRead_data();
    void pictureOfTheAskedPlaceIsRead();
    void pictureIsMadeSmallerNeverLarger_data();
    void pictureIsMadeSmallerNeverLarger();
    void whatHasNoPictureGivesNone_data();
    void whatHasNoPictureGivesNone();
    void cancelledGateEndsIt();

private:
    QString makeClip(const QSize& size = QSize(320, 180), bool sound = true) const
    {
        QString path = temporaryPath(QStringLiteral("a %1.mp4"));
        TestClip::write(path, {{Qt::red, 1.0}, {Qt::blue, 1.0}}, sound, size);
        return path;
    }

    StudioWorkGate m_gate;
};

void tst_StudioPictureReader::pictureOfTheAskedPlaceIsRead_data()
{
    QTest::addColumn<qint64>("place");
    QTest::addColumn<QColor>("color");
    QTest::newRow("beginning") << qint64(0) << QColor(Qt::red);
    QTest::newRow("before the beginning") << qint64(-5) << QColor(Qt::red);
    QTest::newRow("second half") << qint64(1700) << QColor(Qt::blue);
}

void tst_StudioPictureReader::pictureOfTheAskedPlaceIsRead()
{
    QFETCH(qint64, place);
    QFETCH(QColor, color);
    const QImage picture = readPicture(makeClip(), place, QSize(640, 360), m_gate);
    QCOMPARE(picture.size(), QSize(320, 180));
    QVERIFY2(TestClip::isLike(picture.pixelColor(160, 90), color),
             qPrintable(picture.pixelColor(160, 90).name()));
}

void tst_StudioPictureReader::pictureIsMadeSmallerNeverLarger_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("read");
    QTest::newRow("smaller stays") << QSize(160, 120) << QSize(160, 120);
    QTest::newRow("wide") << QSize(1280, 720) << QSize(256, 144);
    QTest::newRow("tall") << QSize(360, 640) << QSize(81, 144);
    QTest::newRow("rows with padding") << QSize(322, 242) << QSize(191, 144);
}

void tst_StudioPictureReader::pictureIsMadeSmallerNeverLarger()
{
    QFETCH(QSize, size);
    QFETCH(QSize, read);
    const QImage picture = readPicture(makeClip(size, false), 0, QSize(256, 144), m_gate);
    QCOMPARE(picture.size(), read);
    QVERIFY(TestClip::isLike(picture.pixelColor(picture.width() - 2, picture.height() - 2),
                             QColor(Qt::red)));
}

void tst_StudioPictureReader::whatHasNoPictureGivesNone_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("sound") << StudioSpeech::synthesise(0.5);
    QTest::newRow("text") << QByteArray("no clip ").repeated(500);
    QTest::newRow("empty") << QByteArray("");
}

void tst_StudioPictureReader::whatHasNoPictureGivesNone()
{
    QFETCH(QByteArray, content);
    const QString path = temporaryPath(QStringLiteral("a.mp4"));
    TestFiles::write(path, content);
    QVERIFY(readPicture(path, 0, QSize(640, 360), m_gate).isNull());
    QVERIFY(readPicture(path, 1000, QSize(640, 360), m_gate).isNull());
    QVERIFY(readPicture(temporaryPath(QStringLiteral("none")), 0, QSize(9, 9), m_gate).isNull());
}

void tst_StudioPictureReader::cancelledGateEndsIt()
{
    StudioWorkGate gate;
    gate.cancel();
    QVERIFY(readPicture(makeClip(), 0, QSize(640, 360), gate).isNull());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioPictureReader>(argc, argv);
}

#include "tst_StudioPictureReader.moc"
