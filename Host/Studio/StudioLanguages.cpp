#include <Studio/StudioLanguages.h>

#include <KdRecord/KdRecordTranslation.h>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

#include <algorithm>

StudioLanguages::StudioLanguages(QObject* parent) : QObject(parent) {}

StudioLanguages::~StudioLanguages()
{
    KdRecordTranslation::remove();
}

QVector<StudioLanguages::Language> StudioLanguages::all()
{
    return {{QStringLiteral("en"), QStringLiteral("English")},
            {QStringLiteral("de"), QStringLiteral("Deutsch")},
            {QStringLiteral("zh_CN"), QStringLiteral("\u7b80\u4f53\u4e2d\u6587")}};
}

bool StudioLanguages::use(const QString& code)
{
    const QVector<Language> known = all();
    if (std::none_of(known.cbegin(), known.cend(),
                     [&code](const Language& l) { return l.code == code; })) {
        return false;
    }
    m_code = code;
    const QLocale locale(code);
    QLocale::setDefault(locale);
    // A translator that goes takes itself off the application.
    m_qtTexts = std::make_unique<QTranslator>();
    const QString file = QStringLiteral("qtbase_") + code;
    if (m_qtTexts->load(file, QLibraryInfo::location(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(m_qtTexts.get());
    }
    return KdRecordTranslation::install(locale);
}
