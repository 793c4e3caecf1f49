#include <KdCore/KdXmlScan.h>
#include <Support/CpuTimer.h>
#include <Support/KdTestCase.h>
#include <Support/TestFiles.h>

#include <QDomDocument>
#include <QTextCodec>

namespace {

QString nested(int depth)
{
    return QStringLiteral("<d>").repeated(depth) + QStringLiteral("</d>").repeated(depth);
}

/** As many numbered pieces as make a parser that compares each with all others take minutes. */
QByteArray numbered(const char* before, const char* after)
{
    QByteArray all;
    for (int i = 0; i < 100000; ++i) {
        all += before + QByteArray::number(i) + after;
    }
    return all;
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
    void attributeLimitIsExact();
    void textThatLooksLikeMarkupIsNoMarkup();
    void unendingMarkupIsRefused_data();
    void unendingMarkupIsRefused();
    void contentMustKeepToItsEncoding_data();
    void contentMustKeepToItsEncoding();
    void decodedTextIgnoresItsEncodingDeclaration();
    void forbiddenCharactersAreDropped_data();
    void forbiddenCharactersAreDropped();
    void remainingTextSurvivesAFile();
};

void tst_KdXmlScan::acceptsWhatAnEditorWouldWrite_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("inner");
    QTest::newRow("only a root") << QByteArray("<r/>") << QString();
    QTest::newRow("declaration, comment, instruction")
        << QByteArray("<?xml version='1.0' encoding='UTF-8'?><!-- c --><?p i?><r>x</r>\n")
        << QStringLiteral("x");
    QTest::newRow("byte order mark")
        << QByteArray("\xEF\xBB\xBF<r>\xC3\xA9</r>") << QStringLiteral("é");
    QTest::newRow("document type without declarations")
        << QByteArray("<!DOCTYPE r><r>x</r>") << QStringLiteral("x");
    QTest::newRow("CDATA and references")
        << QByteArray("<r><![CDATA[<&>]]>&lt;&#x263A;</r>") << QStringLiteral("<&><☺");
    QTest::newRow("Latin-1") << QByteArray("<?xml version='1.0' encoding='ISO-8859-1'?><r>\xE9</r>")
                             << QStringLiteral("é");
    QTest::newRow("UTF-16") << QTextCodec::codecForName("UTF-16")->fromUnicode(
                                   QStringLiteral("<r>é</r>"))
                            << QStringLiteral("é");
}

void tst_KdXmlScan::acceptsWhatAnEditorWouldWrite()
{
    QFETCH(QByteArray, content);
    const std::optional<QString> text = KdXmlScan::decode(content);
    QVERIFY(text.has_value());
    QVERIFY(KdXmlScan::isAcceptable(*text));
    QDomDocument document;
    QVERIFY(document.setContent(*text));
    QCOMPARE(document.documentElement().tagName(), QStringLiteral("r"));
    QTEST(document.documentElement().text(), "inner");
}

void tst_KdXmlScan::refusesWhatCouldHarmTheDom_data()
{
    QTest::addColumn<QByteArray>("content");
    const QVector<TestFiles::BadXml> bad = TestFiles::badXml("r", "<inner/>");
    for (const TestFiles::BadXml& file : bad) {
        QTest::newRow(file.name) << file.content;
    }
    QTest::newRow("parameter entity") << QByteArray("<!DOCTYPE r [<!ENTITY % p 'x'>]><r/>");
    QTest::newRow("declarations behind a quoted bracket")
        << QByteArray("<!DOCTYPE r SYSTEM '><!--' [<!ENTITY e 'x'>]><r>&e;</r>");
    QTest::newRow("many default attributes")
        << "<!DOCTYPE r [" + numbered("<!ATTLIST r a", " CDATA 'x'>") + "]><r/>";
    QTest::newRow("many attributes") << "<r" + numbered(" a", "=''") + "/>";
    QTest::newRow("many attributes behind quoted markup")
        << "<r q='><!--'" + numbered(" a", "=''") + "/>";
}

void tst_KdXmlScan::refusesWhatCouldHarmTheDom()
{
    QFETCH(QByteArray, content);
    CpuTimer timer;
    timer.start();
    QVERIFY(!KdXmlScan::isAcceptable(KdXmlScan::decode(content).value_or(QString())));
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
}

void tst_KdXmlScan::depthLimitIsExact()
{
    QVERIFY(KdXmlScan::isAcceptable(nested(KdXmlScan::kMaxDepth)));
    QVERIFY(!KdXmlScan::isAcceptable(nested(KdXmlScan::kMaxDepth + 1)));
}

void tst_KdXmlScan::elementLimitIsExact()
{
    const QString filler = QStringLiteral("<e/>").repeated(KdXmlScan::kMaxElements - 1);
    QVERIFY(KdXmlScan::isAcceptable(QStringLiteral("<r>") + filler + QStringLiteral("</r>")));
    QVERIFY(!KdXmlScan::isAcceptable(QStringLiteral("<r>") + filler + QStringLiteral("<e/></r>")));
}

void tst_KdXmlScan::sizeLimitIsExact()
{
    const QString filler(KdXmlScan::kMaxBytes - 7, QLatin1Char('x'));
    QVERIFY(KdXmlScan::isAcceptable(QStringLiteral("<r>") + filler + QStringLiteral("</r>")));
    QVERIFY(!KdXmlScan::isAcceptable(QStringLiteral("<r>") + filler + QStringLiteral("x</r>")));
}

void tst_KdXmlScan::attributeLimitIsExact()
{
    QString attributes;
    for (int i = 0; i < KdXmlScan::kMaxAttributes; ++i) {
        attributes += QStringLiteral(" a%1='=&gt;'").arg(i);
    }
    QVERIFY(KdXmlScan::isAcceptable(QStringLiteral("<r%1><e%1/></r>").arg(attributes)));
    QVERIFY(!KdXmlScan::isAcceptable(QStringLiteral("<r%1 b=''/>").arg(attributes)));
}

void tst_KdXmlScan::textThatLooksLikeMarkupIsNoMarkup()
{
    const QString bad = QStringLiteral("<!DOCTYPE [") + QStringLiteral("=").repeated(1000);
    QVERIFY(
        KdXmlScan::isAcceptable(QStringLiteral("<!--%1--><r><![CDATA[%1]]><?p %1?></r>").arg(bad)));
    QVERIFY(KdXmlScan::isAcceptable(
        QStringLiteral("<r a='!DOCTYPE ['>%1</r>").arg(QString(1000, QLatin1Char('=')))));
    QVERIFY(KdXmlScan::isAcceptable(QStringLiteral("<!DOCTYPE r SYSTEM '['><r/>")));
}

void tst_KdXmlScan::unendingMarkupIsRefused_data()
{
    QTest::addColumn<QString>("text");
    for (const char* start :
         {"<", "<!", "<!--", "<![CDATA[", "<?", "<!DOCTYPE r", "<r a='", "<r", "<r><"}) {
        QTest::newRow(start) << QString::fromLatin1(start);
    }
}

void tst_KdXmlScan::unendingMarkupIsRefused()
{
    QFETCH(QString, text);
    QVERIFY(!KdXmlScan::isAcceptable(text));
}

void tst_KdXmlScan::contentMustKeepToItsEncoding_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("no UTF-8") << QByteArray("<r>\xC3\x28\xFF</r>");
    QTest::newRow("UTF-8 cut within a character") << QByteArray("<r/>\xC3");
    QTest::newRow("UTF-16 cut within a character") << QByteArray("\xFF\xFE<\0r", 5);
    QTest::newRow("unknown encoding")
        << QByteArray("<?xml version='1.0' encoding='nonsense'?><r/>");
}

void tst_KdXmlScan::contentMustKeepToItsEncoding()
{
    QFETCH(QByteArray, content);
    QVERIFY(!KdXmlScan::decode(content));
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
    QVERIFY(KdXmlScan::isAcceptable(QString::fromUtf8(content)));
    QVERIFY(document.setContent(content));
    QCOMPARE(document.documentElement().text(), text);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdXmlScan>(argc, argv);
}

#include "tst_KdXmlScan.moc"
