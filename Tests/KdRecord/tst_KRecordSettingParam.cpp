#include <KCore/KCoreDirs.h>
#include <KdCore/KdBaseLog.h>
#include <KdRecord/KRecordSettingParam.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QDomDocument>
#include <QFileInfo>
#include <QPointer>

Q_DECLARE_METATYPE(KRecordSettingData)

namespace {

KRecordSettingParam* store()
{
    return KRecordSettingParam::instance();
}

/** What a restart of the host does to the store. */
void restart()
{
    store()->release();
}

/** A record that changes nothing but the preview flag. */
KRecordSettingData nothingBut(bool recordPreview)
{
    KRecordSettingData data;
    data.countdown = -1;
    data.recordPreview = recordPreview;
    return data;
}

KRecordSettingData microphone(const QString& name)
{
    KRecordSettingData data = nothingBut(true);
    data.selectedAudioDeviceName = name;
    return data;
}

KRecordSettingData everything()
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

QByteArray recorderFile(const QByteArray& inner)
{
    return "<SettingDatas><RecorderData>" + inner + "</RecorderData></SettingDatas>";
}

void compare(const KRecordSettingData& actual, const KRecordSettingData& expected)
{
    QCOMPARE(actual.selectedAudioDeviceName, expected.selectedAudioDeviceName);
    QCOMPARE(actual.selectedCameraDeviceName, expected.selectedCameraDeviceName);
    QCOMPARE(actual.cameraWidth, expected.cameraWidth);
    QCOMPARE(actual.cameraHeight, expected.cameraHeight);
    QCOMPARE(actual.frameRate, expected.frameRate);
    QCOMPARE(actual.countdown, expected.countdown);
    QCOMPARE(actual.recordPreview, expected.recordPreview);
}

/** "a(b(text)c)": element names with their children in order, without white space between them. */
QString outline(const QDomElement& element)
{
    QString inner;
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        inner += child.isElement() ? outline(child.toElement()) : child.nodeValue();
    }
    return element.tagName() + QLatin1Char('(') + inner + QLatin1Char(')');
}

} // namespace

class tst_KRecordSettingParam : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void withoutAFileValuesAreUnset();
    void firstSaveMakesTheFile();
    void fullFileHasTheWholeTreeInOrder();
    void savedValuesSurviveARestart();
    void frameRateIsWrittenInItsShortestForm_data();
    void frameRateIsWrittenInItsShortestForm();
    void strangeDeviceNamesSurviveARestart_data();
    void strangeDeviceNamesSurviveARestart();
    void controlCharactersOfANameAreLeftOut();

    void mergingTakesOnlyWhatIsSet_data();
    void mergingTakesOnlyWhatIsSet();
    void recordPreviewIsAlwaysTaken();
    void sizeIsWrittenOnlyWhole();
    void unsetValuesLeaveTheFileAlone();
    void savingReplacesAllContentOfAnElement();
    void savingKeepsWhatOthersPutThere();
    void savingWritesToTheFirstElementAtAnyDepth();
    void savedCameraWithoutARateReadsBackAsZero();

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

    void badFileLeavesValuesAsTheyAre_data();
    void badFileLeavesValuesAsTheyAre();
    void badFileIsReplacedOnSaving_data();
    void badFileIsReplacedOnSaving();
    void brokenUtf8IsReadAsFarAsItGoesAndReplacedOnSaving();
    void saveMessagesComeFromTheStoreAtInfoLevel();
    void folderInPlaceOfTheFileDropsTheSave();
    void fullDiskKeepsOldFileAndNewValues();
    void fullDiskWithoutAFileDropsTheSave();
    void forbiddenFolderKeepsOldFileAndNewValues();
    void readOnlyFileIsReplaced();
    void linkedFileStaysALink();

    void oneObjectIsOwnedByTheManager();
    void releaseWritesNothing();
    void savesGoToTheCurrentFolderReadsToTheFirst();

private:
    QString path() const { return documentDir() + QStringLiteral("/Settingdatas.xml"); }
    QDomDocument file() const;
    /** Replaces the file and gives it a time stamp of its own, seconds from now. */
    void edit(const QByteArray& content, int seconds) const;
};

void tst_KRecordSettingParam::cleanup()
{
    restart();
    KdTestCase::cleanup();
}

QDomDocument tst_KRecordSettingParam::file() const
{
    QDomDocument document;
    document.setContent(TestFiles::read(path()));
    return document;
}

void tst_KRecordSettingParam::edit(const QByteArray& content, int seconds) const
{
    TestFiles::write(path(), content);
    QFile edited(path());
    QVERIFY(edited.open(QIODevice::ReadWrite));
    const QDateTime stamp = QDateTime(QDate(2024, 1, 1), QTime(12, 0)).addSecs(seconds);
    QVERIFY(edited.setFileTime(stamp, QFileDevice::FileModificationTime));
}

void tst_KRecordSettingParam::withoutAFileValuesAreUnset()
{
    const KRecordSettingData data = store()->data();
    QVERIFY(data.selectedAudioDeviceName.isEmpty());
    QVERIFY(data.selectedCameraDeviceName.isEmpty());
    QCOMPARE(data.cameraWidth, -1);
    QCOMPARE(data.cameraHeight, -1);
    QCOMPARE(data.frameRate, -1.0);
    QCOMPARE(data.countdown, 0);
    QVERIFY(data.recordPreview);
    QVERIFY(!QFileInfo::exists(path()));
}

void tst_KRecordSettingParam::firstSaveMakesTheFile()
{
    store()->setData(nothingBut(true));
    QVERIFY(TestFiles::read(path()).startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\""));
    QCOMPARE(outline(file().documentElement()),
             QStringLiteral("SettingDatas(RecorderData(RecordScreenCountdown(0)Camera()Audio()"
                            "WebRecordRecordPreview(true)))"));
    QCOMPARE(logLines(), QStringList());
}

void tst_KRecordSettingParam::fullFileHasTheWholeTreeInOrder()
{
    store()->setData(everything());
    QCOMPARE(outline(file().documentElement()),
             QStringLiteral(
                 "SettingDatas(RecorderData(RecordScreenCountdown(5)"
                 "Camera(m_sSelectedCameraDeviceName(HD Cam)CameraResoulutionW(1280)"
                 "CameraResoulutionH(720)FrameRate(29.97))"
                 "Audio(m_sSelectedAudioDeviceName(USB Mic))WebRecordRecordPreview(false)))"));
    QVERIFY(TestFiles::read(path()).contains("\n        <Camera>\n"));
}

void tst_KRecordSettingParam::savedValuesSurviveARestart()
{
    store()->setData(everything());
    compare(store()->data(), everything());
    restart();
    compare(store()->data(), everything());
}

void tst_KRecordSettingParam::frameRateIsWrittenInItsShortestForm_data()
{
    QTest::addColumn<double>("rate");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 30.0 << QStringLiteral("30");
    QTest::newRow("two digits") << 29.97 << QStringLiteral("29.97");
    QTest::newRow("needs all digits") << 24000.0 / 1001.0 << QStringLiteral("23.976023976023978");
    QTest::newRow("small") << 0.5 << QStringLiteral("0.5");
    QTest::newRow("large") << 1e21 << QStringLiteral("1e+21");
}

void tst_KRecordSettingParam::frameRateIsWrittenInItsShortestForm()
{
    QFETCH(double, rate);
    KRecordSettingData data = everything();
    data.frameRate = rate;
    store()->setData(data);
    QTEST(file().elementsByTagName(QStringLiteral("FrameRate")).at(0).toElement().text(), "text");
    restart();
    QCOMPARE(store()->data().frameRate, rate);
}

void tst_KRecordSettingParam::strangeDeviceNamesSurviveARestart_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("markup") << QStringLiteral("<b>\"Mic\"</b> & 'Co' ]]> &amp;");
    QTest::newRow("percent") << QStringLiteral("Mic %1 %s 100%");
    QTest::newRow("right-to-left") << QStringLiteral("ميكروفون מיקרופון");
    QTest::newRow("beyond the basic plane") << QStringLiteral("🎤 麦克风");
    QTest::newRow("line breaks and blanks") << QStringLiteral(" Mic\r\n\t 2 ");
    QTest::newRow("very long") << QString(100000, QLatin1Char('m'));
    QTest::newRow("looks like a tag") << QStringLiteral("RecorderData");
}

void tst_KRecordSettingParam::strangeDeviceNamesSurviveARestart()
{
    QFETCH(QString, name);
    KRecordSettingData data = everything();
    data.selectedAudioDeviceName = name;
    data.selectedCameraDeviceName = name;
    store()->setData(data);
    restart();
    QCOMPARE(store()->data().selectedAudioDeviceName, name);
    QCOMPARE(store()->data().selectedCameraDeviceName, name);
    QCOMPARE(store()->data().countdown, 5);
}

void tst_KRecordSettingParam::controlCharactersOfANameAreLeftOut()
{
    store()->setData(microphone(QStringLiteral("Mic\x01\x1F 2")));
    restart();
    QCOMPARE(store()->data().selectedAudioDeviceName, QStringLiteral("Mic 2"));
}

void tst_KRecordSettingParam::mergingTakesOnlyWhatIsSet_data()
{
    QTest::addColumn<KRecordSettingData>("given");
    QTest::addColumn<KRecordSettingData>("expected");
    const auto row = [](const char* name, auto change, auto effect) {
        KRecordSettingData given = nothingBut(false);
        KRecordSettingData expected = everything();
        change(given);
        effect(expected);
        QTest::newRow(name) << given << expected;
    };
    using Data = KRecordSettingData&;
    const auto keeps = [](Data) {};
    row("nothing", keeps, keeps);
    row(
        "microphone", [](Data d) { d.selectedAudioDeviceName = QStringLiteral("x"); },
        [](Data d) { d.selectedAudioDeviceName = QStringLiteral("x"); });
    row(
        "camera", [](Data d) { d.selectedCameraDeviceName = QStringLiteral("x"); },
        [](Data d) { d.selectedCameraDeviceName = QStringLiteral("x"); });
    row(
        "width alone", [](Data d) { d.cameraWidth = 1; }, [](Data d) { d.cameraWidth = 1; });
    row(
        "height alone", [](Data d) { d.cameraHeight = 1; }, [](Data d) { d.cameraHeight = 1; });
    row(
        "size of 0", [](Data d) { d.cameraWidth = d.cameraHeight = 0; }, keeps);
    row(
        "small rate", [](Data d) { d.frameRate = 0.01; }, [](Data d) { d.frameRate = 0.01; });
    row(
        "rate of 0", [](Data d) { d.frameRate = 0.0; }, keeps);
    row(
        "rate that is no number", [](Data d) { d.frameRate = qQNaN(); }, keeps);
    row(
        "countdown of 0", [](Data d) { d.countdown = 0; }, [](Data d) { d.countdown = 0; });
    row(
        "countdown of -1", [](Data d) { d.countdown = -1; }, keeps);
    row(
        "preview", [](Data d) { d.recordPreview = true; }, [](Data d) { d.recordPreview = true; });
}

void tst_KRecordSettingParam::mergingTakesOnlyWhatIsSet()
{
    QFETCH(KRecordSettingData, given);
    QFETCH(KRecordSettingData, expected);
    store()->setData(everything());
    store()->setData(given);
    compare(store()->data(), expected);
    restart();
    compare(store()->data(), expected);
}

void tst_KRecordSettingParam::recordPreviewIsAlwaysTaken()
{
    store()->setData(nothingBut(false));
    QVERIFY(!store()->data().recordPreview);
    store()->setData(nothingBut(true));
    QVERIFY(store()->data().recordPreview);
}

void tst_KRecordSettingParam::sizeIsWrittenOnlyWhole()
{
    KRecordSettingData data = nothingBut(true);
    data.cameraWidth = 1280;
    data.cameraHeight = 0;
    store()->setData(data);
    QCOMPARE(store()->data().cameraWidth, 1280);
    QCOMPARE(store()->data().cameraHeight, -1);
    QVERIFY(!TestFiles::read(path()).contains("Resoulution"));
}

void tst_KRecordSettingParam::unsetValuesLeaveTheFileAlone()
{
    const QByteArray camera = "<Camera><CameraResoulutionW>-7</CameraResoulutionW>"
                              "<CameraResoulutionH>600</CameraResoulutionH></Camera>";
    edit(recorderFile(camera + "<Audio><m_sSelectedAudioDeviceName/></Audio>"), 1);
    store()->setData(nothingBut(true));
    QCOMPARE(outline(file().documentElement()),
             QStringLiteral(
                 "SettingDatas(RecorderData(Camera(CameraResoulutionW(-7)CameraResoulutionH(600))"
                 "Audio(m_sSelectedAudioDeviceName())RecordScreenCountdown(0)"
                 "WebRecordRecordPreview(true)))"));
}

void tst_KRecordSettingParam::savingReplacesAllContentOfAnElement()
{
    edit(recorderFile("<Audio><m_sSelectedAudioDeviceName>a<!-- c --><b>old</b>z"
                      "</m_sSelectedAudioDeviceName></Audio>"),
         1);
    store()->setData(microphone(QStringLiteral("new")));
    QVERIFY(outline(file().documentElement())
                .contains(QStringLiteral("m_sSelectedAudioDeviceName(new)")));
}

void tst_KRecordSettingParam::savingKeepsWhatOthersPutThere()
{
    edit("<Other><Before>1</Before><RecorderData><Destop a=\"b\">2</Destop></RecorderData></Other>",
         1);
    store()->setData(microphone(QStringLiteral("m")));
    QCOMPARE(outline(file().documentElement()),
             QStringLiteral("Other(Before(1)RecorderData(Destop(2)RecordScreenCountdown(0)Camera()"
                            "Audio(m_sSelectedAudioDeviceName(m))WebRecordRecordPreview(true)))"));
    QVERIFY(TestFiles::read(path()).contains("<Destop a=\"b\">2</Destop>"));
}

void tst_KRecordSettingParam::savingWritesToTheFirstElementAtAnyDepth()
{
    edit(recorderFile("<Wrap><Audio><In><m_sSelectedAudioDeviceName>old</"
                      "m_sSelectedAudioDeviceName></In></Audio>"
                      "<RecordScreenCountdown>1</RecordScreenCountdown></Wrap><Audio/>"),
         1);
    KRecordSettingData data = microphone(QStringLiteral("new"));
    data.countdown = 8;
    store()->setData(data);
    QCOMPARE(
        outline(file().documentElement()),
        QStringLiteral("SettingDatas(RecorderData(Wrap(Audio(In(m_sSelectedAudioDeviceName(new)))"
                       "RecordScreenCountdown(8))Audio()Camera()WebRecordRecordPreview(true)))"));
}

void tst_KRecordSettingParam::savedCameraWithoutARateReadsBackAsZero()
{
    KRecordSettingData data = nothingBut(true);
    data.selectedCameraDeviceName = QStringLiteral("Cam");
    store()->setData(data);
    QCOMPARE(store()->data().frameRate, 0.0);
}

void tst_KRecordSettingParam::frameRateCountsOnlyWithACameraName_data()
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

void tst_KRecordSettingParam::frameRateCountsOnlyWithACameraName()
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

void tst_KRecordSettingParam::countdownIsReadAsANumber_data()
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

void tst_KRecordSettingParam::countdownIsReadAsANumber()
{
    QFETCH(QByteArray, text);
    edit(recorderFile("<RecordScreenCountdown>" + text + "</RecordScreenCountdown>"), 1);
    QTEST(store()->data().countdown, "countdown");
}

void tst_KRecordSettingParam::previewIsOnOnlyForExactlyTrue_data()
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

void tst_KRecordSettingParam::previewIsOnOnlyForExactlyTrue()
{
    QFETCH(QByteArray, text);
    edit(recorderFile("<WebRecordRecordPreview>" + text + "</WebRecordRecordPreview>"), 1);
    QTEST(store()->data().recordPreview, "isOn");
}

void tst_KRecordSettingParam::sizeIsReadOnlyWhole_data()
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

void tst_KRecordSettingParam::sizeIsReadOnlyWhole()
{
    QFETCH(QByteArray, camera);
    edit(recorderFile("<Camera>" + camera + "</Camera>"), 1);
    QTEST(store()->data().cameraWidth, "width");
    QTEST(store()->data().cameraHeight, "height");
}

void tst_KRecordSettingParam::valuesAreFoundAtAnyDepth_data()
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

void tst_KRecordSettingParam::valuesAreFoundAtAnyDepth()
{
    QFETCH(QByteArray, inner);
    edit(recorderFile(inner), 1);
    QCOMPARE(store()->data().countdown, 4);
    QCOMPARE(store()->data().selectedAudioDeviceName, QStringLiteral("Mic"));
}

void tst_KRecordSettingParam::recorderDataMustBeADirectChild()
{
    const QByteArray inner =
        "<RecorderData><RecordScreenCountdown>4</RecordScreenCountdown></RecorderData>";
    edit("<SettingDatas><Wrap>" + inner + "</Wrap></SettingDatas>", 1);
    QCOMPARE(store()->data().countdown, 0);
    edit("<AnyName><RecordScreenCountdown>9</RecordScreenCountdown>" + inner + "</AnyName>", 2);
    QCOMPARE(store()->data().countdown, 4);
}

void tst_KRecordSettingParam::fileIsDecodedAsUtf8WhateverItDeclares()
{
    const QByteArray name =
        "<Audio><m_sSelectedAudioDeviceName>é麦</m_sSelectedAudioDeviceName></Audio>";
    edit("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + recorderFile(name), 1);
    QCOMPARE(store()->data().selectedAudioDeviceName, QStringLiteral("é麦"));
    edit("\xEF\xBB\xBF" + recorderFile("<RecordScreenCountdown>3</RecordScreenCountdown>"), 2);
    QCOMPARE(store()->data().countdown, 3);
}

void tst_KRecordSettingParam::editedFileIsReadAgain()
{
    edit(recorderFile("<RecordScreenCountdown>1</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 1);
    edit(recorderFile("<RecordScreenCountdown>2</RecordScreenCountdown>"), 2);
    QCOMPARE(store()->data().countdown, 2);
}

void tst_KRecordSettingParam::olderFileIsReadAgainToo()
{
    edit(recorderFile("<RecordScreenCountdown>1</RecordScreenCountdown>"), 100);
    QCOMPARE(store()->data().countdown, 1);
    edit(recorderFile("<RecordScreenCountdown>2</RecordScreenCountdown>"), -100);
    QCOMPARE(store()->data().countdown, 2);
}

void tst_KRecordSettingParam::sameTimeStampIsNotReadAgain()
{
    edit(recorderFile("<RecordScreenCountdown>1</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 1);
    edit(recorderFile("<RecordScreenCountdown>2</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 1);
}

void tst_KRecordSettingParam::readingNeverResetsValues()
{
    store()->setData(everything());
    edit(recorderFile("<RecordScreenCountdown>2</RecordScreenCountdown>"), 1);
    KRecordSettingData expected = everything();
    expected.countdown = 2;
    compare(store()->data(), expected);
    edit("<SettingDatas/>", 2);
    compare(store()->data(), expected);
}

void tst_KRecordSettingParam::deletedFileKeepsValues()
{
    store()->setData(everything());
    QVERIFY(QFile::remove(path()));
    compare(store()->data(), everything());
    store()->setData(nothingBut(false));
    restart();
    compare(store()->data(), everything());
}

void tst_KRecordSettingParam::badFileLeavesValuesAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray inner =
        "<RecorderData><RecordScreenCountdown>9</RecordScreenCountdown></RecorderData>";
    const QVector<TestFiles::BadXml> bad = TestFiles::badXml("SettingDatas", inner);
    for (const TestFiles::BadXml& one : bad) {
        QTest::newRow(one.name) << one.content;
    }
}

void tst_KRecordSettingParam::badFileLeavesValuesAsTheyAre()
{
    QFETCH(QByteArray, content);
    edit(content, 1);
    QCOMPARE(store()->data().countdown, 0);
    restart();
    edit(recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"), 2);
    QCOMPARE(store()->data().countdown, 4);
    edit(content, 3);
    QCOMPARE(store()->data().countdown, 4);
    QCOMPARE(TestFiles::read(path()), content);
    QCOMPARE(logLines(), QStringList());
}

void tst_KRecordSettingParam::badFileIsReplacedOnSaving_data()
{
    badFileLeavesValuesAsTheyAre_data();
}

void tst_KRecordSettingParam::badFileIsReplacedOnSaving()
{
    QFETCH(QByteArray, content);
    edit(content, 1);
    store()->setData(microphone(QStringLiteral("Mic")));
    QCOMPARE(
        outline(file().documentElement()),
        QStringLiteral("SettingDatas(RecorderData(RecordScreenCountdown(0)Camera()"
                       "Audio(m_sSelectedAudioDeviceName(Mic))WebRecordRecordPreview(true)))"));
    QCOMPARE(logLines(), QStringList(QStringLiteral(
                             "KRecordSettingParam::saveXml: SettingDatas remove filepath")));
}

void tst_KRecordSettingParam::brokenUtf8IsReadAsFarAsItGoesAndReplacedOnSaving()
{
    edit(
        recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown><Other>\xC3\x28\xFF</Other>"),
        1);
    QCOMPARE(store()->data().countdown, 4);
    store()->setData(nothingBut(true));
    QCOMPARE(logLines(), QStringList(QStringLiteral(
                             "KRecordSettingParam::saveXml: SettingDatas remove filepath")));
    QVERIFY(!TestFiles::read(path()).contains("Other"));
    QVERIFY(TestFiles::read(path()).contains("<RecordScreenCountdown>4<"));
}

void tst_KRecordSettingParam::saveMessagesComeFromTheStoreAtInfoLevel()
{
    edit("broken", 1);
    QVector<KdLogRecord> records;
    KdBaseLog::defaultLogger()->setObserver(
        [&records](const KdLogRecord& logged) { records.append(logged); });
    store()->setData(nothingBut(true));
    KdBaseLog::defaultLogger()->setObserver(nullptr);
    QCOMPARE(records.size(), 1);
    QCOMPARE(records.first().level, 4);
    QCOMPARE(records.first().file, QByteArray("Src/KdRecord/KRecordSettingParam"));
    QCOMPARE(records.first().function, QByteArray("KRecordSettingParam::saveXml"));
    QCOMPARE(records.first().message, QStringLiteral("SettingDatas remove filepath"));
}

void tst_KRecordSettingParam::folderInPlaceOfTheFileDropsTheSave()
{
    QVERIFY(QDir().mkpath(path()));
    expectLog(QStringLiteral("could not be written"));
    store()->setData(everything());
    QCOMPARE(logLines().first(),
             QStringLiteral("KRecordSettingParam::saveXml: SettingDatas remove filepath"));
    QCOMPARE(logLines().last(), QStringLiteral("KRecordSettingParam::saveXml: SettingDatas Error"));
    compare(store()->data(), everything());
    QVERIFY(QFileInfo(path()).isDir());
}

void tst_KRecordSettingParam::fullDiskKeepsOldFileAndNewValues()
{
    edit(recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 4);
    const QByteArray before = TestFiles::read(path());
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::FileSizeLimit limit(100);
        store()->setData(everything());
    }
    QCOMPARE(TestFiles::read(path()), before);
    compare(store()->data(), everything());
}

void tst_KRecordSettingParam::fullDiskWithoutAFileDropsTheSave()
{
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::FileSizeLimit limit(0);
        store()->setData(everything());
    }
    QVERIFY(!QFileInfo::exists(path()));
    QCOMPARE(logLines().last(), QStringLiteral("KRecordSettingParam::saveXml: SettingDatas Error"));
    compare(store()->data(), everything());
}

void tst_KRecordSettingParam::forbiddenFolderKeepsOldFileAndNewValues()
{
    edit(recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"), 1);
    const QByteArray before = TestFiles::read(path());
    QCOMPARE(store()->data().countdown, 4);
    QVERIFY(QFile::setPermissions(temporaryPath(QString()), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x5555)));
    QVERIFY(QFile::setPermissions(path(), QFile::Permissions(0x4444)));
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::WithoutPrivileges nobody;
        store()->setData(everything());
    }
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x7755)));
    QCOMPARE(TestFiles::read(path()), before);
    QCOMPARE(logLines().last(), QStringLiteral("KRecordSettingParam::saveXml: SettingDatas Error"));
    compare(store()->data(), everything());
}

void tst_KRecordSettingParam::readOnlyFileIsReplaced()
{
    edit(recorderFile("<Other>x</Other>"), 1);
    QVERIFY(QFile::setPermissions(path(), QFile::Permissions(0x4444)));
    QVERIFY(QFile::setPermissions(temporaryPath(QString()), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x7777)));
    {
        const FileFaults::WithoutPrivileges nobody;
        store()->setData(microphone(QStringLiteral("Mic")));
    }
    QVERIFY(!TestFiles::read(path()).contains("Other"));
    QVERIFY(TestFiles::read(path()).contains(">Mic<"));
    QCOMPARE(logLines(), QStringList(QStringLiteral(
                             "KRecordSettingParam::saveXml: SettingDatas remove filepath")));
}

void tst_KRecordSettingParam::linkedFileStaysALink()
{
    const QString target = temporaryPath(QStringLiteral("target.xml"));
    TestFiles::write(target, recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"));
    QVERIFY(QFile::link(target, path()));
    QCOMPARE(store()->data().countdown, 4);
    store()->setData(microphone(QStringLiteral("Mic")));
    QVERIFY(QFileInfo(path()).isSymLink());
    QVERIFY(TestFiles::read(target).contains(">Mic<"));
}

void tst_KRecordSettingParam::oneObjectIsOwnedByTheManager()
{
    QCOMPARE(store(), KRecordSettingParam::instance());
    QVERIFY(store()->isManaged());
    QCOMPARE(store()->parent(), nullptr);
    store()->setData(microphone(QStringLiteral("Mic")));
    const QPointer<KRecordSettingParam> first = store();
    KdLazySingletonManager::instance()->releaseAll();
    QVERIFY(first.isNull());
    QVERIFY(KRecordSettingParam::isReleased());
    QCOMPARE(store()->data().selectedAudioDeviceName, QStringLiteral("Mic"));
    QVERIFY(!KRecordSettingParam::isReleased());
}

void tst_KRecordSettingParam::releaseWritesNothing()
{
    store()->setData(everything());
    QVERIFY(QFile::remove(path()));
    restart();
    QVERIFY(!QFileInfo::exists(path()));
}

void tst_KRecordSettingParam::savesGoToTheCurrentFolderReadsToTheFirst()
{
    edit(recorderFile("<RecordScreenCountdown>4</RecordScreenCountdown>"), 1);
    QCOMPARE(store()->data().countdown, 4);
    const QString second = temporaryPath(QStringLiteral("second"));
    setZentraDocumentDir(second);
    store()->setData(microphone(QStringLiteral("Mic")));
    QVERIFY(TestFiles::read(second + QStringLiteral("/Settingdatas.xml")).contains(">Mic<"));
    QVERIFY(!TestFiles::read(path()).contains("Mic"));
    edit(recorderFile("<RecordScreenCountdown>6</RecordScreenCountdown>"), 2);
    QCOMPARE(store()->data().countdown, 6);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KRecordSettingParam>(argc, argv);
}

#include "tst_KRecordSettingParam.moc"
