#include "RecordSettingFixture.h"

#include <QFile>

/** What the store makes of a file, and when it reads it. */
class tst_KRecordSettingParamReading : public RecordSettingFixture
{
    Q_OBJECT

private Q_SLOTS:
    void frameRateCountsOnlyWithACameraName_data();
    void frameRateCountsOnlyWithACameraName();
    void countdownIsReadAsANumber_data();
    void countdownIsReadAsANumber();
    void previewIsOnOnlyForExactlyTrue_data();
    void previewIsOnOnlyForExactlyTrue();
    void sizeIsReadOnlyWhole_data();
    void sizeIsReadOnlyWhole();
    void valuesAreFoundAtAnyDepth_data();
    void valuesAreFoundAtAnyDepth();
    void recorderDataMustBeADirectChild();
    void fileIsDecodedAsUtf8WhateverItDeclares();

    void editedFileIsReadAgain();
    void olderFileIsReadAgainToo();
    void sameTimeStampIsNotReadAgain();
    void readingNeverResetsValues();
    void deletedFileKeepsValues();
};

void tst_KRecordSettingParamReading::frameRateCountsOnlyWithACameraName_data()
{
    QTest::addColumn<QByteArray>("camera");
    QTest::addColumn<double>("fresh");
    QTest::addColumn<double>("afterThirty");
    const QByteArray name = "<m_sSelectedCameraDeviceName>Cam</m_sSelectedCameraDeviceName>";
    QTest::newRow("both") << name + "<FrameRate>25</FrameRate>" << 25.0 << 25.0;
    QTest::newRow("rate before name") << "<FrameRate>59.94</FrameRate>" + name << 59.94 << 59.94;
    QTest::newRow("name without rate") << name << 0.0 << 0.0;
    QTest::newRow("empty name without rate")
        << QByteArray("<m_sSelectedCameraDeviceName/>") << 0.0 << 0.0;
    QTest::newRow("rate without name") << QByteArray("<FrameRate>25</FrameRate>") << -1.0 << 30.0;
    QTest::newRow("neither") << QByteArray() << -1.0 << 30.0;
    QTest::newRow("rate that is no number") << name + "<FrameRate>fast</FrameRate>" << 0.0 << 0.0;
    QTest::newRow("rate with a comma") << name + "<FrameRate>29,97</FrameRate>" << 0.0 << 0.0;
}

void tst_KRecordSettingParamReading::frameRateCountsOnlyWithACameraName()
{
    QFETCH(QByteArray, camera);
    const QByteArray content = recorderFile("<Camera>" + camera + "</Camera>");
    edit(content, 1);
    QTEST(store()->data().frameRate, "fresh");
    restart();
    edit(recorderFile("<Camera><m_sSelectedCameraDeviceName>Old</m_sSelectedCameraDeviceName>"
                      "<FrameRate>30</FrameRate></Camera>"),
         2);
    QCOMPARE(store()->data().frameRate, 30.0);
    edit(content, 3);
    QTEST(store()->data().frameRate, "afterThirty");
}

void tst_KRecordSettingParamReading::countdownIsReadAsANumber_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("countdown");
    QTest::newRow("number") << QByteArray("7") << 7;
    QTest::newRow("negative") << QByteArray("-5") << -5;
    QTest::newRow("white space around") << QByteArray("\n 9 ") << 9;
    QTest::newRow("words") << QByteArray("three") << 0;
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("fraction") << QByteArray("2.5") << 0;
    QTest::newRow("hexadecimal") << QByteArray("0x10") << 0;
    QTest::newRow("too large") << QByteArray("99999999999") << 0;
    QTest::newRow("inner element") << QByteArray("<b>1</b>2") << 12;
}

void tst_KRecordSettingParamReading::countdownIsReadAsANumber()
{
    QFETCH(QByteArray, text);
    edit(recorderFile("<RecordScreenCountdown>" + text + "</RecordScreenCountdown>"), 1);
    QTEST(store()->data().countdown, "countdown");
}

void tst_KRecordSettingParamReading::previewIsOnOnlyForExactlyTrue_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isOn");
    QTest::newRow("true") << QByteArray("true") << true;
    QTest::newRow("true in CDATA") << QByteArray("<![CDATA[true]]>") << true;
    QTest::newRow("True") << QByteArray("True") << false;
    QTest::newRow("1") << QByteArray("1") << false;
    QTest::newRow("blank before") << QByteArray(" true") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("false") << QByteArray("false") << false;
}

void tst_KRecordSettingParamReading::previewIsOnOnlyForExactlyTrue()
{
    QFETCH(QByteArray, text);
    edit(recorderFile("<WebRecordRecordPreview>" + text + "</WebRecordRecordPreview>"), 1);
    QTEST(store()->data().recordPreview, "isOn");
}

void tst_KRecordSettingParamReading::sizeIsReadOnlyWhole_data()
{
    QTest::addColumn<QByteArray>("camera");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    const QByteArray width = "<CameraResoulutionW>640</CameraResoulutionW>";
    const QByteArray height = "<CameraResoulutionH>480</CameraResoulutionH>";
    QTest::newRow("both") << width + height << 640 << 480;
    QTest::newRow("width alone") << width << -1 << -1;
    QTest::newRow("height alone") << height << -1 << -1;
    QTest::newRow("no numbers")
        << QByteArray("<CameraResoulutionW/><CameraResoulutionH>x</CameraResoulutionH>") << 0 << 0;
    QTest::newRow("well spelt") << QByteArray("<CameraResolutionW>1</CameraResolutionW>") + height
                                << -1 << -1;
}

void tst_KRecordSettingParamReading::sizeIsReadOnlyWhole()
{
    QFETCH(QByteArray, camera);
    edit(recorderFile("<Camera>" + camera + "</Camera>"), 1);
    QTEST(store()->data().cameraWidth, "width");
    QTEST(store()->data().cameraHeight, "height");
}

void tst_KRecordSettingParamReading::valuesAreFoundAtAnyDepth_data()
{
    QTest::addColumn<QByteArray>("inner");
    const QByteArray countdown = "<RecordScreenCountdown>4</RecordScreenCountdown>";
    const QByteArray name = "<m_sSelectedAudioDeviceName>Mic</m_sSelectedAudioDeviceName>";
    const QByteArray later =
        "<Audio><m_sSelectedAudioDeviceName>no</m_sSelectedAudioDeviceName></Audio>";
    QTest::newRow("direct") << countdown + "<Audio>" + name + "</Audio>";
    QTest::newRow("wrapped") << "<x><y>" + countdown + "</y><Audio><z>" + name + "</z></Audio></x>";
    QTest::newRow("one in the other") << "<Audio>" + name + countdown + "</Audio>";
    QTest::newRow("first in document order")
        << "<x><Audio>" + name + "</Audio></x>" + later + countdown +
               "<RecordScreenCountdown>9</RecordScreenCountdown>";
    QTest::newRow("comments between")
        << "<!-- " + later + " -->" + countdown + "<Audio>t<!---->" + name + "</Audio>";
    QTest::newRow("200 deep") << QByteArray("<d>").repeated(200) + countdown + "<Audio>" + name +
                                     "</Audio>" + QByteArray("</d>").repeated(200);
}

void tst_KRecordSettingParamReading::valuesAreFoundAtAnyDepth()
{
    QFETCH(QByteArray, inner);
    edit(recorderFile(inner), 1);
    QCOMPARE(store()->data().countdown, 4);
    QCOMPARE(store()->data().selectedAudioDeviceName, QStringLiteral("Mic"));
}

void tst_KRecordSettingParamReading::recorderDataMustBeADirectChild()
{
    const QByteArray inner =
        "<RecorderData><RecordScreenCountdown>4</RecordScreenCountdown></RecorderData>";
    edit("<SettingDatas><Wrap>" + inner + "</Wrap></SettingDatas>", 1);
    QCOMPARE(store()->data().countdown, 0);
    edit("<AnyName><RecordScreenCountdown>9</RecordScreenCountdown>" + inner + "</AnyName>", 2);
    QCOMPARE(store()->data().countdown, 4);
}

void tst_KRecordSettingParamReading::fileIsDecodedAsUtf8WhateverItDeclares()
{
    const QByteArray name =
        "<Audio><m_sSelectedAudioDeviceName>é麦</m_sSelectedAudioDeviceName></Audio>";
    edit("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + recorderFile(name), 1);
    QCOMPARE(store()->data().selectedAudioDeviceName, QStringLiteral("é麦"));
    edit("\xEF\xBB\xBF" + recorderFile("<RecordScreenCountdown>3</RecordScreenCountdown>"), 2);
    QCOMPARE(store()->data().countdown, 3);
}

void tst_KRecordSettingParamReading::editedFileIsReadAgain()
{
    edit(recorderFile("<RecordScreenCountdown>1</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 1);
    edit(recorderFile("<RecordScreenCountdown>2</RecordScreenCountdown>"), 2);
    QCOMPARE(store()->data().countdown, 2);
}

void tst_KRecordSettingParamReading::olderFileIsReadAgainToo()
{
    edit(recorderFile("<RecordScreenCountdown>1</RecordScreenCountdown>"), 100);
    QCOMPARE(store()->data().countdown, 1);
    edit(recorderFile("<RecordScreenCountdown>2</RecordScreenCountdown>"), -100);
    QCOMPARE(store()->data().countdown, 2);
}

void tst_KRecordSettingParamReading::sameTimeStampIsNotReadAgain()
{
    edit(recorderFile("<RecordScreenCountdown>1</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 1);
    edit(recorderFile("<RecordScreenCountdown>2</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 1);
}

void tst_KRecordSettingParamReading::readingNeverResetsValues()
{
    store()->setData(everything());
    edit(recorderFile("<RecordScreenCountdown>2</RecordScreenCountdown>"), 1);
    KRecordSettingData expected = everything();
    expected.countdown = 2;
    compare(store()->data(), expected);
    edit("<SettingDatas/>", 2);
    compare(store()->data(), expected);
}

void tst_KRecordSettingParamReading::deletedFileKeepsValues()
{
    store()->setData(everything());
    QVERIFY(QFile::remove(path()));
    compare(store()->data(), everything());
    store()->setData(nothingBut(false));
    restart();
    compare(store()->data(), everything());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordSettingParamReading>(argc, argv);
}

#include "tst_KRecordSettingParamReading.moc"
