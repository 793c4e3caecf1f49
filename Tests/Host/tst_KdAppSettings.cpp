#include <KCore/KCoreDirs.h>
#include <KdAppSettings/KdAppSettings.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>

class tst_KdAppSettings : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void withoutAFileEverythingHasItsDefault();
    void savedValuesComeBack();
    void folderIsNeverEmpty();
    void defaultFolderIsNotStored();
    void strangeFoldersSurvive_data();
    void strangeFoldersSurvive();
    void loadingReturnsWhatTheFileLacksToItsDefault();
    void pointersStayValidAcrossLoading();
    void settingsFollowTheDocumentFolder();
    void badFileCountsAsAbsent_data();
    void badFileCountsAsAbsent();
    void badValueCountsAsAbsent_data();
    void badValueCountsAsAbsent();
    void countsBeyondTheirRangeAreLimited_data();
    void countsBeyondTheirRangeAreLimited();
    void everyOfferedValueIsAccepted();
    void folderInPlaceOfTheFileIsReported();
    void forbiddenFolderIsReported();
    void fullDiskKeepsTheOldFile();
    void linkedFileStaysALink();

private:
    QString path() const { return documentDir() + QStringLiteral("/HostSettings.xml"); }
    void loadGroup(const QByteArray& group, const QByteArray& inner);
    static void changeEverything();

    KdAppSettings* const m_store = KdAppSettings::GetInstance();
    KGeneralSettings* const m_general = m_store->GetSettings()->GetGeneralSettings();
    KFolderSettings* const m_folders = m_store->GetSettings()->GetFolderSettings();
    KAudioAdvanceSettings* const m_audio = m_store->GetSettings()->GetAudioAdvanceSettings();
};

void tst_KdAppSettings::init()
{
    KdTestCase::init();
    m_store->Load();
}

void tst_KdAppSettings::loadGroup(const QByteArray& group, const QByteArray& inner)
{
    TestFiles::write(path(),
                     "<HostSettings><" + group + '>' + inner + "</" + group + "></HostSettings>");
    m_store->Load();
}

void tst_KdAppSettings::changeEverything()
{
    KSettings* const settings = KdAppSettings::GetInstance()->GetSettings();
    settings->GetGeneralSettings()->setIsAudioRecordingCheckMult(true);
    settings->GetGeneralSettings()->SetRecordAudioCountdown(0);
    settings->GetGeneralSettings()->SetRecordVideoCountdown(7);
    settings->GetFolderSettings()->SetRecoderVoiceFolder(QStringLiteral("/takes"));
    settings->GetFolderSettings()->SetCaptureFileFolder(QStringLiteral("/clips"));
    settings->GetAudioAdvanceSettings()->SetBitrate(320);
    settings->GetAudioAdvanceSettings()->SetChannels(1);
    settings->GetAudioAdvanceSettings()->SetBitrateMode(2);
    settings->GetAudioAdvanceSettings()->SetSampleRate(96000);
    settings->GetAudioAdvanceSettings()->SetRecordPreview(false);
}

void tst_KdAppSettings::withoutAFileEverythingHasItsDefault()
{
    QVERIFY(!m_general->isAudioRecordingCheckMult());
    QCOMPARE(m_general->GetRecordAudioCountdown(), 3);
    QCOMPARE(m_general->GetRecordVideoCountdown(), 3);
    QCOMPARE(m_audio->GetAudioEncode(), 0x20434141U);
    QCOMPARE(m_audio->GetBitrate(), 128);
    QCOMPARE(m_audio->GetChannels(), 2);
    QCOMPARE(m_audio->GetBitrateMode(), 1U);
    QCOMPARE(m_audio->GetSampleRate(), 44100);
    QVERIFY(m_audio->GetRecordPreview());
    QVERIFY(!QFileInfo::exists(path()));
}

void tst_KdAppSettings::savedValuesComeBack()
{
    changeEverything();
    QVERIFY(m_store->Save());
    *m_store->GetSettings() = KSettings();
    m_store->Load();
    QVERIFY(m_general->isAudioRecordingCheckMult());
    QCOMPARE(m_general->GetRecordAudioCountdown(), 0);
    QCOMPARE(m_general->GetRecordVideoCountdown(), 7);
    QCOMPARE(m_folders->GetRecorderVoiceFolder(), QStringLiteral("/takes"));
    QCOMPARE(m_folders->GetCaptureFileFolder(), QStringLiteral("/clips"));
    QCOMPARE(m_audio->GetAudioEncode(), 0x20434141U);
    QCOMPARE(m_audio->GetBitrate(), 320);
    QCOMPARE(m_audio->GetChannels(), 1);
    QCOMPARE(m_audio->GetBitrateMode(), 2U);
    QCOMPARE(m_audio->GetSampleRate(), 96000);
    QVERIFY(!m_audio->GetRecordPreview());
}

void tst_KdAppSettings::folderIsNeverEmpty()
{
    const QString standard = m_folders->GetRecorderVoiceFolder();
    QVERIFY(QDir::isAbsolutePath(standard));
    m_folders->SetRecoderVoiceFolder(QStringLiteral("/takes"));
    for (const QString& nothing : {QString(), QStringLiteral(" \t")}) {
        m_folders->SetRecoderVoiceFolder(nothing);
        QCOMPARE(m_folders->GetRecorderVoiceFolder(), standard);
    }
    const QString standardForClips = m_folders->GetCaptureFileFolder();
    QVERIFY(QDir::isAbsolutePath(standardForClips));
    QVERIFY(standardForClips != standard);
    m_folders->SetCaptureFileFolder(QStringLiteral(" "));
    QCOMPARE(m_folders->GetCaptureFileFolder(), standardForClips);
}

void tst_KdAppSettings::defaultFolderIsNotStored()
{
    QVERIFY(m_store->Save());
    QVERIFY(!TestFiles::read(path()).contains(m_folders->GetRecorderVoiceFolder().toUtf8()));
    QVERIFY(!TestFiles::read(path()).contains(m_folders->GetCaptureFileFolder().toUtf8()));
}

void tst_KdAppSettings::strangeFoldersSurvive_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("blanks around") << QStringLiteral("/my takes ");
    QTest::newRow("markup and percent") << QStringLiteral("/<b>&amp;\"'%1");
    QTest::newRow("non-Latin") << QStringLiteral("/录音/تسجيل/🎤");
    QTest::newRow("line break") << QStringLiteral("/a\nb");
}

void tst_KdAppSettings::strangeFoldersSurvive()
{
    QFETCH(QString, folder);
    m_folders->SetRecoderVoiceFolder(folder);
    m_folders->SetCaptureFileFolder(folder + QLatin1Char('2'));
    QVERIFY(m_store->Save());
    m_store->Load();
    QCOMPARE(m_folders->GetRecorderVoiceFolder(), folder);
    QCOMPARE(m_folders->GetCaptureFileFolder(), folder + QLatin1Char('2'));
}

void tst_KdAppSettings::loadingReturnsWhatTheFileLacksToItsDefault()
{
    changeEverything();
    loadGroup("General", "<RecordAudioCountdown>5</RecordAudioCountdown>");
    QCOMPARE(m_general->GetRecordAudioCountdown(), 5);
    QVERIFY(!m_general->isAudioRecordingCheckMult());
    QCOMPARE(m_audio->GetSampleRate(), 44100);
    QVERIFY(m_folders->GetRecorderVoiceFolder() != QStringLiteral("/takes"));
}

void tst_KdAppSettings::pointersStayValidAcrossLoading()
{
    QVERIFY(m_store->Save());
    m_store->Load();
    QCOMPARE(KdAppSettings::GetInstance(), m_store);
    QCOMPARE(m_store->GetSettings()->GetAudioAdvanceSettings(), m_audio);
    QCOMPARE(m_store->GetSettings()->GetFolderSettings(), m_folders);
    QCOMPARE(m_store->GetSettings()->GetGeneralSettings(), m_general);
}

void tst_KdAppSettings::settingsFollowTheDocumentFolder()
{
    m_audio->SetBitrate(256);
    QVERIFY(m_store->Save());
    setZentraDocumentDir(temporaryPath(QStringLiteral("second")));
    m_store->Load();
    QCOMPARE(m_audio->GetBitrate(), 128);
    setZentraDocumentDir(documentDir());
    m_store->Load();
    QCOMPARE(m_audio->GetBitrate(), 256);
}

void tst_KdAppSettings::badFileCountsAsAbsent_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray inner = "<AudioAdvance><Bitrate>320</Bitrate></AudioAdvance>";
    const QVector<TestFiles::BadXml> bad = TestFiles::badXml("HostSettings", inner);
    for (const TestFiles::BadXml& file : bad) {
        QTest::newRow(file.name) << file.content;
    }
    QTest::newRow("bad UTF-8") << QByteArray("<HostSettings>" + inner + "\xFF</HostSettings>");
}

void tst_KdAppSettings::badFileCountsAsAbsent()
{
    QFETCH(QByteArray, content);
    TestFiles::write(path(), content);
    changeEverything();
    expectLog(QStringLiteral("cannot be read and count as absent"));
    m_store->Load();
    QCOMPARE(m_audio->GetBitrate(), 128);
    QCOMPARE(m_general->GetRecordAudioCountdown(), 3);
    QVERIFY(m_store->Save());
    m_store->Load();
    QCOMPARE(m_audio->GetBitrate(), 128);
}

void tst_KdAppSettings::badValueCountsAsAbsent_data()
{
    QTest::addColumn<QByteArray>("tag");
    QTest::addColumn<QByteArray>("text");
    const QByteArrayList tags{"AudioEncode", "Bitrate",    "Channels",
                              "BitrateMode", "SampleRate", "RecordPreview"};
    const QByteArrayList texts{"",     "abc",  "1.5", "99999999999999999999",
                               "0x10", "<b/>", "麦",  "True"};
    for (const QByteArray& tag : tags) {
        for (const QByteArray& text : texts) {
            QTest::newRow((tag + ": " + text).constData()) << tag << text;
        }
    }
    QTest::newRow("unknown encoder") << QByteArray("AudioEncode") << QByteArray("541278529");
    QTest::newRow("no channel") << QByteArray("Channels") << QByteArray("0");
    QTest::newRow("six channels") << QByteArray("Channels") << QByteArray("6");
    QTest::newRow("unknown mode") << QByteArray("BitrateMode") << QByteArray("3");
    QTest::newRow("unknown rate") << QByteArray("SampleRate") << QByteArray("16000");
    QTest::newRow("negative rate") << QByteArray("SampleRate") << QByteArray("-44100");
}

void tst_KdAppSettings::badValueCountsAsAbsent()
{
    QFETCH(QByteArray, tag);
    QFETCH(QByteArray, text);
    loadGroup("AudioAdvance", '<' + tag + '>' + text + "</" + tag + '>');
    QCOMPARE(m_audio->GetAudioEncode(), 0x20434141U);
    QCOMPARE(m_audio->GetBitrate(), 128);
    QCOMPARE(m_audio->GetChannels(), 2);
    QCOMPARE(m_audio->GetBitrateMode(), 1U);
    QCOMPARE(m_audio->GetSampleRate(), 44100);
    QVERIFY(m_audio->GetRecordPreview());
}

void tst_KdAppSettings::countsBeyondTheirRangeAreLimited_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("countdown");
    QTest::addColumn<int>("bitrate");
    QTest::newRow("negative") << QByteArray("-5") << 0 << 96;
    QTest::newRow("zero") << QByteArray("0") << 0 << 96;
    QTest::newRow("in the countdown's range") << QByteArray("9") << 9 << 96;
    QTest::newRow("in the bit rate's range") << QByteArray("512") << 9 << 512;
    QTest::newRow("between two offered bit rates") << QByteArray(" 100 ") << 9 << 100;
    QTest::newRow("huge") << QByteArray("2147483647") << 9 << 512;
}

void tst_KdAppSettings::countsBeyondTheirRangeAreLimited()
{
    QFETCH(QByteArray, stored);
    loadGroup("General", "<RecordAudioCountdown>" + stored + "</RecordAudioCountdown>");
    QTEST(m_general->GetRecordAudioCountdown(), "countdown");
    loadGroup("General", "<RecordVideoCountdown>" + stored + "</RecordVideoCountdown>");
    QTEST(m_general->GetRecordVideoCountdown(), "countdown");
    loadGroup("AudioAdvance", "<Bitrate>" + stored + "</Bitrate>");
    QTEST(m_audio->GetBitrate(), "bitrate");
}

void tst_KdAppSettings::everyOfferedValueIsAccepted()
{
    for (const int rate : {22050, 24000, 32000, 44100, 48000, 96000}) {
        for (const int bitrate : {96, 128, 160, 192, 256, 320, 512}) {
            m_audio->SetSampleRate(rate);
            m_audio->SetBitrate(bitrate);
            QVERIFY(m_store->Save());
            m_store->Load();
            QCOMPARE(m_audio->GetSampleRate(), rate);
            QCOMPARE(m_audio->GetBitrate(), bitrate);
        }
    }
}

void tst_KdAppSettings::folderInPlaceOfTheFileIsReported()
{
    QVERIFY(QDir().mkpath(path()));
    expectLog(QStringLiteral("cannot be read and count as absent"));
    expectLog(QStringLiteral("could not be written"));
    m_store->Load();
    QVERIFY(!m_store->Save());
}

void tst_KdAppSettings::forbiddenFolderIsReported()
{
    QVERIFY(m_store->Save());
    const QByteArray before = TestFiles::read(path());
    QVERIFY(QFile::setPermissions(temporaryPath(QString()), QFile::Permissions(0x7755)));
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x5555)));
    expectLog(QStringLiteral("could not be written"));
    changeEverything();
    {
        const FileFaults::WithoutPrivileges nobody;
        QVERIFY(!m_store->Save());
    }
    QVERIFY(QFile::setPermissions(documentDir(), QFile::Permissions(0x7755)));
    QCOMPARE(TestFiles::read(path()), before);
    QCOMPARE(m_audio->GetBitrate(), 320);
}

void tst_KdAppSettings::fullDiskKeepsTheOldFile()
{
    QVERIFY(m_store->Save());
    const QByteArray before = TestFiles::read(path());
    changeEverything();
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::FileSizeLimit limit(100);
        QVERIFY(!m_store->Save());
    }
    QCOMPARE(TestFiles::read(path()), before);
    QCOMPARE(m_audio->GetBitrate(), 320);
}

void tst_KdAppSettings::linkedFileStaysALink()
{
    const QString target = temporaryPath(QStringLiteral("target.xml"));
    TestFiles::write(target, "<HostSettings/>");
    QVERIFY(QFile::link(target, path()));
    m_audio->SetBitrate(192);
    QVERIFY(m_store->Save());
    QVERIFY(QFileInfo(path()).isSymLink());
    QVERIFY(TestFiles::read(target).contains(">192<"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdAppSettings>(argc, argv);
}

#include "tst_KdAppSettings.moc"
