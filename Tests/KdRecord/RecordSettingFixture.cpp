#include "RecordSettingFixture.h"

#include <Support/TestFiles.h>

#include <QFile>

void RecordSettingFixture::cleanup()
{
    restart();
    KdTestCase::cleanup();
}

KRecordSettingData RecordSettingFixture::nothingBut(bool recordPreview)
{
    KRecordSettingData data;
    data.countdown = -1;
    data.recordPreview = recordPreview;
    return data;
}

KRecordSettingData RecordSettingFixture::microphone(const QString& name)
{
    KRecordSettingData data = nothingBut(true);
    data.selectedAudioDeviceName = name;
    return data;
}

KRecordSettingData RecordSettingFixture::everything()
{
    KRecordSettingData data;
    data.selectedAudioDeviceName = QStringLiteral("USB Mic");
    data.selectedCameraDeviceName = QStringLiteral("HD Cam");
    data.cameraWidth = 1280;
    data.cameraHeight = 720;
    data.frameRate = 29.97;
    data.countdown = 5;
    data.recordPreview = false;
    return data;
}

void RecordSettingFixture::compare(const KRecordSettingData& actual,
                                   const KRecordSettingData& expected)
{
    QCOMPARE(actual.selectedAudioDeviceName, expected.selectedAudioDeviceName);
    QCOMPARE(actual.selectedCameraDeviceName, expected.selectedCameraDeviceName);
    QCOMPARE(actual.cameraWidth, expected.cameraWidth);
    QCOMPARE(actual.cameraHeight, expected.cameraHeight);
    QCOMPARE(actual.frameRate, expected.frameRate);
    QCOMPARE(actual.countdown, expected.countdown);
    QCOMPARE(actual.recordPreview, expected.recordPreview);
}

QDomDocument RecordSettingFixture::file() const
{
    QDomDocument document;
    document.setContent(TestFiles::read(path()));
    return document;
}

void RecordSettingFixture::edit(const QByteArray& content, int seconds) const
{
    TestFiles::write(path(), content);
    QFile edited(path());
    QVERIFY(edited.open(QIODevice::ReadWrite));
    const QDateTime stamp = QDateTime(QDate(2024, 1, 1), QTime(12, 0)).addSecs(seconds);
    QVERIFY(edited.setFileTime(stamp, QFileDevice::FileModificationTime));
}

QByteArray RecordSettingFixture::recorderFile(const QByteArray& inner)
{
    return "<SettingDatas><RecorderData>" + inner + "</RecorderData></SettingDatas>";
}

QString RecordSettingFixture::outline(const QDomElement& element)
{
    QString inner;
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        inner += child.isElement() ? outline(child.toElement()) : child.nodeValue();
    }
    return element.tagName() + QLatin1Char('(') + inner + QLatin1Char(')');
}
