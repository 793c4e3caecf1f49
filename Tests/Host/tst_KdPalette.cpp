#include <KdWidgets/KdPalette.h>
#include <Support/KdTestCase.h>

class tst_KdPalette : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsColoursByToken();
    void ignoresLinesThatAreNoColours_data();
    void ignoresLinesThatAreNoColours();
    void fillsPlaceholders_data();
    void fillsPlaceholders();
    void leavesWhatItCannotRead_data();
    void leavesWhatItCannotRead();

private:
    static KdSkin::KdPalette palette()
    {
        return KdSkin::KdPalette::parse(
            QStringLiteral("dusk"),
            QStringLiteral("text #f0f0f0\nfield #101010\ntext-quiet #808080\n"));
    }
};

void tst_KdPalette::readsColoursByToken()
{
    QCOMPARE(palette().color(QStringLiteral("text")), QColor(0xf0, 0xf0, 0xf0));
    QCOMPARE(palette().color(QStringLiteral("text-quiet")), QColor(0x80, 0x80, 0x80));
    QVERIFY(!palette().color(QStringLiteral("accent")).isValid());
    QVERIFY(!palette().isEmpty());
}

void tst_KdPalette::ignoresLinesThatAreNoColours_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << QString();
    QTest::newRow("blank lines") << QStringLiteral("\n  \n");
    QTest::newRow("token alone") << QStringLiteral("text");
    QTest::newRow("no colour") << QStringLiteral("text #12345");
    QTest::newRow("too much") << QStringLiteral("text #ffffff #000000");
}

void tst_KdPalette::ignoresLinesThatAreNoColours()
{
    QFETCH(QString, text);
    QVERIFY(KdSkin::KdPalette::parse(QStringLiteral("dusk"), text).isEmpty());
}

void tst_KdPalette::fillsPlaceholders_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("filled");

    QTest::newRow("nothing to fill")
        << QStringLiteral("QWidget { margin: 0 }") << QStringLiteral("QWidget { margin: 0 }");
    QTest::newRow("colour") << QStringLiteral("color: @{text};")
                            << QStringLiteral("color: #f0f0f0;");
    QTest::newRow("token with a hyphen")
        << QStringLiteral("@{text-quiet}") << QStringLiteral("#808080");
    QTest::newRow("opacity") << QStringLiteral("@{text 40%}")
                             << QStringLiteral("rgba(240, 240, 240, 102)");
    QTest::newRow("nothing mixed in")
        << QStringLiteral("@{field+text 0%}") << QStringLiteral("#101010");
    QTest::newRow("half mixed in")
        << QStringLiteral("@{field+text 50%}") << QStringLiteral("#808080");
    QTest::newRow("icon") << QStringLiteral("url(@{icon chevron-down text-quiet})")
                          << QStringLiteral("url(:/KdSkin/icons/dusk/chevron-down_text-quiet.svg)");
    QTest::newRow("faint icon") << QStringLiteral("@{icon check text 40%}")
                                << QStringLiteral(":/KdSkin/icons/dusk/check_text_40.svg");
    QTest::newRow("several") << QStringLiteral("a: @{text}; b: @{field}")
                             << QStringLiteral("a: #f0f0f0; b: #101010");
}

void tst_KdPalette::fillsPlaceholders()
{
    QFETCH(QString, sheet);
    QFETCH(QString, filled);
    QCOMPARE(palette().fill(sheet), filled);
}

void tst_KdPalette::leavesWhatItCannotRead_data()
{
    QTest::addColumn<QString>("sheet");

    QTest::newRow("unknown token") << QStringLiteral("@{accent}");
    QTest::newRow("unknown token mixed in") << QStringLiteral("@{text+accent 5%}");
    QTest::newRow("no form") << QStringLiteral("@{text 40}");
    QTest::newRow("left open") << QStringLiteral("color: @{text");
}

void tst_KdPalette::leavesWhatItCannotRead()
{
    QFETCH(QString, sheet);
    QCOMPARE(palette().fill(sheet), sheet);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdPalette>(argc, argv);
}

#include "tst_KdPalette.moc"
