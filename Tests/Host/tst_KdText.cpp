#include <KdWidgets/KdSkinManager.h>
#include <KdWidgets/KdText.h>
#include <Support/KdTestCase.h>

#include <QFontMetrics>

class tst_KdText : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void oneLineHasNoBreaks_data();
    void oneLineHasNoBreaks();
    void breaksBetweenWords();
    void breaksAWordThatIsWiderThanALine();
    void keepsLineBreaks();
    void tooManyLinesEndInAnEllipsis();
    void noLineIsWiderThanAllowed_data();
    void noLineIsWiderThanAllowed();
    void toolTipShowsLetterByLetter_data();
    void toolTipShowsLetterByLetter();
    void longToolTipIsCutOff();
    void shortcutIsQuiet_data();
    void shortcutIsQuiet();
};

void tst_KdText::oneLineHasNoBreaks_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("line");

    QTest::newRow("plain") << QStringLiteral("USB Mic") << QStringLiteral("USB Mic");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("line feed") << QStringLiteral("a\nb") << QStringLiteral("a b");
    QTest::newRow("tab and return") << QStringLiteral("a\r\tb") << QStringLiteral("a  b");
    QTest::newRow("separators") << QString(QChar::LineSeparator) + QChar::ParagraphSeparator
                                << QStringLiteral("  ");
    QTest::newRow("bell") << QStringLiteral("a\x07z") << QStringLiteral("a z");
    QTest::newRow("markup stays") << QStringLiteral("<b>&amp;</b>")
                                  << QStringLiteral("<b>&amp;</b>");
}

void tst_KdText::oneLineHasNoBreaks()
{
    QFETCH(QString, text);
    QFETCH(QString, line);
    QCOMPARE(KdText::singleLine(text), line);
}

void tst_KdText::breaksBetweenWords()
{
    const QFont font;
    const int width = QFontMetrics(font).horizontalAdvance(QStringLiteral("first second")) + 2;
    const QStringList lines = KdText::wrapped(QStringLiteral("first second word"), font, width);
    QCOMPARE(lines.size(), 2);
    QCOMPARE(lines.at(0).trimmed(), QStringLiteral("first second"));
    QCOMPARE(lines.at(1), QStringLiteral("word"));
}

void tst_KdText::breaksAWordThatIsWiderThanALine()
{
    const QStringList lines = KdText::wrapped(QString(100, QLatin1Char('W')), QFont(), 120);
    QVERIFY(lines.size() > 5);
    QCOMPARE(lines.join(QString()), QString(100, QLatin1Char('W')));
}

void tst_KdText::keepsLineBreaks()
{
    QCOMPARE(KdText::wrapped(QStringLiteral("a\n\nb"), QFont(), 100).size(), 3);
    QCOMPARE(KdText::wrapped(QString(), QFont(), 100).join(QString()), QString());
}

void tst_KdText::tooManyLinesEndInAnEllipsis()
{
    const QString text = QStringLiteral("word ").repeated(100);
    const QStringList lines = KdText::wrapped(text, QFont(), 150, 3);
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.last().endsWith(QChar(0x2026)));
    QVERIFY(!lines.first().contains(QChar(0x2026)));
    const QStringList whole = KdText::wrapped(QStringLiteral("one\ntwo\nthree"), QFont(), 150, 3);
    QCOMPARE(whole.last(), QStringLiteral("three"));
}

void tst_KdText::noLineIsWiderThanAllowed_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("one word of 4 KB") << QString(4096, QLatin1Char('W'));
    QTest::newRow("words") << QStringLiteral("some words ").repeated(300);
    QTest::newRow("right to left") << QString(QChar(0x5d0)).repeated(500);
    QTest::newRow("breaks") << QStringLiteral("a\n").repeated(300);
    QTest::newRow("wide characters") << QString(QChar(0x4e00)).repeated(300);
}

void tst_KdText::noLineIsWiderThanAllowed()
{
    QFETCH(QString, text);
    const QFont font;
    const QStringList lines = KdText::wrapped(text, font, 200, 40);
    QVERIFY(lines.size() <= 40);
    for (const QString& line : lines) {
        // A blank at the end of a line hangs over, nobody sees it.
        QString seen = line;
        while (seen.endsWith(QLatin1Char(' '))) {
            seen.chop(1);
        }
        QVERIFY2(QFontMetrics(font).horizontalAdvance(seen) <= 201, qPrintable(seen));
    }
}

void tst_KdText::toolTipShowsLetterByLetter_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tip");

    QTest::newRow("none") << QString() << QString();
    QTest::newRow("plain") << QStringLiteral("Close") << QStringLiteral("<qt>Close</qt>");
    QTest::newRow("markup") << QStringLiteral("<img src='x'>&")
                            << QStringLiteral("<qt>&lt;img src='x'&gt;&amp;</qt>");
    QTest::newRow("lines") << QStringLiteral("a\nb") << QStringLiteral("<qt>a<br/>b</qt>");
}

void tst_KdText::toolTipShowsLetterByLetter()
{
    QFETCH(QString, text);
    QFETCH(QString, tip);
    QCOMPARE(KdText::toolTip(text), tip);
}

void tst_KdText::longToolTipIsCutOff()
{
    const QString tip = KdText::toolTip(QString(4096, QLatin1Char('W')));
    QVERIFY(tip.size() < 600);
    QVERIFY(tip.contains(QChar(0x2026)));
}

void tst_KdText::shortcutIsQuiet_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("quiet");

    QTest::newRow("key") << QStringLiteral("Start (R)") << QStringLiteral(" (R)");
    QTest::newRow("several keys") << QStringLiteral("Stop (Ctrl+Shift+R)")
                                  << QStringLiteral(" (Ctrl+Shift+R)");
    QTest::newRow("markup as key") << QStringLiteral("Stop (<)") << QStringLiteral(" (&lt;)");
    QTest::newRow("no key") << QStringLiteral("Pause") << QString();
    QTest::newRow("brackets elsewhere") << QStringLiteral("(R) Start") << QString();
    QTest::newRow("empty brackets") << QStringLiteral("Start ()") << QString();
}

void tst_KdText::shortcutIsQuiet()
{
    QFETCH(QString, text);
    QFETCH(QString, quiet);
    const QString color = KdSkin::KdSkinManager::instance()->color(KdSkin::TextQuiet).name();
    const QString tip = KdText::toolTipWithShortcut(text);
    QCOMPARE(tip.contains(color), !quiet.isEmpty());
    if (!quiet.isEmpty()) {
        QVERIFY2(tip.contains(QLatin1Char('>') + quiet + QStringLiteral("</span>")),
                 qPrintable(tip));
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdText>(argc, argv);
}

#include "tst_KdText.moc"
