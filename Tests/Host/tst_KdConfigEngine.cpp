#include <KCore/KCoreDirs.h>
#include <KdZentraCore/KdConfigEngine.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDir>
#include <QFileInfo>

class tst_KdConfigEngine : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void unknownValueIsTheFallback();
    void valuesComeBackAsWhatTheyWere_data();
    void valuesComeBackAsWhatTheyWere();
    void groupsAndKeysAreKeptApart();
    void onlyTheUsersScopeExists();
    void nameOrValueWithoutTextIsRefused();
    void valuesFollowTheDocumentFolder();
    void badFileCountsAsEmptyAndIsReplaced_data();
    void badFileCountsAsEmptyAndIsReplaced();
    void strangeButWellFormedFileIsReadAsFarAsItGoes();
    void folderInPlaceOfTheFileIsReported();
    void fullDiskKeepsFileAndValue();
    void unchangedValueIsNotWrittenAgain();
    void linkedFileStaysALink();

private:
    /** Makes the engine forget what it has in memory, as a new process would. */
    void restart() const;
    QString path() const { return documentDir() + QStringLiteral("/HostConfig.xml"); }
    const QString m_group = QStringLiteral("AudioRecord");
    const QString m_key = QStringLiteral("AudioDevice");
    KdConfigEngine* const m_engine = KdConfigEngine::instance();
};

void tst_KdConfigEngine::restart() const
{
    setZentraDocumentDir(temporaryPath(QStringLiteral("elsewhere")));
    m_engine->value(1, m_group, m_key);
    setZentraDocumentDir(documentDir());
}

void tst_KdConfigEngine::unknownValueIsTheFallback()
{
    QCOMPARE(m_engine->value(1, m_group, m_key), QVariant());
    QCOMPARE(m_engine->value(1, m_group, m_key, 7), QVariant(7));
    QVERIFY(!QFileInfo::exists(path()));
}

void tst_KdConfigEngine::valuesComeBackAsWhatTheyWere_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(QStringLiteral("USB \"Mic\" <1> & 麦克风"));
    QTest::newRow("text with line breaks and blanks") << QVariant(QStringLiteral(" a\r\n\tb "));
    QTest::newRow("right-to-left") << QVariant(QStringLiteral("ميكروفون %1"));
    QTest::newRow("empty text") << QVariant(QString());
    QTest::newRow("very long text") << QVariant(QString(100000, QLatin1Char('m')));
    QTest::newRow("number") << QVariant(-1);
    QTest::newRow("large number") << QVariant(std::numeric_limits<qlonglong>::max());
    QTest::newRow("fraction") << QVariant(29.97);
    QTest::newRow("true") << QVariant(true);
    QTest::newRow("false") << QVariant(false);
}

void tst_KdConfigEngine::valuesComeBackAsWhatTheyWere()
{
    QFETCH(QVariant, value);
    QVERIFY(m_engine->setValue(1, m_group, m_key, value));
    for (int run = 0; run < 2; ++run) {
        QVariant answer = m_engine->value(1, m_group, m_key);
        QVERIFY(answer.convert(value.userType()));
        QCOMPARE(answer, value);
        restart();
    }
}

void tst_KdConfigEngine::groupsAndKeysAreKeptApart()
{
    QVERIFY(m_engine->setValue(1, QStringLiteral("a b"), QStringLiteral("<k>"), 1));
    QVERIFY(m_engine->setValue(1, QStringLiteral("a b"), QStringLiteral("k"), 2));
    QVERIFY(m_engine->setValue(1, QStringLiteral("A b"), QStringLiteral("k"), 3));
    QVERIFY(m_engine->setValue(1, QStringLiteral("a b"), QStringLiteral("k"), 4));
    restart();
    QCOMPARE(m_engine->value(1, QStringLiteral("a b"), QStringLiteral("<k>")).toInt(), 1);
    QCOMPARE(m_engine->value(1, QStringLiteral("a b"), QStringLiteral("k")).toInt(), 4);
    QCOMPARE(m_engine->value(1, QStringLiteral("A b"), QStringLiteral("k")).toInt(), 3);
}

void tst_KdConfigEngine::onlyTheUsersScopeExists()
{
    QVERIFY(m_engine->setValue(1, m_group, m_key, 1));
    QVERIFY(!m_engine->setValue(0, m_group, m_key, 2));
    QVERIFY(!m_engine->setValue(2, m_group, m_key, 2));
    QCOMPARE(m_engine->value(2, m_group, m_key, 9).toInt(), 9);
    QCOMPARE(m_engine->value(1, m_group, m_key).toInt(), 1);
}

void tst_KdConfigEngine::nameOrValueWithoutTextIsRefused()
{
    QVERIFY(!m_engine->setValue(1, QString(), m_key, 1));
    QVERIFY(!m_engine->setValue(1, m_group, QString(), 1));
    QVERIFY(!m_engine->setValue(1, m_group, m_key, QVariant()));
    QVERIFY(!m_engine->setValue(1, m_group, m_key, QVariantMap()));
    QVERIFY(!QFileInfo::exists(path()));
}

void tst_KdConfigEngine::valuesFollowTheDocumentFolder()
{
    QVERIFY(m_engine->setValue(1, m_group, m_key, QStringLiteral("here")));
    setZentraDocumentDir(temporaryPath(QStringLiteral("second")));
    QCOMPARE(m_engine->value(1, m_group, m_key), QVariant());
    QVERIFY(m_engine->setValue(1, m_group, m_key, QStringLiteral("there")));
    setZentraDocumentDir(documentDir());
    QCOMPARE(m_engine->value(1, m_group, m_key).toString(), QStringLiteral("here"));
}

void tst_KdConfigEngine::badFileCountsAsEmptyAndIsReplaced_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray inner =
        "<Group name='AudioRecord'><Value name='AudioDevice'>x</Value></Group>";
    const QVector<TestFiles::BadXml> bad = TestFiles::badXml("HostConfig", inner);
    for (const TestFiles::BadXml& file : bad) {
        QTest::newRow(file.name) << file.content;
    }
    QTest::newRow("bad UTF-8") << QByteArray("<HostConfig>" + inner + "\xC3\x28</HostConfig>");
}

void tst_KdConfigEngine::badFileCountsAsEmptyAndIsReplaced()
{
    QFETCH(QByteArray, content);
    TestFiles::write(path(), content);
    expectLog(QStringLiteral("cannot be read and counts as empty"));
    QCOMPARE(m_engine->value(1, m_group, m_key), QVariant());
    QVERIFY(m_engine->setValue(1, m_group, m_key, QStringLiteral("new")));
    restart();
    QCOMPARE(m_engine->value(1, m_group, m_key).toString(), QStringLiteral("new"));
}

void tst_KdConfigEngine::strangeButWellFormedFileIsReadAsFarAsItGoes()
{
    TestFiles::write(
        path(),
        "<HostConfig><Value name='AudioDevice'>stray</Value>text<Group/>"
        "<Group name='AudioRecord'><Value>nameless</Value><Other name='AudioDevice'>o</Other>"
        "<Value name='AudioDevice'>yes<b/>!</Value></Group></HostConfig>");
    QCOMPARE(m_engine->value(1, m_group, m_key).toString(), QStringLiteral("yes!"));
}

void tst_KdConfigEngine::folderInPlaceOfTheFileIsReported()
{
    QVERIFY(QDir().mkpath(path()));
    expectLog(QStringLiteral("cannot be read and counts as empty"));
    expectLog(QStringLiteral("could not be written"));
    QVERIFY(!m_engine->setValue(1, m_group, m_key, 1));
    QCOMPARE(m_engine->value(1, m_group, m_key).toInt(), 1);
}

void tst_KdConfigEngine::fullDiskKeepsFileAndValue()
{
    QVERIFY(m_engine->setValue(1, m_group, m_key, QStringLiteral("old")));
    const QByteArray before = TestFiles::read(path());
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::FileSizeLimit limit(20);
        QVERIFY(!m_engine->setValue(1, m_group, m_key, QStringLiteral("new")));
    }
    QCOMPARE(TestFiles::read(path()), before);
    QCOMPARE(m_engine->value(1, m_group, m_key).toString(), QStringLiteral("new"));
    // The same value once more is written now, since it never was.
    QVERIFY(m_engine->setValue(1, m_group, m_key, QStringLiteral("new")));
    QVERIFY(TestFiles::read(path()).contains(">new<"));
}

void tst_KdConfigEngine::unchangedValueIsNotWrittenAgain()
{
    QVERIFY(m_engine->setValue(1, m_group, m_key, 5));
    QVERIFY(QFile::remove(path()));
    QVERIFY(m_engine->setValue(1, m_group, m_key, 5));
    QVERIFY(!QFileInfo::exists(path()));
    QVERIFY(m_engine->setValue(1, m_group, m_key, 6));
    QVERIFY(QFileInfo::exists(path()));
}

void tst_KdConfigEngine::linkedFileStaysALink()
{
    const QString target = temporaryPath(QStringLiteral("target.xml"));
    TestFiles::write(target, "<HostConfig/>");
    QVERIFY(QFile::link(target, path()));
    QVERIFY(m_engine->setValue(1, m_group, m_key, QStringLiteral("through")));
    QVERIFY(QFileInfo(path()).isSymLink());
    QVERIFY(TestFiles::read(target).contains(">through<"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdConfigEngine>(argc, argv);
}

#include "tst_KdConfigEngine.moc"
