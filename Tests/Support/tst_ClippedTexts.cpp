#include "ClippedTexts.h"

#include <Support/KdTestCase.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

class tst_ClippedTexts : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsNarrowLabels();
    void findsLowWrappedLabels();
    void findsNarrowButtons();
    void findsChoicesThatAreNotSelected();
    void ignoresHiddenWidgets();
};

void tst_ClippedTexts::findsNarrowLabels()
{
    QWidget window;
    QLabel label(QStringLiteral("Sample rate"), &window);
    label.setObjectName(QStringLiteral("title"));
    label.resize(label.sizeHint());
    QVERIFY(KdTest::clippedTexts(window).isEmpty());
    label.resize(label.width() - 4, label.height());
    QCOMPARE(KdTest::clippedTexts(window),
             QStringList{QStringLiteral("QLabel title: Sample rate")});
}

void tst_ClippedTexts::findsLowWrappedLabels()
{
    QWidget window;
    QLabel label(QStringLiteral("A text that does not fit into one line"), &window);
    label.setWordWrap(true);
    label.resize(100, label.heightForWidth(100));
    QVERIFY(KdTest::clippedTexts(window).isEmpty());
    label.resize(100, label.height() / 2);
    QCOMPARE(KdTest::clippedTexts(window).size(), 1);
}

void tst_ClippedTexts::findsNarrowButtons()
{
    QWidget window;
    QPushButton button(QStringLiteral("Take over everything"), &window);
    QPushButton nameless(&window);
    nameless.resize(1, 1);
    button.resize(button.sizeHint());
    QVERIFY(KdTest::clippedTexts(window).isEmpty());
    button.resize(button.width() - 1, button.height());
    QCOMPARE(KdTest::clippedTexts(window).size(), 1);
}

void tst_ClippedTexts::findsChoicesThatAreNotSelected()
{
    QWidget window;
    QComboBox combo(&window);
    combo.addItems({QStringLiteral("a"), QStringLiteral("a choice with a very long name")});
    combo.resize(400, 30);
    QVERIFY(KdTest::clippedTexts(window).isEmpty());
    combo.resize(100, 30);
    const QStringList clipped = KdTest::clippedTexts(window);
    QCOMPARE(clipped.size(), 1);
    QVERIFY(clipped.first().endsWith(QStringLiteral("a choice with a very long name")));
}

void tst_ClippedTexts::ignoresHiddenWidgets()
{
    QWidget window;
    QLabel label(QStringLiteral("Sample rate"), &window);
    label.resize(3, 3);
    label.hide();
    QVERIFY(KdTest::clippedTexts(window).isEmpty());
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_ClippedTexts>(argc, argv);
}

#include "tst_ClippedTexts.moc"
