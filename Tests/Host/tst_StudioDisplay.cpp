#include "Support/KdTestCase.h"

#include <Studio/StudioDisplay.h>

class tst_StudioDisplay : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void missingDisplayIsSaidInWords_data();
    void missingDisplayIsSaidInWords();
};

void tst_StudioDisplay::missingDisplayIsSaidInWords_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<bool>("missing");

    QTest::newRow("nothing") << QStringList() << true;
    QTest::newRow("empty") << QStringList{QStringLiteral("DISPLAY="),
                                          QStringLiteral("WAYLAND_DISPLAY=")}
                           << true;
    QTest::newRow("X11") << QStringList{QStringLiteral("DISPLAY=:0")} << false;
    QTest::newRow("Wayland") << QStringList{QStringLiteral("WAYLAND_DISPLAY=wayland-0")} << false;
    QTest::newRow("platform without a display")
        << QStringList{QStringLiteral("QT_QPA_PLATFORM=offscreen")} << false;
    QTest::newRow("X11 named, none there")
        << QStringList{QStringLiteral("QT_QPA_PLATFORM=xcb")} << true;
}

void tst_StudioDisplay::missingDisplayIsSaidInWords()
{
    QFETCH(QStringList, variables);
    QFETCH(bool, missing);
    QProcessEnvironment environment;
    for (const QString& variable : qAsConst(variables)) {
        environment.insert(variable.section(QLatin1Char('='), 0, 0),
                           variable.section(QLatin1Char('='), 1));
    }
    const QString text = StudioDisplay::missingText(environment);
    QCOMPARE(!text.isEmpty(), missing);
    QCOMPARE(text.contains(QStringLiteral("no display")), missing);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioDisplay>(argc, argv);
}

#include "tst_StudioDisplay.moc"
