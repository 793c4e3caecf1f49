#include "Support/KdTestCase.h"

#include <Studio/StudioLanguages.h>
#include <Studio/StudioTakeModel.h>

class tst_StudioLanguages : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyLanguageOfTheMenuIsSpoken_data();
    void everyLanguageOfTheMenuIsSpoken();
    void unknownLanguageChangesNothing();
    void goingBackToEnglishWorks();

private:
    static QString missingText()
    {
        StudioTake take;
        take.state = StudioTake::State::Missing;
        return describeTake(take);
    }
};

void tst_StudioLanguages::everyLanguageOfTheMenuIsSpoken_data()
{
    QTest::addColumn<QString>("code");
    const QVector<StudioLanguages::Language> languages = StudioLanguages::all();
    for (const StudioLanguages::Language& language : languages) {
        QTest::newRow(qPrintable(language.code)) << language.code;
    }
}

void tst_StudioLanguages::everyLanguageOfTheMenuIsSpoken()
{
    QFETCH(QString, code);
    StudioLanguages languages;
    QVERIFY(languages.use(code));
    QCOMPARE(languages.code(), code);
    QCOMPARE(missingText() == QStringLiteral("The file is missing"), code == QLatin1String("en"));
}

void tst_StudioLanguages::unknownLanguageChangesNothing()
{
    StudioLanguages languages;
    QVERIFY(languages.use(QStringLiteral("de")));
    const QString text = missingText();
    QVERIFY(!languages.use(QStringLiteral("fr")));
    QVERIFY(!languages.use(QString()));
    QCOMPARE(languages.code(), QStringLiteral("de"));
    QCOMPARE(missingText(), text);
}

void tst_StudioLanguages::goingBackToEnglishWorks()
{
    {
        StudioLanguages languages;
        languages.use(QStringLiteral("de"));
        languages.use(QStringLiteral("en"));
        QCOMPARE(missingText(), QStringLiteral("The file is missing"));
        languages.use(QStringLiteral("zh_CN"));
    }
    QCOMPARE(missingText(), QStringLiteral("The file is missing"));
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_StudioLanguages>(argc, argv);
}

#include "tst_StudioLanguages.moc"
