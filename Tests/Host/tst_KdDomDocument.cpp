#include <KdCore/KdDomDocument.h>
#include <Support/FileFaults.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QFileInfo>

#include <sys/stat.h>

namespace {

QDomDocument parsed(const char* xml)
{
    QDomDocument document;
    document.setContent(QByteArray(xml));
    return document;
}

} // namespace

class tst_KdDomDocument : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void newFileHasAUtf8DeclarationAndAnEmptyRoot();
    void newFileNeedsAnElementName_data();
    void newFileNeedsAnElementName();
    void savedDocumentIsIndentedAndReadsBack();
    void savingDeclaresTheEncodingItWrites();
    void opensWellFormedFiles_data();
    void opensWellFormedFiles();
    void badFileLeavesTheDocumentAsItWas_data();
    void badFileLeavesTheDocumentAsItWas();
    void whatIsNoFileIsRefused();
    void openingNeverMakesAFile();
    void readWriteNeedsAWritableFile();
    void unreadableDocumentIsNotWritten();
    void fullDiskKeepsTheOldFile();
    void lookUpFindsTheFirstAtAnyDepth_data();
    void lookUpFindsTheFirstAtAnyDepth();
    void lookUpStaysBeneathItsParent();

private:
    QString path() const { return documentDir() + QStringLiteral("/file %1.xml"); }
};

void tst_KdDomDocument::newFileHasAUtf8DeclarationAndAnEmptyRoot()
{
    QVERIFY(KdDomDocument::createXmlFile(path(), QStringLiteral("SettingDatas")));
    const QByteArray content = TestFiles::read(path());
    QVERIFY2(content.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\""), content.constData());
    QVERIFY2(content.trimmed().endsWith("<SettingDatas/>"), content.constData());
}

void tst_KdDomDocument::newFileNeedsAnElementName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("with a blank") << QStringLiteral("Setting Datas");
    QTest::newRow("with a bracket") << QStringLiteral("a><b");
}

void tst_KdDomDocument::newFileNeedsAnElementName()
{
    QFETCH(QString, name);
    expectLog(QStringLiteral("could not be read again"));
    QVERIFY(!KdDomDocument::createXmlFile(path(), name));
    QVERIFY(!QFileInfo::exists(path()));
}

void tst_KdDomDocument::savedDocumentIsIndentedAndReadsBack()
{
    const QDomDocument document = parsed("<r><group><name>Mic &lt;1&gt; é 麦</name></group></r>");
    QVERIFY(KdDomDocument::saveXmlContent2File(document, path()));
    QVERIFY(
        TestFiles::read(path()).contains("\n    <group>\n        <name>Mic &lt;1> é 麦</name>\n"));
    QDomDocument again;
    QVERIFY(KdDomDocument::openXmlFile(again, path(), QIODevice::ReadOnly));
    QCOMPARE(again.documentElement().text(), QStringLiteral("Mic <1> é 麦"));
}

void tst_KdDomDocument::savingDeclaresTheEncodingItWrites()
{
    TestFiles::write(path(), "<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE9</r>");
    QDomDocument document;
    QVERIFY(KdDomDocument::openXmlFile(document, path(), QIODevice::ReadWrite));
    QVERIFY(KdDomDocument::saveXmlContent2File(document, path()));
    QVERIFY(!TestFiles::read(path()).contains("8859"));
    QVERIFY(KdDomDocument::openXmlFile(document, path(), QIODevice::ReadWrite));
    QCOMPARE(document.documentElement().text(), QStringLiteral("é"));
}

void tst_KdDomDocument::opensWellFormedFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("bare") << QByteArray("<r><a>1</a></r>");
    QTest::newRow("declared") << QByteArray(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<r>\r\n<a>1</a></r>\r\n");
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF<r><a>1</a></r>");
    QTest::newRow("comment and CDATA") << QByteArray("<!-- c --><r><a><![CDATA[1]]></a></r>");
}

void tst_KdDomDocument::opensWellFormedFiles()
{
    QFETCH(QByteArray, content);
    TestFiles::write(path(), content);
    QDomDocument document;
    QVERIFY(KdDomDocument::openXmlFile(document, path(), QIODevice::ReadWrite));
    QCOMPARE(document.documentElement().firstChildElement(QStringLiteral("a")).text(),
             QStringLiteral("1"));
    QCOMPARE(TestFiles::read(path()), content);
}

void tst_KdDomDocument::badFileLeavesTheDocumentAsItWas_data()
{
    QTest::addColumn<QByteArray>("content");
    const QVector<TestFiles::BadXml> bad = TestFiles::badXml("r", "<a>1</a>");
    for (const TestFiles::BadXml& file : bad) {
        QTest::newRow(file.name) << file.content;
    }
    QTest::newRow("bad UTF-8") << QByteArray("<r>\xC3\x28</r>");
}

void tst_KdDomDocument::badFileLeavesTheDocumentAsItWas()
{
    QFETCH(QByteArray, content);
    TestFiles::write(path(), content);
    QDomDocument document = parsed("<before/>");
    QVERIFY(!KdDomDocument::openXmlFile(document, path(), QIODevice::ReadOnly));
    QVERIFY(!KdDomDocument::openXmlFile(document, path(), QIODevice::ReadWrite));
    QCOMPARE(document.documentElement().tagName(), QStringLiteral("before"));
    QCOMPARE(TestFiles::read(path()), content);
}

void tst_KdDomDocument::whatIsNoFileIsRefused()
{
    const QString pipe = temporaryPath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QDomDocument document;
    const QStringList paths{QString(), documentDir(), pipe, QStringLiteral("/dev/zero")};
    for (const QString& noFile : paths) {
        QVERIFY2(!KdDomDocument::openXmlFile(document, noFile, QIODevice::ReadOnly),
                 qPrintable(noFile));
    }
}

void tst_KdDomDocument::openingNeverMakesAFile()
{
    QDomDocument document;
    QVERIFY(!KdDomDocument::openXmlFile(document, path(), QIODevice::ReadOnly));
    QVERIFY(!KdDomDocument::openXmlFile(document, path(), QIODevice::ReadWrite));
    QVERIFY(!QFileInfo::exists(path()));
}

void tst_KdDomDocument::readWriteNeedsAWritableFile()
{
    TestFiles::write(path(), "<r/>");
    QVERIFY(QFile::setPermissions(path(), QFile::Permissions(0x4444)));
    QVERIFY(QFile::setPermissions(temporaryPath(QString()), QFile::Permissions(0x7755)));
    QDomDocument document;
    const FileFaults::WithoutPrivileges nobody;
    QVERIFY(!KdDomDocument::openXmlFile(document, path(), QIODevice::ReadWrite));
    QVERIFY(KdDomDocument::openXmlFile(document, path(), QIODevice::ReadOnly));
}

void tst_KdDomDocument::unreadableDocumentIsNotWritten()
{
    TestFiles::write(path(), "<old/>");
    QDomDocument document = parsed("<r/>");
    document.documentElement().appendChild(document.createTextNode(QStringLiteral("\x01")));
    expectLog(QStringLiteral("could not be read again"));
    QVERIFY(!KdDomDocument::saveXmlContent2File(document, path()));
    QVERIFY(!KdDomDocument::saveXmlContent2File(QDomDocument(), path()));
    QCOMPARE(TestFiles::read(path()), QByteArray("<old/>"));
}

void tst_KdDomDocument::fullDiskKeepsTheOldFile()
{
    TestFiles::write(path(), "<old/>");
    expectLog(QStringLiteral("could not be written"));
    {
        const FileFaults::FileSizeLimit limit(16);
        QVERIFY(!KdDomDocument::saveXmlContent2File(parsed("<r>new</r>"), path()));
    }
    QCOMPARE(TestFiles::read(path()), QByteArray("<old/>"));
}

void tst_KdDomDocument::lookUpFindsTheFirstAtAnyDepth_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("text");
    QTest::newRow("direct child") << QByteArray("<r><t>1</t></r>") << QStringLiteral("1");
    QTest::newRow("grandchild") << QByteArray("<r><a/><b><c><t>1</t></c></b></r>")
                                << QStringLiteral("1");
    QTest::newRow("document order, not breadth")
        << QByteArray("<r><a><t>1</t></a><t>2</t></r>") << QStringLiteral("1");
    QTest::newRow("after text and comments")
        << QByteArray("<r>x<!-- <t>0</t> --><t>1</t></r>") << QStringLiteral("1");
    QTest::newRow("up again from the deep")
        << QByteArray("<r><a><b><c/></b></a><d><t>1</t></d></r>") << QStringLiteral("1");
    QTest::newRow("none") << QByteArray("<r><a/>t</r>") << QString();
    QTest::newRow("other case") << QByteArray("<r><T>1</T></r>") << QString();
}

void tst_KdDomDocument::lookUpFindsTheFirstAtAnyDepth()
{
    QFETCH(QByteArray, content);
    const QDomDocument document = parsed(content.constData());
    const QDomElement found =
        KdDomDocument::getElementByTagName(document.documentElement(), QStringLiteral("t"));
    QTEST(found.text(), "text");
    QFETCH(QString, text);
    QCOMPARE(found.isNull(), text.isEmpty());
}

void tst_KdDomDocument::lookUpStaysBeneathItsParent()
{
    const QDomDocument document = parsed("<r><t><x/></t><t>after</t></r>");
    const QDomElement first = document.documentElement().firstChildElement();
    QVERIFY(KdDomDocument::getElementByTagName(first, QStringLiteral("t")).isNull());
    QVERIFY(KdDomDocument::getElementByTagName(QDomElement(), QStringLiteral("t")).isNull());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdDomDocument>(argc, argv);
}

#include "tst_KdDomDocument.moc"
