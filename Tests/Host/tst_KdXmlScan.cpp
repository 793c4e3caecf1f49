#include <KdCore/KdXmlScan.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDomDocument>
#include <QTextCodec>

namespace {

QByteArray nested(int depth)
{
    return QByteArray("<d>").repeated(depth) + QByteArray("</d>").repeated(depth);
}

} // namespace

class tst_KdXmlScan : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void acceptsWhatAnEditorWouldWrite_data();
    void acceptsWhatAnEditorWouldWrite();
    void refusesWhatCouldHarmTheDom_data();
    void refusesWhatCouldHarmTheDom();
    void depthLimitIsExact();
    void elementLimitIsExact();
    void sizeLimitIsExact();
    void refusesBytesThatAreNoUtf8();
    void decodedTextIgnoresItsEncodingDeclaration();
    void forbiddenCharactersAreDropped_data();
    void forbiddenCharactersAreDropped();
    void remainingTextSurvivesAFile();
};

void tst_KdXmlScan::acceptsWhatAnEditorWouldWrite_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("only a root") << QByteArray("<r/>");
    QTest::newRow("declaration, comment, instruction")
        << QByteArray("<?xml version='1.0' encoding='UTF-8'?><!-- c --><?p i?><r>x</r>\n");
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF<r>\xC3\xA9</r>");
    QTest::newRow("document type without entities") << QByteArray("<!DOCTYPE r><r/>");
    QTest::newRow("CDATA and references") << QByteArray("<r><![CDATA[<&>]]>&lt;&#x263A;</r>");
    QTest::newRow("Latin-1") << QByteArray(
        "<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE9</r>");
    QTest::newRow("UTF-16") << QTextCodec::codecForName("UTF-16")->fromUnicode(
        QStringLiteral("<r>é</r>"));
}

void tst_KdXmlScan::acceptsWhatAnEditorWouldWrite()
{
    QFETCH(QByteArray, content);
    QVERIFY(KdXmlScan::isAcceptable(content));
    QDomDocument document;
    QVERIFY(document.setContent(content));
    QCOMPARE(document.documentElement().tagName(), QStringLiteral("r"));
}

void tst_KdXmlScan::refusesWhatCouldHarmTheDom_data()
{
    QTest::addColumn<QByteArray>("content");
    const QVector<TestFiles::BadXml> bad = TestFiles::badXml("r", "<inner/>");
    for (const TestFiles::BadXml& file : bad) {
        QTest::newRow(file.name) << file.content;
    }
    QTest::newRow("parameter entity") << QByteArray("<!DOCTYPE r [<!ENTITY % p 'x'>]><r/>");
}

void tst_KdXmlScan::refusesWhatCouldHarmTheDom()
{
    QFETCH(QByteArray, content);
    QVERIFY(!KdXmlScan::isAcceptable(content));
    QVERIFY(!KdXmlScan::isAcceptable(QString::fromUtf8(content)));
}

void tst_KdXmlScan::depthLimitIsExact()
{
    QVERIFY(KdXmlScan::isAcceptable(nested(KdXmlScan::kMaxDepth)));
    QVERIFY(!KdXmlScan::isAcceptable(nested(KdXmlScan::kMaxDepth + 1)));
}

void tst_KdXmlScan::elementLimitIsExact()
{
    const QByteArray filler = QByteArray("<e/>").repeated(KdXmlScan::kMaxElements - 1);
    QVERIFY(KdXmlScan::isAcceptable("<r>" + filler + "</r>"));
    QVERIFY(!KdXmlScan::isAcceptable("<r>" + filler + "<e/></r>"));
}

void tst_KdXmlScan::sizeLimitIsExact()
{
    const QByteArray filler(KdXmlScan::kMaxBytes - 7, 'x');
    QVERIFY(KdXmlScan::isAcceptable("<r>" + filler + "</r>"));
    QVERIFY(!KdXmlScan::isAcceptable("<r>" + filler + "x</r>"));
    QVERIFY(KdXmlScan::isAcceptable(QString::fromUtf8("<r>" + filler + "</r>")));
    QVERIFY(!KdXmlScan::isAcceptable(QString::fromUtf8("<r>" + filler + "x</r>")));
}

void tst_KdXmlScan::refusesBytesThatAreNoUtf8()
{
    QVERIFY(!KdXmlScan::isAcceptable(QByteArray("<r>\xC3\x28\xFF</r>")));
}

void tst_KdXmlScan::decodedTextIgnoresItsEncodingDeclaration()
{
    QVERIFY(KdXmlScan::isAcceptable(
        QStringLiteral("<?xml version='1.0' encoding='ISO-8859-1'?><r>麦</r>")));
}

void tst_KdXmlScan::forbiddenCharactersAreDropped_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("nothing to drop")
        << QStringLiteral("<USB> \"Mic\" & é\t麦") << QStringLiteral("<USB> \"Mic\" & é\t麦");
    QTest::newRow("line breaks stay") << QStringLiteral("a\r\nb") << QStringLiteral("a\r\nb");
    QTest::newRow("control characters") << QStringLiteral("a\x01\x1F"
                                                          "b")
                                        << QStringLiteral("ab");
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(0) + QStringLiteral("b"))
                         << QStringLiteral("ab");
    QTest::newRow("non-character")
        << QString(QStringLiteral("a") + QChar(0xFFFE)) << QStringLiteral("a");
    QTest::newRow("half a pair") << QString(QStringLiteral("a") + QChar(0xD83C) +
                                            QStringLiteral("b"))
                                 << QStringLiteral("a\uFFFDb");
    QTest::newRow("a whole pair") << QStringLiteral("🎤") << QStringLiteral("🎤");
}

void tst_KdXmlScan::forbiddenCharactersAreDropped()
{
    QFETCH(QString, text);
    QTEST(KdXmlScan::withoutForbiddenCharacters(text), "kept");
}

void tst_KdXmlScan::remainingTextSurvivesAFile()
{
    QString all;
    for (ushort character = 1; character != 0; ++character) {
        all.append(QChar(character));
    }
    const QString text = KdXmlScan::withoutForbiddenCharacters(all);
    QDomDocument document;
    document.appendChild(document.createElement(QStringLiteral("r")));
    document.documentElement().appendChild(document.createTextNode(text));
    const QByteArray content = document.toByteArray();
    QVERIFY(KdXmlScan::isAcceptable(content));
    QVERIFY(document.setContent(content));
    QCOMPARE(document.documentElement().text(), text);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdXmlScan>(argc, argv);
}

#include "tst_KdXmlScan.moc"
