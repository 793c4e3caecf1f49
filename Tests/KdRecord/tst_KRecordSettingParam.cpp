#include "RecordSettingFixture.h"

#include <KCore/KCoreDirs.h>
#include <Support/TestFiles.h>

#include <QFileInfo>
#include <QPointer>

/** What the store saves, and who owns it. */
class tst_KRecordSettingParam : public RecordSettingFixture
{
    Q_OBJECT

private Q_SLOTS:
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

    void oneObjectIsOwnedByTheManager();
    void releaseWritesNothing();
    void savesGoToTheCurrentFolderReadsToTheFirst();
};

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
