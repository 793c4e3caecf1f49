#include <KdWidgets/KdPalette.h>
#include <KdWidgets/KdSkinManager.h>
#include <Support/KdTestCase.h>
#include <Support/TextContrast.h>
#include <Support/WidgetLooks.h>

#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QVBoxLayout>

using KdSkin::KdSkinManager;

namespace {

constexpr double kTextRatio = 4.5;
constexpr double kMarkRatio = 3.0;

KdSkin::KdPalette paletteOf(const QString& skin)
{
    QFile file(QStringLiteral(":/KdSkin/%1.palette").arg(skin));
    return file.open(QIODevice::ReadOnly)
               ? KdSkin::KdPalette::parse(skin, QString::fromUtf8(file.readAll()))
               : KdSkin::KdPalette();
}

/** @param tone as in the sheets: a token, or one with so much of another mixed in */
QColor colorOf(const QString& skin, const QString& tone)
{
    return QColor(paletteOf(skin).fill(QStringLiteral("@{%1}").arg(tone)));
}

} // namespace

/** That texts and marks stand out from their ground, in the colours of both skins. */
class tst_KdSkinContrast : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void textIsReadableOnItsGround_data();
    void textIsReadableOnItsGround();
    void marksStandOutFromTheirGround_data();
    void marksStandOutFromTheirGround();
    void coloursOfTheSystemAreReadable_data();
    void coloursOfTheSystemAreReadable();
    void linksAndPlaceholdersAreReadable_data();
    void linksAndPlaceholdersAreReadable();

private:
    static KdSkinManager& skin() { return *KdSkinManager::instance(); }
    static QStringList skins() { return KdSkinManager::instance()->skins(); }
};

void tst_KdSkinContrast::cleanup()
{
    skin().setSkin(QStringLiteral("dark"));
    KdTestCase::cleanup();
}

void tst_KdSkinContrast::textIsReadableOnItsGround_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("ground");

    const auto row = [](const char* state, const char* text, const char* ground) {
        for (const QString& name : skins()) {
            QTest::addRow("%s: %s, %s on %s", qPrintable(name), state, text, ground)
                << name << QString::fromLatin1(text) << QString::fromLatin1(ground);
        }
    };
    for (const char* ground : {"window", "surface", "field"}) {
        row("plain", "text", ground);
        row("caption", "text-quiet", ground);
        row("link", "accent+text 25%", ground);
    }
    row("chosen entry", "on-accent", "accent");
    row("button under the mouse", "text", "field+text 6%");
    row("pressed button", "text", "field+text 14%");
    row("first button under the mouse", "on-accent", "accent+text 12%");
    row("first button, pressed", "on-accent", "accent+window 12%");
    row("tool button under the mouse", "text", "window+text 8%");
    row("pressed tool button", "text", "window+text 16%");
    row("placeholder under the mouse", "text-quiet", "field+text 6%");
    row("bar", "text-quiet", "surface+text 6%");
    row("row under the mouse", "text-quiet", "surface+text 6%");
    row("warning row under the mouse", "warn", "surface+text 6%");
    row("chosen row", "text", "surface+accent 18%");
    row("chosen row", "text-quiet", "surface+accent 18%");
    row("chosen warning row", "warn", "surface+accent 18%");
    row("chosen row of a field", "text", "field+accent 18%");
    row("tab with the focus", "accent", "window");
    row("recording", "record", "window");
}

void tst_KdSkinContrast::textIsReadableOnItsGround()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, ground);
    const double ratio = WidgetLooks::contrast(colorOf(name, text), colorOf(name, ground));
    QVERIFY2(ratio >= kTextRatio, qPrintable(QString::number(ratio)));
}

void tst_KdSkinContrast::marksStandOutFromTheirGround_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("mark");

    for (const QString& name : skins()) {
        for (const char* mark : {"accent", "record", "good", "warn"}) {
            QTest::addRow("%s: %s", qPrintable(name), mark) << name << QString::fromLatin1(mark);
        }
    }
}

void tst_KdSkinContrast::marksStandOutFromTheirGround()
{
    QFETCH(QString, name);
    QFETCH(QString, mark);
    for (const char* ground : {"window", "surface"}) {
        const QColor color = colorOf(name, QString::fromLatin1(ground));
        QVERIFY(WidgetLooks::contrast(colorOf(name, mark), color) >= kMarkRatio);
    }
}

void tst_KdSkinContrast::coloursOfTheSystemAreReadable_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("text");
    QTest::addColumn<int>("ground");

    const auto row = [](const char* what, QPalette::ColorRole text, QPalette::ColorRole ground) {
        for (const QString& name : skins()) {
            QTest::addRow("%s: %s", qPrintable(name), what) << name << int(text) << int(ground);
        }
    };
    row("window", QPalette::WindowText, QPalette::Window);
    row("field", QPalette::Text, QPalette::Base);
    row("every other row", QPalette::Text, QPalette::AlternateBase);
    row("button", QPalette::ButtonText, QPalette::Button);
    row("tool tip", QPalette::ToolTipText, QPalette::ToolTipBase);
    row("selection", QPalette::HighlightedText, QPalette::Highlight);
    row("placeholder", QPalette::PlaceholderText, QPalette::Base);
    for (const auto link : {QPalette::Link, QPalette::LinkVisited}) {
        const char* const what = link == QPalette::Link ? "link" : "visited link";
        row(what, link, QPalette::Window);
        row(what, link, QPalette::Base);
        row(what, link, QPalette::ToolTipBase);
    }
}

void tst_KdSkinContrast::coloursOfTheSystemAreReadable()
{
    QFETCH(QString, name);
    QFETCH(int, text);
    QFETCH(int, ground);
    QVERIFY(skin().setSkin(name));
    const QPalette colors = QApplication::palette();
    const double ratio =
        WidgetLooks::contrast(colors.color(static_cast<QPalette::ColorRole>(text)),
                              colors.color(static_cast<QPalette::ColorRole>(ground)));
    QVERIFY2(ratio >= kTextRatio, qPrintable(QString::number(ratio)));
}

void tst_KdSkinContrast::linksAndPlaceholdersAreReadable_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& name : skins()) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

// No window of ours has one today; the kit's users may.
void tst_KdSkinContrast::linksAndPlaceholdersAreReadable()
{
    QFETCH(QString, name);
    QVERIFY(skin().setSkin(name));
    QDialog dialog;
    auto* const column = new QVBoxLayout(&dialog);
    column->addWidget(new QLabel(QStringLiteral("<a href='x'>Link</a>"), &dialog));
    auto* const empty = new QLineEdit(&dialog);
    empty->setPlaceholderText(QStringLiteral("Placeholder"));
    column->addWidget(empty);
    auto* const selected = new QLineEdit(QStringLiteral("Selected"), &dialog);
    selected->selectAll();
    column->addWidget(selected);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(KdTest::faintTexts(dialog, kTextRatio), QStringList());
    QCOMPARE(KdTest::faintUnderMouse(dialog, kTextRatio, kMarkRatio), QStringList());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdSkinContrast>(argc, argv);
}

#include "tst_KdSkinContrast.moc"
