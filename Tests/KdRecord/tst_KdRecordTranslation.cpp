#include <KdRecord/KAdvanceSettings.h>
#include <KdRecord/KdRecordTranslation.h>

#include <Support/KdTestCase.h>

#include <QDomDocument>
#include <QFile>
#include <QProcess>
#include <QTranslator>

namespace {

/** One text of a .ts file. */
struct Message
{
    QString context;
    QString source;
    QStringList translations;
    bool finished = false;

    QString key() const { return context + QStringLiteral(": ") + source; }
};

QStringList translationsOf(const QDomElement& message)
{
    const QDomElement translation = message.firstChildElement(QStringLiteral("translation"));
    const QDomNodeList forms = translation.elementsByTagName(QStringLiteral("numerusform"));
    if (forms.isEmpty()) {
        return {translation.text()};
    }
    QStringList texts;
    for (int i = 0; i < forms.size(); ++i) {
        texts.append(forms.at(i).toElement().text());
    }
    return texts;
}

QVector<Message> readTs(const QString& path)
{
    QFile file(path);
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file)) {
        return {};
    }
    QVector<Message> messages;
    const QDomNodeList nodes = document.elementsByTagName(QStringLiteral("message"));
    for (int i = 0; i < nodes.size(); ++i) {
        const QDomElement node = nodes.at(i).toElement();
        const QDomElement context = node.parentNode().firstChildElement(QStringLiteral("name"));
        const QString state =
            node.firstChildElement(QStringLiteral("translation")).attribute(QStringLiteral("type"));
        messages.append({context.text(), node.firstChildElement(QStringLiteral("source")).text(),
                         translationsOf(node), state.isEmpty()});
    }
    return messages;
}

QString tsFile(const QString& language)
{
    return QStringLiteral(KDRECORD_SOURCE_DIR) +
           QStringLiteral("/Src/KdRecord/Resources/translations/KdRecord_%1.ts").arg(language);
}

QStringList placeholders(const QString& text)
{
    QStringList found;
    auto matches = QRegularExpression(QStringLiteral("%(L?\\d|n)")).globalMatch(text);
    while (matches.hasNext()) {
        found.append(matches.next().captured());
    }
    found.sort();
    return found;
}

QString cancelText()
{
    return QCoreApplication::translate("KAdvanceSettings", "Cancel");
}

} // namespace

class tst_KdRecordTranslation : public KdTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void everyLocaleGetsItsLanguage_data();
    void everyLocaleGetsItsLanguage();
    void installsTheLanguageOfALocale_data();
    void installsTheLanguageOfALocale();
    void installingAgainReplacesTheFormerLanguage();
    void unknownLanguageIsEnglish();
    void openDialogFollows();

    void everyTextOfTheSourcesIsTranslated_data();
    void everyTextOfTheSourcesIsTranslated();
    void placeholdersSurvive_data();
    void placeholdersSurvive();

private:
    void addLanguages();
};

void tst_KdRecordTranslation::cleanup()
{
    KdRecordTranslation::remove();
    KdTestCase::cleanup();
}

void tst_KdRecordTranslation::everyLocaleGetsItsLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("language");

    QTest::newRow("German") << QStringLiteral("de_DE") << QStringLiteral("de");
    QTest::newRow("Austrian") << QStringLiteral("de_AT") << QStringLiteral("de");
    QTest::newRow("mainland Chinese") << QStringLiteral("zh_CN") << QStringLiteral("zh_CN");
    QTest::newRow("Singapore Chinese") << QStringLiteral("zh_SG") << QStringLiteral("zh_CN");
    QTest::newRow("traditional Chinese") << QStringLiteral("zh_TW") << QString();
    QTest::newRow("English") << QStringLiteral("en_GB") << QString();
    QTest::newRow("French") << QStringLiteral("fr_FR") << QString();
    QTest::newRow("no language") << QStringLiteral("C") << QString();
}

void tst_KdRecordTranslation::everyLocaleGetsItsLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QString, language);
    QCOMPARE(KdRecordTranslation::languageFor(QLocale(locale)), language);
    QVERIFY(language.isEmpty() || KdRecordTranslation::languages().contains(language));
}

void tst_KdRecordTranslation::installsTheLanguageOfALocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("cancel");

    QTest::newRow("German") << QStringLiteral("de_CH") << QStringLiteral("Abbrechen");
    QTest::newRow("Chinese") << QStringLiteral("zh_CN") << QString::fromUtf8("取消");
    QTest::newRow("English") << QStringLiteral("en_US") << QStringLiteral("Cancel");
    QTest::newRow("no language") << QStringLiteral("C") << QStringLiteral("Cancel");
}

void tst_KdRecordTranslation::installsTheLanguageOfALocale()
{
    QFETCH(QString, locale);
    QFETCH(QString, cancel);
    QVERIFY(KdRecordTranslation::install(QLocale(locale)));
    QCOMPARE(cancelText(), cancel);
    KdRecordTranslation::remove();
    QCOMPARE(cancelText(), QStringLiteral("Cancel"));
}

void tst_KdRecordTranslation::installingAgainReplacesTheFormerLanguage()
{
    QVERIFY(KdRecordTranslation::install(QLocale(QStringLiteral("de"))));
    QVERIFY(KdRecordTranslation::install(QLocale(QStringLiteral("zh_CN"))));
    QVERIFY(KdRecordTranslation::install(QLocale(QStringLiteral("de"))));
    QCOMPARE(cancelText(), QStringLiteral("Abbrechen"));
    QCOMPARE(QCoreApplication::instance()->findChildren<QTranslator*>().size(), 1);
}

void tst_KdRecordTranslation::unknownLanguageIsEnglish()
{
    QVERIFY(KdRecordTranslation::install(QLocale(QStringLiteral("de"))));
    QVERIFY(!KdRecordTranslation::install(QLocale(QStringLiteral("fr"))));
    QCOMPARE(cancelText(), QStringLiteral("Cancel"));
}

void tst_KdRecordTranslation::openDialogFollows()
{
    KAdvanceSettings dialog;
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Advanced"));
    KdRecordTranslation::install(QLocale(QStringLiteral("de")));
    QTRY_COMPARE(dialog.windowTitle(), QStringLiteral("Erweiterte Einstellungen"));
    KdRecordTranslation::remove();
    QTRY_COMPARE(dialog.windowTitle(), QStringLiteral("Advanced"));
}

void tst_KdRecordTranslation::addLanguages()
{
    QTest::addColumn<QString>("language");
    const QStringList languages = KdRecordTranslation::languages();
    for (const QString& language : languages) {
        QTest::newRow(qPrintable(language)) << language;
    }
}

void tst_KdRecordTranslation::everyTextOfTheSourcesIsTranslated_data()
{
    addLanguages();
}

void tst_KdRecordTranslation::everyTextOfTheSourcesIsTranslated()
{
    QFETCH(QString, language);
    const QString updated = temporaryPath(QStringLiteral("updated.ts"));
    QVERIFY(QFile::copy(tsFile(language), updated));
    QProcess lupdate;
    lupdate.setWorkingDirectory(QStringLiteral(KDRECORD_SOURCE_DIR));
    lupdate.setProcessChannelMode(QProcess::MergedChannels);
    lupdate.start(QStringLiteral(KDRECORD_LUPDATE),
                  {QStringLiteral("-locations"), QStringLiteral("none"), QStringLiteral("Src"),
                   QStringLiteral("Host"), QStringLiteral("-ts"), updated});
    QVERIFY(lupdate.waitForFinished());
    QVERIFY2(lupdate.exitCode() == 0, lupdate.readAll().constData());

    const QVector<Message> messages = readTs(updated);
    QVERIFY(messages.size() > 20);
    QStringList open;
    for (const Message& message : messages) {
        if (!message.finished || message.translations.contains(QString())) {
            open.append(message.key());
        }
    }
    QVERIFY2(open.isEmpty(),
             qPrintable(QStringLiteral("Run the target update_translations, then translate or take "
                                       "out:\n") +
                        open.join(QLatin1Char('\n'))));
}

void tst_KdRecordTranslation::placeholdersSurvive_data()
{
    addLanguages();
}

void tst_KdRecordTranslation::placeholdersSurvive()
{
    QFETCH(QString, language);
    const QVector<Message> messages = readTs(tsFile(language));
    QVERIFY(!messages.isEmpty());
    for (const Message& message : messages) {
        for (const QString& translation : message.translations) {
            QVERIFY2(placeholders(translation) == placeholders(message.source),
                     qPrintable(message.key()));
            QVERIFY2(translation.trimmed() == translation, qPrintable(message.key()));
        }
    }
}

int main(int argc, char** argv)
{
    return KdTest::run<tst_KdRecordTranslation>(argc, argv);
}

#include "tst_KdRecordTranslation.moc"
