#include <KdWidgets/KdWrapLabel.h>
#include <Support/KdTestCase.h>
#include <Support/WidgetLooks.h>

namespace {

int rowHeight(const QWidget& label)
{
    return qMax(label.fontMetrics().height(), label.fontMetrics().lineSpacing());
}

/** How many pixels letters have touched. */
int inkOf(QWidget& label)
{
    const QImage image = WidgetLooks::image(label);
    const QRgb ground = image.pixel(0, 0);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += image.pixel(x, y) == ground ? 0 : 1;
        }
    }
    return count;
}

} // namespace

class tst_KdWrapLabel : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void isNoWiderThanAllowed_data();
    void isNoWiderThanAllowed();
    void shortTextIsAsWideAsItself();
    void higherWhereItIsNarrower();
    void mostLinesLimitItsHeight();
    void markupIsShownLetterByLetter();
    void rightToLeftTextStandsOnTheRight();
    void lettersAreWholeOnEveryLine();
};

void tst_KdWrapLabel::isNoWiderThanAllowed_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("one word of 4 KB") << QString(4096, QLatin1Char('W'));
    QTest::newRow("words") << QStringLiteral("some words ").repeated(300);
    QTest::newRow("right to left") << QString(QChar(0x5d0)).repeated(4096);
}

void tst_KdWrapLabel::isNoWiderThanAllowed()
{
    QFETCH(QString, text);
    const KdWrapLabel label(text, 240, 0);
    QVERIFY(label.sizeHint().width() <= 240);
    QVERIFY(label.minimumSizeHint().width() < 240);
    QVERIFY(label.heightForWidth(240) > 3 * label.fontMetrics().lineSpacing());
}

void tst_KdWrapLabel::shortTextIsAsWideAsItself()
{
    const KdWrapLabel label(QStringLiteral("Short"), 240, 0);
    QVERIFY(label.sizeHint().width() < 80);
    QCOMPARE(label.sizeHint().height(), rowHeight(label));
    const KdWrapLabel empty(QString(), 240, 0);
    QCOMPARE(empty.sizeHint().height(), rowHeight(empty));
}

void tst_KdWrapLabel::higherWhereItIsNarrower()
{
    const KdWrapLabel label(QStringLiteral("A text of several words"), 240, 0);
    QVERIFY(label.heightForWidth(60) > label.heightForWidth(240));
}

void tst_KdWrapLabel::mostLinesLimitItsHeight()
{
    const KdWrapLabel label(QStringLiteral("word ").repeated(500), 200, 4);
    QCOMPARE(label.sizeHint().height(), 4 * rowHeight(label));
}

void tst_KdWrapLabel::markupIsShownLetterByLetter()
{
    const KdWrapLabel bold(QStringLiteral("<b>x</b>"), 240, 0);
    const KdWrapLabel plain(QStringLiteral("x"), 240, 0);
    QVERIFY(bold.sizeHint().width() > 3 * plain.sizeHint().width());
}

void tst_KdWrapLabel::rightToLeftTextStandsOnTheRight()
{
    KdWrapLabel label(QString(QChar(0x5d0)).repeated(3), 240, 0);
    label.resize(200, 20);
    const QColor ground = WidgetLooks::colorAt(label, {1, 1});
    const QImage shown = WidgetLooks::image(label);
    QImage empty(100, 20, QImage::Format_RGB32);
    empty.fill(ground);
    QCOMPARE(shown.copy(0, 0, 100, 20), empty);
    QVERIFY(shown.copy(100, 0, 100, 20) != empty);
}

void tst_KdWrapLabel::lettersAreWholeOnEveryLine()
{
    for (const QString& text : {QStringLiteral("gjpqy"), QStringLiteral("\u00c4gj\ngjpqy")}) {
        KdWrapLabel label(text, 240, 0);
        label.resize(label.sizeHint());
        const int ink = inkOf(label);
        label.resize(label.width() + 2, label.height() + 20);
        QVERIFY(ink > 0);
        QCOMPARE(ink, inkOf(label));
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdWrapLabel>(argc, argv);
}

#include "tst_KdWrapLabel.moc"
