#include "PseudoTranslator.h"

#include <Support/KdTestCase.h>

class tst_PseudoTranslator : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void marksAndLengthensWhileItLives();
    void findsWhatWasNotTranslated_data();
    void findsWhatWasNotTranslated();
};

void tst_PseudoTranslator::marksAndLengthensWhileItLives()
{
    {
        const PseudoTranslator pseudo;
        const QString text = tr("Save to folder");
        QVERIFY(text.size() >= 18);
        QVERIFY(text.contains(QStringLiteral("Save to folder")));
        QCOMPARE(PseudoTranslator::untranslatedPart(text), QString());
    }
    QCOMPARE(tr("Save to folder"), QStringLiteral("Save to folder"));
}

void tst_PseudoTranslator::findsWhatWasNotTranslated_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");

    const QString marked = QStringLiteral("\u27e6Start (%1)~~~\u27e7");
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("plain") << QStringLiteral("OK") << QStringLiteral("OK");
    QTest::newRow("argument that is translated")
        << marked.arg(QStringLiteral("\u27e6Space~\u27e7")) << QString();
    QTest::newRow("beside a translation")
        << marked + QStringLiteral(" 12 MB") << QStringLiteral(" 12 MB");
    QTest::newRow("rich text") << QStringLiteral("<p>%1<b>here</b></p>").arg(marked)
                               << QStringLiteral("here");
}

void tst_PseudoTranslator::findsWhatWasNotTranslated()
{
    QFETCH(QString, text);
    QFETCH(QString, left);
    QCOMPARE(PseudoTranslator::untranslatedPart(text), left);
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_PseudoTranslator>(argc, argv);
}

#include "tst_PseudoTranslator.moc"
